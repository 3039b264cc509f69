// The lfimport program given bad input: practice files that are locked, read-only, another
// program's or empty; folders where files belong; text that is not UTF-8; values too large;
// bad answers files. Each case checks the exit code (0 all done, 1 failed, 2 bad usage), the
// one line on stderr that names the problem and the file or ID, and that no file changed
// that should not have.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <tuple>

namespace {

namespace fs = std::filesystem;

struct CommandRun {
  int exitCode = -1;
  std::string out;
  std::string err;
};

std::string readFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string quoted(const fs::path& path) {
  return "'" + path.string() + "'";
}

// Every file of a folder with its size, a hash of its bytes and its time of change.
using FolderState = std::map<std::string, std::tuple<size_t, size_t, std::int64_t>>;
FolderState stateOf(const fs::path& folder) {
  FolderState state;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file()) {
      const std::string bytes = readFile(entry.path());
      state[entry.path().filename().string()] = {
          bytes.size(), std::hash<std::string>{}(bytes),
          fs::last_write_time(entry.path()).time_since_epoch().count()};
    }
  return state;
}

// Runs one statement on a database file directly, with its text bound byte for byte.
void runSql(const fs::path& file, const std::string& sql, const std::string& text = {}) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
  sqlite3_stmt* stmt = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr), SQLITE_OK) << sql;
  if (sqlite3_bind_parameter_count(stmt) > 0)
    sqlite3_bind_text(stmt, 1, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
  EXPECT_EQ(sqlite3_step(stmt), SQLITE_DONE) << sqlite3_errmsg(db);
  sqlite3_finalize(stmt);
  sqlite3_close(db);
}

class LfimportBadInput : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(::testing::TempDir()) /
             ("lfimport_bad_" + std::to_string(::getpid()) + "_" +
              ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder);
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms::all);  // an unprivileged run writes beside the files
    practice = folder / "practice.db";
    exportFile = folder / "export.db";
    fs::copy_file(fs::path(LF_SOURCE_DIR) / "samples/tps_export.db", exportFile);
    ASSERT_EQ(lfimport("init " + quoted(practice)).exitCode, 0);
  }
  void TearDown() override { fs::remove_all(folder); }

  // Runs lfimport with the arguments (quoted for the shell) after the environment words.
  CommandRun lfimport(const std::string& arguments, const std::string& environment = "") {
    const fs::path errFile = folder / "stderr.txt";
    const std::string command = environment + " " + std::string(LF_BINARY_DIR) + "/lfimport " +
                                arguments + " 2>" + quoted(errFile);
    CommandRun run;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return run;
    std::array<char, 4096> buffer{};
    size_t n;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) run.out.append(buffer.data(), n);
    const int status = pclose(pipe);
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.err = readFile(errFile);
    fs::remove(errFile);
    return run;
  }

  // Expects a failure with the code and one line on stderr holding every word.
  void expectFailure(const CommandRun& run, int code, std::initializer_list<std::string> words) {
    EXPECT_EQ(run.exitCode, code) << run.err;
    const auto lines = std::count(run.err.begin(), run.err.end(), '\n');
    EXPECT_EQ(lines, 1) << run.err;
    for (const std::string& word : words)
      EXPECT_NE(run.err.find(word), std::string::npos) << run.err;
  }

  std::string syncArguments(const fs::path& practiceFile) {
    return "sync tps --quiet --source " + quoted(exportFile) + " --practice " +
           quoted(practiceFile);
  }

  fs::path folder;
  fs::path practice;
  fs::path exportFile;
};

