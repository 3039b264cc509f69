// The search indexes of findRecord: per recordset and column set, from the compare keys of
// the values to the rows in order, built on first use and kept current by the writes.
#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

std::string Database::Impl::rowKey(const Recordset& r, size_t row, const std::vector<int>& cols) {
  std::string key;
  for (int c : cols) {
    key += compareKey(r.rows[row].get(static_cast<size_t>(c)));
    key += '\x1f';
  }
  return key;
}

std::unordered_map<std::string, std::vector<std::uint32_t>>& Database::Impl::index(
    Recordset& r, const std::vector<int>& cols) {
  std::string name = indexName(cols);
  auto it = r.indexes.find(name);
  if (it != r.indexes.end()) return it->second;
  auto& idx = r.indexes[name];
  idx.reserve(r.rows.size());
  for (size_t row = 0; row < r.rows.size(); ++row)
    idx[rowKey(r, row, cols)].push_back(static_cast<std::uint32_t>(row));
  return idx;
}

}  // namespace lf
