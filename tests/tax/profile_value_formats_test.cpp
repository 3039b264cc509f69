// formatProfileString and isValueTrue on the documented rows and edge cases.
#include "tax/profile_value_formats.hpp"

#include <gtest/gtest.h>

namespace lf {
namespace {

TEST(FormatProfileString, EachFormatRow) {
  EXPECT_EQ(formatProfileString("None", "Smith"), "Smith");
  EXPECT_EQ(formatProfileString("Same", "x"), " x ");
  EXPECT_EQ(formatProfileString("Language", "0"), "English");
  EXPECT_EQ(formatProfileString("Language", "1"), "French");
  EXPECT_EQ(formatProfileString("Language", "2"), "");
  EXPECT_EQ(formatProfileString("Sex", "1"), "Male");
  EXPECT_EQ(formatProfileString("Sex", "2"), "Female");
  EXPECT_EQ(formatProfileString("Sex", "0"), "");
  EXPECT_EQ(formatProfileString("YesNo", "0"), "No");
  EXPECT_EQ(formatProfileString("YesNo", ""), "Yes");
  EXPECT_EQ(formatProfileString("MaritialStatus", "1"), "Married");
  EXPECT_EQ(formatProfileString("MaritialStatus", "2"), "Common Law");
  EXPECT_EQ(formatProfileString("MaritialStatus", "6"), "Single");
  EXPECT_EQ(formatProfileString("MaritialStatus", "7"), "");
  EXPECT_EQ(formatProfileString("MaritialStatus", ""), "");
}

TEST(FormatProfileString, StrayApostropheAndUnknownFormatsGiveBlank) {
  EXPECT_EQ(formatProfileString("None '", "Smith"), "");
  EXPECT_EQ(formatProfileString("none", "Smith"), "");
  EXPECT_EQ(formatProfileString("Money", "12.00"), "");
}

TEST(FormatProfileString, DatesKeepTheirDayAndRefuseImpossibleOnes) {
  EXPECT_EQ(formatProfileString("Date", "1961-04-23"), "1961-04-23");
  EXPECT_EQ(formatProfileString("Date", "4/23/1961 12:00:00 AM"), "1961-04-23");
  EXPECT_EQ(formatProfileString("Date", "31/31/2010"), "");
  EXPECT_EQ(formatProfileString("Date", "  "), "");
  // A time alone is a time on the first day of the scale; only the corporate import refuses it.
  EXPECT_EQ(formatProfileString("Date", "12:00:00 AM"), "1899-12-30");
  EXPECT_EQ(formatProfileString("Date", "12:00:00 AM", true), "");
}

TEST(IsValueTrue, BlankNumbersAndWords) {
  EXPECT_FALSE(isValueTrue(""));
  EXPECT_FALSE(isValueTrue("   "));
  EXPECT_FALSE(isValueTrue("0.00"));
  EXPECT_FALSE(isValueTrue("-5"));
  EXPECT_TRUE(isValueTrue("0.01"));
  EXPECT_TRUE(isValueTrue("1,250.00"));
  EXPECT_TRUE(isValueTrue("No"));
}

}  // namespace
}  // namespace lf
