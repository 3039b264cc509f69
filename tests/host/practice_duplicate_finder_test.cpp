// Tests of the duplicate finder over the practice database.
#include "host/practice_duplicate_finder.hpp"

#include "tests/test_support.hpp"

namespace lf {
namespace {

class DuplicateFinderTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    db->executeStatement(
        "INSERT INTO Companies (CompanyID, CompanyName, ClientID) VALUES (7, 'Northwind Trading "
        "Ltd.', 'NOR001');");
    db->executeStatement(
        "INSERT INTO Contacts (ContactID, FirstName, LastName, DisplayName, ClientID) VALUES "
        "(9, 'Jane', 'Smith', 'Jane Smith', 'SMI004');");
  }
  PracticeDuplicateFinder company{PracticeDuplicateFinder::Company};
  PracticeDuplicateFinder contact{PracticeDuplicateFinder::Contact};
};

TEST_F(DuplicateFinderTest, ModeOneMatchesTheClientCodeAndModeTwoTheName) {
  company.clearSearch();
  company.setClientCode("nor001");
  company.setSearchMode(1);
  company.runSearch();
  EXPECT_TRUE(company.hasAutoMatch());
  EXPECT_EQ(company.getAutoMatchID(), 7);

  company.clearSearch();
  company.setCompanyName("NORTHWIND TRADING LTD.");
  company.setSearchMode(1);
  company.runSearch();
  EXPECT_FALSE(company.hasAutoMatch());
  company.setSearchMode(2);
  company.runSearch();
  EXPECT_EQ(company.getAutoMatchID(), 7);
  EXPECT_TRUE(messages.asked.empty());
}

TEST_F(DuplicateFinderTest, ModeThreeAsksAboutLikelyMatchesAndTakesAYes) {
  company.clearSearch();
  company.setCompanyName("Northwind Trading LTD");  // the same once the legal form is dropped
  company.setSearchMode(3);
  messages.answers = {kAnswerYes};
  company.runSearch();
  ASSERT_EQ(messages.asked.size(), 1u);
  EXPECT_EQ(messages.asked[0].text,
            "Northwind Trading LTD looks like the existing client Northwind Trading Ltd.. Is it "
            "the same client?");
  EXPECT_TRUE(company.hasChosenMatch());
  EXPECT_EQ(company.getChosenMatchID(), 7);
  EXPECT_FALSE(company.hasAutoMatch());
}

TEST_F(DuplicateFinderTest, UserWhoTurnsCheckingOffIsNotAskedAgain) {
  contact.clearSearch();
  contact.setDisplayName("John Smith");  // same last name and first initial
  contact.setSearchMode(3);
  messages.answers = {kAnswerNo, kAnswerNo};
  contact.runSearch();
  EXPECT_EQ(messages.asked.size(), 2u);
  EXPECT_FALSE(contact.hasChosenMatch());
  EXPECT_FALSE(contact.duplicateCheckEnabled());

  contact.clearSearch();
  contact.setDisplayName("Jane Smith");
  contact.runSearch();
  EXPECT_EQ(messages.asked.size(), 2u);
  EXPECT_FALSE(contact.hasChosenMatch());
}

TEST_F(DuplicateFinderTest, NoLikelyMatchAsksNothing) {
  contact.clearSearch();
  contact.setFirstName("Marco");
  contact.setLastName("Rossi");
  contact.setSearchMode(3);
  contact.runSearch();
  EXPECT_TRUE(messages.asked.empty());
  EXPECT_FALSE(contact.hasChosenMatch());
}

}  // namespace
}  // namespace lf
