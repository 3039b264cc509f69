// The text imports' duplicates control over existing practice rows and the rows an import
// tells it of.
#include "host/practice_import_duplicates.hpp"

#include "tests/test_support.hpp"

namespace lf {
namespace {

class PracticeImportDuplicatesTest : public testing::PracticeDatabaseTest {
 protected:
  void exec(const std::string& sql) { db->executeStatement(sql); }
};

TEST_F(PracticeImportDuplicatesTest, ContactsFoundBySINNameOrClientID) {
  exec(
      "INSERT INTO Contacts (ContactID, FirstName, LastName, DisplayName, SocialInsuranceNumber, "
      "ClientID) VALUES (41, 'Ann', 'Lee', 'Ann Lee', '046 454 286', 'LEE-1')");
  exec(
      "INSERT INTO Contacts (ContactID, FirstName, LastName, DisplayName) VALUES "
      "(42, 'Bo', 'Chen', 'Dr. Bo Chen')");
  PracticeImportDuplicates control(PracticeImportDuplicates::Contact);
  control.setCheckingOn(true);
  control.setMatchBy(kMatchBySIN);
  control.setSIN("046454286");
  control.setName("Bo Chen");
  control.runSearch();
  EXPECT_EQ(control.matchByFirstTest(), 41);
  EXPECT_EQ(control.matchBySecondTest(), -1);  // the name is not looked at after a match
  control.setSIN("999999999");
  control.setFirstName("Bo");
  control.setLastName("Chen");
  control.runSearch();
  EXPECT_EQ(control.matchByFirstTest(), -1);
  EXPECT_EQ(control.matchBySecondTest(), 42);  // no SIN match: the name decides

  control.clearSearch();
  control.setMatchBy(kMatchByName);
  control.setName("dr. bo chen ");
  control.runSearch();
  EXPECT_EQ(control.matchBySecondTest(), 42);
  control.clearSearch();
  control.setName("Robert Chen");
  control.setFirstName("Bo");
  control.setLastName("Chen");
  control.runSearch();
  EXPECT_EQ(control.matchBySecondTest(), 42);

  control.clearSearch();
  control.setMatchBy(kMatchByClientID);
  control.setClientID("lee-1");
  control.runSearch();
  EXPECT_EQ(control.matchByFirstTest(), 41);

  control.addContact(77, "Cy", "Ray", "111-222-333", "RAY-9");
  control.clearSearch();
  control.setClientID("RAY-9");
  control.runSearch();
  EXPECT_EQ(control.matchByFirstTest(), 77);

  control.setCheckingOn(false);
  control.runSearch();
  EXPECT_EQ(control.matchByFirstTest(), -1);
}

TEST_F(PracticeImportDuplicatesTest, CompaniesFoundByBusinessNumberRootAndCorporateName) {
  exec(
      "INSERT INTO Companies (CompanyID, CompanyName, CorporateName, ClientID) VALUES "
      "(5, 'Pine', 'Pine Holdings Ltd.', 'PIN-1')");
  exec(
      "INSERT INTO ClientData (ClientDataID, CompanyIDNum, BusinessNumber) VALUES "
      "(9, 5, '12345 6789')");
  PracticeImportDuplicates control(PracticeImportDuplicates::Company);
  control.setCheckingOn(true);
  control.setMatchBy(kMatchByBusinessNumber);
  control.setBusinessNumber("123456789RT0001");
  control.runSearch();
  EXPECT_EQ(control.matchByFirstTest(), 5);
  control.clearSearch();
  control.setMatchBy(kMatchByCorporateName);
  control.setCorporateName("PINE HOLDINGS LTD.");
  control.runSearch();
  EXPECT_EQ(control.matchBySecondTest(), 5);
  control.clearSearch();
  control.setCorporateName("Pine Holdings");
  control.setName("Pine");
  control.runSearch();
  EXPECT_EQ(control.matchBySecondTest(), -1);  // by corporate name only
}

}  // namespace
}  // namespace lf
