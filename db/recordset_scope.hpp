// Access to the practice database for the client-record procedures: the reference when it
// is usable, and a recordset handle that is closed however its procedure ends.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/module_state.hpp"
#include "db/database_service.hpp"

namespace lf {

// The practice database when it is set and open, otherwise null: every procedure that reads
// or writes it does nothing when this is null.
inline DatabaseService* usablePracticeDatabase() {
  DatabaseService* db = moduleState().DatabaseReference;
  return db != nullptr && db->isOpen() ? db : nullptr;
}

// One open recordset (keyset cursor). The handle is closed when the scope ends, also when a
// failure leaves the procedure; close errors are ignored, as in every clean-up path.
class RecordsetScope {
 public:
  RecordsetScope(DatabaseService& db, std::string_view sql, int lockType)
      : db_(db), handle_(db.openRecordset(sql, kCursorKeyset, lockType)) {}
  ~RecordsetScope() { close(); }
  RecordsetScope(const RecordsetScope&) = delete;
  RecordsetScope& operator=(const RecordsetScope&) = delete;

  std::int32_t handle() const { return handle_; }
  operator std::int32_t() const { return handle_; }

  void close() {
    try {
      if (handle_ != 0 && db_.isRecordsetOpen(handle_)) db_.closeRecordset(handle_);
    } catch (...) {
    }
    handle_ = 0;
  }

 private:
  DatabaseService& db_;
  std::int32_t handle_ = 0;
};

}  // namespace lf
