// The writes of the database service: setField values gathered per row into one UPDATE that
// is stored before any other statement runs, and the statements that write one row.
#include <algorithm>

#include "base/failure.hpp"
#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

// Runs a statement that writes one row of a table, keeping the known largest keys valid
// (raised by an insert). Answers the key of an inserted row whose key grows: the rowid the
// backend gave it, else `key`, the auto-number written.
std::int64_t Database::Impl::writeOneRow(SqlStatement& stmt, const TableInfo& info, bool insert,
                                         std::int64_t key, std::string_view what,
                                         std::string_view name) {
  const std::int64_t before = db().changeCounter();
  step(stmt, what, name);
  if (insert && info.keys.kind == KeyPlan::Kind::Rowid) key = db().lastInsertKey();
  if (knownMaxStamp != before || db().changeCounter() != before + 1) return key;
  knownMaxStamp = before + 1;
  auto known = insert && info.keys.grows() ? knownMax.find(info.name) : knownMax.end();
  if (known != knownMax.end()) known->second = std::max(known->second, key);
  return key;
}

// Keeps a column's new value for the row's UPDATE; a write to another row stores the
// pending one first.
void Database::Impl::writeLater(const std::string& table, std::int64_t key,
                                const std::string& column, Variant value) {
  if (pendingWrite && (pendingWrite->key != key || pendingWrite->table != table)) flushWrites();
  if (!pendingWrite) pendingWrite = PendingWrite{table, key, {}};
  for (auto& [name, held] : pendingWrite->columns)
    if (sameName(name, column)) {
      held = std::move(value);
      return;
    }
  pendingWrite->columns.emplace_back(column, std::move(value));
}

// Stores the pending row writes in one UPDATE, columns in name order so that rows written
// alike share a prepared statement.
void Database::Impl::flushWrites() {
  if (!pendingWrite) return;
  PendingWrite w = std::move(*pendingWrite);
  pendingWrite.reset();
  std::sort(w.columns.begin(), w.columns.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  const TableInfo& info = tableInfo(w.table);
  std::string sql = "UPDATE " + quoted(w.table) + " SET ";
  std::string names;
  for (size_t i = 0; i < w.columns.size(); ++i) {
    sql.append(i ? ", \"" : "\"").append(w.columns[i].first).append("\" = ?");
    names.append(i ? ", " : "").append(w.columns[i].first);
  }
  sql.append(whereKey(info));
  SqlStatement& stmt = cached(sql);
  for (size_t i = 0; i < w.columns.size(); ++i)
    bind(stmt, static_cast<int>(i + 1), w.columns[i].second);
  bindKey(stmt, static_cast<int>(w.columns.size() + 1), info, w.key);
  const std::int64_t before = db().changeCounter();
  writeOneRow(stmt, info, false, 0, "Cannot write ", names);
  bool keyWritten = false;  // the row moves to another key: no row of the table is known
  for (const auto& [column, value] : w.columns)
    keyWritten = keyWritten || sameName(column, info.rowidAlias) ||
                 std::any_of(info.keys.columns.begin(), info.keys.columns.end(),
                             [&](const std::string& k) { return k == quoted(column); });
  noteWrite(keyWritten ? nullptr : &info.name, w.key, before, &w.columns);
  // A key held as values now stands for the values written.
  if (!info.keys.grows())
    for (const auto& [column, value] : w.columns)
      for (size_t k = 0; k < info.keys.columns.size(); ++k)
        if (sameName(info.keys.columns[k], quoted(column)))
          rowKeys.rekey(info.name, w.key, k, storedForm(value));
}

void Database::Impl::bind(SqlStatement& stmt, int pos, const Variant& v) {
  switch (v.kind()) {
    case Kind::Null:
      stmt.bindNull(pos);
      break;
    case Kind::Integer:
      stmt.bindInteger(pos, v.toLong());
      break;
    case Kind::Boolean:
      stmt.bindInteger(pos, v.toBool() ? 1 : 0);
      break;
    case Kind::Double:
      stmt.bindReal(pos, v.toDouble());
      break;
    case Kind::Date:
      stmt.bindText(pos, v.toDate()->toIso());
      break;
    case Kind::Text:
      stmt.bindText(pos, v.toString());
      break;
  }
}

// Runs a write; a failure says what was written (`what` followed by `name`).
void Database::Impl::step(SqlStatement& stmt, std::string_view what, std::string_view name) {
  try {
    stmt.step();
  } catch (const DatabaseFailure& failure) {
    throw DatabaseFailure(std::string(what).append(name) + ": " + failure.what());
  }
}

const Column& Database::Impl::writableColumn(Recordset& r, int col) {
  const Column& c = r.columns[static_cast<size_t>(col)];
  if (r.lockType == kLockReadOnly)
    throw DatabaseFailure(
        "Current Recordset does not support updating. This may be a limitation of the provider, "
        "or of the selected locktype.");
  if (c.slot < 0 || c.origin.empty())
    throw DatabaseFailure("Field '" + c.name + "' cannot be updated.");
  return c;
}

}  // namespace lf
