#include "base/date_utilities.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace lf {
namespace {

std::string parsed(std::string_view text) {
  auto date = DateUtilities::parseDateText(text);
  return date ? date->toIso() : "none";
}

TEST(DateUtilitiesParse, ReadsTheFormsTheImportsMeet) {
  const std::string eve = "2010-12-31 00:00:00";
  EXPECT_EQ(parsed("Dec 31, 2010"), eve);
  EXPECT_EQ(parsed("December 31, 2010"), eve);
  EXPECT_EQ(parsed("Friday, December 31, 2010"), eve);
  EXPECT_EQ(parsed("2010-12-31"), eve);
  EXPECT_EQ(parsed("12/31/2010"), eve);
  EXPECT_EQ(parsed("31-Dec-2010"), eve);
  EXPECT_EQ(parsed("2010/12/31"), eve);
  EXPECT_EQ(parsed("  dec 31 2010 "), eve);
  EXPECT_EQ(parsed("12/31/10"), eve);
  EXPECT_EQ(parsed("31/12/2010"), eve);
  // The business text import builds "Dec, 31 2010" from a year end written "Dec31".
  EXPECT_EQ(parsed("Dec, 31 2010"), eve);
  EXPECT_EQ(parsed("Sept 5 2012"), "2012-09-05 00:00:00");
}

TEST(DateUtilitiesParse, ReadsAnOptionalTime) {
  EXPECT_EQ(parsed("Dec 31, 2010 9:30 AM"), "2010-12-31 09:30:00");
  EXPECT_EQ(parsed("12/31/2010 9:30 pm"), "2010-12-31 21:30:00");
  EXPECT_EQ(parsed("12/31/2010 12:00 am"), "2010-12-31 00:00:00");
  EXPECT_EQ(parsed("2010-12-31 14:05"), "2010-12-31 14:05:00");
  EXPECT_EQ(parsed("2010-12-31T14:05:30"), "2010-12-31 14:05:30");
  EXPECT_EQ(parsed("9:30 AM"), "1899-12-30 09:30:00");
}

TEST(DateUtilitiesParse, RefusesWhatIsNoDate) {
  for (const char* text :
       {"31st of the 31st month", "", "   ", "abc", "2010-02-30", "13/13/2010", "12/31/2010 25:00",
        "1.5", "12345", "Decem 5 2012", "Dec 31, 2010 9:75", "2010"})
    EXPECT_FALSE(DateUtilities::isValidDateText(text)) << text;
  EXPECT_TRUE(DateUtilities::isValidDateText("2012-02-29"));
  EXPECT_FALSE(DateUtilities::isValidDateText("2011-02-29"));
}

TEST(DateUtilitiesArithmetic, AddsAndClampsMonthEnds) {
  Date jan31 = Date::fromParts(2011, 1, 31, 10, 15);
  EXPECT_EQ(DateUtilities::addMonths(jan31, 1).toIso(), "2011-02-28 10:15:00");
  EXPECT_EQ(DateUtilities::addMonths(jan31, 13).toIso(), "2012-02-29 10:15:00");
  EXPECT_EQ(DateUtilities::addMonths(jan31, -2).toIso(), "2010-11-30 10:15:00");
  EXPECT_EQ(DateUtilities::addHours(jan31, 1.5).toIso(), "2011-01-31 11:45:00");
  EXPECT_EQ(DateUtilities::addHours(jan31, 14).toIso(), "2011-02-01 00:15:00");
  EXPECT_EQ(DateUtilities::addMinutes(jan31, -16).toIso(), "2011-01-31 09:59:00");
  EXPECT_EQ(DateUtilities::addDays(jan31, 29).toIso(), "2011-03-01 10:15:00");
}

TEST(DateUtilitiesArithmetic, CountsMinuteBoundariesAndComparesWithinASecond) {
  Date start = Date::fromParts(2011, 1, 31, 9, 0);
  EXPECT_EQ(DateUtilities::minutesBetween(start, Date::fromParts(2011, 1, 31, 10, 30)), 90);
  EXPECT_EQ(DateUtilities::minutesBetween(Date::fromParts(2011, 1, 31, 10, 30), start), -90);
  EXPECT_EQ(DateUtilities::minutesBetween(Date::fromParts(2011, 1, 31, 9, 0, 59),
                                          Date::fromParts(2011, 1, 31, 9, 1, 0)),
            1);
  EXPECT_TRUE(DateUtilities::datesAreEqual(start, Date{start.serial + 0.5 / 86400}));
  EXPECT_FALSE(DateUtilities::datesAreEqual(start, DateUtilities::addSeconds(start, 1)));
}

TEST(DateUtilitiesArithmetic, LeavingTheDateRangeGivesTheNeutralDate) {
  const Date start = Date::fromParts(2010, 1, 31);
  EXPECT_EQ(DateUtilities::addDays(Date{1e300}, 1), Date{});
  EXPECT_EQ(DateUtilities::addMonths(start, std::numeric_limits<long>::max()), Date{});
  EXPECT_EQ(DateUtilities::addMonths(start, std::numeric_limits<long>::min()), Date{});
  EXPECT_EQ(DateUtilities::addYears(Date::fromParts(9999, 6, 1), 1), Date{});
  EXPECT_EQ(DateUtilities::addSeconds(start, std::numeric_limits<long long>::max()), Date{});
  EXPECT_EQ(DateUtilities::addMinutes(start, std::numeric_limits<long long>::min()), Date{});
  EXPECT_EQ(DateUtilities::addHours(start, 1e300), Date{});
  EXPECT_EQ(DateUtilities::addDays(start, std::numeric_limits<long>::max()), Date{});
  EXPECT_EQ(DateUtilities::minutesBetween(Date{-1e300}, Date{0.5}), 720);
  // Up to the last day is still a date.
  EXPECT_EQ(DateUtilities::addYears(Date::fromParts(9998, 12, 31), 1),
            Date::fromParts(9999, 12, 31));
}

}  // namespace
}  // namespace lf
