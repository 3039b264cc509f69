// A TPS sync killed (SIGKILL) in the middle of a record and run again ends with the practice
// database an uninterrupted run gives: each record's rows and its cross-reference are
// committed together, so a re-run finds every record either complete or absent.
//
// Runs the lfimport program on the bundled sample export with LFIMPORT_KILL_AT_RECORD set,
// which kills the process inside that record, after its writes and before their commit.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/sync/sync_resume_support.hpp"

namespace lf::testing {
namespace {

const std::string kSample = std::string(LF_SOURCE_DIR) + "/samples/tps_export.db";
const std::string kAnswers = std::string(LF_SOURCE_DIR) + "/samples/tps_answers.json";

class TPSSyncResumeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kProgram) || !std::filesystem::exists(kSample))
      GTEST_SKIP() << "needs the lfimport program and the sample export";
    files = std::make_unique<ResumeFolder>("tps_resume", kSample);
  }

  int sync(const std::string& practice, long killAtRecord) {
    return runProgram({"sync", "tps", "--source", files->source, "--practice", practice,
                       "--answers", kAnswers, "--quiet"},
                      killAtRecord);
  }

  std::unique_ptr<ResumeFolder> files;
};

TEST_F(TPSSyncResumeTest, KilledRunsResumedGiveTheDatabaseOfOneUninterruptedRun) {
  // Staff rows are rewritten by every run, with summaries of the clients there at the time;
  // the reference is therefore an uninterrupted run followed by the same final re-run that
  // every interrupted case ends with.
  const std::string reference = files->newPractice("reference.db");
  ASSERT_EQ(sync(reference, 0), 0);
  const auto expected = contents(reference);
  ASSERT_FALSE(expected.at("Companies").empty());

  // Kill points inside staff, business clients, personal clients, invoices, deposits and
  // time entries of the sample; the second case is killed twice before it completes.
  const std::vector<std::vector<long>> cases = {{2}, {6, 9}, {14}, {27}, {36}, {45}, {52}};
  for (const std::vector<long>& kills : cases) {
    const std::string practice =
        files->newPractice("killed_" + std::to_string(kills.front()) + ".db");
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
  const std::string practice = files->newPractice("rerun.db");
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
}  // namespace lf::testing
