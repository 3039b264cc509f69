// The database service: the one object through which every table is read and written.
//
// The practice database arrives connected (DatabaseReference); each import class makes a
// private one for its source database (db/database_factory.hpp, by location). What follows
// is the whole contract; db/database.hpp implements it over any SQL backend, and every
// backend passes the same suite (tests/db/database_service_test.cpp).
//
// OWNERSHIP. Whoever obtains a database object owns it; the practice database belongs to
// the host, which connects and closes it: the component only closes the recordsets it
// opened. Closing the connection (close, connect again, or destroying the object) stores the
// writes still gathered, commits an open write group and ends every handle; a write that
// cannot be stored then is raised by close, and reported to the error service
// (setErrorService) when the object is destroyed.
//
// HANDLES. openRecordset and requery issue a handle: a positive 32-bit integer, never 0 and
// never issued twice by one object, meaningful only to that object. A handle stays valid
// until closeRecordset, requery of it, or the connection closing; any call with a dead or
// unknown handle raises DatabaseFailure, except isRecordsetOpen, which answers false (also
// for 0, so clean-up after a partial run closes only what was opened), and closeRecordset,
// which does nothing.
//
// KEYSETS. A recordset holds the rows its statement selected when it was opened (its keyset)
// in the statement's order: rows added afterwards by other recordsets or statements stay
// out until requery; rows this recordset adds join it at the end, whether or not they match
// its statement; rows it deletes leave it. Values written through any recordset of the
// object reach every open recordset holding the same row at once. recordCount is exact.
// A statement that names no table row by row (DISTINCT, GROUP BY, aggregates, UNION, a view
// or sub-query) gives read-only rows.
//
// CURSOR. hasRecord puts the cursor on the first row and answers whether there is one;
// isEOF is true past the last row. moveNext at EOF raises. getPosition answers the row's
// place (0 is the first); setPosition returns to it, and a negative or too large position
// puts the cursor at EOF. findRecord searches from the first row for the first row whose
// fields equal the values (text without letter case, numbers by value, a blank value
// matches nothing) and leaves the cursor there, or at EOF when none matches; findNext goes
// on to the next match of the last findRecord on that handle, or to EOF (its answer may be
// ignored: callers test isEOF). After deleteRecord the cursor stands on no row: getField
// raises, and the next moveNext moves onto the row after the deleted one (EOF when it was
// the last). requery re-runs the statement into a new handle, cursor on the first row, and
// ends the old handle.
//
// WRITES. Values are written as text and converted to the column's declared type (an ID as
// digits, a date in the default text form, a boolean as True/False, money as "$1,234.50"
// or "(12.50)"); text that is no value of that type raises "Data type mismatch" naming the
// column. setField writes one column of the current row and is permanent without
// updateRecord: consecutive writes to one row may be gathered into one statement, which is
// stored before any other statement of the object runs, so every reader (a recordset,
// executeStatement, another object after close) sees it. addNewRecord starts a row;
// setNewField sets its columns (the last value of a column counts); getField on the row
// being added answers the values set so far, the new auto-number key (handed out by
// addNewRecord, before updateRecord) and null for the rest. updateRecord stores it in one
// insert, makes it the current row, with the column defaults, and a findRecord on the same
// handle finds it. Writes through a read-only recordset, to an expression column, or to a
// column of another table than the first of the FROM clause on a new row raise.
//
// WRITE GROUPS. beginWriteGroup/endWriteGroup nest; only the outermost end commits. A
// group's depth changes only once its statement succeeded. A COMMIT that fails is rolled
// back and raised: no group stays open, and every open recordset reads its rows again when
// next used, as if opened then. Outside a group each stored write commits on its own.
//
// STATEMENTS. Statements are in the Access dialect (#dates#, True/False, [names], Is Null,
// Like with * and ?, &); the service translates them for its backend in one place
// (db/access_sql.hpp) and never runs more than one statement per call: a second statement
// after ";" raises and runs nothing.
//
// FAILURES. A failing call raises DatabaseFailure; a failed connect shows only as isOpen()
// false. Reading a field on no row raises.
//
// UNDEFINED. Using a handle of one object on another; writing a row's key column while other
// recordsets hold the row (they keep the old key); two rows of equal values in a table
// without a declared key on a backend without rowids (they are one row to the service);
// re-entering the object from within one of its own calls; use from several threads.
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

  // Grouping of writes: the rows written between begin and end are committed together
  // (WRITE GROUPS above). A group holds whole source records, never part of one.
  virtual void beginWriteGroup() = 0;
  virtual void endWriteGroup() = 0;
};

}  // namespace lf
