// The Access reader: libmdb in a child process writing a SQLite copy, and the parent that
// waits for it with a time bound and turns every way it can end into one line.
#include "db/access_export_copy.hpp"

#include <fcntl.h>
#include <mdbtools.h>
#include <poll.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "base/failure.hpp"
#include "base/variant.hpp"

namespace lf {
namespace {

constexpr char kSqliteHeader[] = "SQLite format 3";  // followed by a NUL
constexpr char kJetHeader[] = "Standard Jet DB";
constexpr char kAceHeader[] = "Standard ACE DB";
constexpr size_t kBindSize = 1 << 20;  // the longest memo value read whole

// The Access type name of a libmdb column type, and the declared type the copy gives it. The
// declared types are chosen so that the database service reads each back as the right kind.
struct TypeNames {
  const char* access;
  std::string declared;
};

TypeNames typeNames(const MdbColumn& col, bool jet3) {
  switch (col.col_type) {
    case MDB_BOOL:
      return {"Boolean", "BOOLEAN"};
    case MDB_BYTE:
      return {"Byte", "TINYINT"};
    case MDB_INT:
      return {"Integer", "SMALLINT"};
    case MDB_LONGINT:
      return {"Long Integer", "INTEGER"};
    case MDB_MONEY:
      return {"Currency", "CURRENCY"};
    case MDB_FLOAT:
      return {"Single", "SINGLE"};
    case MDB_DOUBLE:
      return {"Double", "DOUBLE"};
    case MDB_DATETIME:
      return {"DateTime", "DATETIME"};
    case MDB_BINARY:
      return {"Binary", "BINARY(" + std::to_string(col.col_size) + ")"};
    case MDB_TEXT:  // Jet 4 keeps text as UCS-2 and gives its size in bytes
      return {"Text", "VARCHAR(" + std::to_string(jet3 ? col.col_size : col.col_size / 2) + ")"};
    case MDB_OLE:
      return {"OLE Object", "LONGBINARY"};
    case MDB_MEMO:
      return {"Memo", "LONGTEXT"};
    case MDB_REPID:
      return {"Replication ID", "GUID"};
    case MDB_NUMERIC:
      return {"Decimal", "DECIMAL(" + std::to_string(col.col_prec) + "," +
                             std::to_string(col.col_scale) + ")"};
    default:
      return {"Complex", "INTEGER"};
  }
}

std::string quoteName(const std::string& name) {
  std::string out = "\"";
  for (char c : name) {
    out += c;
    if (c == '"') out += '"';
  }
  return out + "\"";
}

// What the child tells the parent, one line each: "T<tab>table", "C<tab>column<tab>access
// type<tab>declared type", "R<tab>rows" at the end of a table, "E<tab>message" when it gives up.
void sendLine(int fd, const std::string& line) {
  std::string out = line + "\n";
  const char* p = out.data();
  size_t left = out.size();
  while (left > 0) {
    ssize_t n = ::write(fd, p, left);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return;
    p += n;
    left -= static_cast<size_t>(n);
  }
}

void checkSqlite(sqlite3* db, int rc, const char* what) {
  if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW)
    throw Failure(std::string("cannot write the copy (") + what + "): " + sqlite3_errmsg(db));
}

// Binds the current value of one column of the fetched row.
void bindValue(MdbHandle* mdb, MdbColumn* col, const char* bound, int length, sqlite3_stmt* insert,
               int index) {
  if (col->col_type == MDB_BOOL) {
    sqlite3_bind_int(insert, index, bound[0] == '1' ? 1 : 0);
    return;
  }
  if (length <= 0) {
    sqlite3_bind_null(insert, index);
    return;
  }
  switch (col->col_type) {
    case MDB_DATETIME: {
      // Read the serial itself: libmdb formats only part of the date range.
      const Date date{mdb_get_double(mdb->pg_buf, col->cur_value_start)};
      if (col->cur_value_len == 8 && date.isValid())
        sqlite3_bind_text(insert, index, date.toIso().c_str(), -1, SQLITE_TRANSIENT);
      else
        sqlite3_bind_null(insert, index);
      return;
    }
    case MDB_OLE: {
      size_t size = 0;
      void* data = mdb_ole_read_full(mdb, col, &size);
      if (data == nullptr) {
        sqlite3_bind_null(insert, index);
        return;
      }
      sqlite3_bind_blob64(insert, index, data, size, SQLITE_TRANSIENT);
      g_free(data);
      return;
    }
    case MDB_BINARY:
      sqlite3_bind_blob(insert, index, bound, length, SQLITE_TRANSIENT);
      return;
    default:
      sqlite3_bind_text(insert, index, bound, -1, SQLITE_TRANSIENT);
  }
}

void copyTable(MdbHandle* mdb, MdbCatalogEntry* entry, bool jet3, sqlite3* db, int out) {
  MdbTableDef* table = mdb_read_table(entry);
  if (table == nullptr) throw Failure(std::string("cannot read the table ") + entry->object_name);
  mdb_read_columns(table);
  mdb_rewind_table(table);
  const std::string name = entry->object_name;
  sendLine(out, "T\t" + name);

  const unsigned count = table->num_cols;
  std::vector<std::vector<char>> buffers(count, std::vector<char>(kBindSize));
  std::vector<int> lengths(count, 0);
  std::string create = "CREATE TABLE " + quoteName(name) + " (";
  std::string insertSql = "INSERT INTO " + quoteName(name) + " VALUES (";
  for (unsigned i = 0; i < count; ++i) {
    auto* col = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
    const TypeNames types = typeNames(*col, jet3);
    sendLine(out, std::string("C\t") + col->name + "\t" + types.access + "\t" + types.declared);
    create += (i ? ", " : "") + quoteName(col->name) + " " + types.declared;
    insertSql += i ? ", ?" : "?";
    mdb_bind_column(table, static_cast<int>(i) + 1, buffers[i].data(), &lengths[i]);
  }
  checkSqlite(db, sqlite3_exec(db, (create + ");").c_str(), nullptr, nullptr, nullptr), "table");
  sqlite3_stmt* insert = nullptr;
  checkSqlite(db, sqlite3_prepare_v2(db, (insertSql + ");").c_str(), -1, &insert, nullptr),
              "insert");
  std::int64_t rows = 0;
  while (mdb_fetch_row(table)) {
    for (unsigned i = 0; i < count; ++i) {
      auto* col = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
      if (col->col_type == MDB_DATETIME)  // the row's page holds the serial until the next read
        bindValue(mdb, col, buffers[i].data(), lengths[i], insert, static_cast<int>(i) + 1);
    }
    for (unsigned i = 0; i < count; ++i) {
      auto* col = static_cast<MdbColumn*>(g_ptr_array_index(table->columns, i));
      if (col->col_type != MDB_DATETIME)
        bindValue(mdb, col, buffers[i].data(), lengths[i], insert, static_cast<int>(i) + 1);
    }
    checkSqlite(db, sqlite3_step(insert), "row");
    sqlite3_reset(insert);
    ++rows;
  }
  sqlite3_finalize(insert);
  const std::int64_t declared = table->num_rows;
  mdb_free_tabledef(table);
  if (rows != declared)
    throw Failure("the table " + name + " holds " + std::to_string(declared) + " rows but only " +
                  std::to_string(rows) + " could be read");
  sendLine(out, "R\t" + std::to_string(rows));
}

// The child's work: every user table of the Access file into the SQLite file.
void copyInChild(const std::string& accessPath, const std::string& sqlitePath, int out) {
  MdbHandle* mdb = mdb_open(accessPath.c_str(), MDB_NOFLAGS);
  if (mdb == nullptr) throw Failure("cannot be opened as an Access file");
  mdb_set_bind_size(mdb, kBindSize);
  if (!mdb_read_catalog(mdb, MDB_TABLE)) throw Failure("its table list cannot be read");
  const bool jet3 = mdb->f->jet_version == MDB_VER_JET3;
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(sqlitePath.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                      nullptr) != SQLITE_OK)
    throw Failure("cannot create the copy " + sqlitePath);
  checkSqlite(db, sqlite3_exec(db, "PRAGMA journal_mode=OFF;", nullptr, nullptr, nullptr),
              "journal");
  checkSqlite(db, sqlite3_exec(db, "BEGIN;", nullptr, nullptr, nullptr), "begin");
  for (unsigned i = 0; i < mdb->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(mdb->catalog, i));
    if (entry->object_type == MDB_TABLE && mdb_is_user_table(entry))
      copyTable(mdb, entry, jet3, db, out);
  }
  checkSqlite(db, sqlite3_exec(db, "COMMIT;", nullptr, nullptr, nullptr), "commit");
  checkSqlite(db, sqlite3_close(db), "close");
  mdb_close(mdb);
}

