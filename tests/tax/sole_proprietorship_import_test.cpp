// The businesses of personal returns through the personal import: the company, the taxpayer
// as owner, the further owners of the form's table, and the returns that make nothing.
#include "tax/sole_proprietorship_import.hpp"

#include <gmock/gmock.h>

#include "tax/profile_t1_import.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

class SoleProprietorshipTest : public ProfileTest {
 protected:
  void importReturn(std::map<std::string, std::string> fields) {
    fields.insert(
        {{"ClientSIN", "046454286"}, {"ClientFirstName", "Ada"}, {"ClientLastName", "Birch"}});
    clsImportProfileT1 import;
    import.importTaxYear = 2025;
    import.chkImprtBusinessInformation = true;
    import.addProfileFileToImportList(writeReturn("birch.16T", 2016, fields));
    import.importProfileT1Files(false);
  }
  std::string contact(const std::string& last, const std::string& column) {
    Variant v = value("SELECT * FROM Contacts WHERE LastName='" + last + "'", column);
    return v.isNull() ? "<null>" : v.toString();
  }
};

TEST_F(SoleProprietorshipTest, CompanyWithTheTaxpayerAndFurtherOwners) {
  importReturn({{"T2125.S[0,3]", "Birch Bakery"},
                {"T2125.S[0,12]", "123456782RT0001"},
                {"T2125.S[0,7]", "Toronto"},
                {"T2125[0,2]", "2016-12-31"},
                {"T2125Owners[0,0,0]", "60"},
                {"T2125Owners.S[0,1,0]", "Never"},
                {"T2125Owners.S[0,1,1]", "Imported"},
                {"T2125Owners.S[0,2,0]", "Ben"},
                {"T2125Owners.S[0,2,1]", "Fir"},
                {"T2125Owners[0,2,0]", "40"},
                {"T2125Owners.S[0,2,2]", "527000145"},
                {"T2125Owners.S[0,2,3]", "12 Elm St, Ottawa, ON K1P 5G3"}});
  Variant company = value("SELECT * FROM Companies WHERE CompanyName='Birch Bakery'", "CompanyID");
  ASSERT_FALSE(company.isNull());
  EXPECT_EQ(
      value("SELECT * FROM Companies WHERE CompanyName='Birch Bakery'", "CompanyType").toString(),
      "2");
  EXPECT_EQ(contact("Birch", "StakeHolder"), "True");
  EXPECT_EQ(contact("Birch", "PercentageOwnership"), "60");
  EXPECT_EQ(contact("Birch", "EmployeeType"), "Owner");
  EXPECT_EQ(contact("Fir", "PercentageOwnership"), "40");
  EXPECT_EQ(contact("Fir", "SocialInsuranceNumber"), "527000145");
  EXPECT_EQ(contact("Fir", "HomeCity"), "OTTAWA");  // as the address parser gives it
  EXPECT_EQ(contact("Fir", "InheritCompanyInfo"), "True");
  // Row 1 of the owners' table is never imported.
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Imported'"), 0);
  EXPECT_EQ(count("SELECT * FROM ContactLinks WHERE CompanyNum=" + company.toString()), 2);
}

TEST_F(SoleProprietorshipTest, NoFormOrNoNameMakesNoCompany) {
  const long companies = count("SELECT * FROM Companies");
  importReturn({{"Line101", "1.00"}});
  EXPECT_EQ(count("SELECT * FROM Companies"), companies);
  // Form 2124 is there, but its business has no name.
  importReturn({{"T2124Owners[0,0,0]", "100"}, {"T2124.S[0,5]", "1 Main St"}});
  EXPECT_EQ(count("SELECT * FROM Companies"), companies);
  EXPECT_EQ(contact("Birch", "EmployeeType"), "<null>");
}

}  // namespace
}  // namespace lf::testing
