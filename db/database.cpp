// The backend-neutral database service: keyset recordsets over a row cache, searches with
// per-column indexes, writes converted to the declared column types and gathered per row,
// propagation of writes to every open recordset, and write groups. The backend only runs
// statements (db/sql_backend.hpp).
#include "db/database.hpp"

#include <algorithm>
#include <cmath>
#include <list>
#include <optional>
#include <unordered_set>

#include "base/error_service.hpp"
#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/text_encoding.hpp"
#include "db/access_sql.hpp"
#include "db/column_values.hpp"
#include "db/database_factory.hpp"
#include "db/row_cache.hpp"
#include "db/row_keys.hpp"

namespace lf {
namespace {

std::string upper(std::string_view s) {
  return GeneralUtilities::upperCase(s);
}

// The values of a new row by column name; the names belong to the statement's shape.
using ColumnValues = std::vector<std::pair<std::string_view, Variant>>;

std::string indexName(const std::vector<int>& cols) {
  std::string name;
  for (int c : cols) name += std::to_string(c) + ",";
  return name;
}

std::vector<int> indexColumns(const std::string& name) {
  std::vector<int> cols;
  for (size_t p = 0; p < name.size();) {
    size_t q = name.find(',', p);
    cols.push_back(std::stoi(name.substr(p, q - p)));
    p = q + 1;
  }
  return cols;
}

// A text value as clean text: the bytes are kept when they are valid UTF-8.
std::string cleanText(std::string_view bytes) {
  return isCleanText(bytes) ? std::string(bytes) : textFromOutside(bytes);
}

// A column name as the statements of the service quote it.
std::string quoted(std::string_view name) {
  return "\"" + std::string(name) + "\"";
}

// A value as it stands in the result, by storage class and untouched (key columns).
Variant rawValue(SqlStatement& stmt, int i) {
  switch (stmt.type(i)) {
    case SqlType::Null:
      return Variant::null();
    case SqlType::Integer:
      return Variant::integer(stmt.integer(i));
    case SqlType::Real:
      return Variant::real(stmt.real(i));
    case SqlType::Text:
      break;
  }
  return Variant::text(std::string(stmt.text(i)));
}

}  // namespace

struct Database::Impl {
  // Null until connect when the backend is chosen by the location.
  std::unique_ptr<SqlBackend> backend;
  bool backendGiven = false;
  std::string path;
  bool bulk = false;
  ConnectOptions options;
  std::function<void(Database&)> openCheck;
  ConnectFailure failure = ConnectFailure::None;
  std::string failureMessage;
  bool connected = false;
  std::int32_t nextHandle = 1;
  std::unordered_map<std::int32_t, std::unique_ptr<Recordset>> recordsets;
  std::unordered_map<std::string, std::unique_ptr<SqlStatement>> statements;
  NameMap<TableInfo> tables;
  RowKeyRegistry rowKeys;
  // Shapes of the statements opened most recently; per-row statements make the list long,
  // so it is bounded.
  static constexpr size_t kShapeCacheSize = 64;
  std::list<std::string> shapeOrder;
  std::unordered_map<std::string,
                     std::pair<std::shared_ptr<const Shape>, std::list<std::string>::iterator>>
      shapes;
  std::unordered_map<std::string, std::int64_t> lastReserved;
  int groupDepth = 0;
  // The largest key of each table as last read or written here, valid while the backend's
  // change counter stands at `knownMaxStamp`: every recordset opened and every new row needs
  // it, and while the database is held alone only this connection's own writes move it.
  NameMap<std::int64_t> knownMax;
  std::int64_t knownMaxStamp = -1;
  std::string originKey;  // propagate's look-up key, kept to spare an allocation per write
  // The columns written by setField to one row and not yet stored: consecutive writes to a
  // row become one UPDATE, run before any other statement of this connection.
  struct PendingWrite {
    std::string table;
    std::int64_t key = 0;
    std::vector<std::pair<std::string, Variant>> columns;
  };
  std::optional<PendingWrite> pendingWrite;
  // Told of the writes a connection going away could not store (setErrorService).
  ErrorService* errors = nullptr;

