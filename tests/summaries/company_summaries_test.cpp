// Company summaries and the address-book path: the company page and where it is stored, the
// contact panel with and without a default contact, and the category path with its limit.
#include "summaries/company_summaries.hpp"

#include "summaries/cls_client_addr_bk_cat_txt.hpp"
#include "summaries/contact_summaries.hpp"
#include "tests/summaries/summary_test_support.hpp"

namespace lf {
namespace {

using summaries_test::kEnd;
using summaries_test::kPar;
using summaries_test::kPrologue;

class CompanySummaryTest : public summaries_test::SummaryTest {
 protected:
  long category(long id, const std::string& name, long parent) {
    exec("INSERT INTO Categories (CategoryID, CategoryName, CategoryNum) VALUES (" +
         std::to_string(id) + ", '" + name + "', " + std::to_string(parent) + ");");
    return id;
  }
  void company(long id, const std::string& name, long categoryNum, long parentCompany) {
    exec("INSERT INTO Companies (CompanyID, CompanyName, CategoryNum, CompanyNum) VALUES (" +
         std::to_string(id) + ", '" + name + "', " + std::to_string(categoryNum) + ", " +
         std::to_string(parentCompany) + ");");
  }
  std::string path(long companyID, bool showMain = false) {
    clsClientAddrBkCatTxt text;
    text.setClientType(2);
    text.setCompanyIDNum(companyID);
    text.setShowMainAddressBookCategory(showMain);
    text.generateCategoryText();
    return text.CategoryText();
  }
  std::string companyNotes(long id, const std::string& column) {
    return text("SELECT * FROM CompaniesNotes WHERE CompanyNum=" + std::to_string(id) + ";",
                column);
  }
};

TEST_F(CompanySummaryTest, CompanyPageInOrderAndStoredOnANewNotesRow) {
  category(50, "Region", 0);
  category(51, "Ontario", 50);
  company(7, "Acme Ltd", 51, 0);
  company(8, "Acme Sub", 0, 7);
  exec(
      "UPDATE Companies SET Address = '9 Bay St', City = 'Toronto', OfficeNumber = '555-7000', "
      "CompanyType = 1, LawyerInfo = 'Lee' || char(13) || char(10) || 'Law', Custom1 = 'Gold' "
      "WHERE CompanyID = 7;");
  exec("UPDATE CustomAddressFields SET CompanyLabel1 = 'Tier:';");
  std::string rtf = saveCompanyRTF(7, -1);
  EXPECT_EQ(rtf, kPrologue + "\\b\\pard\\fi-1375\\li1375\\ri0 Company Name:\\b0  Acme Ltd" + kPar +
                     "\\b\\pard\\fi0\\li0\\ri0 Address:\\b0\\par\r\n" +
                     "Acme Ltd\r\n\\par 9 Bay St\r\n\\par Toronto" + kPar +
                     "\\b\\pard\\fi-1100\\li1100\\ri0 Main Phone:\\b0   555-7000" + kPar +
                     "\\b Company Type:\\b0  Corporation" + kPar +
                     "\\b Associated Subsidiary Company: \\b0 Acme Sub" + kPar +
                     "\\b Lawyer Information:\\b0\\par\r\nLee\r\n\\par Law" + kPar +
                     "\\b Tier:\\b0  Gold" + kPar +
                     "\\b\\pard\\fi0\\li0\\ri0 Address Book Category Listing:\\b0\\par\r\n" +
                     "    Region\r\n\\par         Ontario\r\n\\par " + kPar + kEnd);
  EXPECT_EQ(companyNotes(7, "BusinessNotes"), rtf);
  EXPECT_TRUE(errors.errors.empty());

  std::string sub = saveCompanyRTF(8, -1);
  EXPECT_NE(sub.find("\\b Associated Parent Company:\\b0  Acme Ltd" + kPar), std::string::npos);
  EXPECT_NE(sub.find("    Region\r\n\\par         Ontario\r\n\\par             Acme Ltd\r\n"),
            std::string::npos);
}

TEST_F(CompanySummaryTest, FirmPageIsStoredOnTheFirmRow) {
  std::string rtf = saveCompanyRTF(-1, 1);
  EXPECT_NE(rtf.find("Company Name:\\b0  Maple Ridge Accounting"), std::string::npos);
  EXPECT_EQ(text("SELECT * FROM AccountantFirmInfo WHERE CompanyID=1;", "BusinessNotes"), rtf);
  EXPECT_EQ(count("SELECT * FROM CompaniesNotes;"), 0);
}

TEST_F(CompanySummaryTest, ClientCustomNameLeftAtItsDefaultHidesTheRow) {
  company(7, "Acme Ltd", 0, 0);
  exec("INSERT INTO ClientData (ClientDataID, CompanyIDNum) VALUES (107, 7);");
  exec("INSERT INTO OtherInfo (OtherInfoID, ClientCustom1, ClientCustom2) VALUES (107, 'a', 'b');");
  exec("UPDATE CustomFields SET CustomName1 = 'Custom 1:', CustomName2 = 'Year End:';");
  std::string rtf = saveCompanyRTF(7, -1);
  EXPECT_EQ(rtf.find("Custom 1:"), std::string::npos);
  EXPECT_NE(rtf.find("\\b Year End:\\b0  b" + kPar), std::string::npos);
}

TEST_F(CompanySummaryTest, ContactPanelWithAndWithoutDefaultContact) {
  company(7, "Acme Ltd", 0, 0);
  exec("INSERT INTO CompaniesNotes (CompanyNum) VALUES (7);");
  EXPECT_EQ(saveNoDefaultComment(), kPrologue + "\\b No Default Contact Selected.\\b0  \\par\r\n}");
  EXPECT_EQ(saveCompanyContactRTF(7, -1), saveNoDefaultComment());
  EXPECT_EQ(companyNotes(7, "ContactNotes"), saveNoDefaultComment());

  exec("INSERT INTO Contacts (ContactID, DisplayName) VALUES (40, 'Jane Doe');");
  exec("INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) VALUES (40, 7, True);");
  std::string rtf = saveCompanyContactRTF(7, 40);
  EXPECT_NE(rtf.find("Name:\\b0  Jane Doe"), std::string::npos);
  EXPECT_EQ(companyNotes(7, "ContactNotes"), rtf);
  EXPECT_EQ(saveCompanyContactRTF(9, 40), "");  // no notes row: nothing written
}

TEST_F(CompanySummaryTest, CompanyWithoutCategoryHasNoPathAndNoListing) {
  company(7, "Acme Ltd", 0, 0);
  EXPECT_EQ(path(7), "");
  EXPECT_EQ(saveCompanyRTF(7, -1).find("Address Book Category Listing"), std::string::npos);
}

TEST_F(CompanySummaryTest, PathRunsFromTheTopDownFourBlanksFurtherEachLine) {
  category(50, "Region", 0);
  category(51, "Ontario", 50);
  company(7, "Acme Ltd", 51, 0);
  company(8, "Acme Sub", 0, 7);
  EXPECT_EQ(path(8), "    Region\r\n        Ontario\r\n            Acme Ltd\r\n");
}

TEST_F(CompanySummaryTest, MainAddressBookCategoryShowsOnlyWhenAsked) {
  long main = dropDown->getMainAddressBookCategoryID();
  ASSERT_GT(main, 0);
  category(51, "Suppliers", main);
  company(7, "Acme Ltd", 51, 0);
  EXPECT_EQ(path(7), "    Suppliers\r\n");
  EXPECT_EQ(path(7, true), "    Address Book\r\n        Suppliers\r\n");
  clsClientAddrBkCatTxt personal;
  personal.setClientType(1);
  personal.setCompanyIDNum(7);
  personal.setCategoryText("kept");
  personal.generateCategoryText();
  EXPECT_EQ(personal.CategoryText(), "kept");
}

TEST_F(CompanySummaryTest, CategoryCycleStopsAfterOneHundredRounds) {
  category(60, "Loop A", 61);
  category(61, "Loop B", 60);
  company(7, "Acme Ltd", 60, 0);
  clsClientAddrBkCatTxt text;
  text.setClientType(2);
  text.setCompanyIDNum(7);
  text.generateCategoryText();
  EXPECT_EQ(text.nodes().count(), 101);  // the company's category and 100 climbs
  std::string lines = text.CategoryText();
  long count = 0;
  for (std::size_t at = lines.find("\r\n"); at != std::string::npos;
       at = lines.find("\r\n", at + 2))
    ++count;
  EXPECT_EQ(count, 101);
  EXPECT_EQ(lines.substr(0, 12), "    Loop A\r\n");  // the hundredth climb ends on A
}

}  // namespace
}  // namespace lf
