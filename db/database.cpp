// The backend-neutral database service: the operations of db/database_service.hpp on keyset
// recordsets (cursor, search, fields, new and deleted rows). What they rest on is in the
// files named in db/database_impl.hpp; the backend only runs statements (db/sql_backend.hpp).
#include "db/database.hpp"

#include <algorithm>

#include "base/error_service.hpp"
#include "base/failure.hpp"
#include "db/database_factory.hpp"
#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

Database::Database() : impl_(std::make_unique<Impl>()) {}
Database::Database(std::unique_ptr<SqlBackend> backend) : impl_(std::make_unique<Impl>()) {
  impl_->backend = std::move(backend);
  impl_->backendGiven = true;
}
Database::~Database() = default;

void Database::createNew(std::string_view location) {
  std::string p(location);
  if (p != ":memory:" && databaseLocationExists(p))
    throw DatabaseFailure(
        "The file '" + p +
        "' already exists; a new practice database is never written over an existing file.");
  close();
  impl_->path = p;
  impl_->options.writeAheadLog = true;  // a new database is a practice database
  impl_->options.create = true;
  try {
    impl_->connect(*this);
  } catch (...) {
    impl_->options.create = false;
    throw;
  }
  impl_->options.create = false;
  if (!impl_->connected)
    throw DatabaseFailure("Cannot create '" + p + "': " + impl_->failureMessage);
}

void Database::setWriteAheadLog(bool on) {
  impl_->options.writeAheadLog = on;
}

void Database::executeStatement(std::string_view accessSql) {
  impl_->requireOpen();
  impl_->flushWrites();
  TranslatedSql t = translateAccessSql(accessSql, impl_->db().dialect(), false);
  const std::string what = "Cannot run \"" + std::string(accessSql) + "\"";
  std::unique_ptr<SqlStatement> stmt;
  try {
    stmt = impl_->db().prepare(t.sql);
  } catch (const DatabaseFailure& failure) {
    if (std::string_view(failure.what()) == "Only one statement is allowed.") throw;
    throw DatabaseFailure(what + ": " + failure.what());
  }
  impl_->step(*stmt, what);
  impl_->forgetKeptResults();
  impl_->noteUntrackedChanges();
  impl_->tables.clear();  // the schema may have changed
  impl_->readBackLayouts.clear();
  impl_->shapes.clear();
  impl_->shapeOrder.clear();
  impl_->numberedShapes.clear();
  impl_->exactShapes.clear();
}

bool Database::hasTable(std::string_view table) {
  impl_->requireOpen();
  impl_->flushWrites();
  return impl_->db().hasTable(table);
}

std::vector<std::string> Database::tableColumnNames(std::string_view table) {
  impl_->requireOpen();
  impl_->flushWrites();
  std::vector<std::string> names;
  for (const SqlTableColumn& c : impl_->db().tableColumns(table)) names.push_back(c.name);
  return names;
}

std::string Database::path() const {
  return impl_->path;
}

void Database::setErrorService(ErrorService* errors) {
  impl_->errors = errors;
}
void Database::setOwnerWindow(void*) {}
void Database::setApplicationName(std::string_view) {}
void Database::setDatabaseKind(int) {}
void Database::setDatabasePath(std::string_view path) {
  impl_->path = std::string(path);
}
void Database::setCursorLocation(int) {}
void Database::setOpenMode(int) {}

void Database::setReadOnly(bool on) {
  impl_->options.readOnly = on;
}

void Database::setBusyTimeout(int milliseconds) {
  impl_->options.busyTimeoutMs = milliseconds;
}

void Database::setOpenCheck(std::function<void(Database&)> check) {
  impl_->openCheck = std::move(check);
}

ConnectFailure Database::connectFailure() const {
  return impl_->failure;
}

const std::string& Database::connectFailureMessage() const {
  return impl_->failureMessage;
}

void Database::connect(int) {
  impl_->connect(*this);
}

bool Database::isOpen() {
  return impl_->connected;
}

void Database::close() {
  impl_->storeAndDisconnect();
}

