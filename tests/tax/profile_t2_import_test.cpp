// The corporate Profile import through the stand-in: names, numbers, the address types, the
// provincial numbers, the contacts, and the most-recent selection.
#include "tax/profile_t2_import.hpp"

#include <gmock/gmock.h>

#include "host/practice_import_duplicates.hpp"
#include "records/lookups.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

using ::testing::ElementsAre;

class ProfileT2ImportTest : public ProfileTest {
 protected:
  void SetUp() override {
    ProfileTest::SetUp();
    import = std::make_unique<clsImportProfileT2>();
  }
  std::string corporation(const std::string& name, std::map<std::string, std::string> fields) {
    return writeReturn(name + ".GT2", 2016, std::move(fields), "", {}, "T2");
  }
  // A column of the main business selection of the company named `name`.
  std::string company(const std::string& name, const std::string& column) {
    Variant id =
        value("SELECT CompanyID FROM Companies WHERE CompanyName='" + name + "'", "CompanyID");
    if (id.isNull()) return "<no company>";
    long clientData = getClientDataIDFromCompanyIDForTest(id.toLong());
    Variant v = value(getMainBusinessSQLString(false, 3, clientData), column);
    return v.isNull() ? "<null>" : v.toString();
  }
  long getClientDataIDFromCompanyIDForTest(long companyID) {
    return value("SELECT ClientDataID FROM ClientData WHERE CompanyIDNum=" +
                     std::to_string(companyID),
                 "ClientDataID")
        .toLong();
  }
  std::unique_ptr<clsImportProfileT2> import;
};

TEST_F(ProfileT2ImportTest, NamesNumbersDatesAndProvincialNumbers) {
  import->addProfileFileToImportList(corporation("birch", {{"OperatingName", "Birch Bakery"},
                                                           {"LegalName", "Birch Holdings Ltd."},
                                                           {"T2Info.S[3]", "123456782RC0001"},
                                                           {"T2Info[2]", "2016-06-30"},
                                                           {"T2Info[17]", "12:00:00 AM"},
                                                           {"T2Info.S[10]", "ON"},
                                                           {"T2Info.S[80]", "1234567"},
                                                           {"T2Info.S[82]", "EHT-9"},
                                                           { "T2Info.S[27]",
                                                             "4165551234" }}));
  import->addProfileFileToImportList(corporation("cedar", {{"LegalName", "Cedar Inc."},
                                                           {"T2Info.S[10]", "NU"},
                                                           { "T2Info.S[80]",
                                                             "999" }}));
  ASSERT_TRUE(import->startImportProfileT2Files());
  import->importProfileT2Files();
  EXPECT_TRUE(import->successFlag);

  EXPECT_EQ(company("Birch Bakery", "CorporateName"), "Birch Holdings Ltd.");
  EXPECT_EQ(company("Birch Bakery", "CompanyType"), "1");
  EXPECT_EQ(company("Birch Bakery", "BusinessNumber"), "12345 6782");
  EXPECT_EQ(company("Birch Bakery", "GSTNumber"), "12345 6782 RT0001");
  EXPECT_EQ(company("Birch Bakery", "PayrollNumber"), "12345 6782 RP0001");
  EXPECT_EQ(company("Birch Bakery", "FederalCorpNumber"), "123456782RC0001");
  EXPECT_THAT(company("Birch Bakery", "YearEndDate"), ::testing::StartsWith("2016-06-30"));
  EXPECT_EQ(company("Birch Bakery", "IncorporationDate"), "<null>");
  EXPECT_EQ(company("Birch Bakery", "ONCorpNumber"), "1234567");
  EXPECT_EQ(company("Birch Bakery", "EHTNumber"), "EHT-9");
  EXPECT_EQ(company("Birch Bakery", "OfficeNumber"), "(416) 555-1234");
  // Only the legal name: it is the company's name, and no province of the table, no number.
  EXPECT_NE(company("Cedar Inc.", "CorporateName"), "Cedar Inc.");
  EXPECT_NE(company("Cedar Inc.", "ONCorpNumber"), "999");
}

