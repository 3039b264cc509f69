// The SQL backend under the database service: the few things the service needs of a
// relational engine, and nothing of recordsets, keysets or the Access dialect.
//
// The service (db/database.hpp) keeps the keysets, the row cache, the gathered writes, the
// search indexes, the propagation of writes to open recordsets and the write groups; a backend
// only prepares and runs statements of its own dialect, reports the columns of a table and
// counts the rows its connection changed. SQLite (db/sqlite_backend.hpp) is the one backend
// today; another engine is another implementation of these two interfaces plus a dialect of
// the statement translator.
//
// Every call either succeeds or throws DatabaseFailure carrying the engine's message. A
// backend never runs more than one statement per call.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/sql_dialect.hpp"

namespace lf {

// Storage class of one value of a result row.
enum class SqlType { Null, Integer, Real, Text };

// Where a result column comes from: empty table and origin for an expression.
struct SqlResultColumn {
  std::string name;
  std::string table;
  std::string origin;
  std::string declaredType;  // empty for an expression
};

// One stored column of a table, in table order.
struct SqlTableColumn {
  std::string name;
  std::string declaredType;
  bool hasDefault = false;
  std::string defaultText;  // the default as written in the schema ('x', 0, CURRENT_TIMESTAMP)
  int keyPosition = 0;      // 1-based position in the declared primary key, 0 when not in it
  bool generated = false;   // computed from other columns: never written, no part of a key
};

// One prepared statement. Positions of parameters start at 1, of result columns at 0.
// REQUIRES: the backend that prepared it outlives it.
class SqlStatement {
 public:
  virtual ~SqlStatement() = default;
  // Back to before the first step, bindings cleared.
  virtual void reset() = 0;
  virtual void bindNull(int position) = 0;
  virtual void bindInteger(int position, std::int64_t value) = 0;
  virtual void bindReal(int position, double value) = 0;
  virtual void bindText(int position, std::string_view value) = 0;
  // Runs to the next result row: true when a row stands, false when the statement is done.
  virtual bool step() = 0;
  virtual int columnCount() = 0;
  virtual SqlResultColumn columnInfo(int column) = 0;
  virtual SqlType type(int column) = 0;
  virtual std::int64_t integer(int column) = 0;
  virtual double real(int column) = 0;
  // The bytes as stored, a NUL included; valid until the next step or reset.
  virtual std::string_view text(int column) = 0;
  // True when the statement reads only (a recordset statement must).
  virtual bool readOnly() = 0;
  // Every table the statement reads, a view standing for the tables under it; null when the
  // backend cannot tell.
  virtual const std::vector<std::string>* tablesRead() const { return nullptr; }
};

// Why a connection could not be made.
enum class ConnectFailure { None, NoLocation, Busy, ReadOnly, NotADatabase, CannotOpen, Other };

// How a location is opened. Set before connect.
struct ConnectOptions {
  // Keep a write-ahead log and hold the database alone (the practice database).
  bool writeAheadLog = false;
  // Nothing is ever written.
  bool readOnly = false;
  // How long a statement waits for a lock that another connection holds; 0 fails at once.
  int busyTimeoutMs = 0;
  // Make a new, empty database (refusing an existing one) instead of opening one.
  bool create = false;
};

class SqlBackend {
 public:
  virtual ~SqlBackend() = default;

  virtual SqlDialect dialect() const = 0;
  // True when every table row carries a hidden integer key that grows with each insert
  // (SQLite's rowid), named by rowidName(). Without it the service keys rows by the
  // declared primary keys.
  virtual bool hasRowid() const = 0;
  virtual std::string rowidName() const = 0;

  // Opens the location and reads it once (which takes the locks and proves it a database),
  // but writes nothing. Answers None, or why not; a refused location leaves it disconnected.
  virtual ConnectFailure connect(std::string_view location, const ConnectOptions& options,
                                 std::string& message) = 0;
  // After the caller has checked the opened database: turns on what writes to the file (the
  // log mode). Answers None, or why not; the caller then disconnects.
  virtual ConnectFailure finishConnect(std::string& message) = 0;
  virtual void disconnect() = 0;
  virtual bool connected() const = 0;

  // One statement of the backend's dialect; a second statement after it is refused.
  virtual std::unique_ptr<SqlStatement> prepare(std::string_view sql) = 0;
  // Runs one statement that returns no rows.
  virtual void exec(std::string_view sql) = 0;

  virtual void begin() = 0;
  virtual void commit() = 0;
  virtual void rollback() = 0;
  virtual bool inTransaction() = 0;

  // The hidden key of the row the last INSERT of this connection added (hasRowid only).
  virtual std::int64_t lastInsertKey() = 0;
  // Rows inserted, updated or deleted by this connection since it opened; only its own
  // writes move it while the database is held alone.
  virtual std::int64_t changeCounter() = 0;

  // The columns of a table in table order, generated ones marked; empty when there is no
  // such table.
  virtual std::vector<SqlTableColumn> tableColumns(std::string_view table) = 0;
  virtual bool hasTable(std::string_view table) = 0;
};

// The SQLite backend. Without rowids it keys rows by the declared keys only, as an engine
// without rowids must; the test suite runs the service both ways.
enum class SqliteKeys { Rowid, DeclaredKeysOnly };
std::unique_ptr<SqlBackend> makeSqliteBackend(SqliteKeys keys = SqliteKeys::Rowid);

}  // namespace lf
