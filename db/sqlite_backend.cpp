// The SQLite backend of the database service: connection set-up (write-ahead log, exclusive
// lock, read-only files), prepared statements, transactions and table descriptions.
//
// In the declared-keys mode the backend answers that rows have no rowid, so that the service
// keys them as it would on an engine without one; SQLite itself works as always.
#include <fmt/format.h>
#include <sqlite3.h>

#include <filesystem>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "db/sql_backend.hpp"

namespace lf {
namespace {

class SqliteStatement : public SqlStatement {
 public:
  SqliteStatement(sqlite3* db, sqlite3_stmt* stmt, int* lastCode,
                  std::vector<std::string> tablesRead)
      : db_(db), stmt_(stmt), lastCode_(lastCode), tablesRead_(std::move(tablesRead)) {}
  ~SqliteStatement() override { sqlite3_finalize(stmt_); }

  void reset() override {
    sqlite3_reset(stmt_);
    sqlite3_clear_bindings(stmt_);
  }
  void bindNull(int position) override { sqlite3_bind_null(stmt_, position); }
  void bindInteger(int position, std::int64_t value) override {
    sqlite3_bind_int64(stmt_, position, value);
  }
  void bindReal(int position, double value) override {
    sqlite3_bind_double(stmt_, position, value);
  }
  void bindText(int position, std::string_view value) override {
    sqlite3_bind_text(stmt_, position, value.data(), static_cast<int>(value.size()),
                      SQLITE_TRANSIENT);
  }
  bool step() override {
    const int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    *lastCode_ = rc & 0xFF;
    std::string message = sqlite3_errmsg(db_);
    sqlite3_reset(stmt_);
    throw DatabaseFailure(message);
  }
  int columnCount() override { return sqlite3_column_count(stmt_); }
  SqlResultColumn columnInfo(int i) override {
    auto text = [](const char* t) { return std::string(t != nullptr ? t : ""); };
    return {text(sqlite3_column_name(stmt_, i)), text(sqlite3_column_table_name(stmt_, i)),
            text(sqlite3_column_origin_name(stmt_, i)), text(sqlite3_column_decltype(stmt_, i))};
  }
  SqlType type(int i) override {
    switch (sqlite3_column_type(stmt_, i)) {
      case SQLITE_NULL:
        return SqlType::Null;
      case SQLITE_INTEGER:
        return SqlType::Integer;
      case SQLITE_FLOAT:
        return SqlType::Real;
      default:
        return SqlType::Text;
    }
  }
  std::int64_t integer(int i) override { return sqlite3_column_int64(stmt_, i); }
  double real(int i) override { return sqlite3_column_double(stmt_, i); }
  std::string_view text(int i) override {
    const char* t = reinterpret_cast<const char*>(sqlite3_column_text(stmt_, i));
    return {t != nullptr ? t : "", static_cast<size_t>(sqlite3_column_bytes(stmt_, i))};
  }
  bool readOnly() override { return sqlite3_stmt_readonly(stmt_) != 0; }
  const std::vector<std::string>* tablesRead() const override { return &tablesRead_; }

 private:
  sqlite3* db_;
  sqlite3_stmt* stmt_;
  int* lastCode_;  // the backend's: why the last statement failed
  std::vector<std::string> tablesRead_;
};

// Told by SQLite, while a statement is prepared, of every table it reads (the tables under
// a view included, and a table none of whose columns is named). `tables` points at where
// the statement being prepared collects them, null between prepares.
int noteTableRead(void* tables, int action, const char* table, const char*, const char*,
                  const char*) {
  auto* collecting = *static_cast<std::vector<std::string>**>(tables);
  if (collecting == nullptr || action != SQLITE_READ || table == nullptr) return SQLITE_OK;
  auto& names = *collecting;
  for (const std::string& name : names)
    if (sqlite3_stricmp(name.c_str(), table) == 0) return SQLITE_OK;
  names.emplace_back(table);
  return SQLITE_OK;
}

// The file name as an SQLite URI path: the characters a URI gives a meaning are escaped.
std::string uriPath(const std::string& path) {
  std::string uri = "file:";
  for (char c : path) {
    if (c == '%' || c == '?' || c == '#')
      uri += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    else
      uri += c;
  }
  return uri;
}

ConnectFailure failureOf(int code) {
  switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return ConnectFailure::Busy;
    case SQLITE_READONLY:
      return ConnectFailure::ReadOnly;
    case SQLITE_NOTADB:
      return ConnectFailure::NotADatabase;
    case SQLITE_CANTOPEN:
      return ConnectFailure::CannotOpen;
    default:
      return ConnectFailure::Other;
  }
}

// A connection is used by one thread at a time: SQLite need not lock it on each call.
constexpr int kOneThread = SQLITE_OPEN_NOMUTEX;

class SqliteBackend : public SqlBackend {
 public:
  explicit SqliteBackend(SqliteKeys keys) : keys_(keys) {}
  ~SqliteBackend() override { disconnect(); }

