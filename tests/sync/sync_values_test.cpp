// Tests of the value rules the sync sources share: money, telephone triples, e-mail order.
#include "sync/sync_values.hpp"

#include <gtest/gtest.h>

namespace lf {
namespace {

TEST(SourceMoneyTest, DollarSignsParenthesesAndTextsWithoutNumbers) {
  EXPECT_FLOAT_EQ(parseSourceMoney("($12.50)"), -12.5F);
  EXPECT_FLOAT_EQ(parseSourceMoney("$1,250.00"), 1250.0F);
  EXPECT_FLOAT_EQ(parseSourceMoney("35.75"), 35.75F);
  EXPECT_FLOAT_EQ(parseSourceMoney("no amount"), 0.0F);
  EXPECT_FLOAT_EQ(parseSourceMoney(""), 0.0F);
  EXPECT_FLOAT_EQ(parseSourceMoney("(25.00)"), -25.0F);
}

TEST(ComposeTelephoneTest, FormatsWithAreaButNotNumberAndExtensionAlone) {
  EXPECT_EQ(composeTelephone("416", "555-0120", ""), "(416) 555-0120");
  EXPECT_EQ(composeTelephone("", "555-0131", "4"), "555-0131 ext. 4");
  EXPECT_EQ(composeTelephone("", "5550180", ""), "555-0180");
  EXPECT_EQ(composeTelephone("416", "555-0120", "12"), "(416) 555-0120 x12");
  EXPECT_EQ(composeTelephone("416", "", "12"), "");  // no number, nothing at all
}

TEST(SortEmailAddressesTest, FillsTheFirstTwoAndNeverClearsTheThird) {
  struct Case {
    std::string in1, in2, in3, out1, out2, out3;
  };
  const Case cases[] = {
      {"a", "", "", "a", "a", ""},  // one address stands in both places
      {"", "b", "", "b", "b", ""},  // the second keeps its value
      {"", "", "c", "c", "c", "c"},   {"a", "", "c", "a", "c", "c"},
      {"a", "b", "c", "a", "b", "c"}, {"", "", "", "", "", ""},
  };
  for (const Case& c : cases) {
    std::string e1 = c.in1, e2 = c.in2, e3 = c.in3;
    sortEmailAddresses(e1, e2, e3);
    EXPECT_EQ(e1, c.out1) << c.in1 << "|" << c.in2 << "|" << c.in3;
    EXPECT_EQ(e2, c.out2) << c.in1 << "|" << c.in2 << "|" << c.in3;
    EXPECT_EQ(e3, c.out3) << c.in1 << "|" << c.in2 << "|" << c.in3;
  }
}

}  // namespace
}  // namespace lf
