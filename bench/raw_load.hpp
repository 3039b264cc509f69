// What the import benchmarks share: quiet host services, process figures, row counts, and the
// raw load that an import's time is compared with (the rows the import wrote, copied into an
// empty practice schema by one prepared INSERT per table in one transaction).
#pragma once

#include <sqlite3.h>
#include <sys/resource.h>

#include <chrono>
#include <string>
#include <vector>

#include "base/error_service.hpp"
#include "db/database_factory.hpp"
#include "db/practice_database.hpp"
#include "host/message_box.hpp"

namespace lf::bench {

class CountingErrorService : public ErrorService {
 public:
  void enterProcedure(std::string_view) override {}
  void leaveProcedure() override {}
  void setError(const ErrorInfo&) override { ++errors; }
  void reportError() override {}
  int getErrorAction() override { return kErrorResumeNext; }
  long errors = 0;
};

class NoMessageBox : public MessageBox {
 public:
  void show(std::string_view, int) override {}
  int ask(std::string_view, int) override { return kAnswerNo; }
};

// CPU seconds of the process so far: on a shared machine a fairer measure than wall time of
// two single-threaded runs compared with each other.
inline double cpuSeconds() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  auto seconds = [](const timeval& t) { return t.tv_sec + t.tv_usec / 1e6; };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Peak resident memory of the process so far (ru_maxrss), in megabytes: it only grows, so a
// later benchmark of the same program shows the largest so far.
inline double peakMegabytes() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024.0;
}

inline std::vector<std::string> tableNames(sqlite3* db) {
  std::vector<std::string> names;
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, "SELECT name FROM sqlite_master WHERE type='table'", -1, &st, nullptr);
  while (sqlite3_step(st) == SQLITE_ROW)
    names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
  sqlite3_finalize(st);
  return names;
}

inline long rowCount(sqlite3* db, const std::string& table) {
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, ("SELECT count(*) FROM \"" + table + "\"").c_str(), -1, &st, nullptr);
  long n = sqlite3_step(st) == SQLITE_ROW ? sqlite3_column_int64(st, 0) : 0;
  sqlite3_finalize(st);
  return n;
}

// Copies every row of `from` that is not in `seeded` into `to` (same schema, empty tables):
// one prepared INSERT per table, all in one transaction. Answers the rows copied.
inline long rawLoad(const std::string& from, const std::string& seeded, const std::string& to) {
  sqlite3 *src = nullptr, *dst = nullptr;
  sqlite3_open_v2(from.c_str(), &src, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_open(to.c_str(), &dst);
  sqlite3_exec(src, ("ATTACH '" + seeded + "' AS seed").c_str(), nullptr, nullptr, nullptr);
  sqlite3_exec(dst, "BEGIN", nullptr, nullptr, nullptr);
  long copied = 0;
  for (const std::string& table : tableNames(dst)) {
    sqlite3_stmt* read = nullptr;
    const std::string select = "SELECT * FROM main.\"" + table +
                               "\" WHERE rowid > (SELECT coalesce(max(rowid), 0) FROM "
                               "seed.\"" +
                               table + "\")";
    if (sqlite3_prepare_v2(src, select.c_str(), -1, &read, nullptr) != SQLITE_OK) continue;
    const int columns = sqlite3_column_count(read);
    std::string names, marks;
    std::vector<int> writable;
    for (int c = 0; c < columns; ++c) {
      const std::string name = sqlite3_column_name(read, c);
      // Generated alias columns are not written.
      sqlite3_stmt* probe = nullptr;
      if (sqlite3_prepare_v2(
              dst, ("INSERT INTO \"" + table + "\" (\"" + name + "\") VALUES (NULL)").c_str(), -1,
              &probe, nullptr) != SQLITE_OK) {
        sqlite3_finalize(probe);
        continue;
      }
      sqlite3_finalize(probe);
      names += (writable.empty() ? "\"" : ", \"") + name + "\"";
      marks += writable.empty() ? "?" : ", ?";
      writable.push_back(c);
    }
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(
        dst, ("INSERT INTO \"" + table + "\" (" + names + ") VALUES (" + marks + ")").c_str(), -1,
        &insert, nullptr);
    while (sqlite3_step(read) == SQLITE_ROW) {
      for (size_t i = 0; i < writable.size(); ++i)
        sqlite3_bind_value(insert, static_cast<int>(i + 1),
                           sqlite3_column_value(read, writable[i]));
      sqlite3_step(insert);
      sqlite3_reset(insert);
      ++copied;
    }
    sqlite3_finalize(insert);
    sqlite3_finalize(read);
  }
  sqlite3_exec(dst, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(dst);
  sqlite3_close(src);
  return copied;
}

// What an import wrote and how long its raw load took.
struct RawLoadFigures {
  long written = 0;  // rows of the practice database beyond the seeded ones
  long copied = 0;   // rows the raw load copied
  double seconds = 0;
  double cpuSeconds = 0;
};

// REQUIRES: `practice` (closed) is `seeded` with an import's rows added; nothing stands at
// `raw`. Counts the rows the import wrote, makes `raw` an empty practice schema and times the
// raw load of those rows into it.
inline RawLoadFigures rawLoadOfImport(const std::string& practice, const std::string& seeded,
                                      const std::string& raw) {
  RawLoadFigures figures;
  sqlite3 *after = nullptr, *before = nullptr;
  sqlite3_open_v2(practice.c_str(), &after, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_open_v2(seeded.c_str(), &before, SQLITE_OPEN_READONLY, nullptr);
  for (const std::string& table : tableNames(after))
    figures.written += rowCount(after, table) - rowCount(before, table);
  sqlite3_close(after);
  sqlite3_close(before);
  createPracticeTables(*createDatabase(raw));

  const auto start = std::chrono::steady_clock::now();
  const double cpuStart = cpuSeconds();
  figures.copied = rawLoad(practice, seeded, raw);
  figures.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  figures.cpuSeconds = cpuSeconds() - cpuStart;
  return figures;
}

}  // namespace lf::bench
