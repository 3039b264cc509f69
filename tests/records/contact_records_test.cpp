// Contacts, their references and links: a person at a company, in a category or in the
// address book; one row per link; family links with their one-level reverse; the name test
// at a company; and staff members with their couple titles, colours and user level.
#include "records/contact_records.hpp"

#include <string>
#include <vector>

#include "records/company_records.hpp"
#include "records/family_relationships.hpp"
#include "records/lookups.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

using Strings = std::vector<std::string>;

class ContactRecordsTest : public testing::PracticeDatabaseTest {
 protected:
  // Every operation here runs without a reported failure.
  void TearDown() override { EXPECT_TRUE(errors.errors.empty()); }
  long newCompany(const std::string& name) {
    const long company = getCompanyIDFromClientDataID(addNewClientDataEntry());
    db->executeStatement("UPDATE Companies SET CompanyName = '" + name +
                         "' WHERE CompanyID = " + std::to_string(company) + ";");
    return company;
  }
  long categoryOfYear(long year) {
    return value("SELECT * FROM Categories WHERE CategorySpecialCode = 'TaxYear:" +
                     std::to_string(year) + "';",
                 "CategoryID")
        .toLong();
  }
  std::string contactField(long contact, const std::string& field) {
    return value("SELECT * FROM Contacts WHERE ContactID=" + std::to_string(contact) + ";", field)
        .toString();
  }
  std::string relationship(long from, long to) {
    return value("SELECT * FROM ContactLinks WHERE ContactIDNum=" + std::to_string(from) +
                     " AND ContactNum=" + std::to_string(to) + ";",
                 "FamilyRelationship")
        .toString();
  }
  long links(const std::string& where) {
    return count("SELECT * FROM ContactLinks WHERE " + where + ";");
  }
  long person(const std::string& name, const std::string& gender = "") {
    const long id = addNewContact(name, -1, -1);
    if (!gender.empty())
      db->executeStatement("UPDATE Contacts SET Gender = '" + gender +
                           "' WHERE ContactID = " + std::to_string(id) + ";");
    return id;
  }
};

TEST_F(ContactRecordsTest, ContactAtACompanyTakesItsNameReferencesLinkAndDefault) {
  const long company = newCompany("Acme Ltd");
  const long contact = addNewContact("John Smith", -1, company);
  ASSERT_GT(contact, 0);
  const std::string id = std::to_string(contact);

  EXPECT_EQ(contactField(contact, "FirstName"), "John");
  EXPECT_EQ(contactField(contact, "LastName"), "Smith");
  EXPECT_EQ(contactField(contact, "BusinessName"), "Acme Ltd");
  EXPECT_EQ(contactField(contact, "InheritCompanyInfo"), "True");
  EXPECT_EQ(count("SELECT * FROM ContactsNotes WHERE ContactNum=" + id + ";"), 1);
  EXPECT_EQ(count("SELECT * FROM Clients WHERE ContactIDNum=" + id + " AND CompanyIDNum=-1;"), 1);
  // The company link only: a contact of a company is not put in the address book.
  EXPECT_EQ(links("ContactIDNum=" + id), 1);
  EXPECT_TRUE(value("SELECT * FROM ContactLinks WHERE ContactIDNum=" + id + ";", "DefaultContact")
                  .toBool());
  EXPECT_EQ(value("SELECT * FROM Companies WHERE CompanyID=" + std::to_string(company) + ";",
                  "DefaultContactName")
                .toString(),
            "John Smith");
}

TEST_F(ContactRecordsTest, ContactWithNeitherCompanyNorCategoryGoesToTheContactCategory) {
  const long contact = addNewContact("Ann Lee", -1, -1);
  EXPECT_EQ(links("ContactIDNum=" + std::to_string(contact) +
                  " AND CategoryNum=" + std::to_string(dropDown->getCurrentContactCategoryID())),
            1);
  EXPECT_EQ(addNewContact("  ", -1, -1), 0);
  EXPECT_EQ(count("SELECT * FROM Contacts;"), 1);
}

TEST_F(ContactRecordsTest, PersonalTaxCategoryMakesATaxClientOfItsYear) {
  const long contact = addNewContact("Mary Jones", categoryOfYear(2023), -1);
  const std::string id = std::to_string(contact);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxStatus WHERE ContactNum=" + id + " AND TaxYear=2023;"),
            1);
  EXPECT_TRUE(
      value("SELECT * FROM ContactLinks WHERE ContactIDNum=" + id + ";", "IsPersonalTaxCategory")
          .toBool());
}

