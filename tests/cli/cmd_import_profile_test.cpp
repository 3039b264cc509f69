// lfimport import profile-t1 and profile-t2 end to end on the sample folder of returns, and a
// killed import run again.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;

struct CommandRun {
  int exitCode = -1;
  std::string out;
};

CommandRun run(const std::string& command) {
  CommandRun result;
  FILE* pipe = popen((command + " </dev/null 2>&1").c_str(), "r");
  if (pipe == nullptr) return result;
  std::array<char, 4096> buffer{};
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
    result.out.append(buffer.data(), n);
  const int status = pclose(pipe);
  result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

CommandRun lfimport(const std::string& arguments) {
  return run(std::string(LF_BINARY_DIR) + "/lfimport " + arguments);
}

// The clients, their personal-tax rows, links and return rows, in a fixed order.
std::string clientsOf(const std::string& path) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  std::string out;
  for (const char* sql :
       {"SELECT FirstName || '|' || LastName || '|' || coalesce(SocialInsuranceNumber, '') || "
        "'|' || coalesce(HomeAddress, '') FROM Contacts ORDER BY 1",
        "SELECT count(*) FROM PersonalTaxInfo", "SELECT count(*) FROM ContactLinks",
        "SELECT ProfileFileLocation FROM PersonalTaxProfileInfo ORDER BY 1"}) {
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &st, nullptr);
    while (sqlite3_step(st) == SQLITE_ROW) {
      const unsigned char* text = sqlite3_column_text(st, 0);
      out += (text ? reinterpret_cast<const char*>(text) : "") + std::string("\n");
    }
    sqlite3_finalize(st);
  }
  sqlite3_close(db);
  return out;
}

class ImportProfileT1Command : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::system("python3 --version >/dev/null 2>&1") != 0)
      GTEST_SKIP() << "python3 is not installed";
    folder = fs::path(::testing::TempDir()) / ("lfimport_profile_t1_" + std::to_string(::getpid()));
    fs::remove_all(folder);
    fs::create_directories(folder);
    practice = (folder / "practice.db").string();
    ASSERT_EQ(lfimport("init '" + practice + "' --year 2025").exitCode, 0);
  }
  void TearDown() override { fs::remove_all(folder); }
  void makeReturns(const std::string& arguments) {
    ASSERT_EQ(run("python3 " + std::string(LF_SOURCE_DIR) + "/samples/make_profile_returns.py '" +
                  (folder / "returns").string() + "' " + arguments)
                  .exitCode,
              0);
  }
  fs::path folder;
  std::string practice;
};

TEST_F(ImportProfileT1Command, SampleFolderWithPasswordAnd17TFile) {
  makeReturns("");
  const long contactsBefore =
      nlohmann::json::parse(lfimport("info '" + practice + "'").out)["rows"].value("Contacts", 0L);
  const fs::path answers = folder / "answers.json";
  std::ofstream(answers) << R"({"folder": "returns", "year": 2025, "options": [0],
    "couples": "both", "passwords": ["maple"]})";
  const fs::path report = folder / "report.json";
  CommandRun done = lfimport("import profile-t1 --practice '" + practice + "' --answers '" +
                             answers.string() + "' --report '" + report.string() + "'");
  ASSERT_EQ(done.exitCode, 0) << done.out;
  auto json = nlohmann::json::parse(std::ifstream(report));
  const auto& stage = json["stages"][0];
  EXPECT_EQ(stage["stage"], "personal returns");
  // Eleven personal returns: ten imported (the protected one with its password), the 17T
  // passed over.
  EXPECT_EQ(stage["read"], 11) << json.dump(2);
  EXPECT_EQ(stage["created"], 10);
  EXPECT_EQ(stage["skipped"], 1);
  const std::string clients = clientsOf(practice);
  EXPECT_NE(clients.find("Protected.16T"), std::string::npos);
  EXPECT_EQ(clients.find("Later.17T"), std::string::npos);
  auto rows = nlohmann::json::parse(lfimport("info '" + practice + "'").out)["rows"];
  // A row per personal-tax client: the ten taxpayers' with their returns, the spouses' empty.
  EXPECT_EQ(rows["PersonalTaxProfileInfo"], 12);
  // Ten taxpayers and the two spouses of the couples.
  EXPECT_EQ(rows["Contacts"].get<long>() - contactsBefore, 12);

  // Again without a folder: the remembered one, whose clients are now found by SIN.
  CommandRun again = lfimport("import profile-t1 --practice '" + practice + "' --report '" +
                              report.string() + "'");
  EXPECT_EQ(again.exitCode, 1) << again.out;  // a file failed
  auto second = nlohmann::json::parse(std::ifstream(report));
  EXPECT_EQ(second["stages"][0]["updated"], 9) << second.dump(2);  // the protected one: no password
  EXPECT_EQ(second["stages"][0]["failed"], 1);
}

