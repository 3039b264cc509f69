// lfimport import personal|business end to end on the bundled samples, and the refusals that
// come before anything is written.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
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

// Runs lfimport with stdin from /dev/null (no terminal) and stderr with stdout.
CommandRun lfimport(const std::string& arguments) {
  const std::string command =
      std::string(LF_BINARY_DIR) + "/lfimport " + arguments + " </dev/null 2>&1";
  CommandRun run;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return run;
  std::array<char, 4096> buffer{};
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) run.out.append(buffer.data(), n);
  const int status = pclose(pipe);
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

class ImportClientsCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(::testing::TempDir()) / ("lfimport_clients_" + std::to_string(::getpid()));
    fs::create_directories(folder);
    practice = (folder / "practice.db").string();
    ASSERT_EQ(lfimport("init '" + practice + "' --year 2025").exitCode, 0);
  }
  void TearDown() override { fs::remove_all(folder); }
  std::string sample(const std::string& name) {
    return "'" + std::string(LF_SOURCE_DIR) + "/samples/" + name + "'";
  }
  long rows(const std::string& table) {
    return nlohmann::json::parse(lfimport("info '" + practice + "'").out)["rows"].value(table, 0L);
  }
  fs::path folder;
  std::string practice;
};

TEST_F(ImportClientsCommand, SamplesImportAndReRunsFindTheSameClients) {
  const std::string personal =
      "import personal --practice '" + practice + "' --answers " + sample("personal_answers.json");
  CommandRun first = lfimport(personal + " --report '" + (folder / "report.json").string() + "'");
  ASSERT_EQ(first.exitCode, 0) << first.out;
  EXPECT_EQ(rows("Contacts"), 5);
  const auto report = nlohmann::json::parse(std::ifstream(folder / "report.json"));
  EXPECT_NE(report.dump().find("no first, last or full name"), std::string::npos);
  ASSERT_EQ(lfimport(personal).exitCode, 0);
  EXPECT_EQ(rows("Contacts"), 5);  // matched by SIN, or by name for those without one

  const std::string business = "import business --practice '" + practice + "' --answers " +
                               sample("business_answers.json") + " --auto-map";
  CommandRun companies = lfimport(business);
  ASSERT_EQ(companies.exitCode, 0) << companies.out;
  EXPECT_EQ(rows("Companies"), 4);
  ASSERT_EQ(lfimport(business).exitCode, 0);
  EXPECT_EQ(rows("Companies"), 4);
  EXPECT_EQ(rows("Contacts"), 8);
}

TEST_F(ImportClientsCommand, RefusalsNameWhatIsMissingAndWriteNothing) {
  CommandRun noAnswers = lfimport("import personal --practice '" + practice + "' --file " +
                                  sample("personal_clients.csv"));
  EXPECT_EQ(noAnswers.exitCode, 2);
  EXPECT_NE(noAnswers.out.find("no answers file (--answers) and no terminal"), std::string::npos);
  const fs::path answers = folder / "answers.json";
  std::ofstream(answers) << R"({"columns": {"1": "Favourite Colour"}})";
  CommandRun badField =
      lfimport("import personal --practice '" + practice + "' --file " +
               sample("personal_clients.csv") + " --answers '" + answers.string() + "'");
  EXPECT_EQ(badField.exitCode, 1);
  EXPECT_NE(badField.out.find("no field 'Favourite Colour'"), std::string::npos);
  CommandRun missing =
      lfimport("import business --practice '" + practice + "' --file '" +
               (folder / "none.txt").string() + "' --answers '" + answers.string() + "'");
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.out.find("does not exist"), std::string::npos);
  EXPECT_EQ(rows("Contacts"), 0);
  EXPECT_EQ(rows("Companies"), 0);
}

