// The Dr. Tax T1 and T2 repairs: the value rules of each position, the rows left out, and the
// refusal of a file whose first row is short.
#include "tax/drtax_repair.hpp"

#include <gtest/gtest.h>

namespace lf {
namespace {

constexpr char kT1Row[] =
    "C-101,Tremblay,Luc,046454286,1968-11-03,fr ,45 Rue Principale,Gatineau,J8X1A1,QC,Canada,"
    "H: 8195551111,W:8195552222,C: 8195553333,luc@example.org";

TEST(DrTaxRepair, T1RowFollowsThePositionRules) {
  std::string modified;
  long rows = 0, dropped = 0;
  ASSERT_TRUE(repairDrTaxText(DrTaxProduct::T1, kT1Row, 2024, modified, rows, dropped));
  EXPECT_EQ(modified, drTaxModifiedHeading(DrTaxProduct::T1) +
                          "\r\n\"C-101\",\"Tremblay\",\"Luc\",\"046454286\",\"November 03,1968\","
                          "\"Francais\",\"45 Rue Principale\",\"Gatineau\",\"J8X1A1\",\"QC\","
                          "\"Canada\",\"8195551111\",\"8195552222\",\"8195553333\","
                          "\"luc@example.org\"");
  EXPECT_TRUE(modified.starts_with("\"Client #\",\"Last Name\",\"First Name\",\"SIN\""));
}

TEST(DrTaxRepair, T1LanguageAndPhonePrefixes) {
  const auto rule = [](int counter, const std::string& value) {
    return checkIfNeedToModifyDrTaxElement(DrTaxProduct::T1, counter, value, 2024);
  };
  EXPECT_EQ(rule(6, " eng"), "English");
  EXPECT_EQ(rule(6, "FR"), "Francais");
  EXPECT_EQ(rule(6, "DE"), "");
  EXPECT_EQ(rule(12, "H: 4165551234"), "4165551234");
  EXPECT_EQ(rule(12, "H:4165551234"), "4165551234");
  EXPECT_EQ(rule(12, "4165551234"), "4165551234");
  // Only the first form is removed when it is there.
  EXPECT_EQ(rule(13, "W: 1 W:2"), "1 W:2");
  EXPECT_EQ(rule(5, ""), "");
}

TEST(DrTaxRepair, T2PutsTheCorporationFirstAndCompletesTheYearEnd) {
  const std::string row =
      "C-7,Northern Lights Ltd,123456789RC0001,1170000001,Dec31,Ann Roy,9 Bay St,Toronto,"
      "M5J2N8,ON,W: 4165550100,N:4165550101,F: 4165550102,info@example.org,extra";
  std::string modified;
  long rows = 0, dropped = 0;
  ASSERT_TRUE(repairDrTaxText(DrTaxProduct::T2, row, 2024, modified, rows, dropped));
  EXPECT_EQ(modified, drTaxModifiedHeading(DrTaxProduct::T2) +
                          "\r\n\"Corporation\",\"C-7\",\"Northern Lights Ltd\",\"123456789RC0001\","
                          "\"1170000001\",\"Dec 31 2024\",\"Ann Roy\",\"9 Bay St\",\"Toronto\","
                          "\"M5J2N8\",\"ON\",\"4165550100\",\"4165550101\",\"4165550102\","
                          "\"info@example.org\",\"extra\"");
  EXPECT_EQ(checkIfNeedToModifyDrTaxElement(DrTaxProduct::T2, 11, "W: 1 W:2", 2024), "1 2");
  EXPECT_EQ(checkIfNeedToModifyDrTaxElement(DrTaxProduct::T2, 5, "Déc31", 2024), "Déc 31 2024");
  EXPECT_EQ(checkIfNeedToModifyDrTaxElement(DrTaxProduct::T2, 5, "Ju", 2024), "Ju  2024");
}

TEST(DrTaxRepair, ShortRowsAreLeftOutAndAShortFirstRowFails) {
  const std::string fourteen = "a,b,c,d,e,f,g,h,i,j,k,l,m,n";
  std::string modified;
  long rows = 0, dropped = 0;
  ASSERT_TRUE(repairDrTaxText(DrTaxProduct::T1,
                              std::string(kT1Row) + "\n" + fourteen + "\n" + kT1Row + "\n", 2024,
                              modified, rows, dropped));
  EXPECT_EQ(rows, 2);
  EXPECT_EQ(dropped, 1);
  EXPECT_EQ(modified.find("\"a\""), std::string::npos);
  EXPECT_FALSE(
      repairDrTaxText(DrTaxProduct::T1, fourteen + "\n" + kT1Row, 2024, modified, rows, dropped));
  EXPECT_TRUE(modified.empty());
  EXPECT_FALSE(repairDrTaxText(DrTaxProduct::T2, "", 2024, modified, rows, dropped));
}

}  // namespace
}  // namespace lf
