// SQLite implementation of the database service: connection, keyset recordsets, searches
// with per-column indexes, writes converted to the declared column types, and write groups.
#include "db/sqlite_database.hpp"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <list>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/error_service.hpp"
#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/text_encoding.hpp"
#include "db/access_sql.hpp"

namespace lf {
namespace {

using Kind = Variant::Kind;

std::string upper(std::string_view s) {
  return GeneralUtilities::upperCase(s);
}

inline char upperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

// Names compared as upper() compares them, letter case ignored.
bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (upperAscii(a[i]) != upperAscii(b[i])) return false;
  return true;
}

// Hash and equality of names with letter case ignored, usable with string_view keys.
struct NameHash {
  using is_transparent = void;
  size_t operator()(std::string_view s) const {
    size_t h = 1469598103934665603ull;
    for (char c : s) h = (h ^ static_cast<unsigned char>(upperAscii(c))) * 1099511628211ull;
    return h;
  }
};
struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return sameName(a, b); }
};
template <class T>
using NameMap = std::unordered_map<std::string, T, NameHash, NameEqual>;
template <class T>
using NameViewMap = std::unordered_map<std::string_view, T, NameHash, NameEqual>;

// The values of a new row by column name; the names belong to the statement's shape.
using ColumnValues = std::vector<std::pair<std::string_view, Variant>>;

// Column type from the declared type of a table column.
Kind kindOfDeclaredType(const char* declared) {
  if (declared == nullptr) return Kind::Null;  // expression: by storage class
  std::string d = upper(declared);
  if (d.find("BOOL") != std::string::npos || d.find("BIT") != std::string::npos ||
      d.find("YESNO") != std::string::npos)
    return Kind::Boolean;
  if (d.find("INT") != std::string::npos || d.find("COUNTER") != std::string::npos)
    return Kind::Integer;
  if (d.find("DATE") != std::string::npos || d.find("TIME") != std::string::npos) return Kind::Date;
  if (d.find("CURRENCY") != std::string::npos || d.find("MONEY") != std::string::npos ||
      d.find("DOUB") != std::string::npos || d.find("REAL") != std::string::npos ||
      d.find("FLOA") != std::string::npos || d.find("NUMERIC") != std::string::npos ||
      d.find("DECIMAL") != std::string::npos || d.find("SINGLE") != std::string::npos)
    return Kind::Double;
  return Kind::Text;
}

// Money text as the legacy conversion accepts it: "$1,234.50", "(12.50)", "-5".
bool parseNumberText(std::string_view text, double& out) {
  std::string t = GeneralUtilities::trim(text);
  bool negative = false;
  if (t.size() >= 2 && t.front() == '(' && t.back() == ')') {
    negative = true;
    t = t.substr(1, t.size() - 2);
  }
  std::string cleaned;
  for (char c : t)
    if (c != '$') cleaned += c;
  if (!GeneralUtilities::parseNumber(cleaned, out)) return false;
  if (negative) out = -out;
  return true;
}

// A plain decimal integer of up to 15 digits (keys, counts, flags): the common case, read
// without copies; anything else takes the general route.
bool plainInteger(std::string_view t, std::int64_t& out) {
  size_t i = !t.empty() && t[0] == '-' ? 1 : 0;
  if (t.size() == i || t.size() - i > 15) return false;
  std::int64_t value = 0;
  for (size_t k = i; k < t.size(); ++k) {
    if (t[k] < '0' || t[k] > '9') return false;
    value = value * 10 + (t[k] - '0');
  }
  out = i ? -value : value;
  return true;
}

// Converts the text written by a caller to the value stored in a column of that kind.
Variant convertForColumn(Kind kind, std::string_view text, std::string_view column) {
  if (kind == Kind::Text || kind == Kind::Null) return Variant::text(std::string(text));
  if (std::int64_t plain = 0;
      (kind == Kind::Integer || kind == Kind::Double || kind == Kind::Boolean) &&
      plainInteger(text, plain)) {
    if (kind == Kind::Integer) return Variant::integer(plain);
    if (kind == Kind::Double) return Variant::real(static_cast<double>(plain));
    return Variant::boolean(plain != 0);
  }
  if (GeneralUtilities::isBlank(text)) return Variant::null();
  std::string t = GeneralUtilities::trim(text);
  std::string u = upper(t);
  double number = 0;
  switch (kind) {
    case Kind::Boolean:
      if (u == "TRUE" || u == "YES" || u == "ON") return Variant::boolean(true);
      if (u == "FALSE" || u == "NO" || u == "OFF") return Variant::boolean(false);
      if (parseNumberText(t, number)) return Variant::boolean(number != 0);
      break;
    case Kind::Integer:
      if (u == "TRUE") return Variant::integer(-1);
      if (u == "FALSE") return Variant::integer(0);
      if (parseNumberText(t, number)) return Variant::integer(std::llround(number));
      break;
    case Kind::Double:
      if (parseNumberText(t, number)) return Variant::real(number);
      break;
    case Kind::Date: {
      std::string iso;
      if (parseSqlDateText(t, iso)) return Variant::date(*Date::fromIso(iso));
      if (parseNumberText(t, number)) return Variant::date(Date{number});
      break;
    }
    default:
      break;
  }
  throw DatabaseFailure("Data type mismatch: '" + std::string(text) + "' cannot be stored in " +
                        std::string(column) + ".");
}

// One cached value. Text lives in the row's arena.
struct Cell {
  Kind kind = Kind::Null;
  std::uint32_t off = 0;
  std::uint32_t len = 0;
  union {
    std::int64_t i = 0;
    double d;
  };
};

struct Row {
  std::vector<Cell> cells;
  std::string arena;

  void set(size_t index, const Variant& v) {
    Cell& c = cells[index];
    c.kind = v.kind();
    switch (v.kind()) {
      case Kind::Text: {
        std::string s = v.toString();
        c.off = static_cast<std::uint32_t>(arena.size());
        c.len = static_cast<std::uint32_t>(s.size());
        arena += s;
        break;
      }
      case Kind::Integer:
        c.i = v.toLong();
        break;
      case Kind::Boolean:
        c.i = v.toBool() ? 1 : 0;
        break;
      case Kind::Double:
        c.d = v.toDouble();
        break;
      case Kind::Date:
        c.d = v.toDate()->serial;
        break;
      case Kind::Null:
        break;
    }
  }