bool Database::getBulkFlag() {
  return impl_->bulk;
}
void Database::setBulkFlag(bool flag) {
  impl_->bulk = flag;
}

std::string Database::formatDateForSql(const Date& date) {
  return date.toIso();
}

std::int32_t Database::openRecordset(std::string_view sql, int, int lockType, int, std::string_view,
                                     int) {
  return impl_->open(sql, lockType);
}

void Database::closeRecordset(std::int32_t handle) {
  impl_->recordsets.erase(handle);
}

bool Database::isRecordsetOpen(std::int32_t handle) {
  return impl_->recordsets.count(handle) > 0;
}

std::int32_t Database::requery(std::int32_t handle) {
  Recordset& r = impl_->rs(handle);
  std::string sql = r.accessSql;
  int lock = r.lockType;
  std::int32_t fresh = impl_->open(sql, lock);
  impl_->recordsets.erase(handle);
  return fresh;
}

std::int32_t Database::recordCount(std::int32_t handle) {
  return static_cast<std::int32_t>(impl_->ready(handle).rows.size());
}

bool Database::isEmpty(std::int32_t handle) {
  return impl_->ready(handle).rows.empty();
}

bool Database::hasRecord(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  r.cursor = 0;
  r.currentDeleted = false;
  return !r.rows.empty();
}

bool Database::isEOF(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  return r.cursor >= r.rows.size();
}

void Database::moveNext(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  if (r.currentDeleted) {
    r.currentDeleted = false;  // the row after the deleted one already stands here
    return;
  }
  if (r.cursor >= r.rows.size())
    throw DatabaseFailure("Either BOF or EOF is True, or the current record has been deleted.");
  ++r.cursor;
}

std::int32_t Database::getPosition(std::int32_t handle) {
  return static_cast<std::int32_t>(impl_->ready(handle).cursor);
}

void Database::setPosition(std::int32_t handle, std::int32_t position) {
  Recordset& r = impl_->ready(handle);
  r.cursor = position < 0 ? r.rows.size() : std::min(static_cast<size_t>(position), r.rows.size());
  r.currentDeleted = false;
}

bool Database::findRecord(std::int32_t handle, std::string_view field1, std::string_view value1,
                          std::string_view field2, std::string_view value2, std::string_view field3,
                          std::string_view value3) {
  Recordset& r = impl_->ready(handle);
  std::vector<int> cols;
  std::string key;
  std::pair<std::string_view, std::string_view> pairs[] = {
      {field1, value1}, {field2, value2}, {field3, value3}};
  for (auto& [field, value] : pairs) {
    if (field.empty()) continue;
    int c = impl_->columnIndex(r, field);
    cols.push_back(c);
    key += criterionKey(r.columns[static_cast<size_t>(c)].kind, value);
    key += '\x1f';
  }
  r.findColumns = cols;
  r.findKey = key;
  r.currentDeleted = false;
  if (cols.empty()) {
    r.cursor = r.rows.size();
    return false;
  }
  auto& idx = impl_->index(r, cols);
  auto it = idx.find(key);
  if (it == idx.end() || it->second.empty()) {
    r.cursor = r.rows.size();
    return false;
  }
  r.cursor = it->second.front();
  return true;
}

bool Database::findNext(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  if (r.findColumns.empty()) return false;
  auto& idx = impl_->index(r, r.findColumns);
  auto it = idx.find(r.findKey);
  if (it != idx.end()) {
    auto next = std::upper_bound(it->second.begin(), it->second.end(),
                                 static_cast<std::uint32_t>(r.cursor));
    if (r.cursor < r.rows.size() && next != it->second.end()) {
      r.cursor = *next;
      return true;
    }
  }
  r.cursor = r.rows.size();
  return false;
}

Variant Database::getField(std::int32_t handle, std::string_view field) {
  Recordset& r = impl_->rs(handle);
  int c = impl_->columnIndex(r, field);
  if (r.adding) {
    const Column& col = r.columns[static_cast<size_t>(c)];
    for (auto it = r.pending.rbegin(); it != r.pending.rend(); ++it)
      if (it->first == c) return it->second;
    if (r.hasReservedKey && col.slot == 0 &&
        sameName(col.origin, impl_->tableInfo(col.table).rowidAlias))
      return Variant::integer(r.reservedKey);
    return Variant::null();
  }
  if (!r.loaded && r.onAddedRow) return impl_->addedRow(r).get(static_cast<size_t>(c));
  if (!r.loaded) impl_->load(r);
  return impl_->currentRow(r).get(static_cast<size_t>(c));
}

