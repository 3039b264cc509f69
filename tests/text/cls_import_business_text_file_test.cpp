// The business text import: category set-up, business numbers and their suffixes, the
// vocabularies, addresses, the company duplicates control and the row's contact.
#include "text/cls_import_business_text_file.hpp"

#include "host/run_report.hpp"
#include "tests/text/text_import_test_support.hpp"

namespace lf {
namespace {

class BusinessTextImportTest : public testing::TextImportTest {
 protected:
  void SetUp() override {
    TextImportTest::SetUp();
    import.importCategory = category("Clients");
    import.counters = &counters;
  }
  bool run() {
    bool succeeded = false;
    import.ImportData(succeeded);
    return succeeded;
  }
  std::string client(const std::string& where, const std::string& field) {
    Variant v = value(
        "SELECT * FROM Companies INNER JOIN ClientData ON "
        "Companies.CompanyID = ClientData.CompanyIDNum WHERE " +
            where,
        field);
    return v.isNull() ? std::string("<null>") : v.toString();
  }

  clsImportBusinessTextFile import;
  PracticeImportDuplicates duplicates{PracticeImportDuplicates::Company};
  StageCounters counters;
};

TEST_F(BusinessTextImportTest, CategoryFallsBackToTheCurrentOneUnlessItNeedsARecord) {
  const long clients = category("Clients");
  clsImportBusinessTextFile invalid;
  invalid.importCategory = 9999;
  invalid.setupCategoryParameters();
  EXPECT_EQ(invalid.importCategory, clients);
  EXPECT_TRUE(invalid.showThisClient);

  clsImportBusinessTextFile addressBook;
  addressBook.importCategory = category("Address Book");
  addressBook.setupCategoryParameters();
  EXPECT_EQ(addressBook.importCategory, clients);  // a business client needs a client record

  clsImportBusinessTextFile forAddressBook;
  forAddressBook.importForAddressBook = true;
  forAddressBook.importCategory = category("Address Book");
  forAddressBook.setupCategoryParameters();
  EXPECT_EQ(forAddressBook.importCategory, category("Address Book"));
  EXPECT_FALSE(forAddressBook.showThisClient);
}

TEST_F(BusinessTextImportTest, BusinessNumberGivesTheThreeProgramNumbers) {
  load(import, "Maple Bakery,123456789\nCedar Ltd,\n");
  assign(import, {"CompanyName", "BusinessNumber"});
  ASSERT_TRUE(run());
  const std::string maple = "CompanyName='Maple Bakery'";
  EXPECT_EQ(client(maple, "GSTNumber"), "123456789 RT0001");
  EXPECT_EQ(client(maple, "PayrollNumber"), "123456789 RP0001");
  EXPECT_EQ(client(maple, "FederalCorpNumber"), "123456789 RC0001");
  EXPECT_EQ(client("CompanyName='Cedar Ltd'", "GSTNumber"), "<null>");
  EXPECT_EQ(client(maple, "CategoryNum"), std::to_string(category("Clients")));
  EXPECT_EQ(counters.created, 2);
}

TEST_F(BusinessTextImportTest, GSTNumberAloneGivesTheBusinessNumber) {
  load(import, "Birch Inc,987654321RT0002\n");
  assign(import, {"CompanyName", "GSTNumber"});
  ASSERT_TRUE(run());
  EXPECT_EQ(client("CompanyName='Birch Inc'", "BusinessNumber"), "98765 4321");
  EXPECT_EQ(client("CompanyName='Birch Inc'", "GSTNumber"), "987654321RT0002");
  EXPECT_EQ(client("CompanyName='Birch Inc'", "PayrollNumber"), "98765 4321 RP0001");
}

TEST_F(BusinessTextImportTest, RowWithoutAnIdentifierIsSkipped) {
  load(import, ",Toronto\n");
  assign(import, {"CompanyName", "City"});
  ASSERT_TRUE(run());
  EXPECT_EQ(count("SELECT * FROM Companies"), 0);
  EXPECT_EQ(counters.skipped, 1);
}

TEST_F(BusinessTextImportTest, VocabularyWordsAndJoinedAddress) {
  load(import,
       "Oak Co,Notice to Reader,Trust,Completed,Quick Method,1 Bay St,,Unit 4,Toronto,Dec31\n");
  assign(import, {"CompanyName", "FinancialStatements", "CompanyType", "RC59Status",
                  "GSTFilingMethod", "Address1", "Address2", "Address3", "City", "YearEndDate"});
  ASSERT_TRUE(run());
  const std::string oak = "CompanyName='Oak Co'";
  EXPECT_EQ(client(oak, "FinancialStatements"), "2");
  EXPECT_EQ(client(oak, "CompanyType"), "<null>");  // the file must say "TRUSTS"
  EXPECT_EQ(client(oak, "RC59Status"), "3");
  EXPECT_EQ(client(oak, "GSTFilingMethod"), "3");
  EXPECT_EQ(client(oak, "Address"), "1 Bay St, Unit 4");
  EXPECT_EQ(client(oak, "City"), "Toronto");
  EXPECT_EQ(client(oak, "YearEndDate").substr(4, 6), "-12-31");
}

TEST_F(BusinessTextImportTest, MatchedCompanyIsUpdatedAndKeepsWhatTheFileLacks) {
  duplicates.setCheckingOn(true);
  duplicates.setMatchBy(kMatchByBusinessNumber);
  duplicates.setAction(kDuplicateUpdate);
  import.companyDuplicatesControl = &duplicates;
  load(import, "Pine Ltd,123456789,Ottawa\nPine Limited,12345 6789 RT0001,\n");
  assign(import, {"CompanyName", "BusinessNumber", "City"});
  ASSERT_TRUE(run());
  EXPECT_EQ(count("SELECT * FROM Companies"), 1);
  EXPECT_EQ(client("1=1", "CompanyName"), "Pine Limited");
  EXPECT_EQ(client("1=1", "City"), "Ottawa");
  EXPECT_EQ(counters.updated, 1);
}

TEST_F(BusinessTextImportTest, RowContactIsLinkedToTheCompany) {
  load(import, "Elm Corp,Sara,Khan,(416) 555 0199\nSolo Corp,,,\n");
  assign(import, {"CompanyName", "FirstName", "LastName", "BusinessPhone_Main"});
  ASSERT_TRUE(run());
  const long elm = static_cast<long>(
      value("SELECT CompanyID FROM Companies WHERE CompanyName='Elm Corp'", "CompanyID").toLong());
  EXPECT_EQ(contactText("FirstName='Sara'", "BusinessPhone_Main"), "(416) 555-0199");
  EXPECT_EQ(count("SELECT * FROM ContactLinks INNER JOIN Contacts ON ContactIDNum=ContactID "
                  "WHERE FirstName='Sara' AND CompanyNum=" +
                  std::to_string(elm)),
            1);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Khan'"), 1);
}

}  // namespace
}  // namespace lf
