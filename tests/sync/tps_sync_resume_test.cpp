// A TPS sync killed (SIGKILL) in the middle of a record and run again ends with the practice
// database an uninterrupted run gives: each record's rows and its cross-reference are
// committed together, so a re-run finds every record either complete or absent.
//
// Runs the lfimport program on the bundled sample export with LFIMPORT_KILL_AT_RECORD set,
// which kills the process inside that record, after its writes and before their commit.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kProgram = std::string(LF_BINARY_DIR) + "/lfimport";
const std::string kSample = std::string(LF_SOURCE_DIR) + "/samples/tps_export.db";
const std::string kAnswers = std::string(LF_SOURCE_DIR) + "/samples/tps_answers.json";

// Runs lfimport with the arguments; answers the raw wait status.
int runProgram(const std::vector<std::string>& args, long killAtRecord) {
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
std::map<std::string, std::vector<std::string>> contents(const std::string& path) {
  std::map<std::string, std::vector<std::string>> out;
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

// The first row that differs, as "table: expected / actual"; empty when all are equal.
std::string firstDifference(const std::map<std::string, std::vector<std::string>>& expected,
                            const std::map<std::string, std::vector<std::string>>& actual) {
  for (const auto& [table, rows] : expected) {
    auto it = actual.find(table);
    const std::vector<std::string> none;
    const std::vector<std::string>& other = it == actual.end() ? none : it->second;
    for (size_t i = 0; i < std::max(rows.size(), other.size()); ++i) {
      const std::string a = i < rows.size() ? rows[i] : "(none)";
      const std::string b = i < other.size() ? other[i] : "(none)";
      if (a == b) continue;
      // Name the columns that differ.
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

class TPSSyncResumeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!fs::exists(kProgram) || !fs::exists(kSample))
      GTEST_SKIP() << "needs the lfimport program and the sample export";
    folder = fs::path(::testing::TempDir()) / ("tps_resume_" + std::to_string(getpid()));
    fs::remove_all(folder);
    fs::create_directories(folder);
    // A copy: opening a database may change its file (the journal mode).
    source = (folder / "tps_export.db").string();
    fs::copy_file(kSample, source);
  }
  void TearDown() override { fs::remove_all(folder); }

  std::string newPractice(const std::string& name) {
    const std::string path = (folder / name).string();
    EXPECT_EQ(runProgram({"init", path}, 0), 0);
    return path;
  }
  int sync(const std::string& practice, long killAtRecord) {
    return runProgram({"sync", "tps", "--source", source, "--practice", practice, "--answers",
                       kAnswers, "--quiet"},
                      killAtRecord);
  }

  fs::path folder;
  std::string source;
};

TEST_F(TPSSyncResumeTest, KilledRunsResumedGiveTheDatabaseOfOneUninterruptedRun) {
  // Staff rows are rewritten by every run, with summaries of the clients there at the time;
  // the reference is therefore an uninterrupted run followed by the same final re-run that
  // every interrupted case ends with.
  const std::string reference = newPractice("reference.db");
  ASSERT_EQ(sync(reference, 0), 0);
  const auto expected = contents(reference);
  ASSERT_FALSE(expected.at("Companies").empty());

  // Kill points inside staff, business clients, personal clients, invoices, deposits and
  // time entries of the sample; the second case is killed twice before it completes.
  const std::vector<std::vector<long>> cases = {{2}, {6, 9}, {14}, {27}, {36}, {45}, {52}};
  for (const std::vector<long>& kills : cases) {
    const std::string practice = newPractice("killed_" + std::to_string(kills.front()) + ".db");
    for (long at : kills) {
      const int status = sync(practice, at);
      ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
          << "the run was not killed at record " << at;
    }
    ASSERT_EQ(sync(practice, 0), 0);
    const auto resumed = contents(practice);
    EXPECT_EQ(firstDifference(expected, resumed), "") << "after a kill at record " << kills.front();
  }
}

TEST_F(TPSSyncResumeTest, RerunWithOnlyNewEntriesCreatesNothing) {
  const std::string practice = newPractice("rerun.db");
  ASSERT_EQ(sync(practice, 0), 0);
  const auto first = contents(practice);
  ASSERT_EQ(sync(practice, 0), 0);
  const auto second = contents(practice);
  for (const auto& [table, rows] : first)
    EXPECT_EQ(second.at(table).size(), rows.size()) << "rows added to " << table;
  EXPECT_EQ(second.at("Companies"), first.at("Companies"));
  EXPECT_EQ(second.at("Contacts"), first.at("Contacts"));
  EXPECT_EQ(second.at("Invoices"), first.at("Invoices"));
}

}  // namespace