TEST_F(ContactRecordsTest, CategoryWithoutAYearUsesTheCurrentPersonalYear) {
  // The client category needs a record but holds no year.
  const long contact = addNewContact("Bob Gray", dropDown->getCurrentCategoryID(), -1);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxStatus WHERE ContactNum=" + std::to_string(contact) +
                  " AND TaxYear=" + std::to_string(locale->getCurrentPersonalYear()) + ";"),
            1);
}

TEST_F(ContactRecordsTest, LinkingTheSamePairTwiceKeepsOneRow) {
  const long company = newCompany("Acme Ltd");
  const long contact = person("Ann Lee");
  EXPECT_TRUE(addContactLink(contact, -1, company, -1, "", false));
  EXPECT_TRUE(addContactLink(contact, -1, company, -1, "", false));
  EXPECT_EQ(links("ContactIDNum=" + std::to_string(contact) +
                  " AND CompanyNum=" + std::to_string(company)),
            1);
}

TEST_F(ContactRecordsTest, WifeLinkFromAManMakesOneHusbandLinkBack) {
  const long john = person("John Smith", "Male");
  const long mary = person("Mary Smith");
  addContactLink(john, -1, -1, mary, "Wife", false);
  EXPECT_EQ(relationship(john, mary), "Wife");
  EXPECT_EQ(relationship(mary, john), "Husband");
  EXPECT_EQ(links("ContactNum Is Not Null"), 2);

  // A second link of the pair rewrites the word on the one row and its reverse.
  addContactLink(john, -1, -1, mary, "Spouse", false);
  EXPECT_EQ(relationship(john, mary), "Spouse");
  EXPECT_EQ(relationship(mary, john), "Husband");
  EXPECT_EQ(links("ContactNum Is Not Null"), 2);
}

TEST_F(ContactRecordsTest, ReverseWordsFollowTheGenderOfTheContactOnTheRow) {
  const long mother = person("Sue Hill", "Female");
  const long son = person("Tom Hill");
  const long other = person("Pat Hill");
  addContactLink(mother, -1, -1, son, "Son", false);
  addContactLink(other, -1, -1, son, "Husband", false);  // crossed on purpose: gives "Wife"
  addContactLink(son, -1, -1, other, "Neighbour", false);
  EXPECT_EQ(relationship(son, mother), "Mother");
  EXPECT_EQ(relationship(son, other), "Neighbour");
  EXPECT_EQ(relationship(other, son), "Unknown");
}

TEST_F(ContactRecordsTest, NoReverseLinkLeavesTheOtherSideAlone) {
  const long a = person("Ann Lee");
  const long b = person("Bea Lee");
  addContactLink(a, -1, -1, b, "Sister", true);
  EXPECT_EQ(relationship(a, b), "Sister");
  EXPECT_EQ(links("ContactIDNum=" + std::to_string(b) + " AND ContactNum Is Not Null"), 0);
}

TEST_F(ContactRecordsTest, NameAtACompanyMatchesByDisplayOrFirstAndLastName) {
  const long company = newCompany("Acme Ltd");
  const long john = addNewContact("John Smith", -1, company);
  db->executeStatement(
      "UPDATE Contacts SET DisplayName = 'Johnny' WHERE ContactID = " + std::to_string(john) + ";");
  const long other = newCompany("Other Co");
  long found = -5;
  EXPECT_TRUE(doesContactNameAlreadyExistForThisCompany("JOHN SMITH", company, found));
  EXPECT_EQ(found, john);
  found = -5;
  EXPECT_TRUE(doesContactNameAlreadyExistForThisCompany("johnny", company, found));
  EXPECT_EQ(found, john);
  found = -5;
  EXPECT_FALSE(doesContactNameAlreadyExistForThisCompany("Mary Smith", company, found));
  EXPECT_FALSE(doesContactNameAlreadyExistForThisCompany("John Smith", other, found));
  EXPECT_FALSE(doesContactNameAlreadyExistForThisCompany(" ", company, found));
  EXPECT_EQ(found, -5);
}

TEST_F(ContactRecordsTest, ClosedDatabaseGivesTheInitialValues) {
  Database closed;
  moduleState().DatabaseReference = &closed;
  long found = -5;
  EXPECT_EQ(addNewContact("John Smith", -1, -1), 0);
  EXPECT_FALSE(addContactLink(1, -1, -1, 2, "Wife", false));
  EXPECT_FALSE(doesContactNameAlreadyExistForThisCompany("John Smith", 1, found));
  EXPECT_EQ(addAccountantEmployee("John Smith", 1, 2), 0);
  EXPECT_EQ(getOppositeFamilyRelationship(1, "Wife"), "Husband");  // gender code 0
  moduleState().DatabaseReference = db.get();
  EXPECT_EQ(count("SELECT * FROM Contacts;"), 0);
  EXPECT_EQ(found, -5);
}