  ~Impl() {
    try {
      storeAndDisconnect();
    } catch (const DatabaseFailure& failure) {
      if (errors == nullptr) return;
      errors->setError({failure.number(), failure.what(), "Ledgerfolio.exe-Database-close"});
      errors->reportError();
    }
  }

  SqlBackend& db() { return *backend; }

  // Stores the pending writes and commits an open group, then disconnects; a write that
  // cannot be stored is rolled back with its group and raised after the disconnect.
  void storeAndDisconnect() {
    if (!connected) return disconnect();
    try {
      if (groupDepth > 0)
        commitGroup();
      else
        flushWrites();
    } catch (const DatabaseFailure&) {
      disconnect();
      throw;
    }
    disconnect();
  }

  // Ends the outermost group with COMMIT. A COMMIT that fails (or the flush of the pending
  // writes before it) is rolled back and raised; either way no group is open afterwards.
  void commitGroup() {
    try {
      flushWrites();
      db().commit();
    } catch (const DatabaseFailure&) {
      groupDepth = 0;
      rollBack();
      throw;
    }
    groupDepth = 0;
  }

  // Undoes the open transaction. What the open recordsets read or wrote inside it may be
  // gone, so each reads its rows again when next used, as if opened now.
  void rollBack() {
    pendingWrite.reset();
    db().rollback();
    knownMax.clear();
    knownMaxStamp = -1;
    lastReserved.clear();
    for (auto& [handle, r] : recordsets) forget(*r);
  }

  void forget(Recordset& r) {
    r.rows.clear();
    r.cursor = 0;
    r.currentDeleted = false;
    r.findColumns.clear();
    r.findKey.clear();
    r.indexes.clear();
    r.keyMaps.clear();
    r.keyMapsBuilt = false;
    r.addedHere.clear();
    r.addedRow.reset();
    r.addedKey = 0;
    r.onAddedRow = false;
    r.adding = false;
    r.pending.clear();
    r.hasReservedKey = false;
    r.loaded = false;
    for (size_t slot = 0; slot < r.snapshotMax.size(); ++slot)
      r.snapshotMax[slot] = maxKey(tableInfo(r.translated.tables[slot].table));
  }

  void disconnect() {
    pendingWrite.reset();
    recordsets.clear();
    shapes.clear();
    shapeOrder.clear();
    statements.clear();
    tables.clear();
    rowKeys.clear();
    lastReserved.clear();
    knownMax.clear();
    knownMaxStamp = -1;
    groupDepth = 0;
    if (backend) backend->disconnect();
    connected = false;
  }

  void requireOpen() {
    if (!connected) throw DatabaseFailure("The connection to the database is not open.");
  }

  // Connects the backend at `path`, runs the open check, then lets the backend write.
  void connect(Database& owner) {
    storeAndDisconnect();
    failure = ConnectFailure::None;
    failureMessage.clear();
    if (!backendGiven) backend = databaseBackendFor(path);
    failure = db().connect(path, options, failureMessage);
    if (failure != ConnectFailure::None) return;
    connected = true;
    try {
      if (openCheck) openCheck(owner);
    } catch (const DatabaseFailure& refused) {
      disconnect();
      failure = ConnectFailure::Other;
      failureMessage = refused.what();
      return;
    } catch (...) {
      disconnect();  // refused by the open check
      throw;
    }
    failure = db().finishConnect(failureMessage);
    if (failure != ConnectFailure::None) disconnect();
  }

  // Runs a statement of the backend, after the pending writes.
  void exec(std::string_view sql) {
    flushWrites();
    db().exec(sql);
  }

  SqlStatement& cached(const std::string& sql) {
    flushWrites();
    auto it = statements.find(sql);
    if (it != statements.end()) {
      it->second->reset();
      return *it->second;
    }
    std::unique_ptr<SqlStatement> stmt;
    try {
      stmt = db().prepare(sql);
    } catch (const DatabaseFailure& failure) {
      throw DatabaseFailure("Cannot prepare " + sql + ": " + failure.what());
    }
    return *statements.emplace(sql, std::move(stmt)).first->second;
  }

