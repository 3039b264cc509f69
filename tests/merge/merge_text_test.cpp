// Putting values into text, blanking what is left, and the pick-list glue of the editor.
#include <gtest/gtest.h>

#include "merge/cls_insert_fields_in_rtb.hpp"
#include "tests/merge/merge_test_support.hpp"

namespace lf {
namespace {

using testing_support::MergeTest;

class MergeTextTest : public MergeTest {
 protected:
  std::string replaced(std::string text) {
    rtb.replaceText(text, "«Name»", "Jo");
    return text;
  }
  clsInsertFieldsInRTB rtb;
};

TEST_F(MergeTextTest, ValueAfterAWordGetsASeparatingBlank) {
  EXPECT_EQ(replaced("Dear«Name»"), "Dear Jo");
  EXPECT_EQ(replaced("Dear «Name»"), "Dear Jo");
  EXPECT_EQ(replaced("«Name» said"), "Jo said");
  // Judged by the first occurrence: every occurrence gets the blank.
  EXPECT_EQ(replaced("x«name» «Name»"), "x Jo  Jo");
  // A token that only stands escaped is left alone.
  EXPECT_EQ(replaced("Dear \\'abName\\'bb"), "Dear \\'abName\\'bb");
  rtb.ConvertStrToRTF = false;
  EXPECT_EQ(replaced("Dear«NAME»"), "DearJo");
}

TEST_F(MergeTextTest, RemovingBlankLinesGivesTheTextBack) {
  std::string text = "one\\par \r\ntwo";
  EXPECT_EQ(rtb.removeBlankLinesFromRTFText(text), "one\\par \r\ntwo");
}

TEST_F(MergeTextTest, UnfoundFieldsAreBlankedLeavingTheEscapedRemainder) {
  std::string untouched = "a«x»b";
  EXPECT_FALSE(rtb.replaceUnfoundMergeFieldsWithBlanks(untouched));  // empty list: nothing
  EXPECT_EQ(untouched, "a«x»b");
  rtb.ListType = 1;
  build(rtb);
  std::string plain = "a«x»b«y» «x»";
  EXPECT_TRUE(rtb.replaceUnfoundMergeFieldsWithBlanks(plain));
  EXPECT_EQ(plain, "ab ");
  std::string escaped = "a\\'abx\\'bb";
  EXPECT_TRUE(rtb.replaceUnfoundMergeFieldsWithBlanks(escaped));
  EXPECT_EQ(escaped, "a'bb");
}

// The cases where removing each span as it is met would differ from removing the first span
// with all its copies and looking again: the text is blanked as the latter does.
TEST_F(MergeTextTest, TangledUnfoundFieldsAreBlankedSpanBySpan) {
  rtb.ListType = 1;
  build(rtb);
  auto blanked = [this](std::string text) {
    rtb.replaceUnfoundMergeFieldsWithBlanks(text);
    return text;
  };
  // A span holding a second opening bracket runs to the first closing one.
  EXPECT_EQ(blanked("a«b «x» c»d"), "a c»d");
  // Removing «x» joins the bytes around it into a new «, which opens the next span.
  EXPECT_EQ(blanked("\xC2«x»\xAB y «z» w"), " w");
  // A copy of the escaped span that is not followed by 'bb still goes with the first one.
  EXPECT_EQ(blanked("\\'abx\\'bb and \\'abx\\par end\\'bb"), "'bb and par end\\'bb");
  EXPECT_EQ(blanked("\\'abx\\'bb and \\'abx\\par end'bb"), "'bb and par end'bb");
  // An opening bracket with no closing one stops the blanking where it stands.
  EXPECT_EQ(blanked("«a» «b» «c"), "  «c");
}

TEST_F(MergeTextTest, ManyDistinctUnfoundFieldsAreAllBlanked) {
  rtb.ListType = 1;
  build(rtb);
  std::string text, expected;
  for (int i = 0; i < 20000; ++i) {
    text += "Note «Note " + std::to_string(i) + "» and \\'abnot escaped\\'bb; ";
    expected += "Note  and \\'abnot escaped\\'bb; ";
  }
  EXPECT_TRUE(rtb.replaceUnfoundMergeFieldsWithBlanks(text));
  EXPECT_EQ(text, expected);
}

TEST_F(MergeTextTest, ListItemsBecomeTokens) {
  rtb.ListType = 2;
  build(rtb);
  EXPECT_EQ(rtb.parseListItem(-1, true), "");
  EXPECT_EQ(rtb.getDBFieldFromListItem(-1), "");
  const FieldItem* birthday = rtb.FieldList().findByDisplayName("Contact Birthday");
  const FieldItem* city = rtb.FieldList().findByDisplayName("City");
  EXPECT_EQ(rtb.parseListItem(birthday->key, true), "«(Contact Birthday, mmmm d yyyy)»");
  EXPECT_EQ(rtb.parseListItem(city->key, false), "City");
  EXPECT_EQ(rtb.getDBFieldFromListItem(birthday->key), "(Contact Birthday, mmmm d yyyy)");
  EXPECT_EQ(rtb.getDBFieldFromListItem(city->key), "City");
}

TEST_F(MergeTextTest, ClicksInsertAtTheCursor) {
  rtb.ListType = 1;
  build(rtb);
  MemoryRichTextBox box;
  box.setText("Dear ,");
  box.setSelStart(Variant::integer(5));
  rtb.RTB = &box;
  rtb.onListClick(rtb.FieldList().findByDisplayName("Company Name")->key);
  EXPECT_EQ(box.text(), "Dear «Company Name»,");
  box.setText("ab");
  box.setSelStart(Variant::null());  // unknown cursor: position 1
  rtb.insertCurrentDate(6);
  EXPECT_EQ(box.text(), "a«(Todays Date, dd/mm/yy)»b");
  box.setText("");
  rtb.insertCurrentDate(15);
  EXPECT_EQ(box.text(), "«(Todays Date, )»");
  EXPECT_EQ(rtb.insertCurrentDateMergeField(1, false), "(Todays Date, dddd, mmmm d yyyy)");
  EXPECT_EQ(rtb.insertCurrentDateMergeField(14, true), "«(Todays Date, mmmm d)»");
}

TEST_F(MergeTextTest, RichTextValuesKeepTheParagraphIndentOrOneLine) {
  rtb.ListType = 1;
  rtb.TestComment = true;
  build(rtb);
  EXPECT_EQ(rtb.convertToRTF("no breaks"), "no breaks");
  EXPECT_EQ(rtb.convertToRTF("1 Main\r\nSuite 2"), "1 Main\\par Suite 2");
  rtb.setUseWordWrap(false);
  EXPECT_EQ(rtb.convertToRTF("1 Main\r\nSuite 2"), "1 Main, Suite 2");
}

TEST_F(MergeTextTest, ResetAndDefaults) {
  EXPECT_EQ(rtb.MergeFieldListUse(), 1);
  EXPECT_TRUE(rtb.ShowListCategoryHeaders);
  EXPECT_TRUE(rtb.ConvertStrToRTF);
  EXPECT_FALSE(rtb.TestComment);
  rtb.companyID = 3;
  rtb.TaskID = 4;
  rtb.resetAllItemIDs();
  EXPECT_EQ(rtb.companyID, -1);
  EXPECT_EQ(rtb.TaskID, -1);
  rtb.setMergeFieldListUse(kUseWrite);
  EXPECT_FALSE(rtb.ShowListCategoryHeaders);
}

}  // namespace
}  // namespace lf