std::vector<std::string> splitTabs(const std::string& line) {
  std::vector<std::string> parts;
  size_t start = 0;
  for (size_t tab; (tab = line.find('\t', start)) != std::string::npos; start = tab + 1)
    parts.push_back(line.substr(start, tab - start));
  parts.push_back(line.substr(start));
  return parts;
}

// The last line of the reader's talk that holds words, trimmed and cut to 200 characters.
std::string lastSentence(const std::string& talk) {
  size_t end = talk.size();
  while (end > 0) {
    const size_t begin = talk.find_last_of('\n', end - 1);
    const size_t from = begin == std::string::npos ? 0 : begin + 1;
    std::string line = talk.substr(from, end - from);
    for (char& c : line)
      if (static_cast<unsigned char>(c) < 0x20) c = ' ';
    const size_t first = line.find_first_not_of(' ');
    if (first != std::string::npos &&
        std::any_of(line.begin(), line.end(), [](char c) { return std::isalpha(c); })) {
      line = line.substr(first, line.find_last_not_of(' ') - first + 1);
      return line.size() > 200 ? line.substr(0, 200) : line;
    }
    if (begin == std::string::npos) break;
    end = begin;
  }
  return "";
}

void removeCopy(const std::string& path) {
  std::error_code ignored;
  for (const char* suffix : {"", "-journal", "-wal", "-shm"})
    std::filesystem::remove(path + suffix, ignored);
}

}  // namespace

