// The merge language: older and foreign spellings, the template checks with their messages,
// and the order in which a merge replaces tokens.
#include <gtest/gtest.h>

#include "merge/cls_insert_fields_in_rtb.hpp"
#include "tests/merge/merge_test_support.hpp"

namespace lf {
namespace {

using testing_support::MergeTest;

class PlaceholderGrammarTest : public MergeTest {
 protected:
  void SetUp() override {
    MergeTest::SetUp();
    rtb.testErrorComment = [this](const std::string& m) { messages.push_back(m); };
  }
  bool check(const std::string& text, bool rtf = false, bool skipNames = false) {
    messages.clear();
    return rtb.testRTBComment(text, rtf, true, skipNames);
  }

  clsInsertFieldsInRTB rtb;
  std::vector<std::string> messages;
};

const std::string kM1 = "You are missing your opening brackets, '«' in one of your expressions";

TEST_F(PlaceholderGrammarTest, OlderSpellingsAreRewrittenInEveryLocale) {
  EXPECT_EQ(rtb.convertProvinceFields("<<Company Name>>"), "«Company Name»");
  EXPECT_EQ(rtb.convertProvinceFields("Docket notes"), "Time Entry notes");
  EXPECT_EQ(rtb.convertProvinceFields("«(Due Date, Long Date)»"),
            "«(Task Due Date, dddd, mmmm d yyyy)»");
  EXPECT_EQ(rtb.convertProvinceFields("«(Calendar Date, Short Date)»"),
            "«(Task Calendar Due Date, dd/mm/yy)»");
  EXPECT_EQ(rtb.convertProvinceFields("«Remittance Weekday Due Date»"), "«Task Calendar Date»");
  EXPECT_EQ(rtb.convertProvinceFields("\\'abcontact full name\\'bb"),
            "\\'abContact Display Name\\'bb");
  EXPECT_EQ(rtb.convertProvinceFields("Dear Contact Full Name"), "Dear Contact Display Name");
}

TEST_F(PlaceholderGrammarTest, RewritesApplyToWhatEarlierRewritesMade) {
  EXPECT_EQ(rtb.convertProvinceFields("<<(Due Date, Long Date)>>"),
            "«(Task Due Date, dddd, mmmm d yyyy)»");
  EXPECT_EQ(rtb.convertProvinceFields("<<Contact Full Name>> <<ZIP CODE>>"),
            "«Contact Display Name» «Postal Code»");
}

TEST_F(PlaceholderGrammarTest, SalesTaxTokenByProvince) {
  rtb.setTodayForTesting(Date::fromParts(2012, 1, 1));
  locale.province = kNovaScotia;
  EXPECT_EQ(rtb.convertProvinceFields("«GST Number»"), "«HST Number»");
  // British Columbia and Ontario end with GST whatever the date.
  locale.province = kBritishColumbia;
  EXPECT_EQ(rtb.convertProvinceFields("«GST Number» «HST Number»"), "«GST Number» «GST Number»");
  locale.province = kOntario;
  EXPECT_EQ(rtb.convertProvinceFields("«GST Number»"), "«GST Number»");
}

TEST_F(PlaceholderGrammarTest, BoardAndCorporateTokensByProvince) {
  locale.province = kQuebec;
  EXPECT_EQ(rtb.convertProvinceFields("«Sask. Corp. Tax Number» «ON Corp. Tax Number»"),
            "«Sask. Corp. Tax Number» «Que. Corp. Tax Number»");
  EXPECT_EQ(rtb.convertProvinceFields("«WSIB Number» «WSIB Premium Rate» «ON Corp. MCBS Number»"),
            "«NEQ Number» «CSST Premium Rate» «Quebec ID Number»");
  locale.province = kOntario;
  EXPECT_EQ(rtb.convertProvinceFields("«WCB Number» «WCB Firm Number» «Quebec ID Number»"),
            "«WSIB Number» «WSIB Firm Number» «ON Corp. MCBS Number»");
  locale.province = kNewBrunswick;
  EXPECT_EQ(rtb.convertProvinceFields("«WCB Number» «BC Corp. Tax Number»"),
            "«WHSCC Number» «N.B. Corp. Tax Number»");
  locale.province = kAlberta;
  EXPECT_EQ(rtb.convertProvinceFields("«zip code» «Contact SSN»"), "«Postal Code» «Contact SIN»");
}

TEST_F(PlaceholderGrammarTest, UnitedStatesSpellings) {
  locale.country = kCountryUnitedStates;
  EXPECT_EQ(rtb.convertProvinceFields("«Province» «Your Postal Code» «Spouse SIN» «WCB Number»"),
            "«State» «Your Zip Code» «Spouse SSN» «WCB Number»");
}

TEST_F(PlaceholderGrammarTest, TextsWithoutFaultsAndLoneClosingBracket) {
  EXPECT_FALSE(check(""));
  EXPECT_FALSE(check("No fields at all."));
  EXPECT_FALSE(check("Total »100"));
  EXPECT_TRUE(messages.empty());
  rtb.ListType = 1;
  build(rtb);
  EXPECT_FALSE(check("Dear «Contact Display Name», «(Todays Date, mmmm d, yyyy)»"));
  EXPECT_TRUE(messages.empty());
}

TEST_F(PlaceholderGrammarTest, LoneOpeningBracketIsReportedAsMissingOpening) {
  EXPECT_TRUE(check("«Company Name"));
  EXPECT_EQ(messages, std::vector<std::string>{kM1});
  EXPECT_TRUE(check("«Company Name» and «Contact", false, true));
  EXPECT_EQ(messages, std::vector<std::string>{kM1});
}

TEST_F(PlaceholderGrammarTest, NameLengthStandsForAMissingClosingBracket) {
  const std::string forty(40, 'x');
  EXPECT_TRUE(check("«" + forty + "»"));
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0], "The Ledgerfolio Pad did not recognize: «" + forty +
                             "» as a valid placeholder field name.");
  EXPECT_TRUE(check("«" + forty + "x»"));
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0],
            "You are missing a closing bracket, '»' in one of your expressions.  Make sure you "
            "have a bracket immediately before and after a field.\r\n\r\neg. «Company Name»");
}

