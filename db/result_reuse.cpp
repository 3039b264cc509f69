// The rows of recordset statements kept for the next recordset opened on the same statement
// and parameters, valid while nothing the statement reads has been written since. Writes are
// counted per table by the service, and per row for statements that read one row by its
// key; the backend's change counter catches any other write.
#include <cmath>
#include <optional>

#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

namespace {

bool readsKnownTables(const Recordset& r) {
  const std::vector<std::string>* tables = r.shape->stmt->tablesRead();
  return tables != nullptr && !tables->empty();
}

// The row key a statement reading one row by its key names, when it is such a statement and
// reads nothing else.
std::optional<std::int64_t> oneKeyOf(const Recordset& r) {
  const std::vector<std::string>* tables = r.shape->stmt->tablesRead();
  if (!r.shape->readsOneKey || tables == nullptr || tables->size() != 1) return std::nullopt;
  std::int64_t key = 0;
  if (!wholeNumber(r.parameters[0].text, key)) return std::nullopt;
  return key;
}

}  // namespace

std::int64_t Database::Impl::rowWrittenAt(const std::string& table, std::int64_t key) const {
  auto rows = rowsWrittenAt.find(table);
  if (rows == rowsWrittenAt.end()) return 0;
  auto row = rows->second.find(key);
  return row == rows->second.end() ? 0 : row->second;
}

void Database::Impl::noteWrite(const std::string* table, std::int64_t key,
                               std::int64_t changesBefore, const RowValues* updated) {
  if (!options.writeAheadLog) return;
  const std::int64_t after = db().changeCounter();
  const std::int64_t stamp = ++writeClock;
  // A change not counted here before, or more than one row (a trigger): any table.
  if (table == nullptr || countedChanges != changesBefore || after > changesBefore + 1) {
    anythingWrittenAt = stamp;
    countedChanges = after;
    return;
  }
  countedChanges = after;
  tableWrittenAt[*table] = stamp;
  const std::int64_t before = rowWrittenAt(*table, key);
  auto [row, added] = rowsWrittenAt[*table].try_emplace(key, stamp);
  row->second = stamp;
  if (added && ++rowStampCount > kRowStampsSize) {
    // The rows' stamps are kept for a bounded number of rows: forgetting them forgets what
    // was kept on the strength of them.
    forgetKeptResults();
    countedChanges = after;
    return;
  }
  if (updated == nullptr) return;
  imageTakesUpdate(*table, key, before, *updated);
  // An update of a row's columns other than its key leaves the row in the results that read
  // it by its key: those take the values written and stay valid.
  auto rows = keptByRow.find(*table);
  if (rows == keptByRow.end()) return;
  auto kept = rows->second.find(key);
  if (kept == rows->second.end()) return;
  for (const auto& [column, value] : *updated)
    if (!cleanValue(value)) return;  // what reads back is not known: the results read again
  std::string origin;
  for (const std::string& name : kept->second) {
    auto entry = keptResults.find(name);
    if (entry == keptResults.end()) continue;
    KeptResult& result = entry->second;
    if (result.readAt < before || result.readAt < anythingWrittenAt) continue;
    for (Row& row : result.rows)
      for (const auto& [column, value] : *updated) {
        origin.assign(*table).append(".").append(column);
        auto columns = result.shape->byOrigin.find(origin);
        if (columns == result.shape->byOrigin.end()) continue;
        for (int c : columns->second) row.set(static_cast<size_t>(c), asStored(value));
      }
    result.readAt = stamp;
  }
}

void Database::Impl::forgetKeptResults() {
  keptResults.clear();
  keptByRow.clear();
  rowImages.clear();
  rowImageCount = 0;
  tableWrittenAt.clear();
  rowsWrittenAt.clear();
  rowStampCount = 0;
  anythingWrittenAt = ++writeClock;
  countedChanges = -1;
}

void Database::Impl::noteUntrackedChanges() {
  const std::int64_t changes = db().changeCounter();
  if (changes != countedChanges) noteWrite(nullptr, 0, changes);
}

// A kept result's name: its shape (unique while the result keeps it) and the parameters.
std::string Database::Impl::keptName(const Recordset& r) const {
  if (!options.writeAheadLog || !r.addedHere.empty() || !readsKnownTables(r)) return {};
  const Shape* shape = r.shape.get();
  std::string key(reinterpret_cast<const char*>(&shape), sizeof shape);
  for (const TranslatedSql::Parameter& p : r.parameters)
    key.append(std::to_string(p.text.size())).append(p.number ? "n" : "t").append(p.text);
  return key;
}

bool Database::Impl::reuseResult(Recordset& r, const std::string& name) {
  if (name.empty()) return false;
  auto kept = keptResults.find(name);
  if (kept == keptResults.end()) return false;
  noteUntrackedChanges();
  const std::int64_t readAt = kept->second.readAt;
  bool valid = anythingWrittenAt <= readAt;
  if (const auto key = oneKeyOf(r)) {
    valid = valid && rowWrittenAt(r.translated.tables[0].table, *key) <= readAt;
  } else {
    for (const std::string& table : *r.shape->stmt->tablesRead()) {
      if (!valid) break;
      auto written = tableWrittenAt.find(table);
      valid = written == tableWrittenAt.end() || written->second <= readAt;
    }
  }
  if (!valid) return false;  // read again, and kept again under the same name
  // The keyset as fixed at this recordset's open: rows added since stay out.
  r.rows.clear();
  r.rows.reserve(kept->second.rows.size());
  const size_t first = r.columns.size();
  for (const Row& row : kept->second.rows) {
    bool keep = true;
    for (size_t slot = 0; slot < r.snapshotMax.size() && keep; ++slot)
      keep = row.cells[first + slot].i <= r.snapshotMax[slot];
    if (keep) r.rows.push_back(row);
  }
  return true;
}

bool Database::Impl::holdsStoredValue(Recordset& r, int col, const Variant& value) {
  if (!options.writeAheadLog || !r.loaded || r.currentDeleted || r.cursor >= r.rows.size())
    return false;
  noteUntrackedChanges();
  if (anythingWrittenAt > r.loadedAt) return false;
  return r.rows[r.cursor].get(static_cast<size_t>(col)) == value;
}

void Database::Impl::keepResult(const Recordset& r, bool wholeResult, std::string name) {
  if (name.empty() || !wholeResult || r.rows.size() > kKeptRowsLimit) return;
  if (keptResults.size() >= kKeptResultsSize) {
    keptResults.clear();
    keptByRow.clear();
  }
  auto [entry, added] = keptResults.try_emplace(name);
  KeptResult& kept = entry->second;
  kept.shape = r.shape;
  kept.rows = r.rows;
  kept.readAt = writeClock;
  if (!added) return;
  if (const auto key = oneKeyOf(r))
    keptByRow[r.translated.tables[0].table][*key].push_back(std::move(name));
}

}  // namespace lf