SourceFileKind sourceFileKind(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return SourceFileKind::Missing;
  if (status.type() == fs::file_type::directory) return SourceFileKind::Folder;
  std::ifstream in(path, std::ios::binary);
  char head[32] = {};
  in.read(head, sizeof head);
  const std::streamsize got = in.gcount();
  if (got == 0) return SourceFileKind::Empty;
  if (got >= 16 && std::memcmp(head, kSqliteHeader, 16) == 0) return SourceFileKind::SQLite;
  if (got >= 21 && std::memcmp(head, "\0\1\0\0", 4) == 0) {
    if (std::memcmp(head + 4, kAceHeader, 16) == 0) return SourceFileKind::ACE;
    if (std::memcmp(head + 4, kJetHeader, 16) == 0) {
      const unsigned char version = static_cast<unsigned char>(head[0x14]);
      return version == 0   ? SourceFileKind::Jet3
             : version == 1 ? SourceFileKind::Jet4
                            : SourceFileKind::ACE;
    }
  }
  return SourceFileKind::Other;
}

std::string sourceFileKindName(SourceFileKind kind) {
  switch (kind) {
    case SourceFileKind::Missing:
      return "missing";
    case SourceFileKind::Folder:
      return "folder";
    case SourceFileKind::Empty:
      return "empty";
    case SourceFileKind::SQLite:
      return "SQLite";
    case SourceFileKind::Jet3:
      return "Access (Jet 3)";
    case SourceFileKind::Jet4:
      return "Access (Jet 4)";
    case SourceFileKind::ACE:
      return "Access (ACE)";
    case SourceFileKind::Other:
      break;
  }
  return "unknown";
}

