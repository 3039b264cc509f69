#include "records/calendar_helpers.hpp"

#include <gtest/gtest.h>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/practice_schema.hpp"

namespace lf {
namespace {

const Date kDay = Date::fromParts(2012, 3, 5);

std::string timeOf(const Date& d) {
  return d.toIso().substr(11, 5);
}

class BestTimeInCalendar : public ::testing::Test {
 protected:
  void SetUp() override {
    db.createNew(":memory:");
    for (const std::string& statement : practiceSchemaStatements()) db.executeStatement(statement);
    moduleState().DatabaseReference = &db;
  }
  void TearDown() override { moduleState().DatabaseReference = nullptr; }

  // One calendar row of `user` on `day` from `from` to `to` ("HH:MM").
  void book(const std::string& table, long user, const std::string& from, const std::string& to,
            const Date& day = kDay) {
    std::int32_t h = db.openRecordset("SELECT " + table + ".* FROM " + table + ";", kCursorKeyset,
                                      kLockOptimistic);
    db.addNewRecord(h);
    db.setNewField(h, "UserIDNum", std::to_string(user));
    db.setNewField(h, "DateFrom", day.toIso());
    db.setNewField(h, "TimeFrom", "1899-12-30 " + from + ":00");
    db.setNewField(h, "TimeTo", "1899-12-30 " + to + ":00");
    db.updateRecord(h);
    db.closeRecordset(h);
  }

  std::string best(float hours, long kind = 2, long user = 7) {
    return timeOf(getBestTimeInCalendarForSpecificDayAndUser(kind, user, kDay, hours));
  }

  Database db;
};

TEST_F(BestTimeInCalendar, AnEmptyDayStartsAtNine) {
  EXPECT_EQ(best(1), "09:00");
}

TEST_F(BestTimeInCalendar, TakesTheFirstGapThatIsLongEnough) {
  book("Dockets", 7, "09:00", "10:00");
  book("Dockets", 7, "11:30", "12:00");
  book("Dockets", 7, "12:30", "16:00");
  EXPECT_EQ(best(1), "10:00");     // 10:00 to 11:30 holds an hour
  EXPECT_EQ(best(1.5f), "10:00");  // and exactly an hour and a half
}

TEST_F(BestTimeInCalendar, MovesPastAGapThatIsTooShort) {
  book("Dockets", 7, "09:00", "10:00");
  book("Dockets", 7, "10:30", "11:00");
  book("Dockets", 7, "12:30", "13:00");
  EXPECT_EQ(best(1.5f), "11:00");
}

TEST_F(BestTimeInCalendar, FallsBackToNineWhenNothingFits) {
  book("Dockets", 7, "09:00", "10:00");
  book("Dockets", 7, "11:30", "12:00");
  book("Dockets", 7, "12:30", "16:00");
  EXPECT_EQ(best(2), "09:00");  // the last gap, 16:00 to 17:00, is too short as well
}

TEST_F(BestTimeInCalendar, TheGapBeforeFiveCounts) {
  book("Dockets", 7, "09:00", "15:00");
  EXPECT_EQ(best(2), "15:00");
  EXPECT_EQ(best(2.5f), "09:00");
}

TEST_F(BestTimeInCalendar, OnlyRowsEndingInsideTheWindowMoveTheCandidate) {
  book("Dockets", 7, "07:00", "08:00");  // ends before the window
  book("Dockets", 7, "09:00", "15:30");
  book("Dockets", 7, "16:00", "18:00");  // ends after the window: not looked at
  EXPECT_EQ(best(1), "15:30");
}

TEST_F(BestTimeInCalendar, ReadsTheKindsTableForTheUserAndDateOnly) {
  book("Dockets", 7, "09:00", "12:00");
  book("Appointments", 8, "09:00", "13:00");
  book("Tasks", 7, "09:00", "14:00", Date::fromParts(2012, 3, 6));
  EXPECT_EQ(best(1, 2), "12:00");
  EXPECT_EQ(best(1, 0), "09:00");     // user 7 has no appointment
  EXPECT_EQ(best(1, 0, 8), "13:00");  // user 8 has
  EXPECT_EQ(best(1, 1), "09:00");     // the task is on the next day
}

TEST_F(BestTimeInCalendar, AClosedDatabaseGivesTheNeutralValue) {
  book("Dockets", 7, "09:00", "12:00");
  db.close();
  EXPECT_EQ(getBestTimeInCalendarForSpecificDayAndUser(2, 7, kDay, 1).serial, 0.0);
}

TEST(EndTimeFromDuration, DurationsOfZeroOrLessReturnTheStart) {
  Date start = Date::fromParts(2012, 3, 5, 9, 30, 45);
  EXPECT_EQ(determineEndTimeFromTimeDuration(start, 0), start);
  EXPECT_EQ(determineEndTimeFromTimeDuration(start, -1.5f), start);
}

TEST(EndTimeFromDuration, CountsFromTheStartsMinute) {
  EXPECT_EQ(determineEndTimeFromTimeDuration(Date::fromParts(2012, 3, 5, 9, 30, 45), 1.5f).toIso(),
            "2012-03-05 11:00:00");
  EXPECT_EQ(determineEndTimeFromTimeDuration(Date::fromParts(2012, 3, 5), 2).toIso(),
            "2012-03-05 02:00:00");
  EXPECT_EQ(determineEndTimeFromTimeDuration(Date::fromParts(2012, 3, 5, 23, 0), 2.25f).toIso(),
            "2012-03-06 01:15:00");
}

TEST(StartAndEndTime, VerifySwapsOnlyAStartLaterThanItsEnd) {
  Date early = Date::fromParts(2012, 3, 5, 9, 0), late = Date::fromParts(2012, 3, 5, 17, 0);
  Date start = late, end = early;
  verifyStartAndEndTime(start, end);
  EXPECT_EQ(start, early);
  EXPECT_EQ(end, late);
  verifyStartAndEndTime(start, end);
  EXPECT_EQ(start, early);
  Date same1 = early, same2 = early;
  verifyStartAndEndTime(same1, same2);
  EXPECT_EQ(same1, early);
  EXPECT_EQ(same2, early);
}

}  // namespace
}  // namespace lf