  Variant get(size_t index) const {
    const Cell& c = cells[index];
    switch (c.kind) {
      case Kind::Text:
        return Variant::text(arena.substr(c.off, c.len));
      case Kind::Integer:
        return Variant::integer(c.i);
      case Kind::Boolean:
        return Variant::boolean(c.i != 0);
      case Kind::Double:
        return Variant::real(c.d);
      case Kind::Date:
        return Variant::date(Date{c.d});
      case Kind::Null:
        break;
    }
    return Variant::null();
  }
};

// The text a value is compared by in a search: numbers canonical, text case-folded.
std::string compareKey(const Variant& v) {
  char buf[64];
  switch (v.kind()) {
    case Kind::Null:
      return std::string("\x01null", 5);
    case Kind::Integer:
      return "n" + std::to_string(v.toLong());
    case Kind::Double: {
      double d = v.toDouble();
      if (d == std::floor(d) && std::fabs(d) < 9.0e15)
        return "n" + std::to_string(static_cast<std::int64_t>(d));
      std::snprintf(buf, sizeof buf, "n%.15g", d);
      return buf;
    }
    case Kind::Boolean:
      return v.toBool() ? "n-1" : "n0";
    case Kind::Date:
      return "d" + v.toDate()->toIso();
    case Kind::Text:
      return "t" + upper(v.toString());
  }
  return "";
}

// The key of a criterion value written as text against a column of that kind.
std::string criterionKey(Kind kind, std::string_view text) {
  try {
    if (kind == Kind::Null) kind = Kind::Text;
    Variant v = convertForColumn(kind, text, "");
    if (v.isNull()) return std::string("\x02none", 5);  // blank never equals a value
    return compareKey(v);
  } catch (const DatabaseFailure&) {
    return std::string("\x02none", 5);
  }
}

struct Column {
  std::string name;
  std::string table;   // origin table, empty for an expression
  std::string origin;  // origin column
  Kind kind = Kind::Null;
  int slot = -1;  // index of the origin table among the FROM tables
};

struct TableInfo {
  std::string name;
  NameMap<std::pair<std::string, Kind>> columns;
  NameMap<Variant> defaults;    // literal column defaults
  bool literalDefaults = true;  // false when a default is an expression: read new rows back
  std::string rowidAlias;       // INTEGER PRIMARY KEY
};

// What a statement gives whatever its rows: the translation, the columns and the prepared
// statement. Shared by every recordset opened on the same text.
struct Shape {
  TranslatedSql translated;
  bool parameterized = false;   // the statement takes the literals as parameters
  std::vector<Column> columns;  // visible columns
  size_t slotCount = 0;         // rowid columns after them
  NameMap<int> byName;
  NameMap<std::vector<int>> byOrigin;  // "table.column" of the origin: the visible columns
  sqlite3_stmt* stmt = nullptr;
  ~Shape() { sqlite3_finalize(stmt); }
};

struct Recordset {
  Recordset(std::shared_ptr<const Shape> s, std::string sql, int lock)
      : shape(std::move(s)),
        accessSql(std::move(sql)),
        lockType(lock),
        translated(shape->translated),
        columns(shape->columns),
        slotCount(shape->slotCount),
        byName(shape->byName) {}
  std::shared_ptr<const Shape> shape;
  std::string accessSql;
  std::vector<TranslatedSql::Parameter> parameters;  // the statement's literals
  int lockType = kLockReadOnly;
  const TranslatedSql& translated;
  const std::vector<Column>& columns;
  const size_t& slotCount;
  const NameMap<int>& byName;
  std::vector<Row> rows;
  size_t cursor = 0;
  bool currentDeleted = false;

  std::vector<int> findColumns;
  std::string findKey;
  std::unordered_map<std::string, std::unordered_map<std::string, std::vector<std::uint32_t>>>
      indexes;
  std::vector<std::unordered_map<std::int64_t, std::uint32_t>> rowidMaps;
  bool rowidMapsBuilt = false;

  // Rows are read on first use. Until then the keyset is fixed by the largest rowid of each
  // table at open: rows added later by other recordsets stay out, rows added here come in.
  bool loaded = false;
  std::vector<std::int64_t> snapshotMax;
  std::vector<std::int64_t> addedHere;
  std::unique_ptr<Row> addedRow;  // the current row after updateRecord, read when asked for
  std::int64_t addedRowid = 0;
  bool onAddedRow = false;

  bool adding = false;
  std::vector<std::pair<int, Variant>> pending;  // column index, value as the table holds it
  std::int64_t reservedKey = 0;
  bool hasReservedKey = false;

  std::int64_t rowidOf(size_t row, size_t slot) const {
    return rows[row].cells[columns.size() + slot].i;
  }
  bool hasRowids() const { return translated.rowidsAppended; }
};

std::string indexName(const std::vector<int>& cols) {
  std::string name;
  for (int c : cols) name += std::to_string(c) + ",";
  return name;
}

// A text value of a result row, read whole (a NUL does not end it) and made clean text.
std::string textColumn(sqlite3_stmt* stmt, int i) {
  const char* t = reinterpret_cast<const char*>(sqlite3_column_text(stmt, i));
  const std::string_view bytes(t != nullptr ? t : "",
                               static_cast<size_t>(sqlite3_column_bytes(stmt, i)));
  return isCleanText(bytes) ? std::string(bytes) : textFromOutside(bytes);
}

// The file name as an SQLite URI path: the characters a URI gives a meaning are escaped.
std::string uriPath(const std::string& path) {
  std::string uri = "file:";
  for (char c : path) {
    if (c == '%' || c == '?' || c == '#')
      uri += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    else
      uri += c;
  }
  return uri;
}

}  // namespace

