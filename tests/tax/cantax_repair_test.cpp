// The CANTAX T1 and T2Plus repairs on raw export lines: the removals, the refusal of a short
// first row, the rejoined street address and every element rule.
#include <gtest/gtest.h>

#include "tax/cantax_t1_repair.hpp"
#include "tax/cantax_t2plus_repair.hpp"
#include "tax/cantax_text_cleanup.hpp"
#include "tests/tax/cantax_t1_test_rows.hpp"

namespace lf {
namespace {

using testing::cantaxT1Row;

// The modified rows after the heading, each split into its quoted values.
std::vector<std::vector<std::string>> modifiedRows(const std::string& modified) {
  std::vector<std::vector<std::string>> rows;
  std::vector<std::string> lines = splitExportText(modified, "\r\n");
  for (size_t i = 1; i < lines.size(); ++i) {
    std::string line = lines[i];
    EXPECT_TRUE(line.size() >= 2 && line.front() == '"' && line.back() == '"') << line;
    rows.push_back(splitExportText(line.substr(1, line.size() - 2), "\",\""));
  }
  return rows;
}

std::vector<std::string> repairOne(const std::string& raw) {
  std::string modified;
  long rows = 0;
  EXPECT_TRUE(repairCANTAXT1Text(raw, modified, rows));
  auto all = modifiedRows(modified);
  EXPECT_EQ(all.size(), 1u);
  return all.empty() ? std::vector<std::string>() : all.front();
}

TEST(CANTAXTextCleanup, ErrorMarksGoInTheirOrder) {
  std::string text = "a\r\n*ERROR* b,*ERROR*c,x<- Unknown variable name,YYYY/MM/DD,\n*ERROR* d";
  removeCANTAXErrorMarks(text);
  EXPECT_EQ(text, "ab,c,x,,,d");
  EXPECT_EQ(cleanExportValue("\"Toronto, \""), "Toronto");
  EXPECT_EQ(cleanExportValue("a,,"), "a,");
  EXPECT_EQ(dateInWords("1970/05/17", '/'), "May 17,1970");
  EXPECT_EQ(dateInWords("17/May/1970", '/'), "17/May/1970");
}

TEST(CANTAXT1Repair, FullRowBecomesTheModifiedColumns) {
  const std::vector<std::string> row = repairOne(cantaxT1Row());
  ASSERT_EQ(row.size(), 54u);
  EXPECT_EQ(row[0], "046454286");
  EXPECT_EQ(row[1], "May 17,1970");
  EXPECT_EQ(row[2], "John");
  EXPECT_EQ(row[3], "Albert");  // the middle name column
  EXPECT_EQ(row[4], "Smith");
  EXPECT_EQ(row[6], "12 Elm St");
  EXPECT_EQ(row[7], "Toronto");  // the city's first word
  EXPECT_EQ(row[15], "4165559999 ext. 22");
  EXPECT_EQ(row[17], "Mary");
  EXPECT_EQ(row[18], "");  // no spouse middle name
  EXPECT_EQ(row[20], "March 9, 1972");
  EXPECT_EQ(row[21], "52000");  // LINE_101
}

TEST(CANTAXT1Repair, HeadingAndLineEnds) {
  std::string modified;
  long rows = 0;
  ASSERT_TRUE(repairCANTAXT1Text(cantaxT1Row() + "\r\n" + cantaxT1Row() + "\r\n", modified, rows));
  EXPECT_EQ(rows, 2);
  EXPECT_TRUE(
      modified.starts_with("\"CLIENT_SIN\",\"BIRTH_DATE\",\"CLIENT_FIRST_NAME\","
                           "\"CLIENT_MIDDLE_NAME\","));
  EXPECT_TRUE(modified.find("\"SPOUSE_BIRTH_DATE\",\"LINE_101\",\"LINE_102\"") !=
              std::string::npos);
  EXPECT_TRUE(modified.ends_with("\"")) << "no trailing line end or comma";
  EXPECT_EQ(modifiedRows(modified).size(), 2u);
}

TEST(CANTAXT1Repair, ShortFirstRowIsNoExport) {
  std::string modified = "old";
  long rows = 0;
  EXPECT_FALSE(repairCANTAXT1Text("a,b,c\r\n" + cantaxT1Row(), modified, rows));
  EXPECT_TRUE(modified.empty());
  EXPECT_FALSE(repairCANTAXT1Text("", modified, rows));
}

TEST(CANTAXT1Repair, StreetWithACommaIsJoinedAgain) {
  const std::vector<std::string> row = repairOne(cantaxT1Row({{6, "12 Elm St, Unit 4"}}));
  ASSERT_EQ(row.size(), 54u);
  EXPECT_EQ(row[6], "12 Elm St, Unit 4");
  EXPECT_EQ(row[7], "Toronto");
  EXPECT_EQ(row[21], "52000");
}

TEST(CANTAXT1Repair, NameRulesSplitAtTheFirstBlank) {
  const std::vector<std::string> row =
      repairOne(cantaxT1Row({{3, "Mary Ann Lou"}, {18, "Peter Paul"}}));
  EXPECT_EQ(row[2], "Mary");
  EXPECT_EQ(row[3], "Ann Lou");
  EXPECT_EQ(row[17], "Peter");
  EXPECT_EQ(row[18], "Paul");
}

TEST(CANTAXT1Repair, WorkPhoneWithoutExtensionIsDropped) {
  const std::vector<std::string> row = repairOne(cantaxT1Row({{16, ""}}));
  EXPECT_EQ(row[15], "");
  EXPECT_EQ(row[16], "Married");
}

TEST(CANTAXT1Repair, SpouseMonthInWordsShiftsTheRow) {
  const std::vector<std::string> row = repairOne(cantaxT1Row({{20, "March"}}));
  ASSERT_EQ(row.size(), 55u);
  EXPECT_EQ(row[20], "March");  // the month kept its own column
  EXPECT_EQ(row[21], " 9, 1972");
  EXPECT_EQ(row[22], "52000");
}

TEST(CANTAXT1Repair, SpouseMonthOutOfRangeGivesNoMonthName) {
  EXPECT_EQ(repairOne(cantaxT1Row({{20, "4165559999"}}))[20], " 9, 1972");
  EXPECT_EQ(repairOne(cantaxT1Row({{20, "13"}}))[20], " 9, 1972");
}

TEST(CANTAXT1Repair, ErrorMarksAndEmptyDatesInARow) {
  const std::vector<std::string> row =
      repairOne(cantaxT1Row({{2, "YYYY/MM/DD"}, {9, "*ERROR* M5V1A1"}, {1, "\"046454286\""}}));
  EXPECT_EQ(row[0], "046454286");
  EXPECT_EQ(row[1], "");
  EXPECT_EQ(row[9], "M5V1A1");
}

TEST(CANTAXT2PlusRepair, RowTakesTheHeadingOrder) {
  std::string raw =
      "Maple Leaf Bakery Inc,Dec31,123456789,,,ON-55,SK-1,1 King St,Suite 2,"
      "Toronto,ON,M5H1A1,Canada,4165550000,4165550001,PO Box 9,,Ottawa,ON,K1A0B1,"
      "Canada,Jane Doe,4165550002,4165550003";
  std::string modified;
  long rows = 0;
  ASSERT_TRUE(repairCANTAXT2PlusText(raw + "\r\nshort,row", 2024, modified, rows));
  EXPECT_EQ(rows, 1);
  EXPECT_EQ(modified,
            cantaxT2PlusModifiedHeading() +
                "\r\n\"Corporation\",\"Maple Leaf Bakery Inc\",\"Dec31 2024\",\"123456789\","
                "\"ON-55\",\"1 King St\",\"Toronto\",\"ON\",\"M5H1A1\",\"Canada\","
                "\"4165550000\",\"4165550001\",\"PO Box 9\",\"Ottawa\",\"K1A0B1\",\"ON\","
                "\"Canada\",\"Jane Doe\",\"4165550002\",\"4165550003\"");
  EXPECT_FALSE(repairCANTAXT2PlusText("a,b,c", 2024, modified, rows));
}

}  // namespace
}  // namespace lf
