// The text import dialogs as step machines: every check with its message, the reload on an
// option change, Select All, and a finished import.
#include "text/text_import_wizard.hpp"

#include "host/progress_dialog.hpp"
#include "tests/text/text_import_test_support.hpp"
#include "text/cls_import_business_text_file.hpp"
#include "text/cls_import_personal_text_file.hpp"

namespace lf {
namespace {

class TextImportWizardTest : public testing::TextImportTest {
 protected:
  std::string lastMessage() const {
    return messages.shown.empty() ? std::string() : messages.shown.back().text;
  }
  // A wizard on the grid step of a file.
  void openGrid(TextImportWizard& wizard, const std::string& bytes) {
    load(wizard.import(), bytes);
    wizard.Initialize();
    wizard.chooseFile(path);
    wizard.cmdNext_Click();
    ASSERT_EQ(wizard.step(), TextImportWizard::kGridStep);
  }
  void assignField(TextImportWizard& wizard, int column, std::string_view field) {
    const FieldItem* item = wizard.import().mapping.fieldList().findByDatabaseField(field);
    ASSERT_NE(item, nullptr);
    wizard.listBoxGridEdit_Choose(column, item->key);
  }
  std::string app() { return locale->getApplicationName(); }
};

TEST_F(TextImportWizardTest, FileStepNeedsAnExistingFile) {
  clsImportPersonalTextFile import;
  frmImportPersonalClients wizard(import);
  wizard.Initialize();
  EXPECT_FALSE(wizard.finishEnabled());
  wizard.txtOldLocation = "/no/such/file.csv";
  wizard.cmdNext_Click();
  EXPECT_EQ(wizard.step(), TextImportWizard::kFileStep);
  EXPECT_EQ(lastMessage(), "You must enter a valid file location for the existing data file.");
  EXPECT_EQ(messages.shown.back().kind, kMessageValidation);
}

TEST_F(TextImportWizardTest, ChoosingAFileSetsTheGuessedDelimiter) {
  clsImportBusinessTextFile import;
  frmImportCSV wizard(import);
  load(import, "a\tb\tc\n");
  wizard.Initialize();
  wizard.chooseFile(path);
  EXPECT_EQ(wizard.optDelimiter(), TextImportWizard::kTab);
}

TEST_F(TextImportWizardTest, PersonalGridChecks) {
  clsImportPersonalTextFile import;
  frmImportPersonalClients wizard(import);
  openGrid(wizard, "Ann,Lee,Jo Lee\n");
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(),
            "You must specify the column information of at least one column by using the "
            "drop-down list at the top of the columns.");
  assignField(wizard, 3, "SpouseName");  // a spouse alone names no client
  wizard.cmdNext_Click();
  EXPECT_EQ(wizard.step(), TextImportWizard::kGridStep);
  EXPECT_EQ(lastMessage(),
            "You must specify one of the columns to be either 'First Name', or 'Last Name', or "
            "'Full Name' in order to import contact information into " +
                app() + " by using the drop-down list at the top of the columns.");
  assignField(wizard, 1, "FirstName");
  wizard.cmdNext_Click();
  EXPECT_EQ(wizard.step(), TextImportWizard::kCategoryStep);
}

TEST_F(TextImportWizardTest, BusinessGridChecks) {
  clsImportBusinessTextFile import;
  frmImportCSV wizard(import);
  openGrid(wizard, "Oak Co,Sara\n");
  assignField(wizard, 2, "BusinessEmail");
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(),
            "You must specify one of the columns to be an identifier field of one of: 'Company "
            "Name', 'Corporate Name', or 'Client ID' in order to import this information into " +
                app() + " by using the drop-down list at the top of the columns.");
  assignField(wizard, 1, "CompanyName");
  wizard.cmdNext_Click();
  EXPECT_EQ(lastMessage(),
            "You must specify one of the columns to be either 'Contact First Name', or 'Contact "
            "Last Name', or 'Contact Full Name' in order to import contact information into " +
                app() + " by using the drop-down list at the top of the columns.");
  assignField(wizard, 2, "FirstName");
  wizard.cmdNext_Click();
  EXPECT_EQ(wizard.step(), TextImportWizard::kCategoryStep);
  wizard.cmdFinish_Click();
  EXPECT_EQ(lastMessage(), "You must select a category from the list to import your clients into.");
}

TEST_F(TextImportWizardTest, FinishRefusesMatchingWithoutItsColumnAndWritesNothing) {
  clsImportBusinessTextFile import;
  frmImportCSV wizard(import);
  openGrid(wizard, "Oak Co,Oak Co Ltd\n");
  assignField(wizard, 1, "CompanyName");
  wizard.cmdNext_Click();
  wizard.selectedCategory = category("Clients");
  wizard.companyDuplicates().setCheckingOn(true);
  const std::pair<int, std::string> cases[] = {{kMatchByClientID, "Client ID"},
                                               {kMatchByBusinessNumber, "Business Number"},
                                               {kMatchByCorporateName, "Corporate Name"}};
  for (const auto& [matchBy, word] : cases) {
    wizard.companyDuplicates().setMatchBy(matchBy);
    wizard.cmdFinish_Click();
    EXPECT_EQ(lastMessage(), "You have selected to use the " + word +
                                 " as a way to match existing clients, however, you must select "
                                 "a column as '" +
                                 word + "' before using this feature");
  }
  EXPECT_FALSE(wizard.finished());
  EXPECT_EQ(count("SELECT * FROM Companies"), 0);
  assignField(wizard, 2, "CorporateName");
  wizard.cmdFinish_Click();
  EXPECT_TRUE(wizard.imported());
  EXPECT_EQ(lastMessage(), "The data was imported successfully");
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CorporateName='Oak Co Ltd'"), 1);
}

