// A contact as a personal-tax client of a year: the per-year rows, the return dates by
// country, a second call changing nothing, the checklist copied from the year's steps, the
// custom columns filled from merge templates, and the test of a year with its link repair.
#include "records/personal_tax_records.hpp"

#include <string>

#include "base/general_utilities.hpp"
#include "base/legacy_text.hpp"
#include "records/client_record_hooks.hpp"
#include "records/contact_records.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class PersonalTaxRecordsTest : public testing::PracticeDatabaseTest {
 protected:
  void SetUp() override {
    PracticeDatabaseTest::SetUp();
    savedHooks = clientRecordHooks();
    contact = addNewContact("John Smith", -1, -1);
    id = std::to_string(contact);
  }
  void TearDown() override {
    clientRecordHooks() = savedHooks;
    EXPECT_TRUE(errors.errors.empty());
  }

  std::string status(long year, const std::string& field) {
    return value("SELECT * FROM PersonalTaxStatus WHERE ContactNum=" + id +
                     " AND TaxYear=" + std::to_string(year) + ";",
                 field)
        .toString();
  }
  long rowsOfYear(const std::string& table, long year) {
    return count("SELECT * FROM " + table + " WHERE ContactNum=" + id +
                 " AND TaxYear=" + std::to_string(year) + ";");
  }
  void useCountry(int mode) {
    HostOverrides overrides;
    overrides.countryMode = mode;
    locale = std::make_unique<PracticeLocale>(*db, overrides);
    moduleState().LocaleReference = locale.get();
  }

  ClientRecordHooks savedHooks;
  long contact = 0;
  std::string id;
};

TEST_F(PersonalTaxRecordsTest, NewClientOfAYearGetsItsRowsAndCanadianDates) {
  const long category = dropDown->getCurrentContactCategoryID();
  addNewPersonalTaxClientForExistingContact(contact, category, 2010, 1);
  for (const char* table :
       {"PersonalTaxInfo", "PersonalTaxStatus", "PersonalTaxNotes", "PersonalTaxProfileInfo"})
    EXPECT_EQ(rowsOfYear(table, 2010), 1) << table;
  EXPECT_EQ(status(2010, "ReturnStatus"), "6");
  EXPECT_EQ(status(2010, "ActiveStatus"), "1");
  EXPECT_EQ(status(2010, "EmployeeAssigned"), "None Assigned");
  EXPECT_EQ(status(2010, "ReturnDate"), "2011-04-30");
  EXPECT_EQ(status(2010, "InHouseDueDate"), "2011-04-30");
  EXPECT_EQ(status(2010, "OverdueFlag"), "True");  // due long ago, status 6 is not filed
  EXPECT_EQ(count("SELECT * FROM ContactLinks WHERE ContactIDNum=" + id +
                  " AND CategoryNum=" + std::to_string(category) + ";"),
            1);
  // The year's tax summary is stored.
  EXPECT_FALSE(GeneralUtilities::isBlank(
      value("SELECT * FROM PersonalTaxClientSummary WHERE ContactNum=" + id + " AND TaxYear=2010;",
            "PersonalTaxNotes")));
}

TEST_F(PersonalTaxRecordsTest, OtherCountryModesDueOnAprilFifteenth) {
  useCountry(2);
  addNewPersonalTaxClientForExistingContact(contact, -1, 2010, 0);
  EXPECT_EQ(status(2010, "ReturnDate"), "2011-04-15");
  EXPECT_EQ(status(2010, "InHouseDueDate"), "2011-04-15");
  EXPECT_EQ(status(2010, "ActiveStatus"), "");  // 0 is not written
}

TEST_F(PersonalTaxRecordsTest, SecondCallKeepsTheFirstRowsStatusAndDates) {
  addNewPersonalTaxClientForExistingContact(contact, -1, 2010, 1);
  db->executeStatement(
      "UPDATE PersonalTaxStatus SET ReturnStatus = 3, ReturnDate = #2011-03-01# "
      "WHERE ContactNum = " +
      id + ";");
  addNewPersonalTaxClientForExistingContact(contact, -1, 2010, 1);
  for (const char* table :
       {"PersonalTaxInfo", "PersonalTaxStatus", "PersonalTaxNotes", "PersonalTaxProfileInfo"})
    EXPECT_EQ(rowsOfYear(table, 2010), 1) << table;
  EXPECT_EQ(status(2010, "ReturnStatus"), "3");
  EXPECT_EQ(status(2010, "ReturnDate"), "2011-03-01");
  EXPECT_EQ(count("SELECT * FROM ContactsNotes WHERE ContactNum=" + id + ";"), 1);
}

TEST_F(PersonalTaxRecordsTest, EarlyYearTakesTheCurrentPersonalYearAndAMissingContactNothing) {
  addNewPersonalTaxClientForExistingContact(contact, -1, 1899, 0);
  EXPECT_EQ(rowsOfYear("PersonalTaxStatus", locale->getCurrentPersonalYear()), 1);
  addNewPersonalTaxClientForExistingContact(9999, -1, 2010, 0);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxInfo WHERE ContactNum=9999;"), 0);
  EXPECT_EQ(count("SELECT * FROM Clients WHERE ContactIDNum=9999;"), 0);
}