TEST_F(ImportProfileT1Command, CorporateReturnsMostRecentOfEachBusinessNumber) {
  makeReturns("");
  const fs::path report = folder / "report.json";
  CommandRun done =
      lfimport("import profile-t2 --quiet --most-recent --practice '" + practice + "' --folder '" +
               (folder / "returns").string() + "' --report '" + report.string() + "'");
  ASSERT_EQ(done.exitCode, 0) << done.out;
  auto json = nlohmann::json::parse(std::ifstream(report));
  // Harbourview's three year ends lose the middle one; Northwind keeps its one return.
  EXPECT_EQ(json["stages"][0]["read"], 3) << json.dump(2);
  EXPECT_EQ(json["stages"][0]["created"], 2);
  EXPECT_EQ(json["stages"][0]["updated"], 1);
  EXPECT_EQ(lfimport("import profile-t2 --practice '" + practice + "' --folder '" +
                     (folder / "missing").string() + "'")
                .exitCode,
            1);
}

TEST_F(ImportProfileT1Command, KilledImportRunAgainEndsAsOneUninterruptedRun) {
  makeReturns("--t1 300 --seed 3");
  auto arguments = [&](const std::string& db) {
    return "import profile-t1 --quiet --practice '" + db + "' --folder '" +
           (folder / "returns").string() + "'";
  };
  ASSERT_EQ(lfimport(arguments(practice)).exitCode, 0);
  const std::string uninterrupted = clientsOf(practice);

  const std::string killed = (folder / "killed.db").string();
  ASSERT_EQ(lfimport("init '" + killed + "' --year 2025").exitCode, 0);
  for (int delay : {200, 500, 900}) {
    const pid_t child = fork();
    if (child == 0) {
      const std::string command = std::string(LF_BINARY_DIR) + "/lfimport " + arguments(killed) +
                                  " </dev/null >/dev/null 2>&1";
      execl("/bin/sh", "sh", "-c", ("exec " + command).c_str(), static_cast<char*>(nullptr));
      _exit(127);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(delay));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
  }
  ASSERT_EQ(lfimport(arguments(killed)).exitCode, 0);
  EXPECT_EQ(clientsOf(killed), uninterrupted);
}

TEST_F(ImportProfileT1Command, WizardsRunFromTheSampleAnswersAndAtTheTerminal) {
  makeReturns("");
  const fs::path report = folder / "report.json";
  // The sample answers of the corporate wizard, its folder given on the command line.
  CommandRun t2 =
      lfimport("import profile-t2 --quiet --practice '" + practice + "' --answers '" +
               std::string(LF_SOURCE_DIR) + "/samples/profile_t2_answers.json' " + "--folder '" +
               (folder / "returns").string() + "' --report '" + report.string() + "'");
  ASSERT_EQ(t2.exitCode, 0) << t2.out;
  EXPECT_EQ(nlohmann::json::parse(std::ifstream(report))["stages"][0]["read"], 3);

  // The personal wizard at the terminal: Select All twice leaves nothing ticked, the first
  // file ticked by hand, the couple on one contact.
  std::ofstream(folder / "answers.txt")
      << "next\nall\nall\ntoggle 1\nnext\ncouples 2\nnext\nyear 2024\nfinish\n";
  std::ofstream(folder / "run.sh")
      << "exec '" << LF_BINARY_DIR << "/lfimport' import profile-t1 --interactive --practice '"
      << practice << "' --folder '" << (folder / "returns").string() << "' --report '"
      << report.string() << "' < '" << (folder / "answers.txt").string() << "'\n";
  CommandRun t1 = run("sh '" + (folder / "run.sh").string() + "'");
  ASSERT_EQ(t1.exitCode, 0) << t1.out;
  EXPECT_NE(t1.out.find("Finished."), std::string::npos) << t1.out;
  EXPECT_EQ(nlohmann::json::parse(std::ifstream(report))["stages"][0]["read"], 1) << t1.out;

  // A folder without returns: the files page refuses, nothing is imported.
  fs::create_directories(folder / "empty");
  CommandRun none = lfimport("import profile-t1 --practice '" + practice + "' --folder '" +
                             (folder / "empty").string() + "'");
  EXPECT_EQ(none.exitCode, 1);
  EXPECT_NE(none.out.find("Click on Profile T1 client files in the list to select files."),
            std::string::npos)
      << none.out;
  EXPECT_NE(none.out.find("the wizard did not finish; nothing was imported"), std::string::npos);
}

}  // namespace
