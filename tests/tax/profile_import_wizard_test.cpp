// The Profile import wizards through the stand-in: every page route, check and message of the
// T1 and T2 wizards, their answers-file and terminal front ends, and the two small questions,
// checking the rows the runs leave in the practice database.
#include "tax/profile_import_wizard.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "base/module_state.hpp"
#include "host/file_dialog.hpp"
#include "host/progress_dialog.hpp"
#include "tax/profile_question_forms.hpp"
#include "tax/profile_t1_option_captions.hpp"
#include "tax/profile_wizard_answers.hpp"
#include "tax/profile_wizard_terminal.hpp"
#include "tests/tax/profile_test_support.hpp"

namespace lf::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kNoFolder =
    "You must select a folder location before continuing.  Click the 'Browse' button to specify "
    "the folder which contains your Profile files.";
constexpr const char* kNoFilesT1 =
    "You must select some files to import before continuing.  Click on Profile T1 client files "
    "in the list to select files.";
constexpr const char* kNoBoxes =
    "You need to select one of the two check box options in the 'File Selection Options' box in "
    "order to use this file selcyion action.";

std::map<std::string, std::string> taxpayer(const std::string& sin, const std::string& first,
                                            const std::string& last) {
  return {{"ClientSIN", sin}, {"ClientFirstName", first}, {"ClientLastName", last}};
}

class ProfileWizardTest : public ProfileTest {
 protected:
  // Two 2016 returns (one a couple), one 2015 return in lower case, a 17T file, and files the
  // T1 scan passes over.
  void writeFolder() {
    auto couple = taxpayer("046454286", "Tom", "Hill");
    couple.insert({{"SpouseFirstname", "Mia"},
                   {"SpouseLastName", "Hill"},
                   {"SpouseSIN", "527000145"},
                   {"T1Info.B[10]", "1"}});
    writeReturn("Hill.16T", 2016, couple);
    writeReturn("Ash.15t", 2015, taxpayer("193456787", "Ada", "Ash"));
    writeReturn("Birch.16T", 2016, taxpayer("130692544", "Bo", "Birch"));
    writeReturn("Later.17T", 2017, taxpayer("046454286", "Tom", "Hill"));
    writeReturn("North.GT2", 2016, {{"LegalName", "Northwind Ltd."}}, "", {}, "T2");
    std::ofstream(folder / "notes.txt") << "not a return";
  }
  std::vector<std::string> texts(const ProfileImportWizard& w) {
    std::vector<std::string> t;
    for (const auto& item : w.File1) t.push_back(item.text + (item.checked ? "+" : "-"));
    return t;
  }
  long contacts(const std::string& last) {
    return count("SELECT * FROM Contacts WHERE LastName='" + last + "'");
  }
  // On the files page of a fresh T1 wizard over the folder.
  void toFiles(frmImportProfileT1& w) {
    w.Initialize();
    w.txtFileLocation = folder.string();
    w.cmdNext_Click();
  }
};

TEST_F(ProfileWizardTest, T1FolderPageRefusesAMissingFolderAndScansAGoodOne) {
  writeFolder();
  frmImportProfileT1 w;
  w.Initialize();
  w.txtFileLocation = (folder / "removed").string();
  w.cmdNext_Click();
  EXPECT_EQ(w.freStep(), 0);
  EXPECT_THAT(shownTexts(), ElementsAre(kNoFolder));
  EXPECT_THAT(w.File1, IsEmpty());

  PresetFileDialog browse((folder / "Hill.16T").string());
  w.cmdBrowseCSV_Click(browse);
  EXPECT_EQ(browse.title(), "Select profile folder");
  EXPECT_EQ(w.txtFileLocation, folder.string());
  w.cmdNext_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kFilesPage);
  // Any letter case, the 17T listed, the corporate return and the text file not.
  EXPECT_THAT(texts(w), ElementsAre("Ash.15t+", "Birch.16T+", "Hill.16T+", "Later.17T+"));
  EXPECT_EQ(w.File1[0].key, "Item:1");
  EXPECT_TRUE(w.lblNoFiles.empty());
  // The folder is remembered for the next wizard.
  EXPECT_EQ(frmImportProfileT1().txtFileLocation, folder.string());

  // Back to the folder clears nothing.
  w.cmdBack_Click();
  EXPECT_EQ(w.freStep(), 0);
  EXPECT_EQ(w.File1.size(), 4u);
}