TEST_F(ProfileT2ImportTest, AddressTypesAndTheirSecondSets) {
  std::map<std::string, std::string> fields = {
      {"LegalName", "Head Ltd."},       {"T2Info.S[21]", "1 Bay St"}, {"T2Info.S[22]", "Suite 5"},
      {"T2Info.S[23]", "Toronto"},      {"T2.S[16]", "PO Box 9"},     {"T2.S[18]", "Ottawa"},
      {"T2Info.S[55]", "7 Officer Rd"}, {"T2Info.S[57]", "Regina"},   {"T2Info.S[59]", "S4P 3Y2"}};
  import->addProfileFileToImportList(corporation("head", fields));
  import->setProfileAddressType("Profile Head Office Address");
  import->importProfileT2Files();
  EXPECT_EQ(company("Head Ltd.", "Address"), "1 Bay St, Suite 5");
  EXPECT_EQ(company("Head Ltd.", "City"), "Toronto");

  // Mailing: the first set's street is blank, so the second set is used.
  fields["LegalName"] = "Mail Ltd.";
  import->profileFileList.clear();
  import->addProfileFileToImportList(corporation("mail", fields));
  import->setProfileAddressType("Profile Mailing Address");
  import->importProfileT2Files();
  EXPECT_EQ(company("Mail Ltd.", "Address"), "PO Box 9");
  EXPECT_EQ(company("Mail Ltd.", "City"), "Ottawa");

  // Signing officer: the street's key is read for the province too.
  fields["LegalName"] = "Officer Ltd.";
  import->profileFileList.clear();
  import->addProfileFileToImportList(corporation("officer", fields));
  import->setProfileAddressType("Profile Signing Officer Address");
  import->importProfileT2Files();
  EXPECT_EQ(company("Officer Ltd.", "Address"), "7 Officer Rd");
  EXPECT_EQ(company("Officer Ltd.", "Province"), "7 Officer Rd");
  EXPECT_EQ(company("Officer Ltd.", "PostalCode"), "S4P 3Y2");
}

TEST_F(ProfileT2ImportTest, SigningOfficerAndSecondContact) {
  import->addProfileFileToImportList(
      corporation("oak", {{"LegalName", "Oak Ltd."},
                          {"SigningOfficerFirstName", "Ada"},
                          {"SigningOfficerLastName", "Oak"},
                          {"SigningOfficerAddress1", "3 Elm St"},
                          {"SigningOfficerAddress2", "4"},
                          {"SigningOfficerTelephone", "(416) 555-0101"},
                          {"T2Info.S[65]", "Ben Fir"},
                          { "T2Info.S[66]",
                            "(416) 555-0202" }}));
  PracticeImportDuplicates companies(PracticeImportDuplicates::Company);
  companies.setCheckingOn(true);
  companies.setMatchBy(kMatchByBusinessNumber);
  companies.setAction(kDuplicateUpdate);
  import->companyDuplicatesControl = &companies;
  import->importProfileT2Files();
  // The same return again finds its company by name and adds no contact twice.
  import->importProfileT2Files();
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName='Oak Ltd.'"), 1);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Oak' AND FirstName='Ada'"), 1);
  EXPECT_EQ(value("SELECT * FROM Contacts WHERE LastName='Oak'", "BusinessAddress").toString(),
            "3 Elm St, Apt. 4");
  EXPECT_EQ(value("SELECT * FROM Contacts WHERE LastName='Fir'", "BusinessPhone_Main").toString(),
            "(416) 555-0202");
}

TEST_F(ProfileT2ImportTest, MostRecentReturnOfEachBusinessNumberIsTicked) {
  for (int year : {2016, 2014, 2015})
    import->addProfileFileToImportList(
        corporation("a" + std::to_string(year), {{"LegalName", "A Ltd."},
                                                 {"T2Info.S[3]", "123456782"},
                                                 { "T2Info[2]",
                                                   std::to_string(year) + "-12-31" }}));
  import->addProfileFileToImportList(corporation("b", {{"LegalName", "B Ltd."},
                                                       {"T2Info.S[3]", "876543215"},
                                                       { "T2Info[2]",
                                                         "2016-03-31" }}));
  import->selectOnlyMostRecentClientsFlag = true;
  import->selectSpecificProfileT2Files();
  std::vector<std::string> order;
  std::vector<bool> ticks;
  for (const auto& row : import->profileFileList) {
    order.push_back(row.yearEnd.substr(0, 4));
    ticks.push_back(row.selected);
  }
  EXPECT_THAT(order, ElementsAre("2014", "2015", "2016", "2016"));
  // The first row of a group keeps its tick, the middle one loses it, the latest gets it.
  EXPECT_THAT(ticks, ElementsAre(true, false, true, true));

  import->selectAllProfileFiles(false);
  messages.shown.clear();
  EXPECT_FALSE(import->startImportProfileT2Files());
  EXPECT_THAT(shownTexts(),
              ElementsAre("You must select some profile files in the list.  If there are no "
                          "profile files shown in the list, than click 'Back' and browse to a "
                          "folder which contains '*.04T', '*.05T', '*.06T', or '*.07T' files."));
}

}  // namespace
}  // namespace lf::testing