struct SqliteDatabase::Impl {
  sqlite3* db = nullptr;
  std::string path;
  bool bulk = false;
  bool writeAheadLog = false;
  bool readOnly = false;
  int busyTimeout = 0;
  std::function<void(SqliteDatabase&)> openCheck;
  int failureCode = 0;
  std::string failureMessage;
  std::int32_t nextHandle = 1;
  std::unordered_map<std::int32_t, std::unique_ptr<Recordset>> recordsets;
  std::unordered_map<std::string, sqlite3_stmt*> statements;
  NameMap<TableInfo> tables;
  // Shapes of the statements opened most recently; per-row statements make the list long,
  // so it is bounded.
  static constexpr size_t kShapeCacheSize = 64;
  std::list<std::string> shapeOrder;
  std::unordered_map<std::string,
                     std::pair<std::shared_ptr<const Shape>, std::list<std::string>::iterator>>
      shapes;
  std::unordered_map<std::string, std::int64_t> lastReserved;
  int groupDepth = 0;
  // The largest rowid of each table as last read or written here, valid while the
  // connection's change counter stands at `knownMaxStamp`: every recordset opened and every
  // new row needs it, and while the database is held exclusively only this connection's own
  // writes move it.
  NameMap<std::int64_t> knownMax;
  sqlite3_int64 knownMaxStamp = -1;
  std::string originKey;  // propagate's look-up key, kept to spare an allocation per write
  // The columns written by setField to one row and not yet stored: consecutive writes to a
  // row become one UPDATE, run before any other statement of this connection.
  struct PendingWrite {
    std::string table;
    std::int64_t rowid = 0;
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
      errors->setError({failure.number(), failure.what(), "Ledgerfolio.exe-SqliteDatabase-close"});
      errors->reportError();
    }
  }

  // Stores the pending writes and commits an open group, then disconnects; a write that
  // cannot be stored is rolled back with its group and raised after the disconnect.
  void storeAndDisconnect() {
    if (db == nullptr) return disconnect();
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
      exec("COMMIT;");
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
    if (sqlite3_get_autocommit(db) == 0) sqlite3_exec(db, "ROLLBACK;", nullptr, nullptr, nullptr);
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
    r.rowidMaps.clear();
    r.rowidMapsBuilt = false;
    r.addedHere.clear();
    r.addedRow.reset();
    r.addedRowid = 0;
    r.onAddedRow = false;
    r.adding = false;
    r.pending.clear();
    r.hasReservedKey = false;
    r.loaded = false;
    for (size_t slot = 0; slot < r.slotCount; ++slot)
      r.snapshotMax[slot] = maxRowid(r.translated.tables[slot].table);
  }

  void disconnect() {
    pendingWrite.reset();
    recordsets.clear();
    shapes.clear();
    shapeOrder.clear();
    for (auto& [sql, stmt] : statements) sqlite3_finalize(stmt);
    statements.clear();
    tables.clear();
    lastReserved.clear();
    knownMax.clear();
    knownMaxStamp = -1;
    groupDepth = 0;
    if (db != nullptr) sqlite3_close_v2(db);
    db = nullptr;
  }

  [[noreturn]] void fail(const std::string& what) {
    std::string message = what;
    if (db != nullptr) message += ": " + std::string(sqlite3_errmsg(db));
    throw DatabaseFailure(message);
  }

  void requireOpen() {
    if (db == nullptr) throw DatabaseFailure("The connection to the database is not open.");
  }

  void exec(const char* sql) {
    flushWrites();
    char* err = nullptr;
    if (const int rc = sqlite3_exec(db, sql, nullptr, nullptr, &err); rc != SQLITE_OK) {
      std::string message = err ? err : "failed";
      sqlite3_free(err);
      failureCode = rc & 0xFF;
      throw DatabaseFailure(message);
    }
  }

  bool writable() { return sqlite3_db_readonly(db, "main") == 0; }

  // Settings, then the first read (which takes the locks and proves the file a database),
  // then the open check, and only then anything that writes to the file.
  void configure(SqliteDatabase& owner) {
    sqlite3_busy_timeout(db, busyTimeout);
    // A practice database is held alone from the first read on, and its log lives in this
    // process's memory; an exclusive lock needs a file open for writing.
    if (writeAheadLog && writable()) exec("PRAGMA locking_mode=EXCLUSIVE;");
    if (readOnly) exec("PRAGMA query_only=ON;");
    exec("PRAGMA foreign_keys=OFF;");
    exec("PRAGMA cache_size=-65536;");
    exec("SELECT count(*) FROM sqlite_master;");
    if (openCheck) openCheck(owner);
    if (!writeAheadLog || readOnly) return;
    if (!writable()) {
      failureCode = SQLITE_READONLY;
      throw DatabaseFailure("The file is read-only.");
    }
    exec("PRAGMA journal_mode=WAL;");
    exec("PRAGMA synchronous=NORMAL;");
    // Each source record commits on its own: checkpoint seldom.
    exec("PRAGMA wal_autocheckpoint=100000;");
  }

  sqlite3_stmt* cached(const std::string& sql) {
    flushWrites();
    auto it = statements.find(sql);
    if (it != statements.end()) {
      sqlite3_reset(it->second);
      sqlite3_clear_bindings(it->second);
      return it->second;
    }
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK)
      fail("Cannot prepare " + sql);
    statements.emplace(sql, stmt);
    return stmt;
  }

  const TableInfo& tableInfo(const std::string& table) {
    auto it = tables.find(table);
    if (it != tables.end()) return it->second;
    TableInfo info;
    info.name = table;
    sqlite3_stmt* stmt = nullptr;
    std::string sql = "PRAGMA table_info(\"" + table + "\")";
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK)
      fail("No table " + table);
    int pkCount = 0;
    std::string pkName, pkType;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      std::string name = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 1));
      const char* type = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 2));
      Kind kind = kindOfDeclaredType(type ? type : "");
      info.columns[name] = {name, kind};
      if (sqlite3_column_type(stmt, 4) != SQLITE_NULL) {
        std::string literal = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 4));
        if (literal.size() >= 2 && literal.front() == '\'' && literal.back() == '\'')
          literal = literal.substr(1, literal.size() - 2);
        else if (!GeneralUtilities::isNumeric(literal) && upper(literal) != "NULL")
          info.literalDefaults = false;
        try {
          if (upper(literal) != "NULL") info.defaults[name] = convertForColumn(kind, literal, name);
        } catch (const DatabaseFailure&) {
          info.literalDefaults = false;
        }
      }
      if (sqlite3_column_int(stmt, 5) > 0) {
        ++pkCount;
        pkName = name;
        pkType = type ? upper(type) : "";
      }
    }
    sqlite3_finalize(stmt);
    if (info.columns.empty()) throw DatabaseFailure("The table '" + table + "' does not exist.");
    if (pkCount == 1 && pkType == "INTEGER") info.rowidAlias = pkName;
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

  // Reads a result row of the statement into a cached row.
  Row readRow(sqlite3_stmt* stmt, const std::vector<Column>& columns, size_t total) {
    Row row;
    row.cells.resize(total);
    for (size_t i = 0; i < total; ++i) {
      int type = sqlite3_column_type(stmt, static_cast<int>(i));
      if (type == SQLITE_NULL) continue;
      Kind kind = i < columns.size() ? columns[i].kind : Kind::Integer;
      Variant v;
      switch (kind) {
        case Kind::Integer:
          v = type == SQLITE_TEXT
                  ? convertForColumnLenient(Kind::Integer, stmt, i)
                  : Variant::integer(sqlite3_column_int64(stmt, static_cast<int>(i)));
          break;
        case Kind::Boolean:
          v = Variant::boolean(sqlite3_column_int64(stmt, static_cast<int>(i)) != 0);
          break;
        case Kind::Double:
          v = type == SQLITE_TEXT ? convertForColumnLenient(Kind::Double, stmt, i)
                                  : Variant::real(sqlite3_column_double(stmt, static_cast<int>(i)));
          break;
        case Kind::Date: {
          if (type == SQLITE_TEXT) {
            std::string t = textColumn(stmt, static_cast<int>(i));
            std::string iso;
            if (auto direct = Date::fromIso(t))
              v = Variant::date(*direct);
            else if (parseSqlDateText(t, iso))
              v = Variant::date(*Date::fromIso(iso));
            else
              v = Variant::text(std::move(t));
          } else {
            v = Variant::date(Date{sqlite3_column_double(stmt, static_cast<int>(i))});
          }
          break;
        }
        case Kind::Text:
          v = Variant::text(textColumn(stmt, static_cast<int>(i)));
          break;
        case Kind::Null:  // an expression: by storage class
          if (type == SQLITE_INTEGER)
            v = Variant::integer(sqlite3_column_int64(stmt, static_cast<int>(i)));
          else if (type == SQLITE_FLOAT)
            v = Variant::real(sqlite3_column_double(stmt, static_cast<int>(i)));
          else
            v = Variant::text(textColumn(stmt, static_cast<int>(i)));
          break;
      }
      row.set(i, v);
    }
    return row;
  }

  static Variant convertForColumnLenient(Kind kind, sqlite3_stmt* stmt, size_t i) {
    std::string t = textColumn(stmt, static_cast<int>(i));
    try {
      return convertForColumn(kind, t, "");
    } catch (const DatabaseFailure&) {
      return Variant::text(std::move(t));
    }
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
    const char* tail = nullptr;
    int rc = sqlite3_prepare_v2(db, key.c_str(), -1, &shape->stmt, &tail);
    if (rc != SQLITE_OK && shape->translated.rowidsAppended) {
      // A FROM item without rowids (a view or sub-query): read-only rows without keys,
      // the statement as written.
      sqlite3_finalize(shape->stmt);
      shape->stmt = nullptr;
      shape->translated = translateAccessSql(accessSql, false);
      shape->parameterized = false;
      key = shape->translated.sql;
      rc = sqlite3_prepare_v2(db, key.c_str(), -1, &shape->stmt, &tail);
    }
    if (rc != SQLITE_OK) fail("Cannot open \"" + std::string(accessSql) + "\"");
    sqlite3_stmt* stmt = shape->stmt;
    if (tail != nullptr && !GeneralUtilities::isBlank(tail))
      throw DatabaseFailure("Only one statement is allowed.");
    if (!sqlite3_stmt_readonly(stmt))
      throw DatabaseFailure("A recordset statement must be a SELECT.");

    size_t total = static_cast<size_t>(sqlite3_column_count(stmt));
    shape->slotCount = shape->translated.rowidsAppended ? shape->translated.tables.size() : 0;
    size_t visible = total - shape->slotCount;
    for (size_t i = 0; i < visible; ++i) {
      Column c;
      c.name = sqlite3_column_name(stmt, static_cast<int>(i));
      const char* table = sqlite3_column_table_name(stmt, static_cast<int>(i));
      const char* origin = sqlite3_column_origin_name(stmt, static_cast<int>(i));
      c.table = table ? table : "";
      c.origin = origin ? origin : "";
      c.kind = kindOfDeclaredType(sqlite3_column_decltype(stmt, static_cast<int>(i)));
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
    TranslatedSql translated = translateAccessSql(accessSql);
    auto r = std::make_unique<Recordset>(shapeOf(accessSql, translated), std::string(accessSql),
                                         lockType);
    if (r->shape->parameterized) r->parameters = std::move(translated.parameters);
    if (r->slotCount > 0) {
      for (size_t slot = 0; slot < r->slotCount; ++slot)
        r->snapshotMax.push_back(maxRowid(r->translated.tables[slot].table));
    } else {
      load(*r);  // no keys to fix the keyset by: read it now
    }
    std::int32_t handle = nextHandle++;
    recordsets.emplace(handle, std::move(r));
    return handle;
  }

  std::int64_t maxRowid(const std::string& table) {
    const sqlite3_int64 changes = sqlite3_total_changes64(db);
    if (writeAheadLog && knownMaxStamp == changes) {
      auto known = knownMax.find(table);
      if (known != knownMax.end()) return known->second;
    } else {
      knownMax.clear();
      knownMaxStamp = changes;
    }
    sqlite3_stmt* stmt = cached("SELECT max(rowid) FROM \"" + table + "\"");
    std::int64_t value = 0;
    if (sqlite3_step(stmt) == SQLITE_ROW) value = sqlite3_column_int64(stmt, 0);
    sqlite3_reset(stmt);
    if (writeAheadLog) knownMax[table] = value;
    return value;
  }

  // Runs a statement that writes one row of `table`, keeping the known largest rowids valid
  // (raised by an insert). Answers the rowid of an insert.
  std::int64_t writeOneRow(sqlite3_stmt* stmt, const std::string& table, bool insert,
                           std::string_view what, std::string_view name) {
    const sqlite3_int64 before = sqlite3_total_changes64(db);
    step(stmt, what, name);
    const std::int64_t rowid = insert ? sqlite3_last_insert_rowid(db) : 0;
    if (knownMaxStamp != before || sqlite3_total_changes64(db) != before + 1) return rowid;
    knownMaxStamp = before + 1;
    auto known = insert ? knownMax.find(table) : knownMax.end();
    if (known != knownMax.end()) known->second = std::max(known->second, rowid);
    return rowid;
  }

  // Keeps a column's new value for the row's UPDATE; a write to another row stores the
  // pending one first.
  void writeLater(const std::string& table, std::int64_t rowid, const std::string& column,
                  Variant value) {
    if (pendingWrite && (pendingWrite->rowid != rowid || pendingWrite->table != table))
      flushWrites();
    if (!pendingWrite) pendingWrite = PendingWrite{table, rowid, {}};
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
    std::string sql = "UPDATE \"" + w.table + "\" SET ";
    std::string names;
    for (size_t i = 0; i < w.columns.size(); ++i) {
      sql.append(i ? ", \"" : "\"").append(w.columns[i].first).append("\" = ?");
      names.append(i ? ", " : "").append(w.columns[i].first);
    }
    sql.append(" WHERE rowid = ?");
    sqlite3_stmt* stmt = cached(sql);
    for (size_t i = 0; i < w.columns.size(); ++i)
      bind(stmt, static_cast<int>(i + 1), w.columns[i].second);
    sqlite3_bind_int64(stmt, static_cast<int>(w.columns.size() + 1), w.rowid);
    writeOneRow(stmt, w.table, false, "Cannot write ", names);
  }

  // Reads the rows of the keyset.
  void load(Recordset& r) {
    flushWrites();
    sqlite3_stmt* stmt = r.shape->stmt;
    sqlite3_reset(stmt);
    sqlite3_clear_bindings(stmt);
    for (size_t i = 0; i < r.parameters.size(); ++i) {
      const TranslatedSql::Parameter& p = r.parameters[i];
      int position = static_cast<int>(i + 1);
      double number = 0;
      if (p.number && GeneralUtilities::parseNumber(p.text, number)) {
        if (number == std::floor(number) && std::fabs(number) < 9.0e15)
          sqlite3_bind_int64(stmt, position, static_cast<std::int64_t>(number));
        else
          sqlite3_bind_double(stmt, position, number);
      } else {
        sqlite3_bind_text(stmt, position, p.text.c_str(), static_cast<int>(p.text.size()),
                          SQLITE_TRANSIENT);
      }
    }
    size_t visible = r.columns.size();
    size_t total = visible + r.slotCount;
    std::unordered_set<std::int64_t> added(r.addedHere.begin(), r.addedHere.end());
    std::unordered_set<std::int64_t> seen;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
      bool keep = true;
      for (size_t slot = 0; slot < r.slotCount && keep; ++slot) {
        std::int64_t rowid = sqlite3_column_int64(stmt, static_cast<int>(visible + slot));
        if (rowid > r.snapshotMax[slot] && !(slot == 0 && added.count(rowid))) keep = false;
      }
      if (!keep) continue;
      r.rows.push_back(readRow(stmt, r.columns, total));
      if (r.slotCount > 0) seen.insert(r.rowidOf(r.rows.size() - 1, 0));
    }
    sqlite3_reset(stmt);
    if (rc != SQLITE_DONE) fail("Cannot read \"" + r.accessSql + "\"");
    // Rows added here that the statement does not select stay in the recordset.
    for (std::int64_t rowid : r.addedHere)
      if (!seen.count(rowid)) r.rows.push_back(readBack(r, rowid));
    r.loaded = true;
    r.cursor = 0;
    if (r.onAddedRow) {
      for (size_t row = 0; row < r.rows.size(); ++row)
        if (r.rowidOf(row, 0) == r.addedRowid) r.cursor = row;
    }
    r.onAddedRow = false;
    r.addedRow.reset();
  }

  // The row just inserted into the recordset's first table, from the values written and the
  // table's defaults, without reading it back when the defaults are plain literals.
  Row composeRow(Recordset& r, std::int64_t rowid, const ColumnValues& values) {
    const TableInfo& info = tableInfo(r.translated.tables[0].table);
    if (!info.literalDefaults) return readBack(r, rowid);
    NameViewMap<const Variant*> written;
    written.reserve(values.size());
    for (const auto& [name, value] : values) written[name] = &value;
    Row row;
    row.cells.resize(r.columns.size() + r.slotCount);
    for (size_t c = 0; c < r.columns.size(); ++c) {
      const Column& col = r.columns[c];
      if (col.slot != 0) continue;
      if (!info.rowidAlias.empty() && sameName(col.origin, info.rowidAlias)) {
        row.set(c, Variant::integer(rowid));
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
    row.cells[r.columns.size()].i = rowid;
    return row;
  }

  // The row stored by the last updateRecord of a recordset not read yet.
  Row& addedRow(Recordset& r) {
    if (!r.addedRow) r.addedRow = std::make_unique<Row>(readBack(r, r.addedRowid));
    return *r.addedRow;
  }

  Recordset& ready(std::int32_t handle) {
    Recordset& r = rs(handle);
    if (!r.loaded) load(r);
    return r;
  }

  // A row of the recordset's first table read by rowid, with the table's defaults.
  Row readBack(Recordset& r, std::int64_t rowid) {
    const TableInfo& info = tableInfo(r.translated.tables[0].table);
    sqlite3_stmt* read = cached("SELECT * FROM \"" + info.name + "\" WHERE rowid = ?");
    sqlite3_bind_int64(read, 1, rowid);
    Row row;
    row.cells.resize(r.columns.size() + r.slotCount);
    if (sqlite3_step(read) == SQLITE_ROW) {
      int n = sqlite3_column_count(read);
      NameMap<int> positions;
      std::vector<Column> readColumns;
      for (int i = 0; i < n; ++i) {
        positions[sqlite3_column_name(read, i)] = i;
        Column rc;
        rc.kind = kindOfDeclaredType(sqlite3_column_decltype(read, i));
        readColumns.push_back(rc);
      }
      Row all = readRow(read, readColumns, static_cast<size_t>(n));
      for (size_t c = 0; c < r.columns.size(); ++c) {
        const Column& col = r.columns[c];
        if (col.slot != 0) continue;
        auto p = positions.find(col.origin);
        if (p != positions.end()) row.set(c, all.get(static_cast<size_t>(p->second)));
      }
    }
    sqlite3_reset(read);
    row.cells[r.columns.size()].kind = Kind::Integer;
    row.cells[r.columns.size()].i = rowid;
    return row;
  }

  void buildRowidMaps(Recordset& r) {
    if (r.rowidMapsBuilt) return;
    r.rowidMaps.assign(r.slotCount, {});
    for (size_t s = 0; s < r.slotCount; ++s) {
      r.rowidMaps[s].reserve(r.rows.size());
      for (size_t row = 0; row < r.rows.size(); ++row)
        r.rowidMaps[s].emplace(r.rowidOf(row, s), static_cast<std::uint32_t>(row));
    }
    r.rowidMapsBuilt = true;
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
    std::vector<std::pair<std::string, std::string>> moved;  // index name, old key
    for (auto& [name, idx] : r.indexes) {
      if (name.find(std::to_string(col) + ",") == std::string::npos) continue;
      std::vector<int> cols;
      for (size_t p = 0; p < name.size();) {
        size_t q = name.find(',', p);
        cols.push_back(std::stoi(name.substr(p, q - p)));
        p = q + 1;
      }
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
  void propagate(const std::string& table, std::int64_t rowid, const std::string& column,
                 const Variant& value) {
    originKey.assign(table).append(".").append(column);
    const std::string_view origin = originKey;
    for (auto& [handle, owned] : recordsets) {
      Recordset& r = *owned;
      if (!r.hasRowids()) continue;
      bool holdsTable = false;  // a quick test before the look-up by column
      for (const FromTable& t : r.translated.tables)
        holdsTable = holdsTable || sameName(t.table, table);
      if (!holdsTable) continue;
      auto columns = r.shape->byOrigin.find(origin);
      if (columns == r.shape->byOrigin.end()) continue;
      if (!r.loaded) {  // reads fresh values when it loads; only its added row is held
        if (!r.onAddedRow || !r.addedRow || r.addedRowid != rowid) continue;
        for (int c : columns->second)
          if (r.columns[static_cast<size_t>(c)].slot == 0)
            r.addedRow->set(static_cast<size_t>(c), value);
        continue;
      }
      for (int c : columns->second) {
        const Column& col = r.columns[static_cast<size_t>(c)];
        buildRowidMaps(r);
        auto found = r.rowidMaps[static_cast<size_t>(col.slot)].find(rowid);
        if (found != r.rowidMaps[static_cast<size_t>(col.slot)].end())
          changeCell(r, found->second, c, value);
      }
    }
  }

  void bind(sqlite3_stmt* stmt, int pos, const Variant& v) {
    switch (v.kind()) {
      case Kind::Null:
        sqlite3_bind_null(stmt, pos);
        break;
      case Kind::Integer:
        sqlite3_bind_int64(stmt, pos, v.toLong());
        break;
      case Kind::Boolean:
        sqlite3_bind_int(stmt, pos, v.toBool() ? 1 : 0);
        break;
      case Kind::Double:
        sqlite3_bind_double(stmt, pos, v.toDouble());
        break;
      case Kind::Date: {
        std::string iso = v.toDate()->toIso();
        sqlite3_bind_text(stmt, pos, iso.c_str(), -1, SQLITE_TRANSIENT);
        break;
      }
      case Kind::Text: {
        std::string t = v.toString();
        sqlite3_bind_text(stmt, pos, t.c_str(), static_cast<int>(t.size()), SQLITE_TRANSIENT);
        break;
      }
    }
  }

  // Runs a write; a failure says what was written (`what` followed by `name`).
  void step(sqlite3_stmt* stmt, std::string_view what, std::string_view name = {}) {
    int rc = sqlite3_step(stmt);
    if (rc != SQLITE_DONE && rc != SQLITE_ROW) {
      std::string message = std::string(what).append(name) + ": " + sqlite3_errmsg(db);
      sqlite3_reset(stmt);
      throw DatabaseFailure(message);
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

  std::int64_t reserveKey(const std::string& table) {
    std::int64_t maxRowid = this->maxRowid(table);
    std::int64_t& last = lastReserved[upper(table)];
    last = std::max(last, maxRowid) + 1;
    return last;
  }
};

SqliteDatabase::SqliteDatabase() : impl_(std::make_unique<Impl>()) {}
SqliteDatabase::~SqliteDatabase() = default;

void SqliteDatabase::createNew(std::string_view path) {
  std::string p(path);
  if (p != ":memory:" && std::filesystem::exists(p))
    throw DatabaseFailure(
        "The file '" + p +
        "' already exists; a new practice database is never written over an existing file.");
  close();
  impl_->path = p;
  impl_->writeAheadLog = true;  // a new database is a practice database
  if (sqlite3_open_v2(p.c_str(), &impl_->db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) !=
      SQLITE_OK) {
    std::string message = impl_->db ? sqlite3_errmsg(impl_->db) : "cannot create";
    impl_->disconnect();
    throw DatabaseFailure("Cannot create '" + p + "': " + message);
  }
  impl_->configure(*this);
}

void SqliteDatabase::setWriteAheadLog(bool on) {
  impl_->writeAheadLog = on;
}

void SqliteDatabase::executeStatement(std::string_view accessSql) {
  impl_->requireOpen();
  impl_->flushWrites();
  TranslatedSql t = translateAccessSql(accessSql, false);
  sqlite3_stmt* stmt = nullptr;
  const char* tail = nullptr;
  if (sqlite3_prepare_v2(impl_->db, t.sql.c_str(), -1, &stmt, &tail) != SQLITE_OK)
    impl_->fail("Cannot run \"" + std::string(accessSql) + "\"");
  std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> guard(stmt, sqlite3_finalize);
  if (tail != nullptr && !GeneralUtilities::isBlank(tail))
    throw DatabaseFailure("Only one statement is allowed.");
  impl_->step(stmt, "Cannot run \"" + std::string(accessSql) + "\"");
  impl_->tables.clear();  // the schema may have changed
  impl_->shapes.clear();
  impl_->shapeOrder.clear();
}

bool SqliteDatabase::hasTable(std::string_view table) {
  impl_->requireOpen();
  sqlite3_stmt* stmt =
      impl_->cached("SELECT 1 FROM sqlite_master WHERE type='table' AND name=? COLLATE NOCASE");
  sqlite3_bind_text(stmt, 1, std::string(table).c_str(), -1, SQLITE_TRANSIENT);
  bool found = sqlite3_step(stmt) == SQLITE_ROW;
  sqlite3_reset(stmt);
  return found;
}

sqlite3* SqliteDatabase::connection() {
  impl_->flushWrites();
  return impl_->db;
}
std::string SqliteDatabase::path() const {
  return impl_->path;
}

void SqliteDatabase::setErrorService(ErrorService* errors) {
  impl_->errors = errors;
}
void SqliteDatabase::setOwnerWindow(void*) {}
void SqliteDatabase::setApplicationName(std::string_view) {}
void SqliteDatabase::setDatabaseKind(int) {}
void SqliteDatabase::setDatabasePath(std::string_view path) {
  impl_->path = std::string(path);
}
void SqliteDatabase::setCursorLocation(int) {}
void SqliteDatabase::setOpenMode(int) {}

void SqliteDatabase::setReadOnly(bool on) {
  impl_->readOnly = on;
}

void SqliteDatabase::setBusyTimeout(int milliseconds) {
  impl_->busyTimeout = milliseconds;
}

void SqliteDatabase::setOpenCheck(std::function<void(SqliteDatabase&)> check) {
  impl_->openCheck = std::move(check);
}

int SqliteDatabase::connectFailureCode() const {
  return impl_->failureCode;
}

const std::string& SqliteDatabase::connectFailureMessage() const {
  return impl_->failureMessage;
}

void SqliteDatabase::connect(int) {
  impl_->storeAndDisconnect();
  impl_->failureCode = 0;
  impl_->failureMessage.clear();
  const std::string& p = impl_->path;
  auto refuse = [this](int code, std::string message) {
    impl_->disconnect();
    impl_->failureCode = code;
    impl_->failureMessage = std::move(message);
  };
  if (p.empty()) return refuse(SQLITE_CANTOPEN, "No database path was given.");
  if (p != ":memory:" && !std::filesystem::is_regular_file(p))
    return refuse(SQLITE_CANTOPEN, "No such file.");  // isOpen answers false
  if (sqlite3_open_v2(p.c_str(), &impl_->db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
    return refuse(impl_->db ? sqlite3_errcode(impl_->db) : SQLITE_CANTOPEN,
                  impl_->db ? sqlite3_errmsg(impl_->db) : "Cannot open the file.");
  if (p != ":memory:" && !impl_->writable()) {
    // The system refuses writing, and a lock or a shared log would need it. With no log
    // beside it the file holds everything committed: it is read as it stands.
    std::error_code error;
    const auto logSize = std::filesystem::file_size(p + "-wal", error);
    if (error || logSize == 0) {
      sqlite3_close_v2(impl_->db);
      impl_->db = nullptr;
      if (sqlite3_open_v2((uriPath(p) + "?immutable=1").c_str(), &impl_->db,
                          SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr) != SQLITE_OK)
        return refuse(impl_->db ? sqlite3_errcode(impl_->db) : SQLITE_CANTOPEN,
                      impl_->db ? sqlite3_errmsg(impl_->db) : "Cannot open the file.");
    }
  }
  try {
    impl_->configure(*this);
  } catch (const DatabaseFailure& failure) {
    // Not a database, a damaged one, one that another connection holds, or read-only.
    const int code = impl_->failureCode != 0 ? impl_->failureCode : SQLITE_ERROR;
    refuse(code, failure.what());
  } catch (...) {
    impl_->disconnect();  // refused by the open check
    throw;
  }
}

bool SqliteDatabase::isOpen() {
  return impl_->db != nullptr;
}

void SqliteDatabase::close() {
  impl_->storeAndDisconnect();
}

bool SqliteDatabase::getBulkFlag() {
  return impl_->bulk;
}
void SqliteDatabase::setBulkFlag(bool flag) {
  impl_->bulk = flag;
}

std::string SqliteDatabase::formatDateForSql(const Date& date) {
  return date.toIso();
}

std::int32_t SqliteDatabase::openRecordset(std::string_view sql, int, int lockType, int,
                                           std::string_view, int) {
  return impl_->open(sql, lockType);
}

void SqliteDatabase::closeRecordset(std::int32_t handle) {
  impl_->recordsets.erase(handle);
}

bool SqliteDatabase::isRecordsetOpen(std::int32_t handle) {
  return impl_->recordsets.count(handle) > 0;
}

std::int32_t SqliteDatabase::requery(std::int32_t handle) {
  Recordset& r = impl_->rs(handle);
  std::string sql = r.accessSql;
  int lock = r.lockType;
  std::int32_t fresh = impl_->open(sql, lock);
  impl_->recordsets.erase(handle);
  return fresh;
}

std::int32_t SqliteDatabase::recordCount(std::int32_t handle) {
  return static_cast<std::int32_t>(impl_->ready(handle).rows.size());
}

bool SqliteDatabase::isEmpty(std::int32_t handle) {
  return impl_->ready(handle).rows.empty();
}

bool SqliteDatabase::hasRecord(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  r.cursor = 0;
  r.currentDeleted = false;
  return !r.rows.empty();
}

bool SqliteDatabase::isEOF(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  return r.cursor >= r.rows.size();
}

void SqliteDatabase::moveNext(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  if (r.currentDeleted) {
    r.currentDeleted = false;  // the row after the deleted one already stands here
    return;
  }
  if (r.cursor >= r.rows.size())
    throw DatabaseFailure("Either BOF or EOF is True, or the current record has been deleted.");
  ++r.cursor;
}

std::int32_t SqliteDatabase::getPosition(std::int32_t handle) {
  return static_cast<std::int32_t>(impl_->ready(handle).cursor);
}

void SqliteDatabase::setPosition(std::int32_t handle, std::int32_t position) {
  Recordset& r = impl_->ready(handle);
  r.cursor = position < 0 ? r.rows.size() : std::min(static_cast<size_t>(position), r.rows.size());
  r.currentDeleted = false;
}

bool SqliteDatabase::findRecord(std::int32_t handle, std::string_view field1,
                                std::string_view value1, std::string_view field2,
                                std::string_view value2, std::string_view field3,
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

bool SqliteDatabase::findNext(std::int32_t handle) {
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

Variant SqliteDatabase::getField(std::int32_t handle, std::string_view field) {
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

bool SqliteDatabase::setField(std::int32_t handle, std::string_view field, std::string_view value,
                              bool, bool) {
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
  std::int64_t rowid =
      onAddedRow ? r.addedRowid : r.rowidOf(r.cursor, static_cast<size_t>(col.slot));
  impl_->writeLater(info.name, rowid, col.origin, v);
  if (sameName(col.origin, info.rowidAlias)) impl_->flushWrites();  // a new key can clash
  impl_->propagate(col.table, rowid, col.origin, v);
  return true;
}

bool SqliteDatabase::addNewRecord(std::int32_t handle) {
  Recordset& r = impl_->rs(handle);
  if (r.lockType == kLockReadOnly)
    throw DatabaseFailure(
        "Current Recordset does not support updating. This may be a limitation of the provider, or "
        "of the selected locktype.");
  if (r.translated.tables.empty() || !r.hasRowids())
    throw DatabaseFailure("This recordset cannot take new rows.");
  r.adding = true;
  r.pending.clear();
  const TableInfo& info = impl_->tableInfo(r.translated.tables[0].table);
  r.hasReservedKey = !info.rowidAlias.empty();
  if (r.hasReservedKey) r.reservedKey = impl_->reserveKey(info.name);
  return true;
}

bool SqliteDatabase::setNewField(std::int32_t handle, std::string_view field,
                                 std::string_view value) {
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

bool SqliteDatabase::updateRecord(std::int32_t handle) {
  Recordset& r = impl_->rs(handle);
  if (!r.adding) return true;  // setField has written the row
  r.adding = false;
  const TableInfo& info = impl_->tableInfo(r.translated.tables[0].table);
  ColumnValues values;
  values.reserve(r.pending.size() + 1);
  NameViewMap<size_t> positions;  // a column written twice keeps its last value
  positions.reserve(r.pending.size());
  bool keyGiven = false;
  for (auto& [c, v] : r.pending) {
    const std::string& origin = r.columns[static_cast<size_t>(c)].origin;
    auto [slot, added] = positions.emplace(origin, values.size());
    if (added)
      values.emplace_back(origin, std::move(v));
    else
      values[slot->second].second = std::move(v);
    if (!info.rowidAlias.empty() && sameName(origin, info.rowidAlias)) keyGiven = true;
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
  sqlite3_stmt* stmt = impl_->cached(sql);
  for (size_t i = 0; i < values.size(); ++i)
    impl_->bind(stmt, static_cast<int>(i + 1), values[i].second);
  const std::int64_t rowid =
      impl_->writeOneRow(stmt, info.name, true, "Cannot add a row to ", info.name);
  r.pending.clear();
  r.hasReservedKey = false;

  // The new row joins this recordset, read back with the table's defaults.
  if (!r.loaded) {
    r.addedHere.push_back(rowid);
    r.addedRow.reset();
    r.addedRowid = rowid;
    r.onAddedRow = true;
    return true;
  }
  Row row = impl_->composeRow(r, rowid, values);
  r.rows.push_back(std::move(row));
  size_t index = r.rows.size() - 1;
  for (auto& [name, idx] : r.indexes) {
    std::vector<int> cols;
    for (size_t p = 0; p < name.size();) {
      size_t q = name.find(',', p);
      cols.push_back(std::stoi(name.substr(p, q - p)));
      p = q + 1;
    }
    idx[impl_->rowKey(r, index, cols)].push_back(static_cast<std::uint32_t>(index));
  }
  if (r.rowidMapsBuilt)
    for (size_t s = 0; s < r.slotCount; ++s)
      r.rowidMaps[s].emplace(r.rowidOf(index, s), static_cast<std::uint32_t>(index));
  r.cursor = index;
  r.currentDeleted = false;
  return true;
}

bool SqliteDatabase::deleteRecord(std::int32_t handle) {
  Recordset& r = impl_->ready(handle);
  if (r.lockType == kLockReadOnly || !r.hasRowids())
    throw DatabaseFailure("Current Recordset does not support updating.");
  impl_->currentRow(r);
  const TableInfo& info = impl_->tableInfo(r.translated.tables[0].table);
  sqlite3_stmt* stmt = impl_->cached("DELETE FROM \"" + info.name + "\" WHERE rowid = ?");
  sqlite3_bind_int64(stmt, 1, r.rowidOf(r.cursor, 0));
  impl_->step(stmt, "Cannot delete from ", info.name);
  r.rows.erase(r.rows.begin() + static_cast<std::ptrdiff_t>(r.cursor));
  r.indexes.clear();
  r.rowidMaps.clear();
  r.rowidMapsBuilt = false;
  r.currentDeleted = true;
  return true;
}

// The depth counts a group only once its statement has run, so that a failed BEGIN or
// COMMIT leaves the depth as the connection really is.
void SqliteDatabase::beginWriteGroup() {
  impl_->requireOpen();
  if (impl_->groupDepth == 0) impl_->exec("BEGIN;");
  ++impl_->groupDepth;
}

void SqliteDatabase::endWriteGroup() {
  if (impl_->groupDepth == 0 || impl_->db == nullptr) return;
  if (impl_->groupDepth > 1) {
    --impl_->groupDepth;
    return;
  }
  impl_->commitGroup();
}

}  // namespace lf