// The panels of the files page as one line: the folder-scan panel, the progress panel, and
// whether the selection buttons are enabled.
std::string panels(const ProfileImportWizard& w) {
  std::string line = w.fraFolderScanVisible ? "scan " + w.lblFolderName : "-";
  line += " | ";
  line += w.fraProgress.visible
              ? w.fraProgress.label + " " + std::to_string(w.fraProgress.position) + "/" +
                    std::to_string(w.fraProgress.count)
              : "-";
  return line + (w.cmdSelectAllEnabled() ? " +select" : "");
}

TEST_F(ProfileWizardTest, T1ScanShowsItsPanelsAndEnablesSelectionWhenItFindsFiles) {
  writeReturn("Hill.16T", 2016, taxpayer("046454286", "Tom", "Hill"));
  writeReturn("Ash.15t", 2015, taxpayer("193456787", "Ada", "Ash"));
  std::ofstream(folder / "notes.txt") << "not a return";
  frmImportProfileT1 w;
  std::vector<std::string> seen;
  w.progressChanged = [&] { seen.push_back(panels(w)); };
  toFiles(w);
  const std::string f = folder.string();
  const std::string populating = "Populating Profile list, Please wait ...";
  EXPECT_THAT(seen,
              ElementsAre("scan  | -", "scan " + f + " | -",
                          "scan " + f + " | " + populating + " 0/2 +select",
                          "scan " + f + " | " + populating + " 1/2 +select",
                          "scan " + f + " | " + populating + " 2/2 +select", "- | - +select"));

  // A folder without returns: the bar of nothing, and the selection buttons stay disabled.
  std::filesystem::create_directories(folder / "empty");
  seen.clear();
  w.cmdBack_Click();
  w.txtFileLocation = (folder / "empty").string();
  w.cmdNext_Click();
  EXPECT_EQ(seen.at(2), "scan " + w.txtFileLocation + " | " + populating + " 0/0");
  EXPECT_EQ(seen.back(), "- | -");
  w.cmdSelectAll_Click(0);
  EXPECT_EQ(w.cmdSelectAllCaption(), "Select All");
}

// A progress dialog that keeps what it was told.
class RecordingProgress : public ProgressDialog {
 public:
  explicit RecordingProgress(std::vector<std::string>& said) : said_(said) {}
  void setTextAlignment(int) override {}
  void setMinimum(long) override {}
  void setMaximum(long maximum) override { maximum_ = maximum; }
  void setShowPercent(bool) override {}
  void setStep(long) override {}
  void setShowCancel(bool) override {}
  void setDelay(long) override {}
  void setCaption(std::string_view caption) override { said_.emplace_back(caption); }
  long getValue() override { return value_; }
  void setValue(long value) override {
    value_ = value;
    said_.push_back(std::to_string(value) + " of " + std::to_string(maximum_));
  }
  void showDialog(const std::function<void()>& startProgress) override { startProgress(); }
  void closeDialog() override { said_.push_back("closed"); }

 private:
  std::vector<std::string>& said_;
  long maximum_ = 0, value_ = 0;
};

