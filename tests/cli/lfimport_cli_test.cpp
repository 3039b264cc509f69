// The lfimport program end to end: commands, their output and their exit codes.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

namespace fs = std::filesystem;

struct CommandRun {
  int exitCode = -1;
  std::string out;
};

// Runs lfimport with the arguments (already quoted for the shell); stderr is discarded.
CommandRun lfimport(const std::string& arguments) {
  std::string command = std::string(LF_BINARY_DIR) + "/lfimport " + arguments + " 2>/dev/null";
  CommandRun run;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return run;
  std::array<char, 4096> buffer{};
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) run.out.append(buffer.data(), n);
  int status = pclose(pipe);
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

class LfimportProgram : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(::testing::TempDir()) / ("lfimport_cli_" + std::to_string(::getpid()));
    fs::create_directories(folder);
    practice = (folder / "practice.db").string();
  }
  void TearDown() override { fs::remove_all(folder); }
  fs::path folder;
  std::string practice;
};

TEST_F(LfimportProgram, HelpListsTheCommands) {
  CommandRun help = lfimport("--help");
  EXPECT_EQ(help.exitCode, 0);
  for (const char* command :
       {"init", "info", "parse", "summary", "fields", "check-template", "merge", "calendar-text"})
    EXPECT_NE(help.out.find(command), std::string::npos) << command;
}

TEST_F(LfimportProgram, InitCreatesOnceAndRefusesToOverwrite) {
  EXPECT_EQ(lfimport("init '" + practice + "' --country us --province 0").exitCode, 0);
  EXPECT_NE(lfimport("init '" + practice + "'").exitCode, 0);
  CommandRun info = lfimport("info '" + practice + "'");
  ASSERT_EQ(info.exitCode, 0);
  auto json = nlohmann::json::parse(info.out);
  EXPECT_EQ(json["rows"]["AccountantFirmInfo"], 1);
  EXPECT_EQ(json["settings"]["CountryMode"], "2");
  EXPECT_NE(lfimport("info '" + (folder / "missing.db").string() + "'").exitCode, 0);
}

TEST_F(LfimportProgram, ParseNameAndAddressPrintTheDocumentedFields) {
  CommandRun name = lfimport("parse name 'Mr. John Smith & Mrs. Mary Smith'");
  ASSERT_EQ(name.exitCode, 0);
  auto n = nlohmann::json::parse(name.out);
  EXPECT_EQ(n["NamePrefix"], "Mr.");
  EXPECT_EQ(n["FirstName"], "John");
  EXPECT_EQ(n["LastName"], "Smith");
  EXPECT_EQ(n["SpouseNamePrefix"], "Mrs.");
  EXPECT_EQ(n["SpouseFirstName"], "Mary");
  EXPECT_EQ(n["SpouseName"], "Mary Smith");
  CommandRun address = lfimport("parse address '123 Main St, Toronto, ON M5V1A1'");
  ASSERT_EQ(address.exitCode, 0);
  auto a = nlohmann::json::parse(address.out);
  EXPECT_EQ(a.size(), 13u);
  EXPECT_EQ(a["Street"], "123 MAIN ST");
  EXPECT_EQ(a["City"], "TORONTO");
  EXPECT_EQ(a["Province"], "ON");
  EXPECT_EQ(a["PostalCode"], "M5V1A1");
}

TEST_F(LfimportProgram, MergeAndSummaryFailClearlyOnUnknownInput) {
  ASSERT_EQ(lfimport("init '" + practice + "'").exitCode, 0);
  EXPECT_NE(
      lfimport("summary --practice '" + practice + "' --contact 999 --kind personal").exitCode, 0);
  EXPECT_NE(lfimport("merge --practice '" + (folder / "none.db").string() + "' --text x").exitCode,
            0);
  CommandRun firm = lfimport("merge --practice '" + practice +
                             "' --firm 1 --text '\xC2\xABYour Company Name\xC2\xBB'");
  EXPECT_EQ(firm.exitCode, 0);
  EXPECT_NE(firm.out.find("Maple Ridge Accounting"), std::string::npos);
  // A template fault is reported, not an error of the program.
  CommandRun check = lfimport("check-template --text '\xC2\xABNo Such Field\xC2\xBB'");
  EXPECT_EQ(check.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(check.out)["fault"], true);
}