  SqlDialect dialect() const override { return SqlDialect::SQLite; }
  bool hasRowid() const override { return keys_ == SqliteKeys::Rowid; }
  std::string rowidName() const override { return "rowid"; }

  ConnectFailure connect(std::string_view location, const ConnectOptions& options,
                         std::string& message) override {
    disconnect();
    options_ = options;
    const std::string p(location);
    auto refuse = [&](ConnectFailure why, std::string text) {
      disconnect();
      message = std::move(text);
      return why;
    };
    if (p.empty()) return refuse(ConnectFailure::NoLocation, "No database path was given.");
    if (options.create) {
      if (sqlite3_open_v2(p.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | kOneThread,
                          nullptr) != SQLITE_OK)
        return refuse(ConnectFailure::CannotOpen, db_ ? sqlite3_errmsg(db_) : "cannot create");
    } else {
      if (p != ":memory:" && !std::filesystem::is_regular_file(p))
        return refuse(ConnectFailure::CannotOpen, "No such file.");
      if (sqlite3_open_v2(p.c_str(), &db_, SQLITE_OPEN_READWRITE | kOneThread, nullptr) !=
          SQLITE_OK)
        return refuse(db_ ? failureOf(sqlite3_errcode(db_)) : ConnectFailure::CannotOpen,
                      db_ ? sqlite3_errmsg(db_) : "Cannot open the file.");
      if (p != ":memory:" && !writable()) {
        // The system refuses writing, and a lock or a shared log would need it. With no log
        // beside it the file holds everything committed: it is read as it stands.
        std::error_code error;
        const auto logSize = std::filesystem::file_size(p + "-wal", error);
        if (error || logSize == 0) {
          sqlite3_close_v2(db_);
          db_ = nullptr;
          if (sqlite3_open_v2((uriPath(p) + "?immutable=1").c_str(), &db_,
                              SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | kOneThread,
                              nullptr) != SQLITE_OK)
            return refuse(db_ ? failureOf(sqlite3_errcode(db_)) : ConnectFailure::CannotOpen,
                          db_ ? sqlite3_errmsg(db_) : "Cannot open the file.");
        }
      }
    }
    // Installed once: installing it later would make SQLite prepare every statement again.
    sqlite3_set_authorizer(db_, noteTableRead, &collecting_);
    // Settings, then the first read, which takes the locks and proves the file a database.
    try {
      sqlite3_busy_timeout(db_, options.busyTimeoutMs);
      // A practice database is held alone from the first read on, and its log lives in this
      // process's memory; an exclusive lock needs a file open for writing.
      if (options.writeAheadLog && writable()) exec("PRAGMA locking_mode=EXCLUSIVE;");
      if (options.readOnly) exec("PRAGMA query_only=ON;");
      exec("PRAGMA foreign_keys=OFF;");
      exec("PRAGMA cache_size=-65536;");
      exec("SELECT count(*) FROM sqlite_master;");
    } catch (const DatabaseFailure& failure) {
      // Not a database, a damaged one, one that another connection holds.
      return refuse(lastCode_ != 0 ? failureOf(lastCode_) : ConnectFailure::Other, failure.what());
    }
    return ConnectFailure::None;
  }