bool Database::setField(std::int32_t handle, std::string_view field, std::string_view value, bool,
                        bool) {
  Recordset& r = impl_->rs(handle);
  if (r.adding) return setNewField(handle, field, value);
  int c = impl_->columnIndex(r, field);
  const Column& col = impl_->writableColumn(r, c);
  bool onAddedRow = !r.loaded && r.onAddedRow && col.slot == 0;
  if (!onAddedRow) {
    if (!r.loaded) impl_->load(r);
    impl_->currentRow(r);
  }
  const TableInfo& info = impl_->tableInfo(col.table);
  auto ci = info.columns.find(col.origin);
  Kind kind = ci == info.columns.end() ? col.kind : ci->second.second;
  Variant v = convertForColumn(kind, value, col.name);
  // The value the row already holds is not written again: the statement would change nothing.
  if (!onAddedRow && impl_->holdsStoredValue(r, c, v)) return true;
  std::int64_t key = onAddedRow ? r.addedKey : r.keyOf(r.cursor, static_cast<size_t>(col.slot));
  impl_->writeLater(info.name, key, col.origin, v);
  // A new key can clash, and a key held as values moves with the write: store it now.
  bool keyColumn = sameName(col.origin, info.rowidAlias);
  if (!info.keys.grows())
    for (const std::string& k : info.keys.columns) keyColumn = keyColumn || k == quoted(col.origin);
  if (keyColumn) impl_->flushWrites();
  impl_->propagate(col.table, key, col.origin, v);
  return true;
}

bool Database::addNewRecord(std::int32_t handle) {
  Recordset& r = impl_->rs(handle);
  if (r.lockType == kLockReadOnly)
    throw DatabaseFailure(
        "Current Recordset does not support updating. This may be a limitation of the provider, or "
        "of the selected locktype.");
  if (r.translated.tables.empty() || !r.hasKeys())
    throw DatabaseFailure("This recordset cannot take new rows.");
  r.adding = true;
  r.pending.clear();
  const TableInfo& info = impl_->tableInfo(r.translated.tables[0].table);
  r.hasReservedKey = !info.rowidAlias.empty();
  if (r.hasReservedKey) r.reservedKey = impl_->reserveKey(info);
  return true;
}

bool Database::setNewField(std::int32_t handle, std::string_view field, std::string_view value) {
  Recordset& r = impl_->rs(handle);
  if (!r.adding) throw DatabaseFailure("setNewField without addNewRecord.");
  int c = impl_->columnIndex(r, field);
  const Column& col = impl_->writableColumn(r, c);
  if (col.slot != 0)
    throw DatabaseFailure("Field '" + col.name + "' is not a column of the new row's table.");
  const TableInfo& info = impl_->tableInfo(col.table);
  auto ci = info.columns.find(col.origin);
  r.pending.emplace_back(
      c, convertForColumn(ci == info.columns.end() ? col.kind : ci->second.second, value,
                          col.name));  // fails here rather than at updateRecord
  return true;
}

