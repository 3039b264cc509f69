// A CCH Practice sync killed (SIGKILL) in the middle of a record and run again ends with the
// practice database an uninterrupted run gives, as the TPS one does: each record's rows and
// its cross-reference are committed together. The CCH Practice run has its own record kinds
// on the way (three work-code passes, WIP rows left out by their status, deposits that
// settle their invoices at the end of the run).
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/sync/sync_resume_support.hpp"

namespace lf::testing {
namespace {

const std::string kSample = std::string(LF_SOURCE_DIR) + "/samples/cch_export.db";
const std::string kAnswers = std::string(LF_SOURCE_DIR) + "/samples/cch_answers.json";

class CCHPracticeSyncResumeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kProgram) || !std::filesystem::exists(kSample))
      GTEST_SKIP() << "needs the lfimport program and the sample export";
    files = std::make_unique<ResumeFolder>("cch_resume", kSample);
  }

  int sync(const std::string& practice, long killAtRecord) {
    return runProgram({"sync", "cch", "--source", files->source, "--practice", practice,
                       "--answers", kAnswers, "--quiet"},
                      killAtRecord);
  }

  std::unique_ptr<ResumeFolder> files;
};

TEST_F(CCHPracticeSyncResumeTest, KilledRunsResumedGiveTheDatabaseOfOneUninterruptedRun) {
  const std::string reference = files->newPractice("reference.db");
  ASSERT_EQ(sync(reference, 0), 0);
  const auto expected = contents(reference);
  ASSERT_FALSE(expected.at("Invoices").empty());

  // Kill points inside staff, business clients (with their contacts), personal clients, bill
  // codes, categories, work codes, WIP entries, invoices and deposits of the sample (records
  // 25 to 27 are WIP rows left out by their status, which reach no write); the second case is
  // killed twice before it completes.
  const std::vector<std::vector<long>> cases = {{2},  {5, 7}, {9},  {11}, {14},
                                                {18}, {23},   {30}, {35}};
  for (const std::vector<long>& kills : cases) {
    const std::string practice =
        files->newPractice("killed_" + std::to_string(kills.front()) + ".db");
    for (long at : kills) {
      const int status = sync(practice, at);
      ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
          << "the run was not killed at record " << at;
    }
    ASSERT_EQ(sync(practice, 0), 0);
    EXPECT_EQ(firstDifference(expected, contents(practice)), "")
        << "after a kill at record " << kills.front();
  }
}

}  // namespace
}  // namespace lf::testing
