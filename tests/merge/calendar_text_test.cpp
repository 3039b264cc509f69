// The calendar's display and title texts of appointments, time entries and tasks.
#include <gtest/gtest.h>

#include "merge/cls_insert_fields_in_rtb.hpp"
#include "tests/merge/merge_test_support.hpp"

namespace lf {
namespace {

using testing_support::MergeTest;

class CalendarTextTest : public MergeTest {
 protected:
  void SetUp() override {
    MergeTest::SetUp();
    usePracticeDatabase();
    exec("INSERT INTO Companies (CompanyID, CompanyName) VALUES (1, 'Acme Ltd');");
    exec(
        "INSERT INTO Appointments (AppointmentID, Subject, TimeFrom, TimeTo, "
        "AfterAppointmentText) VALUES (3, 'Review', '1899-12-30 09:00:00', "
        "'1899-12-30 10:00:00', 'Bring files');");
    exec("INSERT INTO Tasks (TaskID, ScheduleIDNum, Subject) VALUES (8, 40, 'GST return');");
    exec("INSERT INTO archiveTasks (oldTaskID, ScheduleIDNum) VALUES (9, 41);");
    rtb.ConvertStrToRTF = false;
    rtb.companyID = 1;
  }
  void settings(const std::string& column, const std::string& value) {
    exec("INSERT INTO UserCalendarSettings (UserIDNum, " + column + ") VALUES (-1, '" + value +
         "');");
  }
  clsInsertFieldsInRTB rtb;
};

TEST_F(CalendarTextTest, TemplateZeroMeansTheDefault) {
  settings("TemplateAppt", "0");
  rtb.ListType = 5;
  rtb.appointmentID = 3;
  EXPECT_EQ(rtb.createDisplayTextByID2(),
            "Review for Acme Ltd\r\n9:00 am to 10:00 am\r\nBring files");
}

TEST_F(CalendarTextTest, CompanyWithoutDefaultContactMergesContactFieldsBlank) {
  settings("TemplateAppt", "«Contact Display Name»|«Contact Display Name»|«Contact First Name»");
  rtb.ListType = 5;
  rtb.appointmentID = 3;
  // Only the first occurrence becomes the company's name.
  EXPECT_EQ(rtb.createDisplayTextByID2(), "Acme Ltd||\r\nBring files");
  EXPECT_EQ(rtb.contactID, -1);
}

TEST_F(CalendarTextTest, BareTitleNameIsAField) {
  settings("TitleBarTextTask", "Task Name");
  rtb.ListType = 8;
  rtb.TaskID = 8;
  EXPECT_EQ(rtb.createTitleBarTextByID2(), "GST return");
}

TEST_F(CalendarTextTest, EmptyTitleStaysEmpty) {
  rtb.ListType = 8;
  rtb.TaskID = 8;
  EXPECT_EQ(rtb.createTitleBarTextByID2(), "");
}

TEST_F(CalendarTextTest, ScheduleFindsTheTaskOrItsArchive) {
  rtb.setScheduleID(40);
  EXPECT_EQ(rtb.TaskID, 8);
  rtb.setScheduleID(41);
  EXPECT_EQ(rtb.TaskID, 9);
  rtb.setScheduleID(42);
  EXPECT_EQ(rtb.TaskID, -1);
}

}  // namespace
}  // namespace lf
