// The tables the database service writes: their columns, kinds and literal defaults, and how
// their rows are keyed (rowid, auto-number key, or values), with the largest key of a table
// that fixes a keyset and hands out the next auto-number.
#include <algorithm>

#include "base/failure.hpp"
#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

const TableInfo& Database::Impl::tableInfo(const std::string& table) {
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
    info.columnPosition[c.name] = static_cast<int>(info.columnOrder.size());
    info.columnOrder.push_back(c.name);
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

// The key columns of a table as the translation appends them.
std::vector<std::string> Database::Impl::keyColumnsOf(const std::string& table) {
  if (db().hasRowid()) return {db().rowidName()};
  return tableInfo(table).keys.columns;
}

// The largest key of a table whose keys grow.
std::int64_t Database::Impl::maxKey(const TableInfo& info) {
  const std::int64_t changes = db().changeCounter();
  if (options.writeAheadLog && knownMaxStamp == changes) {
    auto known = knownMax.find(info.name);
    if (known != knownMax.end()) return known->second;
  } else {
    knownMax.clear();
    knownMaxStamp = changes;
  }
  SqlStatement& stmt = cached("SELECT max(" + info.keys.columns[0] + ") FROM " + quoted(info.name));
  std::int64_t value = 0;
  if (stmt.step()) value = stmt.integer(0);
  stmt.reset();
  if (options.writeAheadLog) knownMax[info.name] = value;
  return value;
}

// " WHERE ..." naming the row of a table by its key, and the binding of its values from
// parameter `first` on.
std::string Database::Impl::whereKey(const TableInfo& info) {
  if (info.keys.grows()) return " WHERE " + info.keys.columns[0] + " = ?";
  std::string where = " WHERE ";
  for (size_t k = 0; k < info.keys.columns.size(); ++k)
    where.append(k ? " AND " : "").append(info.keys.columns[k]).append(" IS ?");
  return where;
}

void Database::Impl::bindKey(SqlStatement& stmt, int first, const TableInfo& info,
                             std::int64_t key) {
  if (info.keys.grows()) return stmt.bindInteger(first, key);
  const std::vector<Variant>& values = rowKeys.values(info.name, key);
  for (size_t k = 0; k < values.size(); ++k) bind(stmt, first + static_cast<int>(k), values[k]);
}

// The key of a row just inserted into a table whose keys are held as values: the values
// written, else the table's defaults.
std::int64_t Database::Impl::insertedKey(const TableInfo& info, const ColumnValues& values) {
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

std::int64_t Database::Impl::reserveKey(const TableInfo& info) {
  const std::int64_t largest = maxKey(info);
  std::int64_t& last = lastReserved[upper(info.name)];
  last = std::max(last, largest) + 1;
  return last;
}

}  // namespace lf
