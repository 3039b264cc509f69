// Contact summaries: the exact RTF of the documented small cases, the stored columns, family
// lines, spouse header, notes with CR LF, spreading to the companies and the Profile switches.
#include "summaries/contact_summaries.hpp"

#include "tests/summaries/summary_test_support.hpp"

namespace lf {
namespace {

using summaries_test::kEnd;
using summaries_test::kPar;
using summaries_test::kPrologue;

const std::string kSpouseHeader =
    "\\b\\pard\\fi-1450\\li1450\\ri0 Spouse Information\\b0  \\par\r\n"
    "\\b\\pard\\fi-1425\\li1425\\ri0 _______________________\\b0   \\par\r\n\r\n";

class ContactSummaryTest : public summaries_test::SummaryTest {
 protected:
  std::string personalNotes(long id) {
    return text(
        "SELECT ContactsNotes.* FROM ContactsNotes WHERE ContactNum=" + std::to_string(id) + ";",
        "PersonalNotes");
  }
  void contact(const std::string& columns, const std::string& values) {
    exec("INSERT INTO Contacts (ContactID, " + columns + ") VALUES (" + values + ");");
  }
};

TEST_F(ContactSummaryTest, OnlyCellPhoneGivesOneLineAndNoEmptySections) {
  contact("DisplayName, HomePhone_Cell", "40, '', '555-1234'");
  std::string expected = kPrologue + "\\b\\pard\\fi-1100\\li1100\\ri0 Cell Phone:\\b0  \\tab " +
                         "555-1234" + kPar + kPar + kEnd;
  EXPECT_EQ(saveContactPersonalRTF(40, -1), expected);
  EXPECT_EQ(personalNotes(40), expected);  // the ContactsNotes row was added
  EXPECT_TRUE(errors.errors.empty());
}

TEST_F(ContactSummaryTest, DatesOutOfRangeGiveNoLine) {
  contact("DisplayName, HomePhone_Cell, Birthday, Anniversary",
          "40, '', '555-1234', 1e300, -1e300");
  EXPECT_EQ(saveContactPersonalRTF(40, -1), kPrologue +
                                                "\\b\\pard\\fi-1100\\li1100\\ri0 Cell Phone:\\b0  "
                                                "\\tab 555-1234" +
                                                kPar + kPar + kEnd);
  EXPECT_TRUE(errors.errors.empty());
}

TEST_F(ContactSummaryTest, SpouseWithOnlyBirthdayGetsTheWholeHeaderAndOneLine) {
  contact("SpouseBirthday", "40, '1980-03-05'");
  exec("INSERT INTO ContactsNotes (ContactNum, PersonalNotes) VALUES (40, 'old');");
  std::string expected =
      kPrologue + kSpouseHeader + "\\b Birthday:\\b0  \\tab March 05, 1980" + kPar + kPar + kEnd;
  EXPECT_EQ(saveContactPersonalRTF(40, -1), expected);
  EXPECT_EQ(personalNotes(40), expected);
  EXPECT_EQ(count("SELECT ContactsNotes.* FROM ContactsNotes WHERE ContactNum=40;"), 1);
}

TEST_F(ContactSummaryTest, CrLfInChildrenNotesAndAddressStaysOnSeparateLines) {
  contact("DisplayName, HomeAddress, HomeCity, Children",
          "40, 'Jane Doe', '1 Main', 'Ottawa', 'Ann' || char(13) || char(10) || 'Bob'");
  exec(
      "INSERT INTO ContactsNotes (ContactNum, Notes) "
      "VALUES (40, 'Line one' || char(13) || char(10) || 'Line two');");
  std::string rtf = saveContactPersonalRTF(40, -1);
  EXPECT_EQ(rtf, kPrologue +
                     "\\b\\pard\\fi0\\li0\\ri0 Address:\\b0\\par\r\nJane Doe\r\n\\par 1 Main\r\n"
                     "\\par Ottawa" +
                     kPar + kPar + "\\b Children:\\b0\\par\r\nAnn\r\n\\par Bob" + kPar +
                     "\\b Notes:\\b0\\par\r\nLine one\r\n\\par Line two" + kPar + kPar + kEnd);
  EXPECT_EQ(personalNotes(40), rtf);
}

TEST_F(ContactSummaryTest, OneFamilyLinkIsOneLineAndTwoGetAHeading) {
  contact("Gender", "40, 'F'");
  contact("DisplayName", "41, 'John Doe'");
  contact("DisplayName", "42, 'Amy Doe'");
  exec("INSERT INTO ContactLinks (ContactIDNum, ContactNum) VALUES (41, 40);");
  const std::string gender = "\\b Gender:\\b0  \\tab F" + kPar;
  EXPECT_EQ(saveContactPersonalRTF(40, -1),
            kPrologue + gender + kPar + "\\b\\pard\\fi0\\li0\\ri0 Family Member: \\b0 John Doe" +
                kPar + kPar + kEnd);
  exec("INSERT INTO ContactLinks (ContactIDNum, ContactNum) VALUES (42, 40);");
  EXPECT_EQ(saveContactPersonalRTF(40, -1),
            kPrologue + gender + kPar + "\\b\\pard\\fi0\\li0\\ri0 Family Members\\b0\\par\r\n" +
                "John Doe" + kPar + "Amy Doe" + kPar + kPar + kEnd);
}

TEST_F(ContactSummaryTest, AlternateAddressTitleUsesItsNameOrThePlainLabel) {
  contact("AltAddress, AltCity", "40, '5 Lake Rd', 'Perth'");
  const std::string plain = kPrologue + "\\b\\pard\\fi0\\li0\\ri0 Address:\\b0\\par\r\n" +
                            "5 Lake Rd\r\n\\par Perth" + kPar + kPar + kEnd;
  EXPECT_EQ(saveContactPersonalRTF(40, -1), plain);
  exec("UPDATE Contacts SET AltAddressName = 'Cottage' WHERE ContactID = 40;");
  EXPECT_NE(saveContactPersonalRTF(40, -1).find(
                "\\b\\pard\\fi0\\li0\\ri0 Address (Cottage):\\b0\\par\r\n5 Lake Rd"),
            std::string::npos);
}

TEST_F(ContactSummaryTest, EmployeeSummaryIsStoredOnTheEmployeeRow) {
  exec(
      "INSERT INTO AccountantEmployeeInfo (ContactID, HomePhone_Main, Notes) "
      "VALUES (60, '555-0000', 'Staff note');");
  std::string rtf = saveContactPersonalRTF(-1, 60);
  EXPECT_EQ(rtf, kPrologue + "\\b\\pard\\fi-1100\\li1100\\ri0 Main Phone:\\b0\\tab 555-0000" +
                     kPar + kPar + "\\b Notes:\\b0\\par\r\nStaff note" + kPar + kPar + kEnd);
  EXPECT_EQ(text("SELECT * FROM AccountantEmployeeInfo WHERE ContactID=60;", "PersonalNotes"), rtf);
  EXPECT_EQ(count("SELECT ContactsNotes.* FROM ContactsNotes;"), 0);
}

TEST_F(ContactSummaryTest, NoValidIdOrNoRowWritesNothing) {
  EXPECT_EQ(saveContactPersonalRTF(0, -1), "");
  EXPECT_EQ(saveContactBusinessRTF(99, -1, -1, true), "");
  EXPECT_EQ(saveContactPersonalTaxRTF(-1, 2024, -1), "");
  EXPECT_EQ(count("SELECT ContactsNotes.* FROM ContactsNotes;"), 0);
}

class BusinessSummaryTest : public ContactSummaryTest {
 protected:
  void SetUp() override {
    ContactSummaryTest::SetUp();
    exec("INSERT INTO Companies (CompanyID, CompanyName) VALUES (7, 'Acme Ltd');");
    exec("INSERT INTO Companies (CompanyID, CompanyName) VALUES (8, 'Baker LLP');");
    exec("INSERT INTO CompaniesNotes (CompanyNum) VALUES (7);");
    exec("INSERT INTO CompaniesNotes (CompanyNum) VALUES (8);");
    contact("DisplayName, BusinessPhone_Main, Custom1", "40, 'Jane Doe', '555-1111', 'Blue'");
    exec("UPDATE CustomAddressFields SET ContactLabel1 = 'Colour:';");
  }
  std::string companyContactNotes(long company) {
    return text("SELECT * FROM CompaniesNotes WHERE CompanyNum=" + std::to_string(company) + ";",
                "ContactNotes");
  }
};

TEST_F(BusinessSummaryTest, DefaultContactLineAndAssociatedCompanyAndCustomField) {
  exec("INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) VALUES (40, 7, True);");
  std::string rtf = saveContactBusinessRTF(40, -1, 7, true);
  EXPECT_EQ(rtf, kPrologue + "\\b\\pard\\fi-1450\\li1450\\ri0 Name:\\b0  Jane Doe" + kPar +
                     "\\b Default Contact:\\b0  Yes" + kPar + kPar +
                     "\\b\\pard\\fi-1100\\li1100\\ri0 Main Phone:\\b0   555-1111" + kPar + kPar +
                     "\\b\\pard\\fi0\\li0\\ri0 Associated Company: \\b0 Acme Ltd" + kPar +
                     "\\b Colour:\\b0  Blue" + kPar + kEnd);
  EXPECT_EQ(text("SELECT * FROM ContactsNotes WHERE ContactNum=40;", "BusinessNotes"), rtf);
  EXPECT_EQ(companyContactNotes(7), "");  // doNotSpread
  EXPECT_NE(saveContactBusinessRTF(40, -1, 8, true).find("\\b Default Contact:\\b0  No"),
            std::string::npos);
}

TEST_F(BusinessSummaryTest, SpreadingFillsContactNotesOfEachCompanyItIsDefaultFor) {
  exec("INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) VALUES (40, 7, True);");
  exec("INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) VALUES (40, 8, True);");
  std::string rtf = saveContactBusinessRTF(40, -1, 7, false);
  EXPECT_EQ(companyContactNotes(7), rtf);
  std::string other = companyContactNotes(8);
  EXPECT_NE(other.find("\\b\\pard\\fi0\\li0\\ri0 Other Associated Companies: \\b0\\par"),
            std::string::npos);
  EXPECT_NE(other.find("\\b Default Contact:\\b0  Yes"), std::string::npos);
  EXPECT_TRUE(errors.errors.empty());
}

class TaxSummaryTest : public ContactSummaryTest {
 protected:
  void SetUp() override {
    ContactSummaryTest::SetUp();
    contact("DisplayName", "40, 'Jane Doe'");
  }
  std::string storedTax(long year) {
    return text("SELECT * FROM PersonalTaxClientSummary WHERE ContactNum=40 AND TaxYear=" +
                    std::to_string(year) + ";",
                "PersonalTaxNotes");
  }
};

TEST_F(TaxSummaryTest, WithoutProfileSwitchOnlyTheNameIsShownAndStoredForTheYear) {
  std::string rtf = saveContactPersonalTaxRTF(40, 2024, -1);
  EXPECT_EQ(rtf,
            kPrologue + "\\b\\pard\\fi-1450\\li1450\\ri0 Name:\\b0  Jane Doe" + kPar + kPar + kEnd);
  EXPECT_EQ(storedTax(2024), rtf);
}

TEST_F(TaxSummaryTest, ProfileItemsFollowTheirSwitches) {
  exec(
      "INSERT INTO PersonalTaxDataImportInfo (TaxYear, ShowProfileT1InfoInSummary, "
      "T1InfoProfileClientStatus, T1InfoeFileStatus, T1InfoRevenue, T1InfoT5007, "
      "T1InfoDateReturnSigned) VALUES (2024, True, True, True, True, True, True);");
  exec(
      "INSERT INTO PersonalTaxProfileInfo (ContactNum, TaxYear, ProfileFileLocation, "
      "ProfileClientStatus, EFILEStatus, Revenue, ActualRefund, DateSigned) "
      "VALUES (40, 2024, '/returns/jane.24t', '12', '4', -1234.5, 99, '2025-04-02');");
  std::string rtf = saveContactPersonalTaxRTF(40, 2024, -1);
  const std::string profile =
      "\\b\\pard\\fi-1450\\li1450\\ri0 Profile Information\\b0  \\par\r\n"
      "\\b\\pard\\fi-1425\\li1425\\ri0 _______________________\\b0   \\par\r\n\r\n"
      "\\b Last Date Synchronized with Profile T1:\\b0   Never\\par\r\n"
      "\\b Profile Client Status:\\b0   Unknown" +
      kPar + "\\b Profile eFile Status:\\b0   Transmitted" + kPar +
      "\\b Profile T5007:\\b0          False" + kPar +
      "\\b Profile Total Revenue:\\b0   $-1,234.50" + kPar +
      "\\b Date Return Signed:\\b0   Apr 2, 2025" + kPar;
  EXPECT_NE(rtf.find(profile), std::string::npos) << rtf;
  EXPECT_EQ(rtf.find("Actual Refund"), std::string::npos);  // switch off
  EXPECT_EQ(storedTax(2024), rtf);
  EXPECT_TRUE(errors.errors.empty());

  exec("UPDATE PersonalTaxProfileInfo SET ProfileClientStatus = NULL;");
  EXPECT_NE(
      saveContactPersonalTaxRTF(40, 2024, -1).find("\\b Profile Client Status:\\b0   Unknown"),
      std::string::npos);
}

TEST_F(TaxSummaryTest, MissingProfileRowsAreAddedForTheYear) {
  exec(
      "INSERT INTO PersonalTaxDataImportInfo (TaxYear, ShowProfileT1InfoInSummary) "
      "VALUES (2023, True);");
  saveContactPersonalTaxRTF(40, 2023, -1);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxProfileInfo WHERE ContactNum=40 AND TaxYear=2023;"), 1);
}

TEST_F(TaxSummaryTest, SectionsStandWhenAnyOfTheirFieldsIsSet) {
  exec(
      "UPDATE Contacts SET Birthday = '1970-01-02', Custom2 = 'x', BusinessName = 'Acme' "
      "WHERE ContactID = 40;");
  std::string rtf = saveContactPersonalTaxRTF(40, 2024, -1);
  EXPECT_NE(rtf.find("Personal Information\\b0  \\par"), std::string::npos);
  EXPECT_NE(rtf.find("\\b Birthday:\\b0   January 02, 1970"), std::string::npos);
  EXPECT_NE(rtf.find("Business Information\\b0  \\par"), std::string::npos);
  EXPECT_NE(rtf.find("Custom Information\\b0  \\par"), std::string::npos);
  EXPECT_EQ(rtf.find("Spouse Information"), std::string::npos);
}

}  // namespace
}  // namespace lf
