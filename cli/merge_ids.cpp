// Existence checks of record identifiers for the merge commands.
#include "cli/merge_ids.hpp"

#include <stdexcept>

namespace lf::cli {

void requireRow(DatabaseService& db, const std::string& table, const std::string& keyColumn,
                std::int32_t id, const std::string& what) {
  std::int32_t h =
      db.openRecordset("SELECT " + table + "." + keyColumn + " FROM " + table + " WHERE " + table +
                           "." + keyColumn + "=" + std::to_string(id) + ";",
                       kCursorKeyset, kLockReadOnly);
  bool found = db.hasRecord(h);
  db.closeRecordset(h);
  if (!found) throw std::runtime_error("no " + what + " with ID " + std::to_string(id));
}

}  // namespace lf::cli
