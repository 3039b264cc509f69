// The name procedures on the documented names: prefixes, couple prefixes, word placement,
// couples with a shared surname, the couple-prefix fault that "resume next" gets past, and
// the Contacts row that parseNameForContact and addSpouseNameToContact leave behind.
#include "records/name_parsing.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "base/module_state.hpp"
#include "db/database.hpp"
#include "db/practice_schema.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

using testing::InstalledErrorService;

PersonNameParts parts(std::string prefix, std::string first, std::string middle, std::string last,
                      std::string display) {
  return {std::move(prefix), std::move(first), std::move(middle), std::move(last),
          std::move(display)};
}

TEST(NamePrefixSearch, FindsFirstListedPrefixAnywhereInInputCase) {
  EXPECT_EQ(parsePrefixFromNameString("Dr. Anna Maria Van Dyke"), "Dr. ");
  EXPECT_EQ(parsePrefixFromNameString("mrs. Mary Smith"), "mrs. ");
  // Not anchored to a word: the letters of "Yasir " hold "SIR ".
  EXPECT_EQ(parsePrefixFromNameString("Yasir Khan"), "sir ");
  EXPECT_EQ(parsePrefixFromNameString("Madonna"), "");
  EXPECT_EQ(parsePrefixFromNameString("   "), "");
}

TEST(NamePrefixSearch, CouplePrefixStopsAtShorterSecondPrefix) {
  EXPECT_EQ(parseDoublePrefexesFromNameString("Mr and Mrs Smith"), "Mr and Mr");
  EXPECT_EQ(parseDoublePrefexesFromNameString("Mr. and Mrs. Smith"), "Mr. and Mr");
  EXPECT_EQ(parseDoublePrefexesFromNameString("Mr and Ms Smith"), "Mr and Ms");
  EXPECT_EQ(parseDoublePrefexesFromNameString("Dr & Mme Tremblay"), "Dr & Mme");
  EXPECT_EQ(parseDoublePrefexesFromNameString("Mr. John Smith & Mrs. Mary Smith"), "");
  EXPECT_EQ(parseDoublePrefexesFromNameString(""), "");
}

TEST(SingleName, CommaFormPutsTextAfterCommaFirst) {
  EXPECT_EQ(parseSingleNameString("Smith, John"), parts("", "John", "", "Smith", "John Smith"));
}

TEST(SingleName, PrefixIsKeptOutOfDisplayName) {
  EXPECT_EQ(parseSingleNameString("Dr. Anna Maria Van Dyke"),
            parts("Dr.", "Anna", "Maria", "Van Dyke", "Anna Maria Van Dyke"));
}

TEST(SingleName, ParticleJoinsTheWordAfterIt) {
  EXPECT_EQ(parseSingleNameString("Van Dyke"), parts("", "", "", "Van Dyke", "Van Dyke"));
  EXPECT_EQ(parseSingleNameString("St. John"), parts("", "", "", "St. John", "St. John"));
  EXPECT_EQ(parseSingleNameString("John Van Dyke"),
            parts("", "John", "", "Van Dyke", "John Van Dyke"));
  EXPECT_EQ(parseSingleNameString("Ann Marie Smith"),
            parts("", "Ann", "Marie", "Smith", "Ann Marie Smith"));
  // A particle in third place has no rule of its own; the fourth-word rule joins it.
  EXPECT_EQ(parseSingleNameString("John Paul Van Dyke"),
            parts("", "John", "Paul", "Van Dyke", "John Paul Van Dyke"));
}

TEST(SingleName, LoneWordIsSurnameOnlyAfterPrefix) {
  EXPECT_EQ(parseSingleNameString("Madonna"), parts("", "Madonna", "", "", "Madonna"));
  EXPECT_EQ(parseSingleNameString("Dr. Who"), parts("Dr.", "", "", "Who", "Who"));
}

TEST(SingleName, DoubleBlankLeavesEmptyMiddleAndKeepsDisplayBlanks) {
  EXPECT_EQ(parseSingleNameString("John  Smith"), parts("", "John", "", "Smith", "John  Smith"));
}

