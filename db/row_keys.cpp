// Row keys of the database service: stored forms and the surrogates of keys held as values.
#include "db/row_keys.hpp"

#include "base/failure.hpp"

namespace lf {

Variant storedForm(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::Boolean:
      return Variant::integer(value.toBool() ? 1 : 0);
    case Variant::Kind::Date:
      return Variant::text(value.toDate()->toIso());
    default:
      return value;
  }
}

std::string RowKeyRegistry::encode(const std::vector<Variant>& values) {
  std::string key;
  for (const Variant& v : values) {
    switch (v.kind()) {
      case Variant::Kind::Null:
        key += 'N';
        break;
      case Variant::Kind::Integer:
        key += 'I' + std::to_string(v.toLong());
        break;
      case Variant::Kind::Double: {
        const double d = v.toDouble();
        key += 'R';
        key.append(reinterpret_cast<const char*>(&d), sizeof d);
        break;
      }
      default:
        key += 'T' + std::to_string(v.toString().size()) + ':' + v.toString();
        break;
    }
    key += '\x1f';
  }
  return key;
}

std::int64_t RowKeyRegistry::intern(const std::string& table, std::vector<Variant> values) {
  TableKeys& keys = tables_[table];
  auto [it, added] = keys.byValues.emplace(encode(values), 0);
  if (added) {
    keys.values.push_back(std::move(values));
    it->second = static_cast<std::int64_t>(keys.values.size());
  }
  return it->second;
}

const std::vector<Variant>& RowKeyRegistry::values(const std::string& table,
                                                   std::int64_t key) const {
  auto it = tables_.find(table);
  if (it == tables_.end() || key < 1 || static_cast<size_t>(key) > it->second.values.size())
    throw DatabaseFailure("The row of " + table + " is no longer known.");
  return it->second.values[static_cast<size_t>(key - 1)];
}

void RowKeyRegistry::rekey(const std::string& table, std::int64_t key, size_t column,
                           const Variant& stored) {
  TableKeys& keys = tables_[table];
  std::vector<Variant>& held = keys.values.at(static_cast<size_t>(key - 1));
  auto old = keys.byValues.find(encode(held));
  if (old != keys.byValues.end() && old->second == key) keys.byValues.erase(old);
  held.at(column) = stored;
  keys.byValues[encode(held)] = key;
}

}  // namespace lf
