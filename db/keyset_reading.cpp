// The recordsets of the database service: statement shapes (translated, prepared, their
// columns and origins), keysets fixed at open, and the rows read into the row cache.
#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <unordered_set>

#include "base/failure.hpp"
#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

Variant Database::Impl::convertLenient(Kind kind, std::string text) {
  try {
    return convertForColumn(kind, text, "");
  } catch (const DatabaseFailure&) {
    return Variant::text(std::move(text));
  }
}

// One value of a result row, as the column's kind reads it.
Variant Database::Impl::readValue(SqlStatement& stmt, int i, Kind kind) {
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
void Database::Impl::readRow(SqlStatement& stmt, const std::vector<Column>& columns, Row& row) {
  for (size_t i = 0; i < columns.size(); ++i) {
    const int c = static_cast<int>(i);
    const SqlType type = stmt.type(c);
    if (type == SqlType::Null) continue;
    if (type == SqlType::Text && columns[i].kind == Kind::Text) {
      // Text read as text: straight into the row when it is clean.
      const std::string_view bytes = stmt.text(c);
      if (isCleanText(bytes)) {
        row.setText(i, bytes);
        continue;
      }
    }
    row.set(i, readValue(stmt, c, columns[i].kind));
  }
}

// The key of each FROM table of a result row, after its visible columns.
void Database::Impl::readKeys(SqlStatement& stmt, const Shape& shape, Row& row) {
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

namespace {

bool isDigitByte(char c) {
  return c >= '0' && c <= '9';
}

constexpr std::array<bool, 256> kWordBytes = [] {
  std::array<bool, 256> table{};
  for (int u = 0; u < 256; ++u)
    table[static_cast<size_t>(u)] = (u >= '0' && u <= '9') || (u >= 'a' && u <= 'z') ||
                                    (u >= 'A' && u <= 'Z') || u == '_' || u == '$' || u >= 0x80;
  return table;
}();

inline bool isWordByte(char c) {
  return kWordBytes[static_cast<unsigned char>(c)];
}

bool isTrueOrFalse(std::string_view word) {
  auto same = [&](std::string_view upper) {
    if (word.size() != upper.size()) return false;
    for (size_t i = 0; i < word.size(); ++i)
      if (std::toupper(static_cast<unsigned char>(word[i])) != upper[i]) return false;
    return true;
  };
  return same("TRUE") || same("FALSE");
}

// The statement with each plain number (digits standing alone) masked, and the numbers in
// order. False for a statement with any other literal or anything whose translation might
// depend on a number's value: quotes, brackets, dates, comments, signs, parameter marks,
// True/False, a number with a point, an exponent or hex digits.
bool maskNumbers(std::string_view sql, std::string& masked,
                 std::vector<TranslatedSql::Parameter>& numbers) {
  static const auto refused = [] {
    std::array<bool, 256> table{};
    for (char c : std::string_view("'\"`[#-/?:@\x01")) table[static_cast<unsigned char>(c)] = true;
    table[0] = true;
    return table;
  }();
  masked.clear();
  numbers.clear();
  masked.reserve(sql.size());
  for (size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    if (refused[static_cast<unsigned char>(c)]) return false;
    if (isDigitByte(c)) {
      if (i > 0 && sql[i - 1] == '.') return false;
      size_t j = i;
      while (j < sql.size() && isDigitByte(sql[j])) ++j;
      if (j < sql.size() && (isWordByte(sql[j]) || sql[j] == '.')) return false;
      numbers.push_back({std::string(sql.substr(i, j - i)), true});
      masked += '\x01';
      i = j;
    } else if (isWordByte(c)) {
      size_t j = i;
      while (j < sql.size() && isWordByte(sql[j])) ++j;
      if (isTrueOrFalse(sql.substr(i, j - i))) return false;
      masked.append(sql.substr(i, j - i));
      i = j;
    } else {
      masked += c;
      ++i;
    }
  }
  return true;
}

// True when a statement's only condition is "WHERE [table.]key = ?", the key being the
// table's auto-number column, and nothing follows it.
bool whereIsKeyEquals(std::string_view sql, const FromTable& table, std::string_view key) {
  if (key.empty()) return false;
  auto upperWord = [](std::string_view s, size_t at, std::string_view word) {
    if (at + word.size() > s.size()) return false;
    for (size_t i = 0; i < word.size(); ++i)
      if (std::toupper(static_cast<unsigned char>(s[at + i])) != word[i]) return false;
    return (at == 0 || !isWordByte(s[at - 1])) &&
           (at + word.size() == s.size() || !isWordByte(s[at + word.size()]));
  };
  size_t where = std::string_view::npos;
  for (size_t i = 0; i < sql.size(); ++i)
    if (upperWord(sql, i, "WHERE")) {
      if (where != std::string_view::npos) return false;  // a sub-query
      where = i;
    }
  if (where == std::string_view::npos) return false;
  std::string_view rest = sql.substr(where + 5);
  auto skipBlanks = [&] {
    while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t')) rest.remove_prefix(1);
  };
  // A name, bare or in double quotes.
  auto name = [&](std::string_view& out) {
    skipBlanks();
    size_t end = 0;
    if (!rest.empty() && rest.front() == '"') {
      end = rest.find('"', 1);
      if (end == std::string_view::npos) return false;
      out = rest.substr(1, end - 1);
      rest.remove_prefix(end + 1);
      return true;
    }
    while (end < rest.size() && isWordByte(rest[end])) ++end;
    out = rest.substr(0, end);
    rest.remove_prefix(end);
    return end > 0;
  };
  std::string_view first;
  std::string_view column;
  if (!name(first)) return false;
  if (!rest.empty() && rest.front() == '.') {
    rest.remove_prefix(1);
    if (!sameName(first, table.alias) || !name(column)) return false;
  } else {
    column = first;
  }
  if (!sameName(column, key)) return false;
  skipBlanks();
  if (rest.empty() || rest.front() != '=') return false;
  rest.remove_prefix(1);
  skipBlanks();
  if (rest.empty() || rest.front() != '?') return false;
  rest.remove_prefix(1);
  skipBlanks();
  if (!rest.empty() && rest.front() == ';') rest.remove_prefix(1);
  skipBlanks();
  return rest.empty();
}

}  // namespace

TranslatedSql Database::Impl::translate(std::string_view accessSql, bool appendKeys) {
  if (!appendKeys || db().hasRowid())
    return translateAccessSql(accessSql, db().dialect(), appendKeys);
  return translateAccessSql(accessSql, db().dialect(), true,
                            [this](const std::string& table) { return keyColumnsOf(table); });
}

// The shape of a statement, from the cache of the most recently used ones.
std::shared_ptr<const Shape> Database::Impl::shapeOf(std::string_view accessSql,
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
  shape->readsOneKey =
      shape->slotCount == 1 && shape->keysGrow && shape->parameterized &&
      shape->translated.parameters.size() == 1 && shape->translated.parameters[0].number &&
      whereIsKeyEquals(shape->translated.parameterizedSql, shape->translated.tables[0],
                       tableInfo(shape->translated.tables[0].table).rowidAlias);
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

  if (shape->readsOneKey) {
    const TableInfo& info = tableInfo(shape->translated.tables[0].table);
    std::vector<bool> covered(info.columnOrder.size(), false);
    bool allStored = true;  // no expression, no generated column: an image answers it
    for (const Column& c : shape->columns) {
      auto position = info.columnPosition.find(c.origin);
      const bool stored = c.slot == 0 && position != info.columnPosition.end();
      allStored = allStored && stored;
      shape->imagePositions.push_back(stored ? position->second : -1);
      if (stored) covered[static_cast<size_t>(position->second)] = true;
    }
    shape->answeredByImage = allStored && !shape->columns.empty();
    shape->readsWholeRow =
        !covered.empty() && std::all_of(covered.begin(), covered.end(), [](bool b) { return b; });
  }
  shapeOrder.push_front(key);
  shapes.emplace(key, std::make_pair(shape, shapeOrder.begin()));
  if (shapes.size() > kShapeCacheSize) {
    shapes.erase(shapes.find(shapeOrder.back()));
    shapeOrder.pop_back();
  }
  return shape;
}

std::int32_t Database::Impl::open(std::string_view accessSql, int lockType) {
  requireOpen();
  // A statement that differs from one opened before only in its numbers takes that one's
  // shape, its numbers as the parameters, without being translated again.
  std::string& masked = maskedText;
  std::vector<TranslatedSql::Parameter>& numbers = maskedNumbers;
  const bool maskable = maskNumbers(accessSql, masked, numbers);
  std::shared_ptr<const Shape> shape;
  std::vector<TranslatedSql::Parameter> parameters;
  if (maskable) {
    const auto known = numberedShapes.find(masked);
    if (known != numberedShapes.end()) {
      shape = known->second;
      parameters = numbers;
    }
  } else if (const auto same = exactShapes.find(accessSql); same != exactShapes.end()) {
    // A statement with texts or dates opened before word for word: its translation again.
    shape = same->second.first;
    parameters = same->second.second;
  }
  if (!shape) {
    TranslatedSql translated = translate(accessSql, true);
    shape = shapeOf(accessSql, translated);
    if (!maskable) {
      if (exactShapes.size() >= kExactShapesSize) exactShapes.clear();
      exactShapes.emplace(std::string(accessSql), std::make_pair(shape, translated.parameters));
    }
    // Kept for the statements to come only when the translation made exactly these numbers
    // its parameters.
    bool same = maskable && translated.parameters.size() == numbers.size();
    for (size_t i = 0; same && i < numbers.size(); ++i)
      same = translated.parameters[i].number && translated.parameters[i].text == numbers[i].text;
    if (same) {
      if (numberedShapes.size() >= kNumberedShapesSize) numberedShapes.clear();
      numberedShapes[masked] = shape;
    }
    parameters = std::move(translated.parameters);
  }
  auto r = std::make_unique<Recordset>(std::move(shape), std::string(accessSql), lockType);
  if (r->shape->parameterized) r->parameters = std::move(parameters);
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

void Database::Impl::bindParameters(Recordset& r, SqlStatement& stmt) {
  for (size_t i = 0; i < r.parameters.size(); ++i) {
    const TranslatedSql::Parameter& p = r.parameters[i];
    int position = static_cast<int>(i + 1);
    double number = 0;
    std::int64_t whole = 0;
    if (p.number && wholeNumber(p.text, whole) && whole < 9'000'000'000'000'000 &&
        whole > -9'000'000'000'000'000) {
      stmt.bindInteger(position, whole);
    } else if (p.number && GeneralUtilities::parseNumber(p.text, number)) {
      if (number == std::floor(number) && std::fabs(number) < 9.0e15)
        stmt.bindInteger(position, static_cast<std::int64_t>(number));
      else
        stmt.bindReal(position, number);
    } else {
      stmt.bindText(position, p.text);
    }
  }
}

// Runs the recordset's statement for the rows of its keyset, and keeps them when they are
// the statement's whole result.
void Database::Impl::readKeyset(Recordset& r, std::string keptName) {
  if (r.shape->readsOneKey && r.addedHere.empty() && !r.snapshotMax.empty()) {
    std::int64_t key = 0;
    if (wholeNumber(r.parameters[0].text, key) && key > r.snapshotMax[0])
      return;  // a key above the largest at open: nothing of the keyset can match
  }
  SqlStatement& stmt = *r.shape->stmt;
  stmt.reset();
  bindParameters(r, stmt);
  const size_t total = r.columns.size() + r.slotCount;
  std::unordered_set<std::int64_t> added(r.addedHere.begin(), r.addedHere.end());
  const bool snapshot = !r.snapshotMax.empty();
  bool whole = true;
  try {
    while (stmt.step()) {
      // The keys first: a row outside the keyset is not read.
      Row row;
      row.cells.resize(total);
      readKeys(stmt, *r.shape, row);
      bool keep = true;
      const size_t first = r.columns.size();
      for (size_t slot = 0; snapshot && slot < r.slotCount && keep; ++slot) {
        const std::int64_t key = row.cells[first + slot].i;
        if (key > r.snapshotMax[slot] && !(slot == 0 && added.count(key))) keep = false;
      }
      if (!keep) {
        whole = false;
        continue;
      }
      readRow(stmt, r.columns, row);
      r.rows.push_back(std::move(row));
    }
  } catch (const DatabaseFailure& failure) {
    stmt.reset();
    throw DatabaseFailure("Cannot read \"" + r.accessSql + "\": " + failure.what());
  }
  stmt.reset();
  if (whole) imageFromRead(r);
  keepResult(r, whole, std::move(keptName));
}

// Reads the rows of the keyset.
void Database::Impl::load(Recordset& r) {
  flushWrites();
  if (!answerFromImage(r)) {
    std::string name = keptName(r);
    if (!reuseResult(r, name)) readKeyset(r, std::move(name));
  }
  // Rows added here that the statement does not select stay in the recordset.
  if (!r.addedHere.empty()) {
    std::unordered_set<std::int64_t> seen;
    for (size_t row = 0; row < r.rows.size() && r.slotCount > 0; ++row)
      seen.insert(r.keyOf(row, 0));
    for (std::int64_t key : r.addedHere)
      if (!seen.count(key)) r.rows.push_back(readBack(r, key));
  }
  r.loaded = true;
  r.loadedAt = writeClock;
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
Row Database::Impl::composeRow(Recordset& r, std::int64_t key, const ColumnValues& values) {
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

// The row stored by the last updateRecord of a recordset not read yet.
Row& Database::Impl::addedRow(Recordset& r) {
  if (!r.addedRow) r.addedRow = std::make_unique<Row>(readBack(r, r.addedKey));
  return *r.addedRow;
}

// A row of the recordset's first table read by its key, with the table's defaults.
Row Database::Impl::readBack(Recordset& r, std::int64_t key) {
  const TableInfo& info = tableInfo(r.translated.tables[0].table);
  SqlStatement& read = cached("SELECT * FROM " + quoted(info.name) + whereKey(info));
  bindKey(read, 1, info, key);
  Row row;
  row.cells.resize(r.columns.size() + r.slotCount);
  if (read.step()) {
    // Where each column of the table stands in the statement, and its kind: read once.
    auto [layout, fresh] = readBackLayouts.try_emplace(info.name);
    if (fresh)
      for (int i = 0; i < read.columnCount(); ++i) {
        const SqlResultColumn rc = read.columnInfo(i);
        layout->second.emplace(rc.name,
                               std::make_pair(i, kindOfDeclaredType(rc.declaredType, false)));
      }
    for (size_t c = 0; c < r.columns.size(); ++c) {
      const Column& col = r.columns[c];
      if (col.slot != 0) continue;
      auto p = layout->second.find(col.origin);
      if (p == layout->second.end() || read.type(p->second.first) == SqlType::Null) continue;
      row.set(c, readValue(read, p->second.first, p->second.second));
    }
  }
  read.reset();
  row.cells[r.columns.size()].kind = Kind::Integer;
  row.cells[r.columns.size()].i = key;
  return row;
}

}  // namespace lf
