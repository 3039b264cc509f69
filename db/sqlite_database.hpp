// The database service over SQLite: the practice database and the source databases.
//
// Recordsets are keysets: the rows of a statement are read once when it is opened, with the
// rowid of each table of the FROM clause, so that a row can be written back by key. Writes
// through any recordset of this object reach every open recordset holding the same row.
// New rows take their auto-number key when addNewRecord runs and are stored in one INSERT
// by updateRecord. findRecord builds a hash index per searched column set on first use and
// keeps it current across writes, so a search costs O(1).
//
// Text read from a database follows the rule of host/text_encoding.hpp: a value is read whole
// and comes back as valid UTF-8, whatever bytes the file holds.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "db/database_service.hpp"

struct sqlite3;

namespace lf {

class SqliteDatabase : public DatabaseService {
 public:
  SqliteDatabase();
  ~SqliteDatabase() override;
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  // Creates a new, empty database file (refuses an existing one) and connects to it.
  // ":memory:" gives a private in-memory database.
  void createNew(std::string_view path);
  // The practice database runs in write-ahead-log mode; a source database is left in the
  // journal mode it has, so that opening an export never changes the file. Set before connect.
  void setWriteAheadLog(bool on);
  // Opens the file for reading only; nothing is ever written to it. Set before connect.
  void setReadOnly(bool on);
  // How long a statement waits for a lock that another connection holds before it fails
  // with "database is locked". Default 0: it fails at once. Set before connect.
  void setBusyTimeout(int milliseconds);
  // Runs inside connect once the file has been read as a database, before anything is
  // written to it (the switch to write-ahead logging). A failure it throws closes the
  // connection again and goes on to connect's caller, so a file that the check refuses is
  // left exactly as it was.
  void setOpenCheck(std::function<void(SqliteDatabase&)> check);
  // Why the last connect left isOpen false: the SQLite result code (SQLITE_BUSY when another
  // connection holds the file, SQLITE_NOTADB, SQLITE_CANTOPEN ...) and its message. 0 and
  // empty after a connect that succeeded.
  int connectFailureCode() const;
  const std::string& connectFailureMessage() const;
  // Runs one statement that returns no rows (schema and seed statements).
  void executeStatement(std::string_view accessSql);
  // True when the connection holds a table of that name.
  bool hasTable(std::string_view table);
  sqlite3* connection();
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