TEST(SingleName, PrefixInsideWordIsCutOut) {
  EXPECT_EQ(parseSingleNameString("Yasir Khan"), parts("sir", "", "", "YaKhan", "YaKhan"));
}

TEST(SingleName, BlankGivesEmptyRecord) {
  EXPECT_EQ(parseSingleNameString("    "), PersonNameParts{});
}

TEST(ContactName, OneWordFirstPartSharesSurname) {
  ContactNameFields f = parseNameForContactFields("John and Mary Smith");
  EXPECT_TRUE(f.hasResult);
  EXPECT_EQ(f.contact, parts("", "John", "", "Smith", "John Smith"));
  EXPECT_EQ(f.spouse, "Mary Smith");

  f = parseNameForContactFields("Smith, John & Mary");
  EXPECT_EQ(f.contact, parts("", "John", "", "Smith", "John Smith"));
  EXPECT_EQ(f.spouse, "Mary Smith");
}

TEST(ContactName, TwoWordFirstPartKeepsOwnSurname) {
  const ContactNameFields f = parseNameForContactFields("John Smith and Mary Jones");
  EXPECT_EQ(f.contact, parts("", "John", "", "Smith", "John Smith"));
  EXPECT_EQ(f.spouse, "Mary Jones");
}

TEST(ContactName, EachPersonKeepsOwnPrefix) {
  const ContactNameFields f = parseNameForContactFields("Mr. John Smith & Mrs. Mary Smith");
  EXPECT_EQ(f.contact, parts("Mr.", "John", "", "Smith", "John Smith"));
  EXPECT_EQ(f.spouse, "Mrs. Mary Smith");
  EXPECT_EQ(parseSingleNameString(f.spouse), parts("Mrs.", "Mary", "", "Smith", "Mary Smith"));
}

TEST(ContactName, NoSurnameToShareLeavesBothWithoutLastName) {
  const ContactNameFields f = parseNameForContactFields("John & Mary");
  EXPECT_EQ(f.contact, parts("", "John", "", "", "John"));
  EXPECT_EQ(f.spouse, "Mary");
}

TEST(ContactName, JoinerNeedsItsBlanks) {
  ContactNameFields f = parseNameForContactFields("Anderson");
  EXPECT_EQ(f.contact, parts("", "Anderson", "", "", "Anderson"));
  EXPECT_EQ(f.spouse, "");

  f = parseNameForContactFields("Sandy And Co");
  EXPECT_EQ(f.contact.FirstName, "Sandy");
  EXPECT_EQ(f.spouse, "Co");
}

TEST(ContactName, BlankStringHasNoResult) {
  const ContactNameFields f = parseNameForContactFields("     ");
  EXPECT_FALSE(f.hasResult);
  EXPECT_EQ(f.spouse, "");
}

TEST(ContactName, CouplePrefixFaultResumesWithEmptySecondPrefix) {
  InstalledErrorService errors(kErrorResumeNext);
  const ContactNameFields f = parseNameForContactFields("Mr and Mrs Smith");
  ASSERT_EQ(errors.errors.size(), 1u);
  EXPECT_EQ(errors.reported, 1);
  EXPECT_EQ(errors.errors[0].number, 9);
  EXPECT_EQ(errors.errors[0].source,
            "Ledgerfolio.exe-modDatabaseClientFunctions-parseNameForContact");
  // "Mr and Mr" is cut out, leaving the "s" of "Mrs" as a first name. Intended.
  EXPECT_TRUE(f.hasResult);
  EXPECT_EQ(f.contact, parts("Mr", "s", "", "Smith", "s Smith"));
  EXPECT_EQ(f.spouse, "");
}

TEST(ContactName, CouplePrefixFaultLeavesLeadingBlankWord) {
  InstalledErrorService errors(kErrorResumeNext);
  const ContactNameFields f = parseNameForContactFields("Mr and Ms Smith");
  EXPECT_EQ(errors.reported, 1);
  EXPECT_EQ(f.contact, parts("Mr", "", "", "Smith", "Smith"));
}