  ConnectFailure finishConnect(std::string& message) override {
    if (!options_.writeAheadLog || options_.readOnly) return ConnectFailure::None;
    if (!writable()) {
      message = "The file is read-only.";
      return ConnectFailure::ReadOnly;
    }
    try {
      exec("PRAGMA journal_mode=WAL;");
      exec("PRAGMA synchronous=NORMAL;");
      // Each source record commits on its own: checkpoint seldom.
      exec("PRAGMA wal_autocheckpoint=100000;");
    } catch (const DatabaseFailure& failure) {
      message = failure.what();
      return lastCode_ != 0 ? failureOf(lastCode_) : ConnectFailure::Other;
    }
    return ConnectFailure::None;
  }

  void disconnect() override {
    if (db_ != nullptr) sqlite3_close_v2(db_);
    db_ = nullptr;
    lastCode_ = 0;
  }
  bool connected() const override { return db_ != nullptr; }

  std::unique_ptr<SqlStatement> prepare(std::string_view sql) override {
    requireOpen();
    sqlite3_stmt* stmt = nullptr;
    const char* tail = nullptr;
    std::vector<std::string> tablesRead;
    collecting_ = &tablesRead;
    const int rc = sqlite3_prepare_v2(db_, sql.data(), static_cast<int>(sql.size()), &stmt, &tail);
    collecting_ = nullptr;
    if (rc != SQLITE_OK) {
      lastCode_ = sqlite3_errcode(db_) & 0xFF;
      sqlite3_finalize(stmt);
      throw DatabaseFailure(sqlite3_errmsg(db_));
    }
    auto prepared = std::make_unique<SqliteStatement>(db_, stmt, &lastCode_, std::move(tablesRead));
    if (tail != nullptr &&
        !GeneralUtilities::isBlank(std::string_view(tail, sql.data() + sql.size() - tail)))
      throw DatabaseFailure("Only one statement is allowed.");
    if (stmt == nullptr) throw DatabaseFailure("The statement is empty.");
    return prepared;
  }

  void exec(std::string_view sql) override {
    requireOpen();
    auto stmt = prepare(sql);
    while (stmt->step()) {
    }
  }

  void begin() override { exec("BEGIN;"); }
  void commit() override { exec("COMMIT;"); }
  void rollback() override {
    if (db_ != nullptr && sqlite3_get_autocommit(db_) == 0)
      sqlite3_exec(db_, "ROLLBACK;", nullptr, nullptr, nullptr);
  }
  bool inTransaction() override { return db_ != nullptr && sqlite3_get_autocommit(db_) == 0; }

  std::int64_t lastInsertKey() override { return sqlite3_last_insert_rowid(db_); }
  std::int64_t changeCounter() override { return sqlite3_total_changes64(db_); }

  std::vector<SqlTableColumn> tableColumns(std::string_view table) override {
    requireOpen();
    std::vector<SqlTableColumn> columns;
    auto stmt = prepare("PRAGMA table_xinfo(\"" + std::string(table) + "\")");
    while (stmt->step()) {
      const std::int64_t hidden = stmt->integer(6);
      if (hidden == 1) continue;  // a hidden column of a virtual table
      SqlTableColumn c;
      c.generated = hidden >= 2;
      c.name = std::string(stmt->text(1));
      c.declaredType = std::string(stmt->text(2));
      c.hasDefault = stmt->type(4) != SqlType::Null;
      if (c.hasDefault) c.defaultText = std::string(stmt->text(4));
      c.keyPosition = static_cast<int>(stmt->integer(5));
      columns.push_back(std::move(c));
    }
    return columns;
  }

  bool hasTable(std::string_view table) override {
    auto stmt = prepare("SELECT 1 FROM sqlite_master WHERE type='table' AND name=? COLLATE NOCASE");
    stmt->bindText(1, table);
    return stmt->step();
  }

 private:
  bool writable() { return sqlite3_db_readonly(db_, "main") == 0; }
  void requireOpen() {
    if (db_ == nullptr) throw DatabaseFailure("The connection to the database is not open.");
  }

  SqliteKeys keys_;
  sqlite3* db_ = nullptr;
  ConnectOptions options_;
  int lastCode_ = 0;
  std::vector<std::string>* collecting_ = nullptr;  // the tables read, while preparing
};

}  // namespace

std::unique_ptr<SqlBackend> makeSqliteBackend(SqliteKeys keys) {
  return std::make_unique<SqliteBackend>(keys);
}

}  // namespace lf
