// The database service over any SQL backend: the object every import and every caller of
// the practice database holds. The contract is DatabaseService's (db/database_service.hpp);
// this class adds what the stand-alone host needs to open, create and check a database.
//
// What is here and not in the backend: the keysets, the row cache, the gathered writes, the
// search indexes, the propagation of writes to open recordsets and the write groups. Rows are
// keyed by the backend's rowid when it has one, otherwise by the table's declared primary key
// (a table without one by all its stored columns).
//
// Obtain one from db/database_factory.hpp; the backend stays out of sight. Tests may build
// one over a backend of their own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/database_service.hpp"
#include "db/sql_backend.hpp"

namespace lf {

class Database : public DatabaseService {
 public:
  // The backend is chosen from the location when the object connects (databaseBackendFor).
  Database();
  // Over a given backend, whatever the location (tests).
  explicit Database(std::unique_ptr<SqlBackend> backend);
  ~Database() override;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Creates a new, empty database at the location (refuses an existing file) and connects
  // to it as a practice database. ":memory:" gives a private in-memory database.
  void createNew(std::string_view location);
  // The practice database keeps a write-ahead log and is held alone; a source database is
  // left in the journal mode it has, so that opening an export never changes the file. Set
  // before connect.
  void setWriteAheadLog(bool on);
  // Opens the database for reading only; nothing is ever written to it. Set before connect.
  void setReadOnly(bool on);
  // How long a statement waits for a lock that another connection holds before it fails.
  // Default 0: it fails at once. Set before connect.
  void setBusyTimeout(int milliseconds);
  // Runs inside connect once the database has been read, before anything is written to it.
  // A failure it throws closes the connection again and goes on to connect's caller, so a
  // database that the check refuses is left exactly as it was.
  void setOpenCheck(std::function<void(Database&)> check);
  // Why the last connect left isOpen false, and the engine's words; None and empty after a
  // connect that succeeded.
  ConnectFailure connectFailure() const;
  const std::string& connectFailureMessage() const;
  // Runs one statement that returns no rows (schema and seed statements).
  void executeStatement(std::string_view accessSql);
  // True when the database holds a table of that name.
  bool hasTable(std::string_view table);
  // The stored columns of a table, in table order; empty when there is no such table.
  std::vector<std::string> tableColumnNames(std::string_view table);
  std::string path() const;

  void setErrorService(ErrorService* errorClass) override;
  void setOwnerWindow(void* window) override;
  void setApplicationName(std::string_view name) override;
  void setDatabaseKind(int kind) override;
  void setDatabasePath(std::string_view path) override;
  void setCursorLocation(int location) override;
  void setOpenMode(int mode) override;
  void connect(int mode) override;
  bool isOpen() override;
  void close() override;
  bool getBulkFlag() override;
  void setBulkFlag(bool flag) override;
  std::string formatDateForSql(const Date& date) override;

  std::int32_t openRecordset(std::string_view sql, int cursorType, int lockType, int options = -1,
                             std::string_view text = {}, int extra = -1) override;
  void closeRecordset(std::int32_t handle) override;
  bool isRecordsetOpen(std::int32_t handle) override;
  std::int32_t requery(std::int32_t handle) override;
  std::int32_t recordCount(std::int32_t handle) override;
  bool isEmpty(std::int32_t handle) override;

  bool hasRecord(std::int32_t handle) override;
  bool isEOF(std::int32_t handle) override;
  void moveNext(std::int32_t handle) override;
  std::int32_t getPosition(std::int32_t handle) override;
  void setPosition(std::int32_t handle, std::int32_t position) override;
  bool findRecord(std::int32_t handle, std::string_view field1, std::string_view value1,
                  std::string_view field2 = {}, std::string_view value2 = {},
                  std::string_view field3 = {}, std::string_view value3 = {}) override;
  bool findNext(std::int32_t handle) override;

  Variant getField(std::int32_t handle, std::string_view field) override;
  bool setField(std::int32_t handle, std::string_view field, std::string_view value,
                bool flag1 = false, bool flag2 = false) override;
  bool addNewRecord(std::int32_t handle) override;
  bool setNewField(std::int32_t handle, std::string_view field, std::string_view value) override;
  bool updateRecord(std::int32_t handle) override;
  bool deleteRecord(std::int32_t handle) override;

  void beginWriteGroup() override;
  void endWriteGroup() override;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace lf
