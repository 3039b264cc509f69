// How the database service names one row of a table, so that a cached row can be written
// back, deleted, read again and found in every open recordset that holds it.
//
// A backend with rowids (SQLite) keys every row by its rowid. Without them a row is keyed by
// the table's declared primary key: a single auto-number key is used as it is; any other key
// (several columns, text), or all the stored columns of a table that declares none, is held
// as its values and stands in the row cache as a surrogate integer handed out here, one per
// distinct key of a table. Rowids and auto-number keys grow with each insert, so a keyset can
// be fixed by the largest key at open; keys held as values cannot, and such recordsets read
// their rows when opened.
//
// A table without a declared key keyed by all its columns cannot tell two rows of equal
// values apart: both are one row to the service (writes reach both).
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/variant.hpp"
#include "db/column_values.hpp"

namespace lf {

struct KeyPlan {
  enum class Kind {
    Rowid,       // the backend's hidden row key
    IntegerKey,  // the declared auto-number key
    Values,      // the declared key, or all stored columns, held as values
  };
  Kind kind = Kind::Rowid;
  std::vector<std::string> columns;  // the key's columns; the rowid's name for Rowid
  bool grows() const { return kind != Kind::Values; }
};

// The value as the engine stores it when the service binds it (dates as text, booleans as
// 1/0), which is how a key held as values is compared.
Variant storedForm(const Variant& value);

// Surrogate keys of the rows keyed by values, per table.
class RowKeyRegistry {
 public:
  // The surrogate of the key with these stored values; the same values give the same one.
  std::int64_t intern(const std::string& table, std::vector<Variant> values);
  // The stored values of a surrogate's key.
  const std::vector<Variant>& values(const std::string& table, std::int64_t key) const;
  // A key column of the row was written: the surrogate now stands for the new values.
  void rekey(const std::string& table, std::int64_t key, size_t column, const Variant& stored);
  void clear() { tables_.clear(); }

 private:
  struct TableKeys {
    std::unordered_map<std::string, std::int64_t> byValues;
    std::vector<std::vector<Variant>> values;  // by surrogate - 1
  };
  static std::string encode(const std::vector<Variant>& values);
  NameMap<TableKeys> tables_;
};

}  // namespace lf
