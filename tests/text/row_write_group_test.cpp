// Rows of a text import in write groups: several rows a commit, each row whole and counted
// once, a failed row failing alone, and the held rows kept when the import is left.
#include "text/row_write_group.hpp"

#include "base/failure.hpp"
#include "base/procedure.hpp"
#include "host/run_report.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class RowWriteGroupsTest : public testing::PracticeDatabaseTest {
 protected:
  void addCategory(int n) {
    db->executeStatement("INSERT INTO Categories (CategoryName) VALUES ('Row " + std::to_string(n) +
                         "')");
  }
  long rowsStored() { return count("SELECT * FROM Categories WHERE CategoryName Like 'Row *'"); }

  StageCounters counters;
};

TEST_F(RowWriteGroupsTest, EveryRowIsStoredAndCountedOverSeveralCommits) {
  const int rows = 2 * RowWriteGroups::kRowsPerCommit + 50;
  {
    RowWriteGroups groups("Ledgerfolio.exe-test-commitRows", &counters);
    for (int n = 1; n <= rows; ++n)
      groups.importRow([&](std::string& reason) {
        if (n % 50 == 0) {
          reason = "every fiftieth";
          return RowOutcome::Skipped;
        }
        addCategory(n);
        return n % 2 ? RowOutcome::Created : RowOutcome::Updated;
      });
    groups.commit();
  }
  const long skipped = rows / 50;
  EXPECT_EQ(counters.read, rows);
  EXPECT_EQ(counters.skipped, skipped);
  EXPECT_EQ(counters.skipReasons["every fiftieth"], skipped);
  EXPECT_EQ(counters.created + counters.updated, rows - skipped);
  EXPECT_EQ(counters.failed, 0);
  EXPECT_EQ(rowsStored(), rows - skipped);
  EXPECT_TRUE(errors.errors.empty());
}

TEST_F(RowWriteGroupsTest, AFailedRowFailsAloneAndItsGroupIsKept) {
  {
    RowWriteGroups groups("Ledgerfolio.exe-test-commitRows", &counters);
    procedure("Ledgerfolio.exe-test-ImportData", [&] {
      for (int n = 1; n <= 3; ++n)
        groups.importRow([&](std::string&) {
          addCategory(n);
          if (n == 2) throw Failure("no phone for row 2");
          return RowOutcome::Created;
        });
    });
  }  // the rows still held are committed on the way out
  EXPECT_EQ(counters.read, 3);
  EXPECT_EQ(counters.created, 2);
  EXPECT_EQ(counters.failed, 1);
  EXPECT_EQ(counters.failReasons["no phone for row 2"], 1);
  // What the failed row wrote before its failure stays, as a row committed on its own would.
  EXPECT_EQ(rowsStored(), 3);
  ASSERT_EQ(errors.errors.size(), 1u);
}

TEST_F(RowWriteGroupsTest, LeavingTheImportKeepsTheWholeRowsHeld) {
  errors.action = kErrorLeaveProcedure;
  int reached = 0;
  {
    RowWriteGroups groups("Ledgerfolio.exe-test-commitRows", &counters);
    procedure("Ledgerfolio.exe-test-ImportData", [&] {
      for (int n = 1; n <= 5; ++n)
        groups.importRow([&](std::string&) {
          ++reached;
          if (n == 3) throw Failure("the disk is full");
          addCategory(n);
          return RowOutcome::Created;
        });
    });
  }
  EXPECT_EQ(reached, 3);
  EXPECT_EQ(counters.read, 3);
  EXPECT_EQ(counters.created, 2);
  EXPECT_EQ(counters.failed, 1);
  EXPECT_EQ(rowsStored(), 2);
}

}  // namespace
}  // namespace lf