TEST_F(PlaceholderGrammarTest, DateExpressionFaults) {
  build(rtb);
  EXPECT_TRUE(check("«(Task Due Date, mmmm D yyyy)»"));
  EXPECT_EQ(messages, std::vector<std::string>{
                          "The date format of: 'mmmm D yyyy' is not valid.  Please see help for "
                          "valid date formats."});
  EXPECT_TRUE(check("«(Task Due Date, mmmm d yyyy»"));
  EXPECT_EQ(messages, std::vector<std::string>{"You are missing the closing round bracket, ')' "
                                               "in one of your date expressions"});
  EXPECT_TRUE(check("«Task Due Date, mmmm d yyyy)»"));
  EXPECT_EQ(messages, std::vector<std::string>{"You are missing the opening round bracket, '(' "
                                               "in one of your date expressions"});
  // One call, two messages: the re-check of the shortened text runs after a fault.
  EXPECT_TRUE(check("«(Task Due Date» then «x"));
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[1], kM1);
  // No comma: a run-time failure for the guard, not a message.
  messages.clear();
  rtb.testRTBComment("«(Task Due Date)»", false, true, false);
  EXPECT_TRUE(messages.empty());
}

TEST_F(PlaceholderGrammarTest, EscapedSpellingIsCheckedWithPlainMessages) {
  rtb.ListType = 1;
  build(rtb);
  EXPECT_FALSE(check("\\'abCompany Name\\'bb", true));
  EXPECT_TRUE(check("\\'abNo Such Field\\'bb", true));
  EXPECT_EQ(messages, std::vector<std::string>{"The Ledgerfolio Pad did not recognize: «No Such "
                                               "Field» as a valid placeholder field name."});
  EXPECT_TRUE(rtb.testRTBComment("«Company Name", false, false, false));
  EXPECT_EQ(rtb.convertFieldName("«A»"), "\\'abA\\'bb");
}