std::vector<SourceTable> copyAccessFileToSqlite(const std::string& accessPath,
                                                const std::string& sqlitePath, int timeoutSeconds) {
  const std::string named = "the Access file '" + accessPath + "'";
  if (!isAccessFile(sourceFileKind(accessPath))) throw Failure(named + " is not an Access file");
  // The child reports on one pipe; what libmdb prints goes to a second one, whose last line
  // tells the user why a damaged file was refused.
  int pipeFds[2];
  int talkFds[2];
  if (::pipe2(pipeFds, O_CLOEXEC) != 0) throw Failure("cannot read " + named + ": no pipe");
  if (::pipe2(talkFds, O_CLOEXEC) != 0) {
    ::close(pipeFds[0]);
    ::close(pipeFds[1]);
    throw Failure("cannot read " + named + ": no pipe");
  }
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child < 0) {
    for (int fd : {pipeFds[0], pipeFds[1], talkFds[0], talkFds[1]}) ::close(fd);
    throw Failure("cannot read " + named + ": no process for the reader");
  }
  if (child == 0) {
    ::close(pipeFds[0]);
    ::close(talkFds[0]);
    ::dup2(talkFds[1], STDOUT_FILENO);
    ::dup2(talkFds[1], STDERR_FILENO);
    int status = 0;
    try {
      copyInChild(accessPath, sqlitePath, pipeFds[1]);
    } catch (const std::exception& e) {
      sendLine(pipeFds[1], std::string("E\t") + e.what());
      status = 1;
    }
    std::fflush(nullptr);
    ::_exit(status);  // no destructors or leak checks of the parent's state in the child
  }
  ::close(pipeFds[1]);
  ::close(talkFds[1]);

  using Clock = std::chrono::steady_clock;
  const auto deadline = Clock::now() + std::chrono::seconds(timeoutSeconds);
  std::string received;
  std::string talk;
  bool timedOut = false;
  pollfd fds[2] = {{pipeFds[0], POLLIN, 0}, {talkFds[0], POLLIN, 0}};
  while (fds[0].fd >= 0 || fds[1].fd >= 0) {
    int wait = -1;
    if (timeoutSeconds > 0) {
      const auto left =
          std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
      if (left <= 0) {
        timedOut = true;
        break;
      }
      wait = static_cast<int>(left);
    }
    const int ready = ::poll(fds, 2, wait);
    if (ready <= 0) continue;  // interrupted, or the deadline, which is checked above
    for (int k = 0; k < 2; ++k) {
      if (fds[k].fd < 0 || fds[k].revents == 0) continue;
      char chunk[4096];
      const ssize_t n = ::read(fds[k].fd, chunk, sizeof chunk);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) {
        ::close(fds[k].fd);
        fds[k].fd = -1;
        continue;
      }
      std::string& into = k == 0 ? received : talk;
      into.append(chunk, static_cast<size_t>(n));
      if (k == 1 && talk.size() > 65536) talk.erase(0, talk.size() - 4096);
    }
  }
  for (const pollfd& p : fds)
    if (p.fd >= 0) ::close(p.fd);
  if (timedOut) ::kill(child, SIGKILL);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }

  std::vector<SourceTable> tables;
  std::string error;
  size_t start = 0;
  for (size_t end; (end = received.find('\n', start)) != std::string::npos; start = end + 1) {
    const std::vector<std::string> parts = splitTabs(received.substr(start, end - start));
    if (parts[0] == "T" && parts.size() == 2) {
      tables.push_back({parts[1], {}, 0});
    } else if (parts[0] == "C" && parts.size() == 4 && !tables.empty()) {
      tables.back().columns.push_back({parts[1], parts[2], parts[3]});
    } else if (parts[0] == "R" && parts.size() == 2 && !tables.empty()) {
      tables.back().rows = std::stoll(parts[1]);
    } else if (parts[0] == "E" && parts.size() >= 2) {
      error = received.substr(start + 2, end - start - 2);
    }
  }
  const std::string said = lastSentence(talk);
  std::string failure;
  if (timedOut)
    failure = "cannot read " + named + ": the reader gave up after " +
              std::to_string(timeoutSeconds) + " s (the file may be damaged)";
  else if (WIFSIGNALED(status))
    failure = "cannot read " + named + ": it is damaged (the reader stopped on signal " +
              std::to_string(WTERMSIG(status)) + (said.empty() ? "" : " after: " + said) + ")";
  else if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
    failure = "cannot read " + named + ": " +
              (error.empty() ? std::string("the reader failed") : error) +
              (said.empty() ? "" : " (" + said + ")") + "; is it damaged or encrypted?";
  if (!failure.empty()) {
    removeCopy(sqlitePath);
    throw Failure(failure);
  }
  return tables;
}

