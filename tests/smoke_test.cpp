#include <gtest/gtest.h>
#include "db/variant.hpp"
TEST(DateSerial, KnownDates) {
  EXPECT_EQ(lf::Date::fromParts(1899, 12, 30).serial, 0.0);
  EXPECT_EQ(lf::Date::fromParts(2010, 12, 31).toIso(), "2010-12-31 00:00:00");
}