TEST_F(PersonalTaxRecordsTest, ChecklistCopiesUsedStepsAndDropsStepsBeyondTheList) {
  for (const char* step : {"(2010, 2, 1)", "(2010, 0, 2)", "(2010, 1, 3)", "(2011, 7, 1)"})
    db->executeStatement(std::string("INSERT INTO PersonalTaxSteps (TaxYear, StepNum, SortIndex) "
                                     "VALUES ") +
                         step + ";");
  // Existing rows: step 1 stays; steps 4 and 5 lie beyond the three steps of the year.
  for (const char* task : {"1", "4", "5", "9"})
    db->executeStatement("INSERT INTO PersonalTaxTasks (ContactNum, TaxYear, StepNum) VALUES (" +
                         id + ", 2010, " + task + ");");

  addNewPersonalTaxClientForExistingContact(contact, -1, 2010, 0);

  const std::string current = std::to_string(locale->getCurrentPersonalYear());
  // Intended: the new step row is filed under the current personal year.
  EXPECT_EQ(count("SELECT * FROM PersonalTaxTasks WHERE ContactNum=" + id +
                  " AND StepNum=2 AND TaxYear=" + current + ";"),
            1);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxTasks WHERE ContactNum=" + id +
                  " AND StepNum=1 AND TaxYear=2010;"),
            1);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxTasks WHERE StepNum=4 OR StepNum=5;"), 0);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxTasks WHERE StepNum=9;"), 1);  // past the gap
  EXPECT_EQ(count("SELECT * FROM PersonalTaxTasks WHERE StepNum=7 OR StepNum=0;"), 0);
}

TEST_F(PersonalTaxRecordsTest, TemplateColumnIsFilledThroughTheMergeHook) {
  // A merge stand-in that really substitutes: the contact's first name and the year.
  clientRecordHooks().fillPersonalTaxTemplate = [this](const std::string& text, long who,
                                                       long year) {
    const std::string first =
        value("SELECT * FROM Contacts WHERE ContactID=" + std::to_string(who) + ";", "FirstName")
            .toString();
    return replaceAll(replaceAll(text,
                                 "\xC2\xAB"
                                 "First Name\xC2\xBB",
                                 first),
                      "\xC2\xAB"
                      "Tax Year\xC2\xBB",
                      std::to_string(year));
  };
  db->executeStatement(
      "UPDATE CustomFields SET PersonalTaxTaskCustomType2 = 3, PersonalTaxTaskCustomInfo2 = "
      "'\xC2\xAB"
      "First Name\xC2\xBB files \xC2\xAB"
      "Tax Year\xC2\xBB', "
      "PersonalTaxTaskCustomType4 = 1, PersonalTaxTaskCustomInfo4 = 'not a template';");

  addNewPersonalTaxClientForExistingContact(contact, -1, 2010, 0);

  EXPECT_EQ(status(2010, "Custom2"), "John files 2010");
  EXPECT_EQ(status(2010, "Custom4"), "");
  EXPECT_EQ(populateNewPersonalTaxListCustomColumns(contact, 4, 2010), "");
}

TEST_F(PersonalTaxRecordsTest, EmptyCustomFieldsTableGetsItsRow) {
  db->executeStatement("DELETE FROM CustomFields;");
  EXPECT_EQ(populateNewPersonalTaxListCustomColumns(contact, 1, 2010), "");
  EXPECT_EQ(count("SELECT * FROM CustomFields;"), 1);
  EXPECT_EQ(value("SELECT * FROM CustomFields;", "CustomName1").toString(), "Custom 1:");
}

TEST_F(PersonalTaxRecordsTest, ClientOfAYearNeedsBothRowsAndGetsItsYearLinkBack) {
  const long year = 2023;
  long forYear = year;
  const long category = dropDown->getCategoryForYear(forYear, "");
  EXPECT_FALSE(isContactPersonalTaxContactForTaxYear(contact, year));

  db->executeStatement("INSERT INTO PersonalTaxInfo (ContactNum, TaxYear) VALUES (" + id +
                       ", 2023);");
  EXPECT_FALSE(isContactPersonalTaxContactForTaxYear(contact, year));
  db->executeStatement("INSERT INTO PersonalTaxStatus (ContactNum, TaxYear) VALUES (" + id +
                       ", 2023);");
  EXPECT_TRUE(isContactPersonalTaxContactForTaxYear(contact, year));
  EXPECT_EQ(count("SELECT * FROM ContactLinks WHERE ContactIDNum=" + id + " AND CategoryNum=" +
                  std::to_string(category) + " AND IsPersonalTaxCategory = True;"),
            1);
  EXPECT_TRUE(isContactPersonalTaxContactForTaxYear(contact, year));
  EXPECT_EQ(count("SELECT * FROM ContactLinks WHERE CategoryNum=" + std::to_string(category) + ";"),
            1);
}

}  // namespace
}  // namespace lf