  const TableInfo& tableInfo(const std::string& table) {
    auto it = tables.find(table);
    if (it != tables.end()) return it->second;
    TableInfo info;
    info.name = table;
    int keyCount = 0;
    std::string keyName, keyType;
    std::vector<std::pair<int, std::string>> declaredKey;
    std::vector<std::string> stored;
    for (const SqlTableColumn& c : db().tableColumns(table)) {
      if (c.generated) continue;
      Kind kind = kindOfDeclaredType(c.declaredType);
      info.columns[c.name] = {c.name, kind};
      stored.push_back(quoted(c.name));
      if (c.hasDefault) {
        std::string literal = c.defaultText;
        if (literal.size() >= 2 && literal.front() == '\'' && literal.back() == '\'')
          literal = literal.substr(1, literal.size() - 2);
        else if (!GeneralUtilities::isNumeric(literal) && upper(literal) != "NULL")
          info.literalDefaults = false;
        try {
          if (upper(literal) != "NULL")
            info.defaults[c.name] = convertForColumn(kind, literal, c.name);
        } catch (const DatabaseFailure&) {
          info.literalDefaults = false;
        }
      }
      if (c.keyPosition > 0) {
        ++keyCount;
        keyName = c.name;
        keyType = upper(c.declaredType);
        declaredKey.emplace_back(c.keyPosition, quoted(c.name));
      }
    }
    if (info.columns.empty()) throw DatabaseFailure("The table '" + table + "' does not exist.");
    if (keyCount == 1 && keyType == "INTEGER") info.rowidAlias = keyName;
    if (db().hasRowid()) {
      info.keys = {KeyPlan::Kind::Rowid, {db().rowidName()}};
    } else if (!info.rowidAlias.empty()) {
      info.keys = {KeyPlan::Kind::IntegerKey, {quoted(info.rowidAlias)}};
    } else if (!declaredKey.empty()) {
      std::sort(declaredKey.begin(), declaredKey.end());
      info.keys.kind = KeyPlan::Kind::Values;
      for (auto& [position, name] : declaredKey) info.keys.columns.push_back(name);
    } else {
      info.keys = {KeyPlan::Kind::Values, std::move(stored)};
    }
    return tables.emplace(table, std::move(info)).first->second;
  }

  Recordset& rs(std::int32_t handle) {
    auto it = recordsets.find(handle);
    if (it == recordsets.end())
      throw DatabaseFailure("Operation is not allowed when the object is closed (recordset " +
                            std::to_string(handle) + ").");
    return *it->second;
  }

  int columnIndex(Recordset& r, std::string_view field) {
    std::string_view name = field;
    if (name.size() > 2 && name.front() == '[' && name.back() == ']')
      name = name.substr(1, name.size() - 2);
    auto it = r.byName.find(name);
    if (it == r.byName.end())
      throw DatabaseFailure(
          "Item cannot be found in the collection corresponding to the requested name or "
          "ordinal: " +
          std::string(name));
    return it->second;
  }

  Row& currentRow(Recordset& r) {
    if (r.cursor >= r.rows.size() || r.currentDeleted)
      throw DatabaseFailure(
          "Either BOF or EOF is True, or the current record has been deleted. Requested operation "
          "requires a current record.");
    return r.rows[r.cursor];
  }

  static Variant convertLenient(Kind kind, std::string text) {
    try {
      return convertForColumn(kind, text, "");
    } catch (const DatabaseFailure&) {
      return Variant::text(std::move(text));
    }
  }

  // One value of a result row, as the column's kind reads it.
  static Variant readValue(SqlStatement& stmt, int i, Kind kind) {
    const SqlType type = stmt.type(i);
    switch (kind) {
      case Kind::Integer:
        return type == SqlType::Text ? convertLenient(Kind::Integer, cleanText(stmt.text(i)))
                                     : Variant::integer(stmt.integer(i));
      case Kind::Boolean:
        return Variant::boolean(stmt.integer(i) != 0);
      case Kind::Double:
        return type == SqlType::Text ? convertLenient(Kind::Double, cleanText(stmt.text(i)))
                                     : Variant::real(stmt.real(i));
      case Kind::Date: {
        if (type != SqlType::Text) return Variant::date(Date{stmt.real(i)});
        std::string t = cleanText(stmt.text(i));
        std::string iso;
        if (auto direct = Date::fromIso(t)) return Variant::date(*direct);
        if (parseSqlDateText(t, iso)) return Variant::date(*Date::fromIso(iso));
        return Variant::text(std::move(t));
      }
      case Kind::Text:
        return Variant::text(cleanText(stmt.text(i)));
      case Kind::Null:  // an expression: by storage class
        if (type == SqlType::Integer) return Variant::integer(stmt.integer(i));
        if (type == SqlType::Real) return Variant::real(stmt.real(i));
        return Variant::text(cleanText(stmt.text(i)));
    }
    return Variant::null();
  }