TEST_F(LfimportProgram, SourceInspectReadsAccessAndSqliteExportsAndRefusesOthers) {
  const std::string nwind = std::string(LF_MDB_SAMPLES) + "/nwind.mdb";
  if (fs::exists(nwind)) {
    CommandRun access = lfimport("source inspect --json '" + nwind + "'");
    ASSERT_EQ(access.exitCode, 0);
    auto json = nlohmann::json::parse(access.out);
    EXPECT_EQ(json["kind"], "Access (Jet 3)");
    ASSERT_EQ(json["tables"].size(), 9u);
    EXPECT_EQ(json["tables"][0]["name"], "Order Details");
    EXPECT_EQ(json["tables"][0]["rows"], 2155);
    EXPECT_EQ(json["tables"][0]["columns"][2]["type"], "Currency");
  }
  CommandRun sqlite =
      lfimport("source inspect --json '" + std::string(LF_SOURCE_DIR) + "/samples/tps_export.db'");
  ASSERT_EQ(sqlite.exitCode, 0);
  EXPECT_EQ(nlohmann::json::parse(sqlite.out)["kind"], "SQLite");

  const std::string damaged = (folder / "Export.mdb").string();
  std::ofstream(damaged, std::ios::binary)
      << std::string("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) << std::string(9000, 'x');
  EXPECT_EQ(lfimport("source inspect '" + damaged + "'").exitCode, 1);
  ASSERT_EQ(lfimport("init '" + practice + "'").exitCode, 0);
  EXPECT_EQ(lfimport("sync tps --source '" + damaged + "' --practice '" + practice + "'").exitCode,
            1);
}

TEST_F(LfimportProgram, SyncCchListsClientPairsThenSyncsTheSampleAndARerunAddsNothing) {
  const std::string sample = std::string(LF_SOURCE_DIR) + "/samples/cch_export.db";
  CommandRun list = lfimport("sync cch --list-clients --source '" + sample + "'");
  ASSERT_EQ(list.exitCode, 0);
  const auto clients = nlohmann::json::parse(list.out);
  ASSERT_EQ(clients.size(), 6u);
  EXPECT_EQ(clients[1]["id"], "1001,B");
  EXPECT_EQ(clients[1]["business"], true);
  EXPECT_EQ(clients[4]["business"], false);  // Ingrid Solberg
  EXPECT_FALSE(clients[0].contains("inactive"));

  ASSERT_EQ(lfimport("init '" + practice + "'").exitCode, 0);
  const std::string sync = "sync cch --quiet --source '" + sample + "' --practice '" + practice +
                           "' --answers '" + LF_SOURCE_DIR +
                           "/samples/cch_answers.json' --report '";
  ASSERT_EQ(lfimport(sync + (folder / "first.json").string() + "'").exitCode, 0);
  ASSERT_EQ(lfimport(sync + (folder / "again.json").string() + "'").exitCode, 0);
  auto created = [&](const std::string& report) {
    std::ifstream in(folder / report);
    const nlohmann::json json = nlohmann::json::parse(in);
    long total = 0;
    for (const auto& stage : json["stages"]) total += stage["created"].get<long>();
    return total;
  };
  EXPECT_EQ(created("first.json"), 33);
  EXPECT_EQ(created("again.json"), 0);
}

TEST_F(LfimportProgram, SyncBalabossThenBill4TimeShareTheirRecordsAndARerunAddsNothing) {
  const std::string samples = std::string(LF_SOURCE_DIR) + "/samples/";
  CommandRun list =
      lfimport("sync bill4time --list-clients --source '" + samples + "bill4time_export.db'");
  ASSERT_EQ(list.exitCode, 0);
  const auto clients = nlohmann::json::parse(list.out);
  ASSERT_EQ(clients.size(), 4u);  // the deleted client is not listed
  EXPECT_EQ(clients[1]["id"], "102");
  EXPECT_EQ(clients[1]["business"], true);

  ASSERT_EQ(lfimport("init '" + practice + "'").exitCode, 0);
  auto sync = [&](const std::string& source, const std::string& report) {
    return lfimport("sync " + source + " --quiet --source '" + samples + source +
                    "_export.db' --practice '" + practice + "' --answers '" + samples + source +
                    "_answers.json' --report '" + (folder / report).string() + "'")
        .exitCode;
  };
  auto created = [&](const std::string& report) {
    std::ifstream in(folder / report);
    const nlohmann::json json = nlohmann::json::parse(in);
    long total = 0;
    for (const auto& stage : json["stages"]) total += stage["created"].get<long>();
    return total;
  };
  ASSERT_EQ(sync("balaboss", "balaboss.json"), 0);
  EXPECT_EQ(created("balaboss.json"), 20);
  ASSERT_EQ(sync("bill4time", "first.json"), 0);
  // One set of cross-references: the Balaboss WIP rows 1 to 3 are the Bill4Time time entries
  // 1 to 3 to it, so those are known already; entry 4 is new, 6 belongs to a deleted client.
  EXPECT_EQ(created("first.json"), 8);
  std::ifstream in(folder / "first.json");
  const nlohmann::json first = nlohmann::json::parse(in);
  for (const auto& stage : first["stages"]) {
    if (stage["stage"] == "time entries") {
      EXPECT_EQ(stage["skippedBecause"]["known from an earlier run (only new entries)"], 3);
    }
  }
  ASSERT_EQ(sync("bill4time", "again.json"), 0);
  EXPECT_EQ(created("again.json"), 0);
}

}  // namespace