TEST_F(PlaceholderGrammarTest, LargeTemplateIsWalkedToItsLastExpression) {
  rtb.ListType = 1;
  build(rtb);
  std::string letter;
  for (int i = 0; i < 20000; ++i)
    letter += "\\'abCompany Name\\'bb, \\'ab(Todays Date, mmmm d, yyyy)\\'bb\\par\r\n";
  EXPECT_FALSE(check(letter, true));
  EXPECT_TRUE(messages.empty());
  EXPECT_TRUE(check(letter + "\\'abCompany Name\\'bb and \\'abContact", true));
  EXPECT_EQ(messages, std::vector<std::string>{kM1});
  EXPECT_TRUE(check(letter + "\\'abNo Such Field\\'bb", true));
  EXPECT_EQ(messages, std::vector<std::string>{"The Ledgerfolio Pad did not recognize: "
                                               "«No Such Field» as a valid placeholder field "
                                               "name."});
}

TEST_F(PlaceholderGrammarTest, EmptyListAcceptsOnlyTodaysDate) {
  EXPECT_TRUE(rtb.testStr("todays date"));
  EXPECT_FALSE(rtb.testStr("Company Name"));
}

TEST_F(PlaceholderGrammarTest, FirstMergeOnlyBuildsTheList) {
  rtb.companyID = 1;
  rtb.TestComment = true;
  rtb.TemplateText = "«Company Name»";
  EXPECT_EQ(rtb.parseRTBComment(), "«Company Name»");
  EXPECT_EQ(rtb.ListType, 2);
  EXPECT_GT(rtb.FieldList().count(), 0);
  EXPECT_EQ(rtb.parseRTBComment(), "Smith Holdings");
}

TEST_F(PlaceholderGrammarTest, MergeTakesOneSpellingAndBlanksTheRest) {
  rtb.ListType = 1;
  rtb.TestComment = true;
  build(rtb);
  // The escaped token is blanked by the span rule, which leaves "'bb" behind.
  rtb.TemplateText = "<<Company Name>> at «City»; \\'abCity\\'bb";
  EXPECT_EQ(rtb.parseRTBComment(), "Smith Holdings at Toronto; 'bb");
  // Once a plain span was blanked the escaped pair is not looked at.
  rtb.TemplateText = "«Company Name» «Unknown» \\'abCity\\'bb";
  EXPECT_EQ(rtb.parseRTBComment(), "Smith Holdings  \\'abCity\\'bb");
  rtb.TemplateText = "\\'abCompany Name\\'bb";
  EXPECT_EQ(rtb.parseRTBComment(), "Smith Holdings");
}

TEST_F(PlaceholderGrammarTest, TodayKeepsTheNumericMonthWhereAFieldShowsItsName) {
  rtb.setTodayForTesting(Date::fromParts(2012, 3, 5));
  rtb.ListType = 1;
  rtb.TestComment = true;
  build(rtb);
  rtb.TemplateText = "«(Todays Date, dd/mm/yy)» «(todays date, MMMM D YYYY)» «(Todays Date, x)»";
  EXPECT_EQ(rtb.parseRTBComment(), "05/03/12 March 5 2012 ");
}

TEST_F(PlaceholderGrammarTest, CompanyNameBecomesContactNameForAContact) {
  rtb.ListType = 2;
  rtb.TestComment = true;
  rtb.ConvertCompanyNameToContactNameForContacts = true;
  rtb.contactID = 3;
  build(rtb);
  rtb.TemplateText = "«Company Name»";
  EXPECT_EQ(rtb.parseRTBComment(), "Jane Smith");
  rtb.companyID = 2;
  EXPECT_EQ(rtb.parseRTBComment(), "Smith Holdings");
}

}  // namespace
}  // namespace lf