  // Reads the visible values of a result row into a cached row with room for the keys.
  Row readRow(SqlStatement& stmt, const std::vector<Column>& columns, size_t total) {
    Row row;
    row.cells.resize(total);
    for (size_t i = 0; i < columns.size(); ++i) {
      const int c = static_cast<int>(i);
      if (stmt.type(c) == SqlType::Null) continue;
      row.set(i, readValue(stmt, c, columns[i].kind));
    }
    return row;
  }

  // The key of each FROM table of a result row, after its visible columns.
  void readKeys(SqlStatement& stmt, const Shape& shape, Row& row) {
    int column = static_cast<int>(shape.columns.size());
    for (size_t slot = 0; slot < shape.slotCount; ++slot) {
      const KeyPlan& plan = shape.plans[slot];
      Cell& cell = row.cells[shape.columns.size() + slot];
      cell.kind = Kind::Integer;
      if (plan.grows()) {
        cell.i = stmt.integer(column++);
        continue;
      }
      std::vector<Variant> values;
      values.reserve(plan.columns.size());
      for (size_t k = 0; k < plan.columns.size(); ++k) values.push_back(rawValue(stmt, column++));
      cell.i = rowKeys.intern(shape.translated.tables[slot].table, std::move(values));
    }
  }

  // The key columns of a table as the translation appends them.
  std::vector<std::string> keyColumnsOf(const std::string& table) {
    if (db().hasRowid()) return {db().rowidName()};
    return tableInfo(table).keys.columns;
  }

  TranslatedSql translate(std::string_view accessSql, bool appendKeys) {
    if (!appendKeys || db().hasRowid())
      return translateAccessSql(accessSql, db().dialect(), appendKeys);
    return translateAccessSql(accessSql, db().dialect(), true,
                              [this](const std::string& table) { return keyColumnsOf(table); });
  }