// A progress dialog that keeps its captions and its last value and maximum.
class RecordingProgress : public ProgressDialog {
 public:
  explicit RecordingProgress(std::vector<std::string>& captions) : captions_(captions) {}
  void setTextAlignment(int) override {}
  void setMinimum(long) override {}
  void setMaximum(long maximum) override { maximum_ = maximum; }
  void setShowPercent(bool) override {}
  void setStep(long) override {}
  void setShowCancel(bool) override {}
  void setDelay(long) override {}
  void setCaption(std::string_view caption) override {
    captions_.push_back(std::string(caption) + " (" + std::to_string(value_) + "/" +
                        std::to_string(maximum_) + ")");
  }
  long getValue() override { return value_; }
  void setValue(long value) override { value_ = value; }
  void showDialog(const std::function<void()>& startProgress) override { startProgress(); }
  void closeDialog() override {}

 private:
  std::vector<std::string>& captions_;
  long value_ = 0, maximum_ = 0;
};

TEST_F(TextImportWizardTest, ImportShowsRowIOfNOfTheSelectedRows) {
  clsImportPersonalTextFile import;
  frmImportPersonalClients wizard(import);
  openGrid(wizard, "Ann,Lee\nBo,Chen\nCy,Diaz\nDi,Eng\n");
  assignField(wizard, 1, "FirstName");
  assignField(wizard, 2, "LastName");
  import.grid.setRowSelected(kFirstDataRow + 1, false);
  std::vector<std::string> captions;
  moduleState().makeProgressDialog = [&]() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<RecordingProgress>(captions);
  };
  wizard.cmdNext_Click();
  wizard.selectedCategory = category("2024");
  wizard.cboYear = "2024";
  wizard.cmdFinish_Click();
  ASSERT_TRUE(wizard.imported()) << lastMessage();
  EXPECT_EQ(captions,
            (std::vector<std::string>{"Importing information (0/0)", "Importing row 1 of 3 (1/3)",
                                      "Importing row 2 of 3 (2/3)", "Importing row 3 of 3 (3/3)"}));
  EXPECT_EQ(count("SELECT * FROM Contacts"), 3);
}

TEST_F(TextImportWizardTest, PersonalFinishNeedsAValidYear) {
  clsImportPersonalTextFile import;
  frmImportPersonalClients wizard(import);
  openGrid(wizard, "Ann,Lee\n");
  assignField(wizard, 1, "FirstName");
  wizard.cmdNext_Click();
  wizard.selectedCategory = category("2024");
  wizard.cboYear = "20x4";
  wizard.cmdFinish_Click();
  EXPECT_EQ(lastMessage(), "You must enter a valid year to import into.  Please try again");
  wizard.cboYear = "2024";
  wizard.cmdFinish_Click();
  EXPECT_TRUE(wizard.imported());
  EXPECT_EQ(count("SELECT * FROM Contacts WHERE FirstName='Ann'"), 1);
}

TEST_F(TextImportWizardTest, OptionChangesReloadTheGridAndDropAssignments) {
  clsImportPersonalTextFile import;
  frmImportPersonalClients wizard(import);
  openGrid(wizard, "First;Last\nAnn;Lee\n");
  EXPECT_EQ(wizard.import().grid.cols(), 3);  // ";" guessed: two columns
  assignField(wizard, 1, "FirstName");
  wizard.chkFirstRow_Click(true);
  EXPECT_EQ(wizard.import().columnKey(1), "NOT ASSIGNED");
  EXPECT_EQ(wizard.import().grid.textMatrix(kCaptionRow, 1), "First");
  wizard.optDelimiter_Click(TextImportWizard::kComma);
  EXPECT_EQ(wizard.import().grid.cols(), 2);  // one column
  EXPECT_EQ(wizard.import().grid.textMatrix(kFirstDataRow, 1), "Ann;Lee");
  wizard.cboTextQualifier_Click("(None)");
  EXPECT_EQ(import.reader.strTextQualifier, "");
}

TEST_F(TextImportWizardTest, SelectAllTogglesEveryRowAndItsCaption) {
  clsImportPersonalTextFile import;
  frmImportPersonalClients wizard(import);
  openGrid(wizard, "a\nb\nc\n");
  EXPECT_EQ(wizard.cmdCheckAllCaption(), "Unselect All");
  wizard.cmdCheckAll_Click();
  EXPECT_EQ(wizard.cmdCheckAllCaption(), "Select All");
  for (int row = kFirstDataRow; row < wizard.import().grid.rows(); ++row)
    EXPECT_FALSE(wizard.import().grid.isRowSelected(row));
  wizard.toggleRow(kFirstDataRow + 1);
  EXPECT_TRUE(wizard.import().grid.isRowSelected(kFirstDataRow + 1));
  wizard.cmdCheckAll_Click();
  EXPECT_EQ(wizard.cmdCheckAllCaption(), "Unselect All");
  EXPECT_TRUE(wizard.import().grid.isRowSelected(kFirstDataRow));
}

}  // namespace
}  // namespace lf
