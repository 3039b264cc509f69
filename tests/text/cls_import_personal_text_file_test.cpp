// The personal text import: category set-up, the value pass, names and spouses, notes,
// addresses, the duplicates control's actions and question, checked in the practice database.
#include "text/cls_import_personal_text_file.hpp"

#include "host/run_report.hpp"
#include "tests/text/text_import_test_support.hpp"

namespace lf {
namespace {

class PersonalTextImportTest : public testing::TextImportTest {
 protected:
  void SetUp() override {
    TextImportTest::SetUp();
    import.importCategory = category("2024");
    import.counters = &counters;
  }
  bool run() {
    bool succeeded = false;
    import.ImportData(succeeded);
    return succeeded;
  }
  void matchBySIN(int action) {
    duplicates.setCheckingOn(true);
    duplicates.setMatchBy(kMatchBySIN);
    duplicates.setAction(action);
    import.contactDuplicatesControl = &duplicates;
  }

  clsImportPersonalTextFile import;
  PracticeImportDuplicates duplicates{PracticeImportDuplicates::Contact};
  StageCounters counters;
};

TEST_F(PersonalTextImportTest, CategoryDecidesWhetherTheImportIsPersonalTax) {
  EXPECT_EQ(clsImportPersonalTextFile().importTaxYear, 2024);  // the seed's current personal year
  import.importCategory = category("Address Book");
  import.setupCategoryParameters();
  EXPECT_FALSE(import.importIsPersonalTax);
  import.importCategory = category("2024");
  import.setupCategoryParameters();
  EXPECT_TRUE(import.importIsPersonalTax);
}

TEST_F(PersonalTextImportTest, ValuePassWritesEachKeyByItsRule) {
  load(import,
       "John,Smith,123456789,4165551234,m5v1a1,1970-05-17,1 Main St,,Apt 2,Likes golf,"
       "CUST\n");
  assign(import,
         {"FirstName", "LastName", "SocialInsuranceNumber", "HomePhone_Main", "HomePostalCode",
          "Birthday", "HomeAddress1", "HomeAddress2", "HomeAddress3", "Notes", "ContactCustom1"});
  ASSERT_TRUE(run());
  const std::string john = "FirstName='John'";
  EXPECT_EQ(contactText(john, "LastName"), "Smith");
  EXPECT_EQ(contactText(john, "SocialInsuranceNumber"), "123 456 789");
  EXPECT_EQ(contactText(john, "HomePhone_Main"), "(416) 555-1234");
  EXPECT_EQ(contactText(john, "HomePostalCode"), "M5V 1A1");
  EXPECT_EQ(contactText(john, "Birthday").substr(0, 10), "1970-05-17");
  EXPECT_EQ(contactText(john, "HomeAddress"), "1 Main St, Apt 2");  // lines 1 and 3
  EXPECT_EQ(contactText(john, "Custom1"), "CUST");
  const long id = static_cast<long>(
      value("SELECT ContactID FROM Contacts WHERE " + john, "ContactID").toLong());
  EXPECT_EQ(value("SELECT Notes FROM ContactsNotes WHERE ContactNum=" + std::to_string(id), "Notes")
                .toString(),
            "Likes golf\r\n");
  EXPECT_EQ(count("SELECT * FROM PersonalTaxInfo WHERE TaxYear=2024 AND ContactNum=" +
                  std::to_string(id)),
            1);
  EXPECT_EQ(counters.created, 1);
}

TEST_F(PersonalTextImportTest, RowsWithoutANameAreSkippedAndNonDatesDropped) {
  load(import, "123456789,,,\n,Mary,Jones,not a date\n");
  assign(import, {"SocialInsuranceNumber", "FirstName", "LastName", "Birthday"});
  ASSERT_TRUE(run());
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE SocialInsuranceNumber IS NOT NULL"), 0);
  EXPECT_EQ(contactText("FirstName='Mary'", "LastName"), "Jones");
  EXPECT_EQ(contactText("FirstName='Mary'", "Birthday"), "<null>");
  EXPECT_EQ(counters.read, 2);
  EXPECT_EQ(counters.skipped, 1);
}

TEST_F(PersonalTextImportTest, CoupleGetsTheSpouseColumnsAndLongAddressesAreCut) {
  const std::string longLine(300, 'x');
  load(import, "Robert,Brown,Linda,Brown," + longLine + "\n");
  assign(import, {"FirstName", "LastName", "SpouseFirstName", "SpouseLastName", "AltAddress1"});
  ASSERT_TRUE(run());
  EXPECT_EQ(contactText("FirstName='Robert'", "SpouseFirstName"), "Linda");
  EXPECT_EQ(contactText("FirstName='Robert'", "AltAddress").size(), 255u);
}

TEST_F(PersonalTextImportTest, UnmatchedColumnsGoToTheNotesWithTheirCaptions) {
  import.putUnmatchedFieldsInNotes = true;
  load(import, "First,Last,Favourite colour,Pet\nAnn,Lee,Blue,\n", true);
  assign(import, {"FirstName", "LastName"});
  ASSERT_TRUE(run());
  EXPECT_EQ(value("SELECT Notes FROM ContactsNotes INNER JOIN Contacts ON ContactID=ContactNum "
                  "WHERE FirstName='Ann'",
                  "Notes")
                .toString(),
            "Favourite colour: Blue\r\n");
}

TEST_F(PersonalTextImportTest, SecondRowWithTheSameSINUpdatesAndAppendsNotes) {
  matchBySIN(kDuplicateUpdate);
  load(import, "Tom,Hill,111 222 333,first note,\nTom,Hill,111222333,second note,555-1212\n");
  assign(import, {"FirstName", "LastName", "SocialInsuranceNumber", "Notes", "HomePhone_Cell"});
  ASSERT_TRUE(run());
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE FirstName='Tom'"), 1);
  EXPECT_EQ(contactText("FirstName='Tom'", "HomePhone_Cell"), "555-1212");
  EXPECT_EQ(value("SELECT Notes FROM ContactsNotes INNER JOIN Contacts ON ContactID=ContactNum "
                  "WHERE FirstName='Tom'",
                  "Notes")
                .toString(),
            "first note\r\n\r\nsecond note\r\n");
  EXPECT_EQ(counters.created, 1);
  EXPECT_EQ(counters.updated, 1);
}

TEST_F(PersonalTextImportTest, SkipAndNewClientActions) {
  load(import, "Tom,Hill,111222333\nTom,Hill,111222333\n");
  assign(import, {"FirstName", "LastName", "SocialInsuranceNumber"});
  matchBySIN(kDuplicateSkip);
  ASSERT_TRUE(run());
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE FirstName='Tom'"), 1);
  EXPECT_EQ(counters.skipped, 1);
  matchBySIN(kDuplicateNewClient);
  ASSERT_TRUE(run());
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE FirstName='Tom'"), 3);
}

TEST_F(PersonalTextImportTest, AskActionPutsTheQuestionAndNoLeavesTheRowOut) {
  matchBySIN(kDuplicateAsk);
  load(import, "Tom,Hill,111222333,one\nTom,Hill,111222333,two\n");
  assign(import, {"FirstName", "LastName", "SocialInsuranceNumber", "Notes"});
  messages.answers = {kAnswerNo};
  ASSERT_TRUE(run());
  ASSERT_EQ(messages.asked.size(), 1u);
  EXPECT_EQ(messages.asked[0].text,
            locale->getApplicationName() +
                " has found that there is already a client named 'Tom Hill'.  Do you want to "
                "update this client?");
  EXPECT_EQ(value("SELECT Notes FROM ContactsNotes INNER JOIN Contacts ON ContactID=ContactNum "
                  "WHERE FirstName='Tom'",
                  "Notes")
                .toString(),
            "one\r\n");
}

}  // namespace
}  // namespace lf
