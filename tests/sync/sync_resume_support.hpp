// What the kill-and-re-run tests of the syncs share: running the lfimport program (killed
// inside a given record through LFIMPORT_KILL_AT_RECORD), a practice database's rows as text
// and the first difference between two of them.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace lf::testing {

inline const std::string kProgram = std::string(LF_BINARY_DIR) + "/lfimport";

// Runs lfimport with the arguments, its output dropped, killed with SIGKILL inside record
// `killAtRecord` of its run (0: not killed); answers the raw wait status.
inline int runProgram(const std::vector<std::string>& args, long killAtRecord) {
  pid_t pid = fork();
  if (pid == 0) {
    if (killAtRecord > 0)
      setenv("LFIMPORT_KILL_AT_RECORD", std::to_string(killAtRecord).c_str(), 1);
    else
      unsetenv("LFIMPORT_KILL_AT_RECORD");
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(kProgram.c_str()));
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    if (freopen("/dev/null", "w", stderr) == nullptr) _exit(126);
    if (freopen("/dev/null", "w", stdout) == nullptr) _exit(126);
    execv(kProgram.c_str(), argv.data());
    _exit(127);
  }
  int status = 0;
  waitpid(pid, &status, 0);
  return status;
}

// Every table's rows as text, in key order, without the columns that hold the clock and the
// staff summaries.
using DatabaseRows = std::map<std::string, std::vector<std::string>>;
inline DatabaseRows contents(const std::string& path) {
  DatabaseRows out;
  sqlite3* db = nullptr;
  if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) return out;
  std::vector<std::string> tables;
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name", -1, &st,
                     nullptr);
  while (sqlite3_step(st) == SQLITE_ROW)
    tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
  sqlite3_finalize(st);
  for (const std::string& table : tables) {
    sqlite3_prepare_v2(db, ("SELECT * FROM \"" + table + "\" ORDER BY rowid").c_str(), -1, &st,
                       nullptr);
    while (sqlite3_step(st) == SQLITE_ROW) {
      std::string row;
      for (int c = 0; c < sqlite3_column_count(st); ++c) {
        const std::string name = sqlite3_column_name(st, c);
        if (name == "DateLastSync" || name == "DateCreated") continue;
        // Staff summaries are rewritten by every run from the clients there at that moment.
        if (table == "AccountantEmployeeInfo" &&
            (name == "BusinessNotes" || name == "PersonalNotes"))
          continue;
        const unsigned char* v = sqlite3_column_text(st, c);
        row += name + "=" + (v != nullptr ? reinterpret_cast<const char*>(v) : "NULL") + "|";
      }
      out[table].push_back(row);
    }
    sqlite3_finalize(st);
  }
  sqlite3_close(db);
  return out;
}

// The first row that differs, as "table row N: the columns that differ (expected / actual)";
// empty when all are equal.
inline std::string firstDifference(const DatabaseRows& expected, const DatabaseRows& actual) {
  for (const auto& [table, rows] : expected) {
    auto it = actual.find(table);
    const std::vector<std::string> none;
    const std::vector<std::string>& other = it == actual.end() ? none : it->second;
    for (size_t i = 0; i < std::max(rows.size(), other.size()); ++i) {
      const std::string a = i < rows.size() ? rows[i] : "(none)";
      const std::string b = i < other.size() ? other[i] : "(none)";
      if (a == b) continue;
      std::string columns;
      size_t p = 0, q = 0;
      while (p < a.size() && q < b.size()) {
        const size_t pe = a.find('|', p), qe = b.find('|', q);
        const std::string ca = a.substr(p, pe - p), cb = b.substr(q, qe - q);
        if (ca != cb)
          columns += " " + ca.substr(0, ca.find('=')) + " (" + ca.substr(0, 60) + " / " +
                     cb.substr(0, 60) + ")";
        if (pe == std::string::npos || qe == std::string::npos) break;
        p = pe + 1;
        q = qe + 1;
      }
      return table + " row " + std::to_string(i) + ":" +
             (columns.empty() ? " " + a.substr(0, 80) + " / " + b.substr(0, 80) : columns);
    }
  }
  return {};
}

// A folder of its own for a test's files, removed at the end, holding a copy of a sample
// export (opening a database may change its file) and the practice databases made by `init`.
class ResumeFolder {
 public:
  ResumeFolder(const std::string& name, const std::string& sample) {
    folder_ = std::string(::testing::TempDir()) + "/" + name + "_" + std::to_string(getpid());
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    source = folder_ + "/" + std::filesystem::path(sample).filename().string();
    std::filesystem::copy_file(sample, source);
  }
  ~ResumeFolder() { std::filesystem::remove_all(folder_); }
  std::string newPractice(const std::string& name) {
    const std::string path = folder_ + "/" + name;
    EXPECT_EQ(runProgram({"init", path}, 0), 0);
    return path;
  }
  std::string source;

 private:
  std::string folder_;
};

}  // namespace lf::testing
