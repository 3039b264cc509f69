// A value written through one recordset reaches every open recordset holding the same row:
// found by the row's key, its cell and indexes updated.
#include <algorithm>

#include "db/database_impl.hpp"

namespace lf {

using namespace database_detail;

void Database::Impl::buildKeyMaps(Recordset& r) {
  if (r.keyMapsBuilt) return;
  r.keyMaps.assign(r.slotCount, {});
  for (size_t s = 0; s < r.slotCount; ++s) {
    r.keyMaps[s].reserve(r.rows.size());
    for (size_t row = 0; row < r.rows.size(); ++row)
      r.keyMaps[s].emplace(r.keyOf(row, s), static_cast<std::uint32_t>(row));
  }
  r.keyMapsBuilt = true;
}

// Updates a cached cell and every index that holds its column.
void Database::Impl::changeCell(Recordset& r, size_t row, int col, const Variant& value) {
  for (auto& [name, idx] : r.indexes) {
    if (name.find(std::to_string(col) + ",") == std::string::npos) continue;
    std::vector<int> cols = indexColumns(name);
    if (std::find(cols.begin(), cols.end(), col) == cols.end()) continue;
    std::string oldKey = rowKey(r, row, cols);
    auto& list = idx[oldKey];
    list.erase(std::remove(list.begin(), list.end(), static_cast<std::uint32_t>(row)), list.end());
    r.rows[row].set(static_cast<size_t>(col), value);
    auto& target = idx[rowKey(r, row, cols)];
    target.insert(std::lower_bound(target.begin(), target.end(), static_cast<std::uint32_t>(row)),
                  static_cast<std::uint32_t>(row));
  }
  r.rows[row].set(static_cast<size_t>(col), value);
}

// A written value reaches every open recordset that holds the same row and column.
void Database::Impl::propagate(const std::string& table, std::int64_t key,
                               const std::string& column, const Variant& value) {
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

}  // namespace lf