bool Database::updateRecord(std::int32_t handle) {
  Recordset& r = impl_->rs(handle);
  if (!r.adding) return true;  // setField has written the row
  r.adding = false;
  const TableInfo& info = impl_->tableInfo(r.translated.tables[0].table);
  ColumnValues values;
  values.reserve(r.pending.size() + 1);
  NameViewMap<size_t> positions;  // a column written twice keeps its last value
  positions.reserve(r.pending.size());
  bool keyGiven = false;
  std::int64_t givenKey = 0;
  for (auto& [c, v] : r.pending) {
    const std::string& origin = r.columns[static_cast<size_t>(c)].origin;
    auto [slot, added] = positions.emplace(origin, values.size());
    if (added)
      values.emplace_back(origin, std::move(v));
    else
      values[slot->second].second = std::move(v);
    if (!info.rowidAlias.empty() && sameName(origin, info.rowidAlias)) {
      keyGiven = true;
      givenKey = values[slot->second].second.toLong();
    }
  }
  if (r.hasReservedKey && !keyGiven)
    values.emplace_back(info.rowidAlias, Variant::integer(r.reservedKey));
  std::string sql;
  if (values.empty()) {
    sql = "INSERT INTO \"" + info.name + "\" DEFAULT VALUES";
  } else {
    sql.reserve(info.name.size() + values.size() * 24 + 32);
    sql.append("INSERT INTO \"").append(info.name).append("\" (");
    for (size_t i = 0; i < values.size(); ++i)
      sql.append(i ? ", \"" : "\"").append(values[i].first).append("\"");
    sql.append(") VALUES (");
    for (size_t i = 0; i < values.size(); ++i) sql.append(i ? ", ?" : "?");
    sql.append(")");
  }
  SqlStatement& stmt = impl_->cached(sql);
  for (size_t i = 0; i < values.size(); ++i)
    Impl::bind(stmt, static_cast<int>(i + 1), values[i].second);
  std::int64_t key = keyGiven ? givenKey : r.reservedKey;
  const std::int64_t before = impl_->db().changeCounter();
  key = impl_->writeOneRow(stmt, info, true, key, "Cannot add a row to ", info.name);
  if (!info.keys.grows()) key = impl_->insertedKey(info, values);
  impl_->noteWrite(&info.name, key, before);
  impl_->imageFromInsert(info, key, values);
  r.pending.clear();
  r.hasReservedKey = false;

  // The new row joins this recordset, read back with the table's defaults.
  if (!r.loaded) {
    r.addedHere.push_back(key);
    r.addedRow.reset();
    r.addedKey = key;
    r.onAddedRow = true;
    return true;
  }
  Row row = impl_->composeRow(r, key, values);
  r.rows.push_back(std::move(row));
  size_t index = r.rows.size() - 1;
  for (auto& [name, idx] : r.indexes)
    idx[impl_->rowKey(r, index, indexColumns(name))].push_back(static_cast<std::uint32_t>(index));
  if (r.keyMapsBuilt)
    for (size_t s = 0; s < r.slotCount; ++s)
      r.keyMaps[s].emplace(r.keyOf(index, s), static_cast<std::uint32_t>(index));
  r.cursor = index;
  r.currentDeleted = false;
  return true;
}

bool Database::deleteRecord(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  if (r.lockType == kLockReadOnly || !r.hasKeys())
    throw DatabaseFailure("Current Recordset does not support updating.");
  impl_->currentRow(r);
  const TableInfo& info = impl_->tableInfo(r.translated.tables[0].table);
  SqlStatement& stmt = impl_->cached("DELETE FROM \"" + info.name + "\"" + impl_->whereKey(info));
  impl_->bindKey(stmt, 1, info, r.keyOf(r.cursor, 0));
  const std::int64_t before = impl_->db().changeCounter();
  impl_->step(stmt, "Cannot delete from ", info.name);
  impl_->noteWrite(&info.name, r.keyOf(r.cursor, 0), before);
  r.rows.erase(r.rows.begin() + static_cast<std::ptrdiff_t>(r.cursor));
  r.indexes.clear();
  r.keyMaps.clear();
  r.keyMapsBuilt = false;
  r.currentDeleted = true;
  return true;
}

// The depth counts a group only once its statement has run, so that a failed BEGIN or
// COMMIT leaves the depth as the connection really is.
void Database::beginWriteGroup() {
  impl_->requireOpen();
  if (impl_->groupDepth == 0) {
    impl_->flushWrites();
    impl_->db().begin();
  }
  ++impl_->groupDepth;
}

void Database::endWriteGroup() {
  if (impl_->groupDepth == 0 || !impl_->connected) return;
  if (impl_->groupDepth > 1) {
    --impl_->groupDepth;
    return;
  }
  impl_->commitGroup();
}

}  // namespace lf