TEST_F(ProfileWizardTest, TerminalDrawsTheScanAsAProgressLineAndShowsEveryOptionCaption) {
  writeFolder();
  std::vector<std::string> said;
  moduleState().makeProgressDialog = [&]() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<RecordingProgress>(said);
  };
  frmImportProfileT1 w;
  std::istringstream in("folder " + folder.string() +
                        "\nnext\nnext\nadvanced\ntick 13\nnext\nnext\ncancel\n");
  std::ostringstream out;
  EXPECT_FALSE(runProfileWizardAtTerminal(w, in, out));
  EXPECT_THAT(said,
              ElementsAre(folder.string(), "0 of 4", "Populating Profile list, Please wait ...",
                          "1 of 4", "2 of 4", "3 of 4", "4 of 4", "closed"));

  const std::string text = out.str();
  EXPECT_THAT(text, ::testing::HasSubstr(
                        "[x] 13 If Line130 - 'Other Income' in Profile then check 'Other Income'"));
  EXPECT_THAT(text, ::testing::HasSubstr("[ ] 38 If Line340 - "));
  EXPECT_THAT(text, ::testing::HasSubstr("Spouse Information Import\nThis only applies if you "
                                         "check the checkbox which will bring the spouse "
                                         "information as a separate individual.\n"));
  EXPECT_THAT(text, ::testing::HasSubstr(
                        "[ ] 33 If T1Info.B[7] - 'Self Employed Spouse' in Profile then check "
                        "'Self Employment Income'"));
  EXPECT_THAT(text, ::testing::HasSubstr("[ ] 16 If Line166 - 'Commission income' in Profile "
                                         "then check 'Self Employment Commission'"));
  for (const char* caption : {"Select The Files You Want To Import\n", "File Selection Options\n",
                              "[ ] Select Only Clients Not Already Entered In Ledgerfolio.",
                              "[ ] Select Only Tax File From The  Tax Year",
                              "Profile T1 Import Options\n", "Couples Returns Options\n"})
    EXPECT_THAT(text, ::testing::HasSubstr(caption));
  for (const std::string& caption : profileT1CouplesCaptions())
    EXPECT_THAT(text, ::testing::HasSubstr(caption));
  EXPECT_EQ(profileT1CouplesCaptions()[0],
            "Import the husband and wife into Ledgerfolio as two separate entries.");
  EXPECT_EQ(profileT1CouplesCaptions()[1], "Import only the primary individual into Ledgerfolio.");
}

TEST_F(ProfileWizardTest, AnswersNameOptionsByCaptionOrKey) {
  ProfileT1Answers a = parseProfileT1Answers(
      R"({"options": [0, "If Line130 - 'Other Income' in Profile then check 'Other Income'",
                      "line349", "Schedule4[30]"],
          "couples": "Import only the primary individual into Ledgerfolio."})",
      "");
  EXPECT_THAT(a.options, ElementsAre(0, 13, 27, 30));
  EXPECT_EQ(a.couples, 1);
  EXPECT_EQ(profileT1OptionOfName("Line342"), 37);
  try {
    parseProfileT1Answers(R"({"options": ["Line999"]})", "");
    ADD_FAILURE() << "read";
  } catch (const Failure& f) {
    EXPECT_THAT(f.what(), ::testing::HasSubstr("(\"Line999\" is none)"));
  }
}

TEST_F(ProfileWizardTest, T1EmptyFolderAndNoTicksAreRefused) {
  std::filesystem::create_directories(folder / "empty");
  frmImportProfileT1 w;
  w.Initialize();
  w.txtFileLocation = (folder / "empty").string();
  w.cmdNext_Click();
  EXPECT_EQ(w.lblNoFiles, "Ledgerfolio cannot find any Profile T1 files in this folder.");
  EXPECT_FALSE(w.cmdSelectAllEnabled());
  w.cmdNext_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kFilesPage);
  EXPECT_THAT(shownTexts(), ElementsAre(kNoFilesT1));
}

TEST_F(ProfileWizardTest, T1SelectionButtons) {
  writeFolder();
  frmImportProfileT1 w;
  toFiles(w);
  // Select All ticks every file and turns into Unselect All, which unticks them.
  EXPECT_EQ(w.cmdSelectAllCaption(), "Select All");
  w.cmdSelectAll_Click(0);
  EXPECT_EQ(w.cmdSelectAllCaption(), "Unselect All");
  w.cmdSelectAll_Click(0);
  EXPECT_EQ(w.cmdSelectAllCaption(), "Select All");
  EXPECT_THAT(texts(w), ElementsAre("Ash.15t-", "Birch.16T-", "Hill.16T-", "Later.17T-"));
  w.cmdNext_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kFilesPage);

  // Select Files needs a box, and a numeric year with the year box: no analysis otherwise.
  w.cmdSelectAll_Click(1);
  w.chkSelectFiles[1] = true;
  w.cboSelectYear = "twenty";
  w.cmdSelectAll_Click(1);
  EXPECT_THAT(shownTexts(),
              ElementsAre(kNoFilesT1, kNoBoxes,
                          "You must enter a valid year for the selection process.  Please try "
                          "again"));
  EXPECT_THAT(texts(w), ElementsAre("Ash.15t-", "Birch.16T-", "Hill.16T-", "Later.17T-"));

  // The year 2016 ticks its two returns; the 17T is never analysed.
  w.cboSelectYear = "2016";
  w.cmdSelectAll_Click(1);
  EXPECT_THAT(texts(w), ElementsAre("Ash.15t-", "Birch.16T+", "Hill.16T+", "Later.17T-"));
  EXPECT_EQ(w.ProfileImport.specificTaxYearSelection, 2016);

  // A tick by hand, then on to the options.
  w.setFileChecked(0, true);
  w.cmdNext_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kOptionsPage);
  EXPECT_TRUE(w.ProfileImport.profileFileList[0].selected);
}