TEST(ContactName, CouplePrefixFaultWithoutResumeGivesNothingToWrite) {
  {
    InstalledErrorService errors(kErrorLeaveProcedure);
    EXPECT_FALSE(parseNameForContactFields("Mr and Mrs Smith").hasResult);
    EXPECT_EQ(errors.reported, 1);
  }
  // No error service at all: the procedure leaves silently.
  EXPECT_FALSE(parseNameForContactFields("Mr and Mrs Smith").hasResult);
}

class NameWritingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    db.createNew(":memory:");
    for (const std::string& statement : practiceSchemaStatements()) db.executeStatement(statement);
    db.executeStatement("INSERT INTO Contacts (ContactID) VALUES (7)");
    saved = moduleState().DatabaseReference;
    moduleState().DatabaseReference = &db;
  }
  void TearDown() override { moduleState().DatabaseReference = saved; }

  // The contact's columns, in table order from NamePrefix to SpouseName.
  std::vector<std::string> row(long id) {
    std::int32_t h = db.openRecordset(
        "SELECT Contacts.* FROM Contacts WHERE Contacts.ContactID=" + std::to_string(id) + ";",
        kCursorKeyset, kLockReadOnly);
    std::vector<std::string> values;
    if (db.hasRecord(h))
      for (const char* column :
           {"NamePrefix", "FirstName", "MiddleName", "LastName", "DisplayName", "SpouseNamePrefix",
            "SpouseFirstName", "SpouseMiddleName", "SpouseLastName", "SpouseName"})
        values.push_back(db.getField(h, column).toString());
    db.closeRecordset(h);
    return values;
  }

  std::vector<std::string> untouched() { return std::vector<std::string>(10); }

  Database db;
  DatabaseService* saved = nullptr;
};

TEST_F(NameWritingTest, CoupleFillsNameAndSpouseColumns) {
  parseNameForContact(7, "Mr. John Smith & Mrs. Mary Smith");
  EXPECT_EQ(row(7), (std::vector<std::string>{"Mr.", "John", "", "Smith", "John Smith", "Mrs.",
                                              "Mary", "", "Smith", "Mary Smith"}));
}

TEST_F(NameWritingTest, SharedSurnameAndCommaForm) {
  parseNameForContact(7, "Smith, John & Mary");
  EXPECT_EQ(row(7), (std::vector<std::string>{"", "John", "", "Smith", "John Smith", "", "Mary", "",
                                              "Smith", "Mary Smith"}));
}

TEST_F(NameWritingTest, CouplePrefixFaultResumesAndWrites) {
  InstalledErrorService errors(kErrorResumeNext);
  parseNameForContact(7, "Mr and Mrs Smith");
  EXPECT_EQ(errors.reported, 1);
  EXPECT_EQ(row(7),
            (std::vector<std::string>{"Mr", "s", "", "Smith", "s Smith", "", "", "", "", ""}));
}

TEST_F(NameWritingTest, CouplePrefixFaultLeftWritesNothing) {
  InstalledErrorService errors(kErrorLeaveProcedure);
  parseNameForContact(7, "Mr and Mrs Smith");
  EXPECT_EQ(errors.reported, 1);
  EXPECT_EQ(row(7), untouched());
}

TEST_F(NameWritingTest, NothingWrittenForBlanksMissingRowOrClosedDatabase) {
  InstalledErrorService errors(kErrorResumeNext);
  parseNameForContact(7, "     ");
  EXPECT_EQ(row(7), untouched());

  parseNameForContact(8, "John and Mary Smith");  // no such contact
  EXPECT_TRUE(row(8).empty());

  moduleState().DatabaseReference = nullptr;
  parseNameForContact(7, "John and Mary Smith");
  addSpouseNameToContact(7, "Mary Smith");
  moduleState().DatabaseReference = &db;
  EXPECT_EQ(row(7), untouched());
  EXPECT_EQ(errors.reported, 0);
}

TEST_F(NameWritingTest, SpouseAloneWritesOnlySpouseColumns) {
  addSpouseNameToContact(7, "Dr. Anna Maria Van Dyke");
  EXPECT_EQ(row(7), (std::vector<std::string>{"", "", "", "", "", "Dr.", "Anna", "Maria",
                                              "Van Dyke", "Anna Maria Van Dyke"}));
}

}  // namespace
}  // namespace lf
