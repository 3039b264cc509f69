// Tests of the WIP import: a docket a row with its staff member, date, hours and description,
// rows left out with their reasons. Re-runs: tests/cli/cmd_import_batch_test.cpp.
#include "sync/batch/cls_import_wip.hpp"

#include "tests/sync/batch/prepared_import_fixture.hpp"

namespace lf {
namespace {

using testing::PreparedImportTest;

class ImportWIPTest : public PreparedImportTest {
 protected:
  void SetUp() override {
    PreparedImportTest::SetUp();
    prepared.exec(
        "INSERT INTO WIP VALUES"
        " ('P100', 'Harbourline Marine Ltd', 'MQ', '2026-03-02', '2.5', 'Year-end review', "
        "'2025 audit', 'Fieldwork'),"
        " ('P100', 'Harbourline Marine Ltd', 'MQ', '2026-03-03', '1', 'Payroll', NULL, NULL),"
        " ('P300', 'Cobblers Row Bakery Inc', 'RV', '2026-03-05', 'about two', NULL, "
        "'Engagement B', ' '),"
        " ('P200', 'Tamsin Okonedo', NULL, '2026-03-06', '1', 'Call', NULL, NULL),"
        " ('P400', NULL, 'MQ', '2026-03-06', '1', 'Planning', NULL, NULL);");
  }
  Variant docket(const std::string& subject, const std::string& field) {
    return value("SELECT * FROM Dockets WHERE Subject='" + subject + "';", field);
  }
};

TEST_F(ImportWIPTest, DocketTakesDateHoursDescriptionAndAStaffMemberMadeOnFirstUse) {
  const long staffBefore = count("SELECT * FROM AccountantEmployeeInfo;");
  run<clsImportWIP>();

  ASSERT_EQ(count("SELECT * FROM Dockets;"), 3);
  const std::string first = "Year-end review, 2025 audit, Fieldwork";
  EXPECT_EQ(docket(first, "TextBody").toString(), first);
  EXPECT_EQ(docket(first, "TotalTimeReal").toDouble(), 2.5);
  EXPECT_EQ(docket(first, "DateFrom").toDate()->serial, Date::fromParts(2026, 3, 2).serial);
  EXPECT_EQ(docket(first, "DocketStatus").toLong(), 0);
  // Hours that are no number: one hour. Blank parts are left out of the description.
  EXPECT_EQ(docket("Engagement B", "TotalTimeReal").toDouble(), 1.0);

  // One staff member a code, found again for the second row of MQ.
  EXPECT_EQ(count("SELECT * FROM AccountantEmployeeInfo;"), staffBefore + 2);
  const long mq = docket(first, "UserIDNum").toLong();
  EXPECT_EQ(docket("Payroll", "UserIDNum").toLong(), mq);
  EXPECT_EQ(count("SELECT * FROM CCHPracticeUserEntries WHERE CCHPracticeUserID='MQ' AND "
                  "UserIDNum=" +
                  std::to_string(mq) + ";"),
            1);
  EXPECT_NE(docket("Engagement B", "UserIDNum").toLong(), mq);

  const StageCounters& wip = counters.at("time entries");
  EXPECT_EQ(wip.read, 5);
  EXPECT_EQ(wip.created, 3);
  EXPECT_EQ(wip.skipReasons.at("no employee code"), 1);
  EXPECT_EQ(wip.skipReasons.at("client P400 is not known and has no name"), 1);
}

}  // namespace
}  // namespace lf