TEST_F(LfimportBadInput, LockedPracticeIsWaitedForThenNamed) {
  sqlite3* holder = nullptr;
  ASSERT_EQ(sqlite3_open(practice.c_str(), &holder), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(holder,
                         "BEGIN IMMEDIATE; UPDATE HostSettings SET SettingValue = SettingValue "
                         "WHERE SettingName = 'FirmID';",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  const std::string wait = "LFIMPORT_LOCK_WAIT=0.2";
  for (const std::string& command :
       {"info " + quoted(practice), syncArguments(practice),
        "summary --practice " + quoted(practice) + " --employee 1 --kind personal"})
    expectFailure(lfimport(command, wait), 1, {"locked", "waited 0.2 s", practice.string()});
  sqlite3_exec(holder, "ROLLBACK;", nullptr, nullptr, nullptr);
  sqlite3_close(holder);
  EXPECT_EQ(lfimport("info " + quoted(practice), wait).exitCode, 0);
}

TEST_F(LfimportBadInput, ReadOnlyPracticeIsReadAndNamedWhenAWriteIsAsked) {
  // Root writes whatever the permissions say: the commands run as nobody.
  std::string runAs;
  if (::geteuid() == 0) {
    if (std::system("setpriv --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "no setpriv";
    runAs = "setpriv --reuid=65534 --regid=65534 --clear-groups";
  }
  fs::permissions(practice, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  const FolderState before = stateOf(folder);

  const CommandRun info = lfimport("info " + quoted(practice), runAs);
  ASSERT_EQ(info.exitCode, 0) << info.err;
  EXPECT_EQ(nlohmann::json::parse(info.out)["rows"]["AccountantFirmInfo"], 1);
  const CommandRun merge = lfimport("merge --practice " + quoted(practice) +
                                        " --firm 1 --text '\xC2\xABYour Company Name\xC2\xBB'",
                                    runAs);
  EXPECT_EQ(merge.exitCode, 0) << merge.err;
  EXPECT_EQ(merge.out, "Maple Ridge Accounting\n");
  expectFailure(lfimport(syncArguments(practice), runAs), 1, {"read-only", practice.string()});
  expectFailure(
      lfimport("summary --practice " + quoted(practice) + " --employee 1 --kind personal", runAs),
      1, {"read-only", practice.string()});
  EXPECT_EQ(stateOf(folder), before);
}

TEST_F(LfimportBadInput, FilesThatAreNoPracticeDatabaseAreRefusedUntouched) {
  const fs::path foreign = folder / "foreign.db";
  runSql(foreign, "CREATE TABLE Invoices (Number TEXT)");
  const fs::path empty = folder / "empty.db";
  std::ofstream(empty).close();
  const fs::path dropped = folder / "dropped.db";
  fs::copy_file(practice, dropped);
  runSql(dropped, "ALTER TABLE Contacts DROP COLUMN HomeCity");
  const FolderState before = stateOf(folder);

  for (const fs::path& file : {foreign, empty, dropped}) {
    const std::string reason =
        file == dropped ? "its table Contacts has no column HomeCity" : "it has no table Companies";
    for (const std::string& command :
         {"info " + quoted(file), syncArguments(file),
          "summary --practice " + quoted(file) + " --employee 1 --kind personal",
          "merge --practice " + quoted(file) + " --firm 1 --text x"})
      expectFailure(lfimport(command), 1,
                    {"not a Ledgerfolio practice database", file.string(), reason});
  }
  EXPECT_EQ(stateOf(folder), before);
}

TEST_F(LfimportBadInput, FoldersWhereFilesBelongAreNamed) {
  const fs::path sub = folder / "sub";
  fs::create_directory(sub);
  const FolderState before = stateOf(folder);
  expectFailure(lfimport("info " + quoted(sub)), 1, {"is a folder", sub.string()});
  expectFailure(lfimport("check-template --file " + quoted(sub)), 1, {"is a folder", sub.string()});
  expectFailure(lfimport("merge --practice " + quoted(practice) + " --file " + quoted(sub)), 1,
                {"is a folder", sub.string()});
  expectFailure(lfimport("sync tps --source " + quoted(sub) + " --practice " + quoted(practice)), 1,
                {"is a folder", sub.string()});
  // The report's place is checked before the sync runs: the practice stays as it was.
  expectFailure(lfimport(syncArguments(practice) + " --report " + quoted(sub)), 1,
                {"report", sub.string()});
  const fs::path missing = folder / "missing" / "report.json";
  expectFailure(lfimport(syncArguments(practice) + " --report " + quoted(missing)), 1,
                {"does not exist", missing.string()});
  const fs::path noExport = folder / "none.db";
  expectFailure(
      lfimport("sync tps --source " + quoted(noExport) + " --practice " + quoted(practice)), 1,
      {"does not exist", noExport.string()});
  EXPECT_EQ(stateOf(folder), before);
}

TEST_F(LfimportBadInput, TextThatIsNotUtf8IsReadAsWindows1252) {
  runSql(exportFile, "UPDATE Clients SET Name = ? WHERE ClientID = 101",
         "Caf\xE9 Trading \x80 LTD");
  runSql(exportFile, "UPDATE Clients SET Name = ? WHERE ClientID = 102",
         std::string("Maple\0 & Birch LLP", 18));
  const CommandRun list = lfimport("sync tps --list-clients --source " + quoted(exportFile));
  ASSERT_EQ(list.exitCode, 0) << list.err;
  const auto clients = nlohmann::json::parse(list.out);
  EXPECT_EQ(clients[0]["name"], "Caf\xC3\xA9 Trading \xE2\x82\xAC LTD");
  EXPECT_EQ(clients[1]["name"], "Maple & Birch LLP");  // NUL dropped, not an end

  const fs::path report = folder / "report.json";
  const CommandRun sync = lfimport(syncArguments(practice) + " --report " + quoted(report));
  EXPECT_EQ(sync.exitCode, 0) << sync.err;
  EXPECT_FALSE(nlohmann::json::parse(readFile(report))["stages"].empty());
  const CommandRun merged = lfimport("merge --practice " + quoted(practice) +
                                     " --company 1 --text '\xC2\xAB"
                                     "Company Name\xC2\xBB'");
  EXPECT_EQ(merged.out, "Caf\xC3\xA9 Trading \xE2\x82\xAC LTD\n") << merged.err;

  const CommandRun name = lfimport("parse name 'Ren\xE9 Dupont'");
  ASSERT_EQ(name.exitCode, 0) << name.err;
  EXPECT_EQ(nlohmann::json::parse(name.out)["FirstName"], "Ren\xC3\xA9");
  // A template saved in Windows-1252: its guillemets are the bytes AB and BB.
  const fs::path letter = folder / "letter.txt";
  std::ofstream(letter, std::ios::binary) << "Cher \xABNo Such Field\xBB";
  const CommandRun check = lfimport("check-template --file " + quoted(letter));
  ASSERT_EQ(check.exitCode, 0) << check.err;
  EXPECT_EQ(nlohmann::json::parse(check.out)["fault"], true);
}

TEST_F(LfimportBadInput, ValuesOutOfRangeAreBadUsage) {
  const std::string summary = "summary --practice " + quoted(practice) + " --kind ";
  expectFailure(lfimport(summary + "personal --contact -5"), 2, {"--contact", "'-5'"});
  expectFailure(lfimport(summary + "company --company abc"), 2, {"--company", "'abc'"});
  expectFailure(
      lfimport("merge --practice " + quoted(practice) + " --text x --company 99999999999999999999"),
      2, {"--company", "99999999999999999999"});
  expectFailure(lfimport(summary + "personal"), 2, {"needs --contact or --employee"});
  const FolderState before = stateOf(folder);
  const fs::path fresh = folder / "fresh.db";
  expectFailure(lfimport("init " + quoted(fresh) + " --year 99999999999"), 2,
                {"--year", "99999999999"});
  expectFailure(lfimport("init " + quoted(fresh) + " --province 999"), 2, {"--province", "999"});
  EXPECT_EQ(stateOf(folder), before);
}

TEST_F(LfimportBadInput, BadAnswersFilesNameTheFile) {
  const fs::path answers = folder / "answers.json";
  const FolderState before = stateOf(folder);
  const auto run = [&](const std::string& text) {
    std::ofstream(answers, std::ios::binary | std::ios::trunc) << text;
    return lfimport(syncArguments(practice) + " --answers " + quoted(answers));
  };
  expectFailure(run(R"({"category": 1e999})"), 1,
                {answers.string(), "number overflow parsing '1e999'"});
  expectFailure(run(R"({"groups": [)"), 1, {answers.string(), "not valid JSON"});
  expectFailure(run(R"({"groups": {"contacts": "yes"}})"), 1,
                {answers.string(), "\"groups.contacts\" must be true or false"});
  fs::remove(answers);
  EXPECT_EQ(stateOf(folder), before);
  // Written in Windows-1252, the answers file still reads.
  const CommandRun cp1252 = run("{\"questions\": {\"answers\": {\"Caf\xE9\": \"yes\"}}}");
  EXPECT_EQ(cp1252.exitCode, 0) << cp1252.err;
}

TEST_F(LfimportBadInput, MergeFailureAtRunTimeIsAFailedRun) {
  // A table that cannot be read once the merge runs: its rows come through a view that fails.
  runSql(practice, "ALTER TABLE CustomFields RENAME TO CustomFieldRows");
  runSql(practice,
         "CREATE VIEW CustomFields AS SELECT * FROM CustomFieldRows WHERE json('x') IS NOT NULL");
  const std::string merge = "merge --practice " + quoted(practice) +
                            " --firm 1 --text '\xC2\xABYour Company Name\xC2\xBB'";
  const CommandRun goOn = lfimport(merge);
  EXPECT_EQ(goOn.exitCode, 1);
  EXPECT_EQ(goOn.out, "Maple Ridge Accounting\n");
  EXPECT_NE(goOn.err.find("1 failure(s) while merging"), std::string::npos) << goOn.err;
  const CommandRun stop = lfimport(merge + " --on-error stop");
  EXPECT_EQ(stop.exitCode, 1);
  EXPECT_EQ(stop.out, "");
}

TEST_F(LfimportBadInput, InteractiveSyncStartsWithTheGivenExport) {
  // Next from the first step, Next from the export file step, then cancel on the client list.
  const fs::path input = folder / "input.txt";
  std::ofstream(input) << "n\nn\nc\n";
  const CommandRun run = lfimport("sync tps --interactive --source " + quoted(exportFile) +
                                  " --practice " + quoted(practice) + " < " + quoted(input));
  EXPECT_NE(run.err.find("Export file: " + exportFile.string() + " (open)"), std::string::npos)
      << run.err;
  EXPECT_NE(run.err.find("Select the business companies to synchronize"), std::string::npos);
  EXPECT_EQ(run.err.find("You must open the TPS Export file"), std::string::npos);
}

}  // namespace