  // The shape of a statement, from the cache of the most recently used ones.
  std::shared_ptr<const Shape> shapeOf(std::string_view accessSql,
                                       const TranslatedSql& translated) {
    auto found = shapes.find(translated.parameterizedSql);
    if (found != shapes.end()) {
      shapeOrder.splice(shapeOrder.begin(), shapeOrder, found->second.second);
      return found->second.first;
    }
    auto shape = std::make_shared<Shape>();
    shape->translated = translated;
    shape->parameterized = !translated.parameters.empty();
    std::string key = translated.parameterizedSql;
    std::string refused;
    try {
      shape->stmt = db().prepare(key);
    } catch (const DatabaseFailure& failure) {
      refused = failure.what();
    }
    if (!shape->stmt && shape->translated.keysAppended) {
      // A FROM item without keys (a view or sub-query): read-only rows without keys, the
      // statement as written.
      shape->translated = translate(accessSql, false);
      shape->parameterized = false;
      key = shape->translated.sql;
      try {
        shape->stmt = db().prepare(key);
        refused.clear();
      } catch (const DatabaseFailure& failure) {
        refused = failure.what();
      }
    }
    if (!refused.empty()) {
      if (refused == "Only one statement is allowed.") throw DatabaseFailure(refused);
      throw DatabaseFailure("Cannot open \"" + std::string(accessSql) + "\": " + refused);
    }
    SqlStatement& stmt = *shape->stmt;
    if (!stmt.readOnly()) throw DatabaseFailure("A recordset statement must be a SELECT.");

    const size_t total = static_cast<size_t>(stmt.columnCount());
    shape->slotCount = shape->translated.keysAppended ? shape->translated.tables.size() : 0;
    for (size_t width : shape->translated.keyWidths) shape->keyColumns += width;
    if (!shape->translated.keysAppended) shape->keyColumns = 0;
    for (size_t slot = 0; slot < shape->slotCount; ++slot) {
      shape->plans.push_back(tableInfo(shape->translated.tables[slot].table).keys);
      shape->keysGrow = shape->keysGrow && shape->plans.back().grows();
    }
    const size_t visible = total - shape->keyColumns;
    for (size_t i = 0; i < visible; ++i) {
      const SqlResultColumn info = stmt.columnInfo(static_cast<int>(i));
      Column c;
      c.name = info.name;
      c.table = info.table;
      c.origin = info.origin;
      c.kind = kindOfDeclaredType(info.declaredType, info.origin.empty());
      for (size_t slot = 0; slot < shape->slotCount; ++slot)
        if (!c.table.empty() && sameName(shape->translated.tables[slot].table, c.table)) {
          c.slot = static_cast<int>(slot);
          break;
        }
      shape->byName.emplace(c.name, static_cast<int>(i));
      if (c.slot >= 0 && !c.origin.empty())
        shape->byOrigin[c.table + "." + c.origin].push_back(static_cast<int>(i));
      if (!c.table.empty()) shape->byName.emplace(c.table + "." + c.name, static_cast<int>(i));
      shape->columns.push_back(std::move(c));
    }
    for (const FromTable& t : shape->translated.tables)  // aliases qualify names too
      for (size_t i = 0; i < visible; ++i)
        if (shape->columns[i].slot >= 0 &&
            shape->translated.tables[shape->columns[i].slot].alias == t.alias)
          shape->byName.emplace(t.alias + "." + shape->columns[i].name, static_cast<int>(i));

    shapeOrder.push_front(key);
    shapes.emplace(key, std::make_pair(shape, shapeOrder.begin()));
    if (shapes.size() > kShapeCacheSize) {
      shapes.erase(shapes.find(shapeOrder.back()));
      shapeOrder.pop_back();
    }
    return shape;
  }

  std::int32_t open(std::string_view accessSql, int lockType) {
    requireOpen();
    TranslatedSql translated = translate(accessSql, true);
    auto r = std::make_unique<Recordset>(shapeOf(accessSql, translated), std::string(accessSql),
                                         lockType);
    if (r->shape->parameterized) r->parameters = std::move(translated.parameters);
    if (r->slotCount > 0 && r->shape->keysGrow) {
      for (size_t slot = 0; slot < r->slotCount; ++slot)
        r->snapshotMax.push_back(maxKey(tableInfo(r->translated.tables[slot].table)));
    } else {
      load(*r);  // no growing keys to fix the keyset by: read it now
    }
    std::int32_t handle = nextHandle++;
    recordsets.emplace(handle, std::move(r));
    return handle;
  }

  // The largest key of a table whose keys grow.
  std::int64_t maxKey(const TableInfo& info) {
    const std::int64_t changes = db().changeCounter();
    if (options.writeAheadLog && knownMaxStamp == changes) {
      auto known = knownMax.find(info.name);
      if (known != knownMax.end()) return known->second;
    } else {
      knownMax.clear();
      knownMaxStamp = changes;
    }
    SqlStatement& stmt =
        cached("SELECT max(" + info.keys.columns[0] + ") FROM " + quoted(info.name));
    std::int64_t value = 0;
    if (stmt.step()) value = stmt.integer(0);
    stmt.reset();
    if (options.writeAheadLog) knownMax[info.name] = value;
    return value;
  }

  // " WHERE ..." naming the row of a table by its key, and the binding of its values from
  // parameter `first` on.
  std::string whereKey(const TableInfo& info) {
    if (info.keys.grows()) return " WHERE " + info.keys.columns[0] + " = ?";
    std::string where = " WHERE ";
    for (size_t k = 0; k < info.keys.columns.size(); ++k)
      where.append(k ? " AND " : "").append(info.keys.columns[k]).append(" IS ?");
    return where;
  }
  void bindKey(SqlStatement& stmt, int first, const TableInfo& info, std::int64_t key) {
    if (info.keys.grows()) return stmt.bindInteger(first, key);
    const std::vector<Variant>& values = rowKeys.values(info.name, key);
    for (size_t k = 0; k < values.size(); ++k) bind(stmt, first + static_cast<int>(k), values[k]);
  }

