// lfimport import wip|invoices|ar end to end: the sample prepared database loaded with its
// answers file, a re-run that creates nothing, and the exit codes of a source that cannot be
// used.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

namespace fs = std::filesystem;

const std::string kSample = std::string(LF_SOURCE_DIR) + "/samples/prepared_import.db";
const std::string kAnswers = std::string(LF_SOURCE_DIR) + "/samples/prepared_answers.json";

// Runs lfimport with the arguments (quoted for the shell), its messages dropped; the exit code.
int lfimport(const std::string& arguments) {
  const std::string command =
      std::string(LF_BINARY_DIR) + "/lfimport " + arguments + " >/dev/null 2>&1";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class ImportBatchCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    folder = fs::path(::testing::TempDir()) / ("import_batch_" + std::to_string(::getpid()));
    fs::remove_all(folder);
    fs::create_directories(folder);
    practice = (folder / "practice.db").string();
    source = (folder / "prepared.db").string();
    fs::copy_file(kSample, source);
    ASSERT_EQ(lfimport("init '" + practice + "'"), 0);
  }
  void TearDown() override { fs::remove_all(folder); }

  // Runs one import with the sample's answers; its report.
  nlohmann::json import(const std::string& kind, const std::string& reportName) {
    const std::string report = (folder / reportName).string();
    EXPECT_EQ(lfimport("import " + kind + " --quiet --source '" + source + "' --practice '" +
                       practice + "' --answers '" + kAnswers + "' --report '" + report + "'"),
              0)
        << kind;
    std::ifstream in(report);
    return nlohmann::json::parse(in, nullptr, false);
  }
  static long total(const nlohmann::json& report, const char* counter) {
    long sum = 0;
    for (const auto& stage : report["stages"]) sum += stage[counter].get<long>();
    return sum;
  }

  fs::path folder;
  std::string practice;
  std::string source;
};

TEST_F(ImportBatchCommand, TheSampleLoadsWithItsAnswersAndARerunCreatesNothing) {
  const nlohmann::json ar = import("ar", "ar.json");
  // Harbourline 1, Tamsin 2, Cobblers 2 (its zeros left out), Wrenfield 1.
  EXPECT_EQ(total(ar, "created"), 6);
  EXPECT_EQ(ar["questions"].size(), 4u);
  const nlohmann::json invoices = import("invoices", "invoices.json");
  EXPECT_EQ(total(invoices, "created"), 4);
  EXPECT_EQ(invoices["questions"].size(), 0u);  // every client known from the first import
  const nlohmann::json wip = import("wip", "wip.json");
  // Six rows: one without an employee code, one of an unknown client without a name.
  EXPECT_EQ(total(wip, "created"), 4);
  EXPECT_EQ(total(wip, "skipped"), 2);

  for (const char* kind : {"ar", "invoices", "wip"}) {
    const nlohmann::json again = import(kind, std::string(kind) + "_again.json");
    EXPECT_EQ(total(again, "created"), 0) << kind;
    EXPECT_EQ(again["questions"].size(), 0u) << kind;
  }
}

TEST_F(ImportBatchCommand, ASourceThatCannotBeUsedFails) {
  const std::string start = "import wip --quiet --practice '" + practice + "' --source '";
  EXPECT_EQ(lfimport(start + (folder / "missing.db").string() + "'"), 1);
  // A database without the WIP table: the statement fails and the run says so.
  const std::string other = std::string(LF_SOURCE_DIR) + "/samples/tps_export.db";
  fs::copy_file(other, folder / "tps.db");
  EXPECT_EQ(lfimport(start + (folder / "tps.db").string() + "'"), 1);
  EXPECT_EQ(lfimport("import ar --quiet --practice '" + practice + "'"), 2);
}

}  // namespace
