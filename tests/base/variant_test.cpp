// Date serials and variant conversions at the edges of their range.
#include "base/variant.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

namespace lf {
namespace {

TEST(DateSerial, TheLegacyRangeEndsAreDates) {
  const Date first = Date::fromParts(100, 1, 1);
  EXPECT_EQ(first.serial, Date::kFirstSerial);
  EXPECT_EQ(first.toIso(), "0100-01-01 00:00:00");
  const Date last = Date::fromParts(9999, 12, 31, 23, 59, 59);
  EXPECT_TRUE(last.isValid());
  EXPECT_EQ(last.toIso(), "9999-12-31 23:59:59");
  EXPECT_EQ(last.weekday(), 6);  // a Friday
}

TEST(DateSerial, SerialsOutsideTheRangeAreNoDate) {
  for (double serial :
       {1e300, -1e300, Date::kEndSerial, Date::kFirstSerial - 1,
        std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    SCOPED_TRACE(serial);
    const Date date{serial};
    EXPECT_FALSE(date.isValid());
    EXPECT_EQ(date.year(), 0);
    EXPECT_EQ(date.month(), 0);
    EXPECT_EQ(date.day(), 0);
    EXPECT_EQ(date.weekday(), 0);
    EXPECT_EQ(date.hour() + date.minute() + date.second(), 0);
    EXPECT_EQ(date.datePart(), Date{});
    EXPECT_EQ(date.toIso(), "");
    EXPECT_EQ(Variant::date(date).toString(), "");
  }
  // Parts far out of range roll over without overflow and give no date.
  EXPECT_FALSE(Date::fromParts(INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX).isValid());
  EXPECT_FALSE(Date::fromParts(INT_MIN, INT_MIN, INT_MIN).isValid());
}

TEST(VariantConversion, NumbersBeyondALongConvertToZero) {
  EXPECT_EQ(Variant::real(1e300).toLong(), 0);
  EXPECT_EQ(Variant::real(-1e19).toLong(), 0);
  EXPECT_EQ(Variant::real(std::numeric_limits<double>::quiet_NaN()).toLong(), 0);
  EXPECT_EQ(Variant::text("1e300").toLong(), 0);
  EXPECT_EQ(Variant::date(Date{1e300}).toLong(), 0);
  EXPECT_EQ(Variant::real(-2.5).toLong(), -3);  // half away from zero
  EXPECT_EQ(Variant::real(9.0e18).toLong(), 9000000000000000000LL);
}

}  // namespace
}  // namespace lf