SourceFileCopy::SourceFileCopy(const std::string& path, const std::string& what)
    : kind_(sourceFileKind(path)) {
  const std::string named = what + " '" + path + "'";
  switch (kind_) {
    case SourceFileKind::Missing:
      throw Failure(named + " does not exist");
    case SourceFileKind::Folder:
      throw Failure(named + " is a folder, not a file");
    case SourceFileKind::Empty:
      throw Failure(named + " is empty");
    case SourceFileKind::Other:
      throw Failure(named + " is neither a SQLite nor an Access database");
    case SourceFileKind::SQLite:
      databasePath_ = path;
      return;
    default:
      break;
  }
  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/lfimport-source-XXXXXX";
  const int fd = ::mkstemp(pattern.data());
  if (fd < 0) throw Failure("cannot make a temporary copy of " + named);
  ::close(fd);
  databasePath_ = pattern;
  try {
    tables_ = copyAccessFileToSqlite(path, databasePath_);
  } catch (...) {
    removeCopy(databasePath_);
    throw;
  }
}

SourceFileCopy::~SourceFileCopy() {
  if (isCopy()) removeCopy(databasePath_);
}

}  // namespace lf

namespace lf {
namespace {

// The user tables of a SQLite source, read only, with their declared column types and counts.
std::vector<SourceTable> inspectSqliteFile(const std::string& path) {
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    sqlite3_close(db);
    throw Failure("cannot open the SQLite file '" + path + "'");
  }
  std::vector<SourceTable> tables;
  auto fail = [&](const char* what) {
    const std::string message = sqlite3_errmsg(db);
    sqlite3_close(db);
    throw Failure("cannot read the SQLite file '" + path + "' (" + what + "): " + message);
  };
  sqlite3_stmt* list = nullptr;
  if (sqlite3_prepare_v2(db,
                         "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE "
                         "'sqlite\\_%' ESCAPE '\\' ORDER BY rowid;",
                         -1, &list, nullptr) != SQLITE_OK)
    fail("tables");
  while (sqlite3_step(list) == SQLITE_ROW)
    tables.push_back({reinterpret_cast<const char*>(sqlite3_column_text(list, 0)), {}, 0});
  sqlite3_finalize(list);
  for (SourceTable& table : tables) {
    sqlite3_stmt* info = nullptr;
    std::string quoted = "\"";
    for (char c : table.name) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    quoted += "\"";
    if (sqlite3_prepare_v2(db, ("PRAGMA table_info(" + quoted + ");").c_str(), -1, &info,
                           nullptr) != SQLITE_OK)
      fail("columns");
    while (sqlite3_step(info) == SQLITE_ROW) {
      const auto* type = reinterpret_cast<const char*>(sqlite3_column_text(info, 2));
      table.columns.push_back({reinterpret_cast<const char*>(sqlite3_column_text(info, 1)),
                               type ? type : "", type ? type : ""});
    }
    sqlite3_finalize(info);
    sqlite3_stmt* count = nullptr;
    if (sqlite3_prepare_v2(db, ("SELECT count(*) FROM " + quoted + ";").c_str(), -1, &count,
                           nullptr) != SQLITE_OK)
      fail("rows");
    if (sqlite3_step(count) == SQLITE_ROW) table.rows = sqlite3_column_int64(count, 0);
    sqlite3_finalize(count);
  }
  sqlite3_close(db);
  return tables;
}

}  // namespace

std::vector<SourceTable> inspectSourceFile(const std::string& path) {
  SourceFileCopy source(path);
  if (source.isCopy()) return source.tables();
  return inspectSqliteFile(path);
}

}  // namespace lf
