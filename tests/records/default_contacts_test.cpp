// The default contact of a company: the first contact linked becomes it and its details
// appear on the company; a change of default moves the mark and rewrites the summaries; a
// company left without links has its default columns emptied.
#include "records/default_contacts.hpp"

#include <string>
#include <utility>
#include <vector>

#include "records/client_record_hooks.hpp"
#include "records/company_records.hpp"
#include "records/contact_records.hpp"
#include "records/lookups.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

using Calls = std::vector<std::pair<long, long>>;

class DefaultContactsTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    savedHooks = clientRecordHooks();
    clientRecordHooks().saveContactBusinessRTF = [this](long c, long co) {
      businessSummaries.emplace_back(c, co);
    };
    clientRecordHooks().saveCompanyContactRTF = [this](long co, long c) {
      companySummaries.emplace_back(co, c);
    };
    company = getCompanyIDFromClientDataID(addNewClientDataEntry());
  }
  void TearDown() override {
    clientRecordHooks() = savedHooks;
    EXPECT_TRUE(errors.errors.empty());
  }

  long personWithNumbers(const std::string& name, const std::string& phone) {
    const long id = addNewContact(name, -1, -1);
    db->executeStatement("UPDATE Contacts SET BusinessPhone_Main = '" + phone +
                         "', BusinessPhone_Fax = '555-0100', BusinessEmail = 'x@example.com' "
                         "WHERE ContactID = " + std::to_string(id) + ";");
    return id;
  }
  std::string companyField(const std::string& field) {
    return value("SELECT * FROM Companies WHERE CompanyID=" + std::to_string(company) + ";", field)
        .toString();
  }

  ClientRecordHooks savedHooks;
  Calls businessSummaries;
  Calls companySummaries;
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
  EXPECT_EQ(companySummaries, (Calls{{company, ann}}));
}

TEST_F(DefaultContactsTest, LaterContactsLeaveTheDefaultUntilOneIsSetAsDefault) {
  const long ann = personWithNumbers("Ann Lee", "111");
  const long bob = personWithNumbers("Bob Ray", "222");
  addContactLink(ann, -1, company, -1, "", false);
  addContactLink(bob, -1, company, -1, "", false);
  EXPECT_EQ(checkForDefaultContact(company, true), ann);
  EXPECT_FALSE(isContactDefaultContact(company, bob));

  businessSummaries.clear();
  companySummaries.clear();
  setContactAsDefault(bob, company, false);
  EXPECT_TRUE(isContactDefaultContact(company, bob));
  EXPECT_FALSE(isContactDefaultContact(company, ann));
  EXPECT_EQ(companyField("DefaultContactName"), "Bob Ray");
  EXPECT_EQ(companyField("DefaultContactPhoneNumber"), "222");
  EXPECT_EQ(businessSummaries, (Calls{{ann, company}, {bob, company}}));
  EXPECT_EQ(companySummaries, (Calls{{company, bob}, {company, bob}}));

  businessSummaries.clear();
  setContactAsDefault(ann, company, true);
  EXPECT_TRUE(isContactDefaultContact(company, ann));
  EXPECT_TRUE(businessSummaries.empty());
}

TEST_F(DefaultContactsTest, LinksWithoutADefaultGetTheFirstUnlessAutoPickIsOff) {
  const long ann = personWithNumbers("Ann Lee", "111");
  db->executeStatement("INSERT INTO ContactLinks (ContactIDNum, CompanyNum, DefaultContact) "
                       "VALUES (" + std::to_string(ann) + ", " + std::to_string(company) +
                       ", False);");
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

  companySummaries.clear();
  setNoContactAsDefault(company, false);
  EXPECT_EQ(companySummaries, (Calls{{company, -1}}));
}

}  // namespace
}  // namespace lf