TEST_F(ProfileWizardTest, T1OptionPagesAndBackToStart) {
  writeFolder();
  frmImportProfileT1 w;
  toFiles(w);
  w.cmdNext_Click();
  ASSERT_EQ(w.freStep(), frmImportProfileT1::kOptionsPage);
  EXPECT_FALSE(w.cmdFinishEnabled());

  w.cmdAdvancedOptions_Click();
  EXPECT_EQ(w.freStep(), 1);
  w.cmdNext_Click();
  w.cmdNext_Click();
  EXPECT_EQ(w.freStep(), 3);
  w.cmdBack_Click();
  EXPECT_EQ(w.freStep(), 2);
  EXPECT_EQ(w.cmdFinishCaption(), "Back To Start");
  w.cmdFinish_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kOptionsPage);

  w.cmdBusinessImportOptions_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kBusinessPage);
  w.cmdFinish_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kOptionsPage);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxProfileInfo"), 0);  // nothing ran

  w.cmdNext_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kDuplicatesPage);
  EXPECT_EQ(w.cmdFinishCaption(), "Finish");
  EXPECT_TRUE(w.cmdFinishEnabled());
  w.cmdBack_Click();
  w.cmdBack_Click();
  EXPECT_EQ(w.freStep(), frmImportProfileT1::kFilesPage);
}

TEST_F(ProfileWizardTest, T1FinishChecksThenImportsTheTickedFiles) {
  writeFolder();
  frmImportProfileT1 w;
  toFiles(w);
  w.cmdNext_Click();
  w.ProfileImport.optCouplesReturn = 1;  // the primary only
  w.cmdNext_Click();
  EXPECT_EQ(w.cboYear, "2024");  // the seeded practice's personal year

  w.cboYear = "next year";
  w.cmdFinish_Click();
  for (size_t i = 0; i < w.File1.size(); ++i) w.setFileChecked(i, false);
  w.cboYear = "2025";
  w.cmdFinish_Click();
  EXPECT_THAT(shownTexts(),
              ElementsAre("You must enter a valid year to import into.  Please try again",
                          "You must select some profile files in the list.  If there are no "
                          "profile files shown in the list, than click 'Back' and browse to a "
                          "folder which contains '*.04T', '*.05T', '*.06T', or '*.07T' files."));
  EXPECT_TRUE(w.isOpen());
  EXPECT_FALSE(w.importRan());

  w.setFileChecked(2, true);  // Hill.16T
  w.setFileChecked(1, true);  // Birch.16T
  w.cmdFinish_Click();
  EXPECT_TRUE(w.importRan());
  EXPECT_TRUE(w.finished());
  EXPECT_EQ(contacts("Hill"), 1);  // Mia is not brought in
  EXPECT_EQ(contacts("Birch"), 1);
  EXPECT_EQ(contacts("Ash"), 0);
  EXPECT_EQ(count("SELECT * FROM PersonalTaxStatus WHERE TaxYear=2025"), 2);
  EXPECT_EQ(w.ProfileImport.contactDuplicatesControl, &w.contactDuplicates());
}

TEST_F(ProfileWizardTest, CancelImportsNothing) {
  writeFolder();
  frmImportProfileT1 w;
  toFiles(w);
  w.cmdNext_Click();
  w.cmdCancel_Click();
  w.cmdFinish_Click();
  EXPECT_FALSE(w.isOpen());
  EXPECT_FALSE(w.finished());
  EXPECT_EQ(contacts("Hill"), 0);
}

