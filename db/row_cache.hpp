// The row cache of the database service: the rows a recordset holds, the shape of its
// statement, and its cursor, keyset and search indexes. Internal to db/.
//
// A cached row holds the statement's visible values and then one integer key per table of
// the FROM clause (the rowid, the auto-number key or the surrogate of db/row_keys.hpp), by
// which the row is written back and found by the other recordsets holding it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/variant.hpp"
#include "db/access_sql.hpp"
#include "db/column_values.hpp"
#include "db/database_service.hpp"
#include "db/row_keys.hpp"
#include "db/sql_backend.hpp"

namespace lf {

using Kind = Variant::Kind;

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

  void setText(size_t index, std::string_view text) {
    Cell& c = cells[index];
    c.kind = Kind::Text;
    c.off = static_cast<std::uint32_t>(arena.size());
    c.len = static_cast<std::uint32_t>(text.size());
    arena.append(text);
  }
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
  std::string rowidAlias;       // the auto-number key (INTEGER PRIMARY KEY): the service
                                // hands out its new values
  KeyPlan keys;                 // how its rows are keyed
  // The stored columns in table order, and each one's place in it.
  std::vector<std::string> columnOrder;
  NameMap<int> columnPosition;
};

// What a statement gives whatever its rows: the translation, the columns and the prepared
// statement. Shared by every recordset opened on the same text.
struct Shape {
  TranslatedSql translated;
  bool parameterized = false;   // the statement takes the literals as parameters
  std::vector<Column> columns;  // visible columns
  size_t slotCount = 0;         // one key per FROM table after them
  size_t keyColumns = 0;        // the statement's key columns, after the visible ones
  std::vector<KeyPlan> plans;   // by slot
  bool keysGrow = true;         // every slot's key grows: the keyset is fixed at open by them
  // One table read by "WHERE <its auto-number key> = <one number>": no row of a key above the
  // largest at open can be in the keyset, so such a statement need not run.
  bool readsOneKey = false;
  // For such a statement: each column's place among the stored columns of its table (-1 for
  // an expression or a generated column); whether a row image of the table answers it (every
  // column stored, row_images.cpp); and whether it reads every stored column, so that the
  // row it reads makes an image.
  std::vector<int> imagePositions;
  bool answeredByImage = false;
  bool readsWholeRow = false;
  NameMap<int> byName;
  NameMap<std::vector<int>> byOrigin;  // "table.column" of the origin: the visible columns
  std::unique_ptr<SqlStatement> stmt;
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
  std::vector<std::unordered_map<std::int64_t, std::uint32_t>> keyMaps;  // row key -> row
  bool keyMapsBuilt = false;

  // Rows are read on first use. Until then the keyset is fixed by the largest key of each
  // table at open: rows added later by other recordsets stay out, rows added here come in.
  bool loaded = false;
  std::int64_t loadedAt = 0;  // the service's write clock when the rows were read
  std::vector<std::int64_t> snapshotMax;
  std::vector<std::int64_t> addedHere;
  std::unique_ptr<Row> addedRow;  // the current row after updateRecord, read when asked for
  std::int64_t addedKey = 0;
  bool onAddedRow = false;

  bool adding = false;
  std::vector<std::pair<int, Variant>> pending;  // column index, value as the table holds it
  std::int64_t reservedKey = 0;
  bool hasReservedKey = false;

  std::int64_t keyOf(size_t row, size_t slot) const {
    return rows[row].cells[columns.size() + slot].i;
  }
  bool hasKeys() const { return translated.keysAppended; }
};

}  // namespace lf
