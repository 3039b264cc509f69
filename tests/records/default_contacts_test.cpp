// The default contact of a company: the first contact linked becomes it and its details
// appear on the company; a change of default moves the mark and rewrites the summaries; a
// company left without links has its default columns emptied.
#include "records/default_contacts.hpp"

#include <string>

#include "records/company_records.hpp"
#include "records/contact_records.hpp"
#include "records/lookups.hpp"
#include "summaries/contact_summaries.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class DefaultContactsTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    company = getCompanyIDFromClientDataID(addNewClientDataEntry());
  }
  void TearDown() override { EXPECT_TRUE(errors.errors.empty()); }

  long personWithNumbers(const std::string& name, const std::string& phone) {
    const long id = addNewContact(name, -1, -1);
    db->executeStatement("UPDATE Contacts SET BusinessPhone_Main = '" + phone +
                         "', BusinessPhone_Fax = '555-0100', BusinessEmail = 'x@example.com' "
                         "WHERE ContactID = " +
                         std::to_string(id) + ";");
    return id;
  }
  std::string companyField(const std::string& field) {
    return value("SELECT * FROM Companies WHERE CompanyID=" + std::to_string(company) + ";", field)
        .toString();
  }

  // The company's stored contact panel and a contact's stored business page.
  std::string contactPanel() {
    return value("SELECT * FROM CompaniesNotes WHERE CompanyNum=" + std::to_string(company) + ";",
                 "ContactNotes")
        .toString();
  }
  std::string businessPage(long contact) {
    return value("SELECT * FROM ContactsNotes WHERE ContactNum=" + std::to_string(contact) + ";",
                 "BusinessNotes")
        .toString();
  }
  bool holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }

  long company = 0;
};

TEST_F(DefaultContactsTest, OnlyContactBecomesTheDefaultWithItsDetailsOnTheCompany) {
  const long ann = personWithNumbers("Ann Lee", "(416) 555-1234");
  addContactLink(ann, -1, company, -1, "", false);
  EXPECT_TRUE(isContactDefaultContact(company, ann));
  EXPECT_EQ(getDefaultContactIDFromCompanyID(company), ann);
  EXPECT_EQ(companyField("DefaultContactName"), "Ann Lee");
  EXPECT_EQ(companyField("DefaultContactPhoneNumber"), "(416) 555-1234");
  EXPECT_EQ(companyField("DefaultContactFaxNumber"), "555-0100");
  EXPECT_EQ(companyField("DefaultContactEmail"), "x@example.com");
  EXPECT_TRUE(holds(contactPanel(), "Ann Lee"));
  EXPECT_FALSE(businessPage(ann).empty());
}

TEST_F(DefaultContactsTest, LaterContactsLeaveTheDefaultUntilOneIsSetAsDefault) {
  const long ann = personWithNumbers("Ann Lee", "111");
  const long bob = personWithNumbers("Bob Ray", "222");
  addContactLink(ann, -1, company, -1, "", false);
  addContactLink(bob, -1, company, -1, "", false);
  EXPECT_EQ(checkForDefaultContact(company, true), ann);
  EXPECT_FALSE(isContactDefaultContact(company, bob));

  EXPECT_TRUE(businessPage(bob).empty());
  setContactAsDefault(bob, company, false);
  EXPECT_TRUE(isContactDefaultContact(company, bob));
  EXPECT_FALSE(isContactDefaultContact(company, ann));
  EXPECT_EQ(companyField("DefaultContactName"), "Bob Ray");
  EXPECT_EQ(companyField("DefaultContactPhoneNumber"), "222");
  EXPECT_TRUE(holds(contactPanel(), "Bob Ray"));
  EXPECT_FALSE(holds(contactPanel(), "Ann Lee"));
  EXPECT_FALSE(businessPage(bob).empty());

  // Without summaries the mark and the columns move, the stored panel stays.
  setContactAsDefault(ann, company, true);
  EXPECT_TRUE(isContactDefaultContact(company, ann));
  EXPECT_EQ(companyField("DefaultContactName"), "Ann Lee");
  EXPECT_TRUE(holds(contactPanel(), "Bob Ray"));
}

TEST_F(DefaultContactsTest, LinksWithoutADefaultGetTheFirstUnlessAutoPickIsOff) {
  const long ann = personWithNumbers("Ann Lee", "111");
  db->executeStatement(
      "INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) "
      "VALUES (" +
      std::to_string(ann) + ", " + std::to_string(company) + ", False);");
  EXPECT_EQ(checkForDefaultContact(company, false), 0);
  EXPECT_FALSE(isContactDefaultContact(company, ann));
  EXPECT_EQ(getDefaultContactIDFromCompanyID(company), ann);
  EXPECT_TRUE(isContactDefaultContact(company, ann));
  EXPECT_EQ(companyField("DefaultContactName"), "Ann Lee");
}

TEST_F(DefaultContactsTest, RemovingTheLastLinkClearsTheDefaultColumns) {
  const long ann = personWithNumbers("Ann Lee", "111");
  addContactLink(ann, -1, company, -1, "", false);
  db->executeStatement("DELETE FROM ContactLinks WHERE CompanyNum = " + std::to_string(company) +
                       ";");
  EXPECT_EQ(checkForDefaultContact(company, true), 0);
  for (const char* column : {"DefaultContactName", "DefaultContactPhoneNumber",
                             "DefaultContactFaxNumber", "DefaultContactEmail"})
    EXPECT_EQ(companyField(column), "") << column;

  EXPECT_TRUE(holds(contactPanel(), "Ann Lee"));
  setNoContactAsDefault(company, false);
  EXPECT_EQ(contactPanel(), saveNoDefaultComment());
}

}  // namespace
}  // namespace lf
