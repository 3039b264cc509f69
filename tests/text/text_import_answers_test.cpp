// The answers file of the text imports: its forms, its refusals, and a run that answers the
// wizard and leaves rows in the practice database.
#include "text/text_import_answers.hpp"

#include "base/failure.hpp"
#include "tests/text/text_import_test_support.hpp"
#include "text/cls_import_business_text_file.hpp"
#include "text/cls_import_personal_text_file.hpp"
#include "text/text_import_wizard.hpp"

namespace lf {
namespace {

TEST(TextImportAnswersForm, ReadsEveryAnswer) {
  const TextImportAnswers a = parseTextImportAnswers(R"({
    "file": "clients.csv", "delimiter": "tab", "qualifier": "none", "firstRowNames": true,
    "mixedCase": true, "unmatchedToNotes": false,
    "columns": {"1": "FirstName", "Last Name": "Contact Last Name"},
    "rows": [1, "4-9"], "category": 12, "year": "2024",
    "duplicates": {"check": true, "matchBy": "clientID", "action": "ask"},
    "questions": {"default": "yes", "answers": {"Tom": "no"}}})",
                                                     "/data");
  EXPECT_EQ(a.file, "/data/clients.csv");
  EXPECT_EQ(a.delimiter, "tab");
  EXPECT_EQ(a.qualifier, "none");
  EXPECT_EQ(a.columns.size(), 2u);
  EXPECT_FALSE(a.allRows);
  EXPECT_EQ(a.rowRanges, (std::vector<std::pair<long, long>>{{1, 1}, {4, 9}}));
  EXPECT_EQ(a.category, "12");
  EXPECT_EQ(a.matchBy, kMatchByClientID);
  EXPECT_EQ(a.action, kDuplicateAsk);
  EXPECT_TRUE(a.questions.defaultAnswerYes);
  EXPECT_FALSE(a.questions.answers.at("Tom"));
}

TEST(TextImportAnswersForm, RefusesWrongForms) {
  EXPECT_THROW(parseTextImportAnswers("[1]", ""), Failure);
  EXPECT_THROW(parseTextImportAnswers(R"({"delimiter": "ab"})", ""), Failure);
  EXPECT_THROW(parseTextImportAnswers(R"({"qualifier": "''"})", ""), Failure);
  EXPECT_THROW(parseTextImportAnswers(R"({"rows": ["9-4"]})", ""), Failure);
  EXPECT_THROW(parseTextImportAnswers(R"({"columns": {"1": 5}})", ""), Failure);
  EXPECT_THROW(parseTextImportAnswers(R"({"duplicates": {"action": "merge"}})", ""), Failure);
  EXPECT_THROW(parseTextImportAnswers(R"({"questions": {"default": "maybe"}})", ""), Failure);
}

class TextImportAnswersRun : public testing::TextImportTest {
 protected:
  bool run(TextImportWizard& wizard, TextImportAnswers answers, bool autoMap = false) {
    answers.file = path;
    return runTextImportWizardFromAnswers(wizard, answers, autoMap, autoChoices);
  }
  std::vector<std::string> autoChoices;
};

TEST_F(TextImportAnswersRun, ColumnsByCaptionRowsAndAutoMap) {
  clsImportPersonalTextFile import;
  frmImportPersonalClients wizard(import);
  load(import,
       "First Name,Surname,E-mail Personal,Contact Personal Email\n"
       "Ann,Lee,x,ann@example.org\nBo,Chen,y,bo@example.org\nCy,Ray,z,cy@example.org\n");
  TextImportAnswers answers;
  answers.firstRowNames = true;
  answers.columns = {{"Surname", "LastName"}};
  answers.allRows = false;
  answers.rowRanges = {{1, 1}, {3, 3}};
  ASSERT_TRUE(run(wizard, answers, true));
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName IN ('Lee', 'Ray')"), 2);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE LastName='Chen'"), 0);
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE PersonalEmail='cy@example.org'"), 1);
  ASSERT_EQ(autoChoices.size(), 2u);  // First Name and the personal e-mail
  EXPECT_NE(autoChoices[0].find("'First Name'"), std::string::npos);
}

TEST_F(TextImportAnswersRun, AnswersNamingNothingOfThisFileAreRefusedBeforeWriting) {
  clsImportBusinessTextFile import;
  frmImportCSV wizard(import);
  load(import, "Oak Co,Toronto\n");
  TextImportAnswers unknownField;
  unknownField.columns = {{"1", "Favourite Colour"}};
  EXPECT_THROW(run(wizard, unknownField), Failure);
  TextImportAnswers noColumn;
  noColumn.columns = {{"3", "CompanyName"}};
  EXPECT_THROW(run(wizard, noColumn), Failure);
  TextImportAnswers noCategory;
  noCategory.columns = {{"1", "Company Name"}};
  noCategory.category = "Nonexistent";
  EXPECT_THROW(run(wizard, noCategory), Failure);
  TextImportAnswers noRow = noCategory;
  noRow.category.reset();
  noRow.allRows = false;
  noRow.rowRanges = {{2, 2}};
  EXPECT_THROW(run(wizard, noRow), Failure);
  EXPECT_EQ(count("SELECT * FROM Companies"), 0);
  TextImportAnswers good = noRow;
  good.allRows = true;
  EXPECT_TRUE(run(wizard, good));
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName='Oak Co'"), 1);
}

}  // namespace
}  // namespace lf