TEST(AccountantEmployeeNamesTest, CoupleTitlesCommasAndSharedSurnames) {
  EXPECT_EQ(splitAccountantEmployeeNames("Mr & Mrs John & Mary Smith"),
            (Strings{"Mr John Smith", "Mrs Mary Smith"}));
  EXPECT_EQ(splitAccountantEmployeeNames("Smith, John & Mary"),
            (Strings{"John Smith", "Mary Smith"}));
  EXPECT_EQ(splitAccountantEmployeeNames("John Smith & Mary Jones"),
            (Strings{"John Smith", "Mary Jones"}));
  // The title alone leaves no name, and without a second "&" the title is dropped.
  EXPECT_EQ(splitAccountantEmployeeNames("Dr. & Mrs."), (Strings{""}));
  EXPECT_EQ(splitAccountantEmployeeNames("Mr & Mrs John Smith"), (Strings{"John Smith"}));
  // Intended: the shorter "MR & MRS" is found first and the full stop stays in the name.
  EXPECT_EQ(splitAccountantEmployeeNames("Mr & Mrs. Jo & Al Day"),
            (Strings{"Mr . Jo", "Mrs Al Day"}));
  // A title inside the name: the text around it is joined.
  EXPECT_EQ(splitAccountantEmployeeNames("Kim DR & DR Park & Lee"),
            (Strings{"DR Kim  Park", "DR Lee"}));
}

class AccountantEmployeeTest : public ContactRecordsTest {};

TEST_F(AccountantEmployeeTest, CoupleBecomesTwoUsersOfTheFirmWithColourAndSearches) {
  db->executeStatement("INSERT INTO Searches (SearchID, SearchType) VALUES (3, 2);");
  const long firm = value("SELECT * FROM AccountantFirmInfo;", "CompanyID").toLong();
  const long last = addAccountantEmployee("Mr & Mrs John & Mary Smith", firm, 1);
  ASSERT_GT(last, 0);

  std::int32_t h = db->openRecordset(
      "SELECT * FROM AccountantEmployeeInfo WHERE ContactID > 1 ORDER BY ContactID;", kCursorKeyset,
      kLockReadOnly);
  Strings names;
  for (db->hasRecord(h); !db->isEOF(h); db->moveNext(h)) {
    names.push_back(db->getField(h, "UserName").toString());
    EXPECT_EQ(db->getField(h, "UserLevel").toLong(), 2);          // level 1 asked, 2 given
    EXPECT_EQ(db->getField(h, "UserColour").toLong(), 16711680);  // one user before: blue
    EXPECT_EQ(db->getField(h, "BusinessName").toString(), "Maple Ridge Accounting");
    EXPECT_TRUE(db->getField(h, "InheritCompanyInfo").toBool());
    EXPECT_EQ(db->getField(h, "CompanyNum").toLong(), firm);
  }
  db->closeRecordset(h);
  EXPECT_EQ(names, (Strings{"John Smith", "Mary Smith"}));
  EXPECT_EQ(
      value("SELECT * FROM AccountantEmployeeInfo WHERE ContactID=" + std::to_string(last) + ";",
            "NamePrefix")
          .toString(),
      "Mrs");
  EXPECT_EQ(count("SELECT * FROM SearchesUserSpecific WHERE SearchIDNum=3 AND SearchType=2;"), 2);
  EXPECT_EQ(count("SELECT * FROM Contacts;"), 0);
}

TEST_F(AccountantEmployeeTest, LevelAboveTwoIsKeptAndColoursRunOutAfterEightUsers) {
  for (int i = 0; i < 7; ++i) addAccountantEmployee("Staff Member" + std::to_string(i), 1, 5);
  const long ninth = addAccountantEmployee("Late Comer", 1, 5);
  const std::string where = " WHERE ContactID=" + std::to_string(ninth) + ";";
  EXPECT_EQ(value("SELECT * FROM AccountantEmployeeInfo" + where, "UserLevel").toLong(), 5);
  EXPECT_TRUE(value("SELECT * FROM AccountantEmployeeInfo" + where, "UserColour").isNull());
  // The eighth user (seven before it) took black, the last colour.
  EXPECT_EQ(value("SELECT * FROM AccountantEmployeeInfo WHERE ContactID=" +
                      std::to_string(ninth - 1) + ";",
                  "UserColour")
                .toLong(),
            0);
}

}  // namespace
}  // namespace lf
