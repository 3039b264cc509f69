// The rows of recordset statements kept for the next recordset opened on the same statement
// and parameters, valid while nothing the statement reads has been written since. Writes are
// counted per table by the service; the backend's change counter catches any other.
#include "db/database_impl.hpp"

namespace lf {

namespace {

// A kept result's key: its shape (unique while the result keeps it) and the parameters.
std::string keptKey(const Recordset& r) {
  const Shape* shape = r.shape.get();
  std::string key(reinterpret_cast<const char*>(&shape), sizeof shape);
  for (const TranslatedSql::Parameter& p : r.parameters)
    key.append(std::to_string(p.text.size())).append(p.number ? "n" : "t").append(p.text);
  return key;
}

bool readsKnownTables(const Recordset& r) {
  const std::vector<std::string>* tables = r.shape->stmt->tablesRead();
  return tables != nullptr && !tables->empty();
}

}  // namespace

void Database::Impl::noteWrite(const std::string* table, std::int64_t changesBefore) {
  if (!options.writeAheadLog) return;
  const std::int64_t after = db().changeCounter();
  const std::int64_t stamp = ++writeClock;
  // A change not counted here before, or more than one row (a trigger): any table.
  if (table == nullptr || countedChanges != changesBefore || after > changesBefore + 1)
    anythingWrittenAt = stamp;
  else
    tableWrittenAt[*table] = stamp;
  countedChanges = after;
}

void Database::Impl::forgetKeptResults() {
  keptResults.clear();
  tableWrittenAt.clear();
  anythingWrittenAt = ++writeClock;
  countedChanges = -1;
}

bool Database::Impl::reuseResult(Recordset& r) {
  if (!options.writeAheadLog || !r.addedHere.empty() || !readsKnownTables(r)) return false;
  auto kept = keptResults.find(keptKey(r));
  if (kept == keptResults.end()) return false;
  const std::int64_t changes = db().changeCounter();
  if (changes != countedChanges) noteWrite(nullptr, changes);
  bool valid = anythingWrittenAt <= kept->second.readAt;
  for (const std::string& table : *r.shape->stmt->tablesRead()) {
    if (!valid) break;
    auto written = tableWrittenAt.find(table);
    valid = written == tableWrittenAt.end() || written->second <= kept->second.readAt;
  }
  if (!valid) {
    keptResults.erase(kept);
    return false;
  }
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
  const std::int64_t changes = db().changeCounter();
  if (changes != countedChanges) noteWrite(nullptr, changes);
  if (anythingWrittenAt > r.loadedAt) return false;
  return r.rows[r.cursor].get(static_cast<size_t>(col)) == value;
}

void Database::Impl::keepResult(const Recordset& r, bool wholeResult) {
  if (!wholeResult || !options.writeAheadLog || !r.addedHere.empty() ||
      r.rows.size() > kKeptRowsLimit || !readsKnownTables(r))
    return;
  if (keptResults.size() >= kKeptResultsSize) keptResults.clear();
  KeptResult& kept = keptResults[keptKey(r)];
  kept.shape = r.shape;
  kept.rows = r.rows;
  kept.readAt = writeClock;
}

}  // namespace lf
