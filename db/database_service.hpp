// The database service: the one object through which every table is read and written.
//
// The practice database arrives connected (DatabaseReference); each import class makes a
// private one for its source database. Recordsets are keyset cursors addressed by 32-bit
// handles. Values are read as variants and written as text, which the service converts to
// the column's declared type. Statements are in the Access dialect; the service translates
// them and never runs more than one statement per call.
//
// Failures of a call (bad statement, unknown handle or column) are raised as
// DatabaseFailure; a failed connect shows only as isOpen() false.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/variant.hpp"

namespace lf {

class ErrorService;

// Cursor and lock types of openRecordset.
enum CursorType : int { kCursorKeyset = 1 };
enum LockType : int { kLockReadOnly = 1, kLockOptimistic = 3 };

class DatabaseService {
 public:
  virtual ~DatabaseService() = default;

  // Connection set-up and state.
  virtual void setErrorService(ErrorService* errorClass) = 0;
  virtual void setOwnerWindow(void* window) = 0;
  virtual void setApplicationName(std::string_view name) = 0;
  virtual void setDatabaseKind(int kind) = 0;
  virtual void setDatabasePath(std::string_view path) = 0;
  virtual void setCursorLocation(int location) = 0;
  virtual void setOpenMode(int mode) = 0;
  virtual void connect(int mode) = 0;
  virtual bool isOpen() = 0;
  virtual void close() = 0;
  virtual bool getBulkFlag() = 0;
  virtual void setBulkFlag(bool flag) = 0;
  // The date as it stands between the # marks of a statement.
  virtual std::string formatDateForSql(const Date& date) = 0;

  // Recordsets.
  virtual std::int32_t openRecordset(std::string_view sql, int cursorType, int lockType,
                                     int options = -1, std::string_view text = {},
                                     int extra = -1) = 0;
  virtual void closeRecordset(std::int32_t handle) = 0;
  virtual bool isRecordsetOpen(std::int32_t handle) = 0;
  virtual std::int32_t requery(std::int32_t handle) = 0;
  virtual std::int32_t recordCount(std::int32_t handle) = 0;
  virtual bool isEmpty(std::int32_t handle) = 0;

  // Cursor movement and searching.
  virtual bool hasRecord(std::int32_t handle) = 0;
  virtual bool isEOF(std::int32_t handle) = 0;
  virtual void moveNext(std::int32_t handle) = 0;
  virtual std::int32_t getPosition(std::int32_t handle) = 0;
  virtual void setPosition(std::int32_t handle, std::int32_t position) = 0;
  virtual bool findRecord(std::int32_t handle, std::string_view field1, std::string_view value1,
                          std::string_view field2 = {}, std::string_view value2 = {},
                          std::string_view field3 = {}, std::string_view value3 = {}) = 0;
  virtual bool findNext(std::int32_t handle) = 0;

  // Field access and writing.
  virtual Variant getField(std::int32_t handle, std::string_view field) = 0;
  virtual bool setField(std::int32_t handle, std::string_view field, std::string_view value,
                        bool flag1 = false, bool flag2 = false) = 0;
  virtual bool addNewRecord(std::int32_t handle) = 0;
  virtual bool setNewField(std::int32_t handle, std::string_view field, std::string_view value) = 0;
  virtual bool updateRecord(std::int32_t handle) = 0;
  virtual bool deleteRecord(std::int32_t handle) = 0;

  // Grouping of writes: the rows written between begin and end are committed together.
  // Groups nest; only the outermost end commits. A written row stays written: a group
  // never spans more than one source record.
  virtual void beginWriteGroup() = 0;
  virtual void endWriteGroup() = 0;
};

}  // namespace lf