TEST_F(ProfileWizardTest, T2WizardRoutesAndImport) {
  writeFolder();
  writeReturn("Harbour.GT2", 2016,
              {{"LegalName", "Harbourview Inc."}, {"T2Info.S[3]", "123456782RC0001"}}, "", {},
              "T2");
  frmImportProfileT2 w;
  w.Initialize();
  w.txtFileLocation = folder.string();
  w.cmdNext_Click();
  EXPECT_THAT(texts(w), ElementsAre("Harbour.GT2+", "North.GT2+"));
  w.cmdSelectAll_Click(1);
  w.cmdSelectAll_Click(0);
  w.cmdSelectAll_Click(0);
  w.cmdNext_Click();
  EXPECT_THAT(shownTexts(),
              ElementsAre(kNoBoxes,
                          "You must select some files to import before continuing.  Click on "
                          "Profile T2 client files in the list to select files."));
  w.setFileChecked(1, true);
  w.cmdNext_Click();
  ASSERT_EQ(w.freStep(), frmImportProfileT2::kOptionsPage);
  EXPECT_EQ(w.cboProfileAddress, "Profile Head Office Address");
  w.cboProfileAddress = frmImportProfileT2::profileAddressItems()[1];
  w.cmdNext_Click();
  ASSERT_EQ(w.freStep(), frmImportProfileT2::kDuplicatesPage);
  w.cmdFinish_Click();
  EXPECT_TRUE(w.finished());
  EXPECT_EQ(w.ProfileImport.profileAddressType, 2);
  EXPECT_EQ(w.lblProgress, "Importing Northwind Ltd.");
  EXPECT_EQ(w.progressMax, 1);
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName='Northwind Ltd.'"), 1);
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName='Harbourview Inc.'"), 0);
}

TEST_F(ProfileWizardTest, PasswordAndYearQuestions) {
  frmEnterFilePassword password;
  password.Initialize("Enter Profile Password", "The file is protected.", "Password:", true);
  password.cmdOK_Click();
  EXPECT_TRUE(password.visible());
  EXPECT_THAT(shownTexts(), ElementsAre("You must enter text in the textbox before continuing."));
  password.txtPassword = "maple";
  password.chkRememberPassword = true;
  password.cmdOK_Click();
  EXPECT_FALSE(password.visible());
  EXPECT_EQ(password.text(), "maple");
  EXPECT_TRUE(password.rememberPassword());
  password.Initialize("Enter Profile Password", "", "Password:", true);
  password.txtPassword = "typed";
  password.chkRememberPassword = true;
  password.cmdCancel_Click();
  EXPECT_EQ(password.text(), "");
  EXPECT_FALSE(password.rememberPassword());

  frmProfileTaxYear year;
  year.Initialize({2016, 2015, 2014});
  year.cboEditYear_Click(1);
  year.cmdOK_Click();
  EXPECT_EQ(year.result(), 2015);
  year.Initialize({2016, 2015});
  year.cmdCancel_Click();
  EXPECT_EQ(year.result(), 0);
  EXPECT_FALSE(year.visible());
}