  // Runs a statement that writes one row of a table, keeping the known largest keys valid
  // (raised by an insert). Answers the key of an inserted row whose key grows: the rowid the
  // backend gave it, else `key`, the auto-number written.
  std::int64_t writeOneRow(SqlStatement& stmt, const TableInfo& info, bool insert, std::int64_t key,
                           std::string_view what, std::string_view name) {
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
  void writeLater(const std::string& table, std::int64_t key, const std::string& column,
                  Variant value) {
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
  void flushWrites() {
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
    writeOneRow(stmt, info, false, 0, "Cannot write ", names);
    // A key held as values now stands for the values written.
    if (!info.keys.grows())
      for (const auto& [column, value] : w.columns)
        for (size_t k = 0; k < info.keys.columns.size(); ++k)
          if (sameName(info.keys.columns[k], quoted(column)))
            rowKeys.rekey(info.name, w.key, k, storedForm(value));
  }

  void bindParameters(Recordset& r, SqlStatement& stmt) {
    for (size_t i = 0; i < r.parameters.size(); ++i) {
      const TranslatedSql::Parameter& p = r.parameters[i];
      int position = static_cast<int>(i + 1);
      double number = 0;
      if (p.number && GeneralUtilities::parseNumber(p.text, number)) {
        if (number == std::floor(number) && std::fabs(number) < 9.0e15)
          stmt.bindInteger(position, static_cast<std::int64_t>(number));
        else
          stmt.bindReal(position, number);
      } else {
        stmt.bindText(position, p.text);
      }
    }
  }

  // Reads the rows of the keyset.
  void load(Recordset& r) {
    flushWrites();
    SqlStatement& stmt = *r.shape->stmt;
    stmt.reset();
    bindParameters(r, stmt);
    const size_t total = r.columns.size() + r.slotCount;
    std::unordered_set<std::int64_t> added(r.addedHere.begin(), r.addedHere.end());
    std::unordered_set<std::int64_t> seen;
    const bool snapshot = !r.snapshotMax.empty();
    try {
      while (stmt.step()) {
        Row row = readRow(stmt, r.columns, total);
        readKeys(stmt, *r.shape, row);
        bool keep = true;
        const size_t first = r.columns.size();
        for (size_t slot = 0; snapshot && slot < r.slotCount && keep; ++slot) {
          const std::int64_t key = row.cells[first + slot].i;
          if (key > r.snapshotMax[slot] && !(slot == 0 && added.count(key))) keep = false;
        }
        if (!keep) continue;
        if (r.slotCount > 0) seen.insert(row.cells[first].i);
        r.rows.push_back(std::move(row));
      }
    } catch (const DatabaseFailure& failure) {
      stmt.reset();
      throw DatabaseFailure("Cannot read \"" + r.accessSql + "\": " + failure.what());
    }
    stmt.reset();
    // Rows added here that the statement does not select stay in the recordset.
    for (std::int64_t key : r.addedHere)
      if (!seen.count(key)) r.rows.push_back(readBack(r, key));
    r.loaded = true;
    r.cursor = 0;
    if (r.onAddedRow) {
      for (size_t row = 0; row < r.rows.size(); ++row)
        if (r.keyOf(row, 0) == r.addedKey) r.cursor = row;
    }
    r.onAddedRow = false;
    r.addedRow.reset();
  }

  // The row just inserted into the recordset's first table, from the values written and the
  // table's defaults, without reading it back when the defaults are plain literals.
  Row composeRow(Recordset& r, std::int64_t key, const ColumnValues& values) {
    const TableInfo& info = tableInfo(r.translated.tables[0].table);
    if (!info.literalDefaults && info.keys.grows()) return readBack(r, key);
    NameViewMap<const Variant*> written;
    written.reserve(values.size());
    for (const auto& [name, value] : values) written[name] = &value;
    Row row;
    row.cells.resize(r.columns.size() + r.slotCount);
    for (size_t c = 0; c < r.columns.size(); ++c) {
      const Column& col = r.columns[c];
      if (col.slot != 0) continue;
      if (!info.rowidAlias.empty() && sameName(col.origin, info.rowidAlias)) {
        row.set(c, Variant::integer(key));
        continue;
      }
      auto given = written.find(col.origin);
      if (given != written.end()) {
        row.set(c, *given->second);
        continue;
      }
      auto fallback = info.defaults.find(col.origin);
      if (fallback != info.defaults.end()) row.set(c, fallback->second);
    }
    row.cells[r.columns.size()].kind = Kind::Integer;
    row.cells[r.columns.size()].i = key;
    return row;
  }

  // The key of a row just inserted into a table whose keys are held as values: the values
  // written, else the table's defaults.
  std::int64_t insertedKey(const TableInfo& info, const ColumnValues& values) {
    std::vector<Variant> key;
    for (const std::string& column : info.keys.columns) {
      const std::string name = column.substr(1, column.size() - 2);
      Variant value;
      auto given = std::find_if(values.begin(), values.end(),
                                [&](const auto& v) { return sameName(v.first, name); });
      if (given != values.end()) {
        value = given->second;
      } else if (auto fallback = info.defaults.find(name); fallback != info.defaults.end()) {
        value = fallback->second;
      }
      key.push_back(storedForm(value));
    }
    return rowKeys.intern(info.name, std::move(key));
  }

  // The row stored by the last updateRecord of a recordset not read yet.
  Row& addedRow(Recordset& r) {
    if (!r.addedRow) r.addedRow = std::make_unique<Row>(readBack(r, r.addedKey));
    return *r.addedRow;
  }

  Recordset& ready(std::int32_t handle) {
    Recordset& r = rs(handle);
    if (!r.loaded) load(r);
    return r;
  }

  // A row of the recordset's first table read by its key, with the table's defaults.
  Row readBack(Recordset& r, std::int64_t key) {
    const TableInfo& info = tableInfo(r.translated.tables[0].table);
    SqlStatement& read = cached("SELECT * FROM " + quoted(info.name) + whereKey(info));
    bindKey(read, 1, info, key);
    Row row;
    row.cells.resize(r.columns.size() + r.slotCount);
    if (read.step()) {
      int n = read.columnCount();
      NameMap<int> positions;
      for (int i = 0; i < n; ++i) {
        const SqlResultColumn rc = read.columnInfo(i);
        positions[rc.name] = i;
      }
      for (size_t c = 0; c < r.columns.size(); ++c) {
        const Column& col = r.columns[c];
        if (col.slot != 0) continue;
        auto p = positions.find(col.origin);
        if (p == positions.end() || read.type(p->second) == SqlType::Null) continue;
        const SqlResultColumn rc = read.columnInfo(p->second);
        row.set(c,
                readValue(read, p->second, kindOfDeclaredType(rc.declaredType, rc.origin.empty())));
      }
    }
    read.reset();
    row.cells[r.columns.size()].kind = Kind::Integer;
    row.cells[r.columns.size()].i = key;
    return row;
  }

  void buildKeyMaps(Recordset& r) {
    if (r.keyMapsBuilt) return;
    r.keyMaps.assign(r.slotCount, {});
    for (size_t s = 0; s < r.slotCount; ++s) {
      r.keyMaps[s].reserve(r.rows.size());
      for (size_t row = 0; row < r.rows.size(); ++row)
        r.keyMaps[s].emplace(r.keyOf(row, s), static_cast<std::uint32_t>(row));
    }
    r.keyMapsBuilt = true;
  }

  std::string rowKey(const Recordset& r, size_t row, const std::vector<int>& cols) {
    std::string key;
    for (int c : cols) {
      key += compareKey(r.rows[row].get(static_cast<size_t>(c)));
      key += '\x1f';
    }
    return key;
  }

  std::unordered_map<std::string, std::vector<std::uint32_t>>& index(Recordset& r,
                                                                     const std::vector<int>& cols) {
    std::string name = indexName(cols);
    auto it = r.indexes.find(name);
    if (it != r.indexes.end()) return it->second;
    auto& idx = r.indexes[name];
    idx.reserve(r.rows.size());
    for (size_t row = 0; row < r.rows.size(); ++row)
      idx[rowKey(r, row, cols)].push_back(static_cast<std::uint32_t>(row));
    return idx;
  }

  // Updates a cached cell and every index that holds its column.
  void changeCell(Recordset& r, size_t row, int col, const Variant& value) {
    for (auto& [name, idx] : r.indexes) {
      if (name.find(std::to_string(col) + ",") == std::string::npos) continue;
      std::vector<int> cols = indexColumns(name);
      if (std::find(cols.begin(), cols.end(), col) == cols.end()) continue;
      std::string oldKey = rowKey(r, row, cols);
      auto& list = idx[oldKey];
      list.erase(std::remove(list.begin(), list.end(), static_cast<std::uint32_t>(row)),
                 list.end());
      r.rows[row].set(static_cast<size_t>(col), value);
      auto& target = idx[rowKey(r, row, cols)];
      target.insert(std::lower_bound(target.begin(), target.end(), static_cast<std::uint32_t>(row)),
                    static_cast<std::uint32_t>(row));
    }
    r.rows[row].set(static_cast<size_t>(col), value);
  }

  // A written value reaches every open recordset that holds the same row and column.
  void propagate(const std::string& table, std::int64_t key, const std::string& column,
                 const Variant& value) {
    originKey.assign(table).append(".").append(column);
    const std::string_view origin = originKey;
    for (auto& [handle, owned] : recordsets) {
      Recordset& r = *owned;
      if (!r.hasKeys()) continue;
      bool holdsTable = false;  // a quick test before the look-up by column
      for (const FromTable& t : r.translated.tables)
        holdsTable = holdsTable || sameName(t.table, table);
      if (!holdsTable) continue;
      auto columns = r.shape->byOrigin.find(origin);
      if (columns == r.shape->byOrigin.end()) continue;
      if (!r.loaded) {  // reads fresh values when it loads; only its added row is held
        if (!r.onAddedRow || !r.addedRow || r.addedKey != key) continue;
        for (int c : columns->second)
          if (r.columns[static_cast<size_t>(c)].slot == 0)
            r.addedRow->set(static_cast<size_t>(c), value);
        continue;
      }
      for (int c : columns->second) {
        const Column& col = r.columns[static_cast<size_t>(c)];
        buildKeyMaps(r);
        auto found = r.keyMaps[static_cast<size_t>(col.slot)].find(key);
        if (found != r.keyMaps[static_cast<size_t>(col.slot)].end())
          changeCell(r, found->second, c, value);
      }
    }
  }

  static void bind(SqlStatement& stmt, int pos, const Variant& v) {
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
  void step(SqlStatement& stmt, std::string_view what, std::string_view name = {}) {
    try {
      stmt.step();
    } catch (const DatabaseFailure& failure) {
      throw DatabaseFailure(std::string(what).append(name) + ": " + failure.what());
    }
  }

  const Column& writableColumn(Recordset& r, int col) {
    const Column& c = r.columns[static_cast<size_t>(col)];
    if (r.lockType == kLockReadOnly)
      throw DatabaseFailure(
          "Current Recordset does not support updating. This may be a limitation of the provider, "
          "or of the selected locktype.");
    if (c.slot < 0 || c.origin.empty())
      throw DatabaseFailure("Field '" + c.name + "' cannot be updated.");
    return c;
  }

  std::int64_t reserveKey(const TableInfo& info) {
    const std::int64_t largest = maxKey(info);
    std::int64_t& last = lastReserved[upper(info.name)];
    last = std::max(last, largest) + 1;
    return last;
  }
};

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
  impl_->tables.clear();  // the schema may have changed
  impl_->shapes.clear();
  impl_->shapeOrder.clear();
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
  key = impl_->writeOneRow(stmt, info, true, key, "Cannot add a row to ", info.name);
  if (!info.keys.grows()) key = impl_->insertedKey(info, values);
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
  impl_->step(stmt, "Cannot delete from ", info.name);
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