TEST_F(ImportClientsCommand, HugeAndBinaryFilesAreRefusedWithOneLineNulBytesAreDropped) {
  const fs::path answers = folder / "answers.json";
  std::ofstream(answers) << R"({"year": 2024, "columns": {"1": "FirstName", "2": "LastName"}})";
  auto import = [&](const fs::path& file) {
    return lfimport("import personal --quiet --practice '" + practice + "' --file '" +
                    file.string() + "' --answers '" + answers.string() + "'");
  };
  // A single line of 1 GB: the file is sparse, so the test neither writes nor holds it.
  const fs::path huge = folder / "huge.csv";
  std::ofstream(huge) << "Ann,Lee,";
  fs::resize_file(huge, std::uintmax_t{1} << 30);
  const CommandRun tooLarge = import(huge);
  EXPECT_EQ(tooLarge.exitCode, 1);
  EXPECT_NE(tooLarge.out.find("is larger than 256 MB"), std::string::npos) << tooLarge.out;
  EXPECT_NE(tooLarge.out.find(huge.string()), std::string::npos);
  EXPECT_EQ(std::count(tooLarge.out.begin(), tooLarge.out.end(), '\n'), 1) << tooLarge.out;

  const fs::path binary = folder / "picture.csv";
  std::ofstream(binary, std::ios::binary) << std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\x02", 17);
  const CommandRun picture = import(binary);
  EXPECT_EQ(picture.exitCode, 1);
  EXPECT_NE(picture.out.find("holds binary data (byte 0x02 at offset 16)"), std::string::npos)
      << picture.out;

  // UTF-16 text: every other byte is NUL, which the reader drops.
  const fs::path wide = folder / "wide.csv";
  std::string people;
  for (char c : std::string("Ann,Lee\r\nBo,Chen\r\n")) people += std::string{c, '\0'};
  std::ofstream(wide, std::ios::binary) << people;
  const CommandRun read = import(wide);
  EXPECT_EQ(read.exitCode, 0) << read.out;
  EXPECT_EQ(rows("Contacts"), 2);
}

// The clients of a practice database as one text: name, SIN and phone of every contact,
// then the numbers of personal-tax rows and links.
std::string clientsOf(const std::string& path) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  std::string out;
  for (const char* sql :
       {"SELECT FirstName || '|' || LastName || '|' || coalesce(SocialInsuranceNumber, '') || '|' "
        "|| coalesce(HomePhone_Main, '') FROM Contacts ORDER BY 1",
        "SELECT count(*) FROM PersonalTaxInfo", "SELECT count(*) FROM ContactLinks"}) {
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, sql, -1, &st, nullptr);
    while (sqlite3_step(st) == SQLITE_ROW)
      out += reinterpret_cast<const char*>(sqlite3_column_text(st, 0)) + std::string("\n");
    sqlite3_finalize(st);
  }
  sqlite3_close(db);
  return out;
}

TEST_F(ImportClientsCommand, KilledImportRunAgainEndsAsOneUninterruptedRun) {
  std::string people = "First,Last,SIN,Phone\n";
  for (int n = 1; n <= 800; ++n)
    people += "Pat,Lane" + std::to_string(n) + "," + std::to_string(100000000 + n * 7) + ",416555" +
              std::to_string(1000 + n) + "\n";
  const fs::path file = folder / "people.csv";
  std::ofstream(file) << people;
  const fs::path answers = folder / "answers.json";
  std::ofstream(answers) << R"({"firstRowNames": true, "year": 2024,
    "columns": {"First": "FirstName", "Last": "LastName", "SIN": "SocialInsuranceNumber",
                "Phone": "HomePhone_Main"},
    "duplicates": {"check": true, "matchBy": "sin", "action": "update"}})";
  auto arguments = [&](const std::string& db) {
    return "import personal --quiet --practice '" + db + "' --file '" + file.string() +
           "' --answers '" + answers.string() + "'";
  };
  ASSERT_EQ(lfimport(arguments(practice)).exitCode, 0);
  const std::string uninterrupted = clientsOf(practice);

  const std::string killed = (folder / "killed.db").string();
  ASSERT_EQ(lfimport("init '" + killed + "' --year 2025").exitCode, 0);
  for (int delay : {150, 400, 800}) {
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

}  // namespace
