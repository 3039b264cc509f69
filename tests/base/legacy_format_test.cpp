#include "base/legacy_format.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace lf {
namespace {

const Date kNewYearsEve = Date::fromParts(2010, 12, 31);  // a Friday
const Date kMarchFifth = Date::fromParts(2012, 3, 5, 14, 7, 9);

TEST(LegacyFormatDate, MergeFieldDateFormats) {
  EXPECT_EQ(formatDate(kNewYearsEve, "dddd, mmmm d yyyy"), "Friday, December 31 2010");
  EXPECT_EQ(formatDate(kNewYearsEve, "dddd mmmm d yyyy"), "Friday December 31 2010");
  EXPECT_EQ(formatDate(kNewYearsEve, "mmmm d, yyyy"), "December 31, 2010");
  EXPECT_EQ(formatDate(kNewYearsEve, "mmmm d yyyy"), "December 31 2010");
  EXPECT_EQ(formatDate(kNewYearsEve, "mmm d yyyy"), "Dec 31 2010");
  EXPECT_EQ(formatDate(kNewYearsEve, "mm/dd/yy"), "12/31/10");
  EXPECT_EQ(formatDate(kNewYearsEve, "d"), "31");
  EXPECT_EQ(formatDate(kNewYearsEve, "dddd"), "Friday");
  EXPECT_EQ(formatDate(kNewYearsEve, "mmmm"), "December");
  EXPECT_EQ(formatDate(kNewYearsEve, "mmm"), "Dec");
  EXPECT_EQ(formatDate(kNewYearsEve, "yyyy"), "2010");
  EXPECT_EQ(formatDate(kNewYearsEve, "mmmm yyyy"), "December 2010");
  EXPECT_EQ(formatDate(kNewYearsEve, "mmmm d"), "December 31");
}

TEST(LegacyFormatDate, DayMonthYearWithNumericAndNamedMonth) {
  EXPECT_EQ(formatDate(kMarchFifth, "dd/mmm/yy"), "05/Mar/12");
  EXPECT_EQ(formatDate(kMarchFifth, "dd/mm/yy"), "05/03/12");
  EXPECT_EQ(formatDate(kMarchFifth, "mmm d, yyyy"), "Mar 5, 2012");
  EXPECT_EQ(formatDate(kMarchFifth, "mmmm dd, yyyy"), "March 05, 2012");
}

TEST(LegacyFormatDate, NamedFormats) {
  EXPECT_EQ(formatDate(kMarchFifth, "Short Date"), "3/5/2012");
  EXPECT_EQ(formatDate(kMarchFifth, "Long Date"), "Monday, March 5, 2012");
  EXPECT_EQ(formatDate(kMarchFifth, "Medium Date"), "05-Mar-12");
  EXPECT_EQ(formatDate(kMarchFifth, "Short Time"), "14:07");
  EXPECT_EQ(formatDate(kMarchFifth, "Medium Time"), "02:07 PM");
  EXPECT_EQ(formatDate(kMarchFifth, "Long Time"), "2:07:09 PM");
  EXPECT_EQ(formatDate(kMarchFifth, ""), "3/5/2012 2:07:09 PM");
  EXPECT_EQ(formatDate(kNewYearsEve, "General Date"), "12/31/2010");
  EXPECT_EQ(formatDate(Date{0.0}, "General Date"), "12:00:00 AM");
}

TEST(LegacyFormatDate, TwelveHourTimesAndMinuteTokens) {
  EXPECT_EQ(formatDate(kMarchFifth, "h:nn am/pm"), "2:07 pm");
  EXPECT_EQ(formatDate(kMarchFifth, "h:Nn am/pm"), "2:07 pm");
  EXPECT_EQ(formatDate(kMarchFifth, "hh:nn AM/PM"), "02:07 PM");
  EXPECT_EQ(formatDate(kMarchFifth, "h:mm A/P"), "2:07 P");
  EXPECT_EQ(formatDate(kMarchFifth, "hh:mm:ss"), "14:07:09");
  EXPECT_EQ(formatDate(Date::fromParts(2012, 3, 5), "h:nn am/pm"), "12:00 am");
  EXPECT_EQ(formatDate(Date::fromParts(2012, 3, 5, 12, 30), "h:nn am/pm"), "12:30 pm");
  // "m" away from an hour is the month again.
  EXPECT_EQ(formatDate(kMarchFifth, "h:nn m/d"), "14:07 3/5");
}

TEST(LegacyFormatDate, LiteralsAndEscapes) {
  EXPECT_EQ(formatDate(kMarchFifth, "\"Due \"mmm d"), "Due Mar 5");
  EXPECT_EQ(formatDate(kMarchFifth, "\\d\\a\\y d"), "day 5");
  EXPECT_EQ(formatDate(kMarchFifth, "yyyy-mm-dd"), "2012-03-05");
}

TEST(LegacyFormatNumber, MoneySectionsPrintTheirOwnSign) {
  EXPECT_EQ(formatNumber(-5, "$#,##0.00;$-#,##0.00"), "$-5.00");
  EXPECT_EQ(formatNumber(1234.5, "$#,##0.00;$-#,##0.00"), "$1,234.50");
  EXPECT_EQ(formatNumber(0, "$#,##0.00;$-#,##0.00"), "$0.00");
  EXPECT_EQ(formatNumber(-1234567.891, "$#,##0.00;$-#,##0.00"), "$-1,234,567.89");
}

TEST(LegacyFormatNumber, DigitPlacesAndRounding) {
  EXPECT_EQ(formatNumber(1234.5, "#,##0.00"), "1,234.50");
  EXPECT_EQ(formatNumber(-1234.5, "#,##0.00"), "-1,234.50");
  EXPECT_EQ(formatNumber(0.5, "0.00"), "0.50");
  EXPECT_EQ(formatNumber(2.675, "0.00"), "2.68");
  EXPECT_EQ(formatNumber(2.5, "0"), "3");
  EXPECT_EQ(formatNumber(-2.5, "0"), "-3");
  EXPECT_EQ(formatNumber(999.996, "#,##0.00"), "1,000.00");
  EXPECT_EQ(formatNumber(0, "#"), "");
  EXPECT_EQ(formatNumber(5.1, "#.##"), "5.1");
  EXPECT_EQ(formatNumber(0.25, "0%"), "25%");
  EXPECT_EQ(formatNumber(1234567, "#,##0,"), "1,235");
  EXPECT_EQ(formatNumber(4165551234.0, "(000) 000-0000"), "(416) 555-1234");
}

TEST(LegacyFormatNumber, NamedFormats) {
  EXPECT_EQ(formatNumber(1234.5, "Currency"), "$1,234.50");
  EXPECT_EQ(formatNumber(-1234.5, "Currency"), "($1,234.50)");
  EXPECT_EQ(formatNumber(1234.5, "Fixed"), "1234.50");
  EXPECT_EQ(formatNumber(-1234.5, "Fixed"), "-1234.50");
  EXPECT_EQ(formatNumber(1234.5, "Standard"), "1,234.50");
  EXPECT_EQ(formatNumber(1.5, "General Number"), "1.5");
  EXPECT_EQ(formatNumber(0, "Yes/No"), "No");
}

TEST(LegacyFormatValue, PicksTheFormatterByTheValue) {
  EXPECT_EQ(formatValue(Variant::date(kNewYearsEve), "mmm d, yyyy"), "Dec 31, 2010");
  EXPECT_EQ(formatValue(Variant::text("2010-12-31"), "mmm d, yyyy"), "Dec 31, 2010");
  EXPECT_EQ(formatValue(Variant::text("12.5"), "0.00"), "12.50");
  EXPECT_EQ(formatValue(Variant::real(-5), "$#,##0.00;$-#,##0.00"), "$-5.00");
  EXPECT_EQ(formatValue(Variant::text("n/a"), "0.00"), "n/a");
  EXPECT_EQ(formatValue(Variant::null(), "0.00"), "");
}

TEST(LegacyFormatValue, ValuesOutOfRangeGiveTheEmptyText) {
  // "%" scales 1e308 past the largest double: no text, and no reading past "inf".
  EXPECT_EQ(formatNumber(1e308, "0%"), "");
  EXPECT_EQ(formatNumber(-1e308, "0%"), "");
  EXPECT_EQ(formatNumber(-1e308, "0%;(0%)"), "");
  EXPECT_EQ(formatNumber(1e306, "0%").size(), 310u);  // still in range: every digit and "%"
  EXPECT_EQ(formatNumber(std::numeric_limits<double>::infinity(), "0.00"), "");
  EXPECT_EQ(formatNumber(std::numeric_limits<double>::quiet_NaN(), ""), "");
  // A serial outside 100-01-01 .. 9999-12-31 is no date.
  EXPECT_EQ(formatDate(Date{1e300}, "Long Date"), "");
  EXPECT_EQ(formatDate(Date{-1e300}, "dd/mm/yy h:nn"), "");
  EXPECT_EQ(formatValue(Variant::date(Date{1e300}), "mmmm d, yyyy"), "");
  EXPECT_EQ(formatDate(Date{2958465.5}, "yyyy-mm-dd hh:nn"), "9999-12-31 12:00");
}

}  // namespace
}  // namespace lf