TEST_F(ProfileWizardTest, AnswersFilesDriveBothWizards) {
  writeFolder();
  writeReturn("Pw.16T", 2016, taxpayer("123456782", "Pat", "Poplar"), "maple");
  ProfileT1Answers a = parseProfileT1Answers(
      R"({"folder": "in", "year": 2024, "select": {"year": 2016}, "couples": "both",
          "passwords": ["maple"]})",
      "/unused");
  a.folder = folder.string();
  frmImportProfileT1 w;
  ProfileListedPasswords listed(a.passwords);
  w.ProfileImport.setPasswordForm(&listed);
  ASSERT_TRUE(runProfileT1WizardFromAnswers(w, a));
  EXPECT_EQ(contacts("Hill"), 2);
  EXPECT_EQ(contacts("Poplar"), 1);  // the password, remembered in the analysis, serves the run
  EXPECT_EQ(contacts("Ash"), 0);     // 2015
  // Tom and Mia, Bo, Pat.
  EXPECT_EQ(count("SELECT * FROM PersonalTaxStatus WHERE TaxYear=2024"), 4);

  ProfileT2Answers t2 = parseProfileT2Answers(
      R"({"folder": "corp", "address": "books", "select": "all",
          "duplicates": {"check": true, "matchBy": "corporate-name", "action": "skip"}})",
      "/srv");
  EXPECT_EQ(t2.folder, "/srv/corp");
  EXPECT_EQ(t2.address, 2);
  EXPECT_EQ(t2.matchBy, kMatchByCorporateName);
  EXPECT_EQ(t2.action, kDuplicateSkip);
  t2.folder = folder.string();
  frmImportProfileT2 w2;
  ASSERT_TRUE(runProfileT2WizardFromAnswers(w2, t2));
  EXPECT_EQ(count("SELECT * FROM Companies WHERE CompanyName='Northwind Ltd.'"), 1);
  EXPECT_EQ(w2.ProfileImport.profileAddressType, 3);

  // An answers file whose folder is gone stops on the folder page with its message.
  t2.folder = (folder / "gone").string();
  frmImportProfileT2 w3;
  EXPECT_FALSE(runProfileT2WizardFromAnswers(w3, t2));
  EXPECT_EQ(shownTexts().back(), kNoFolder);
}

TEST_F(ProfileWizardTest, T2AnswersOfTheWrongFormNameTheirField) {
  auto fails = [](const std::string& text) {
    try {
      parseProfileT2Answers(text, "");
    } catch (const Failure& f) {
      return std::string(f.what());
    }
    return std::string("read");
  };
  EXPECT_EQ(fails(R"({"address": "attic"})"),
            "\"address\" must be head-office, mailing, books or signing-officer");
  EXPECT_EQ(fails(R"({"select": {"mostRecent": 1}})"),
            "\"select.mostRecent\" must be true or false");
  EXPECT_EQ(fails(R"({"duplicates": {"matchBy": "sin"}})"),
            "\"duplicates.matchBy\" must be business-number or corporate-name");
  EXPECT_EQ(fails(R"({"passwords": [1]})"), "\"passwords\" must be a list of texts");
}

TEST_F(ProfileWizardTest, TerminalRunsTheT1WizardAndAsksPasswords) {
  writeFolder();
  writeReturn("Pw.16T", 2016, taxpayer("123456782", "Pat", "Poplar"), "maple");
  std::istringstream passwordInput("\nmaple\ny\n");
  std::ostringstream passwordOutput;
  ProfilePasswordTerminal passwords(passwordInput, passwordOutput);
  frmImportProfileT1 w;
  w.ProfileImport.setPasswordForm(&passwords);
  std::istringstream in("folder " + folder.string() +
                        "\nnext\nall\nall\ntoggle 5\ntoggle 3\nnext\ncouples 2\nadvanced\ntick 0\n"
                        "finish\nnext\nyear 2025\nfinish\n");
  std::ostringstream out;
  EXPECT_TRUE(runProfileWizardAtTerminal(w, in, out));
  EXPECT_THAT(out.str(), ::testing::HasSubstr("[ ] 1 Ash.15t"));
  EXPECT_THAT(out.str(), ::testing::HasSubstr(
                             "(o) 2 Import both the husband and wife in as one entry  i.e. John "
                             "&& Mary Smith."));
  EXPECT_TRUE(w.ProfileImport.chkOption[0]);
  EXPECT_EQ(contacts("Hill"), 1);  // the couple on one contact
  EXPECT_EQ(contacts("Poplar"), 1);
  EXPECT_EQ(contacts("Birch"), 0);
  EXPECT_THAT(shownTexts(), ElementsAre("You must enter text in the textbox before continuing."));

  frmImportProfileT2 cancelled;
  std::istringstream none("next\n");
  std::ostringstream said;
  EXPECT_FALSE(runProfileWizardAtTerminal(cancelled, none, said));
  EXPECT_THAT(said.str(), ::testing::HasSubstr("Cancelled: nothing was imported."));
}

}  // namespace
}  // namespace lf::testing
