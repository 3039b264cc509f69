// The TPS sync wizard as a step machine: every Next and Back route, every validation
// message, the client lists between the two client steps, dates and finish.
#include "sync/tps_wizard.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "base/legacy_format.hpp"
#include "base/module_state.hpp"
#include "db/database.hpp"
#include "host/file_dialog.hpp"
#include "host/locale_service.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

struct FixedLocale : LocaleService {
  std::string getApplicationName() override { return "Ledgerfolio Test"; }
  int getCountryMode() override { return kCountryCanada; }
  int getProvinceIndex() override { return kOntario; }
  long getCurrentUserID() override { return 1; }
  long getCurrentPersonalYear() override { return 2024; }
  long getCurrentTaxYear() override { return 2024; }
  std::string getDefaultFileFolder() override { return "/tmp"; }
};

// Which groups are ticked, as letters: C contacts, T time entries, I invoices, W work codes.
struct Groups {
  const char* letters;
  bool has(char c) const { return std::string_view(letters).find(c) != std::string_view::npos; }
};

class TPSWizardTest : public ::testing::Test {
 protected:
  void SetUp() override {
    moduleState().MsgboxClass = &box;
    moduleState().LocaleReference = &locale;
    moduleState().errorClass = nullptr;
    source.createNew(":memory:");
    source.executeStatement(
        "CREATE TABLE Clients (ClientID INTEGER PRIMARY KEY, Name TEXT, FirstName TEXT, SIN TEXT, "
        "BusinessNum TEXT, ProvTaxNum TEXT, CorporationNum TEXT, InActive BOOLEAN)");
    source.executeStatement(
        "INSERT INTO Clients VALUES (101, 'Northwind Trading LTD', NULL, NULL, '111222333', NULL, "
        "NULL, 0), (104, 'Jane Smith', 'Jane', '900 2', NULL, NULL, NULL, 0), "
        "(111, 'Robert Chen', NULL, NULL, NULL, NULL, NULL, 0)");
    hooks.setTPSDatabaseLocation = [this](const std::string& path) {
      engine.TPSDatabaseLocation = path;
      engine.useTPSDatabase = path == "export.db";
    };
    hooks.sourceDatabase = [this] { return &source; };
    hooks.importTPSInformation = [this] { ++imports; };
    hooks.categories = [] {
      return std::vector<WizardCategory>{{5, -1, "Clients"}, {6, 5, "Tax clients"}};
    };
    wizard = std::make_unique<frmTPSWizard>(engine, hooks);
    wizard->Initialize();
  }
  // Puts the engine in the state a click reads: groups ticked, source open, one business
  // client chosen, the import option; then shows the step.
  void at(int step, Groups groups, long option = 1) {
    engine.syncObjectsContacts = groups.has('C');
    engine.syncObjectsTimeEntries = groups.has('T');
    engine.syncObjectsInvoices = groups.has('I');
    engine.syncObjectsWorkCodes = groups.has('W');
    wizard->chkSynchObjects = {groups.has('C'), groups.has('T'), groups.has('I'), groups.has('W')};
    engine.useTPSDatabase = true;
    engine.importOption = option;
    wizard->SetStep(step, 1);
    if (step == 8) engine.companyCollection.addRow({Variant::text("101")});
  }

  std::vector<std::string> messages() const {
    std::vector<std::string> out;
    for (const auto& entry : box.shown) {
      EXPECT_EQ(entry.kind, kMessageValidation);
      out.push_back(entry.text);
    }
    return out;
  }

  testing::ModuleStateGuard stateGuard;
  testing::RecordingMessageBox box;
  FixedLocale locale;
  Database source;
  TPSImportOptions engine;
  TPSWizardHooks hooks;
  std::unique_ptr<frmTPSWizard> wizard;
  int imports = 0;
};

struct Route {
  int from;
  const char* groups;
  long option;
  int to;
};

TEST_F(TPSWizardTest, NextRoutes) {
  const Route routes[] = {
      {0, "C", 1, 2}, {1, "C", 1, 2},   {2, "CTIW", 1, 3}, {2, "TIW", 1, 5}, {2, "IW", 1, 7},
      {2, "W", 1, 2}, {3, "CTI", 1, 8}, {8, "CTI", 1, 5},  {8, "CI", 1, 7},  {8, "C", 1, 4},
      {8, "C", 2, 6}, {5, "TI", 1, 7},  {5, "T", 1, 4},    {5, "T", 2, 6},   {7, "I", 1, 4},
      {7, "I", 2, 6}, {6, "CTI", 2, 4},
  };
  for (const Route& r : routes) {
    at(r.from, Groups{r.groups}, r.option);
    wizard->cmdNav_Click(frmTPSWizard::kNavNext);
    EXPECT_EQ(wizard->step(), r.to) << "Next from " << r.from << " with " << r.groups;
  }
  EXPECT_TRUE(box.shown.empty());
}

TEST_F(TPSWizardTest, BackRoutesKeepTheCrossingOfTheCategoryAndFinishSteps) {
  const Route routes[] = {
      {1, "C", 1, 0}, {2, "C", 1, 0},   {3, "C", 1, 2},  {8, "C", 1, 3},   {5, "CT", 1, 8},
      {5, "T", 1, 2}, {7, "CTI", 1, 5}, {7, "CI", 1, 8}, {7, "I", 1, 2},   {6, "TI", 2, 5},
      {6, "T", 2, 7}, {6, "C", 2, 8},   {6, "W", 2, 2},  {4, "CTI", 2, 6}, {4, "TI", 1, 5},
      {4, "T", 1, 7}, {4, "I", 1, 5},   {4, "C", 1, 8},  {4, "W", 1, 2},
  };
  for (const Route& r : routes) {
    at(r.from, Groups{r.groups}, r.option);
    wizard->cmdNav_Click(frmTPSWizard::kNavBack);
    EXPECT_EQ(wizard->step(), r.to) << "Back from " << r.from << " with " << r.groups;
  }
}

TEST_F(TPSWizardTest, NavigationButtonsFollowTheStep) {
  EXPECT_EQ(wizard->step(), 0);
  EXPECT_FALSE(wizard->navEnabled(frmTPSWizard::kNavBack));
  EXPECT_TRUE(wizard->navEnabled(frmTPSWizard::kNavNext));
  EXPECT_FALSE(wizard->navEnabled(frmTPSWizard::kNavFinish));
  wizard->cmdNav_Click(frmTPSWizard::kNavBack);  // disabled: nothing happens
  EXPECT_EQ(wizard->step(), 0);
  at(4, Groups{"CTIW"});
  EXPECT_FALSE(wizard->navEnabled(frmTPSWizard::kNavNext));
  EXPECT_TRUE(wizard->navEnabled(frmTPSWizard::kNavFinish));
  wizard->cmdNav_Click(frmTPSWizard::kNavCancel);
  EXPECT_FALSE(wizard->isOpen());
  EXPECT_EQ(imports, 0);
}

TEST_F(TPSWizardTest, EachValidationShowsItsMessageAndStays) {
  wizard->chkSynchObjects = {false, false, false, false};
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(wizard->step(), 0);

  wizard->chkSynchObjects = {true, true, true, true};
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  wizard->cmdOpenTPSFile("missing.db");
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(wizard->step(), 2);

  wizard->cmdOpenTPSFile("export.db");
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  wizard->tvwContacts.checkAllChildNodes(false);
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  wizard->tvwContacts.checkAllChildNodes(false);
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(wizard->step(), 8);

  EXPECT_FALSE(wizard->txtDate_LostFocus(5, 0, "February 30, 2024"));
  EXPECT_EQ(wizard->dateFields(5).startText, "February 30, 2024");

  EXPECT_EQ(messages(),
            (std::vector<std::string>{
                "You must select one of the import options to continue.",
                "You must open the TPS Export file, usually names 'Export.mdb' in order to "
                "continue.",
                "You must select some TPS clients from this list or the previous list in order "
                "to import into Ledgerfolio Test before proceeding.",
                "You must enter a valid date."}));
}

TEST_F(TPSWizardTest, OpenButtonTakesOnlyAnExistingFileFromTheDialog) {
  const std::string path =
      ::testing::TempDir() + "/lf_wizard_export_" + std::to_string(::getpid()) + ".mdb";
  std::ofstream(path) << "export";
  PresetFileDialog missing("/nonexistent/Export.mdb");
  wizard->cmdOpenTPSFile_Click(missing);
  EXPECT_TRUE(engine.TPSDatabaseLocation.empty());
  PresetFileDialog chosen(path);
  wizard->cmdOpenTPSFile_Click(chosen);
  EXPECT_EQ(chosen.title(), "Open the TPS Export file created by TPS");
  EXPECT_EQ(engine.TPSDatabaseLocation, path);
  std::filesystem::remove(path);
}

TEST_F(TPSWizardTest, FinishRefusesWithoutSourceOrClientsThenRuns) {
  at(4, Groups{"CT"});
  engine.useTPSDatabase = false;
  wizard->cmdNav_Click(frmTPSWizard::kNavFinish);
  engine.useTPSDatabase = true;
  wizard->cmdNav_Click(frmTPSWizard::kNavFinish);
  EXPECT_EQ(messages(),
            (std::vector<std::string>{
                "You must open the TPS Export file, usually names 'Export.mdb' in order to "
                "continue.",
                "You must select some TPS clients from the list to import into Ledgerfolio Test "
                "before proceeding.  Go to the step and select some clients to import."}));
  EXPECT_TRUE(wizard->isOpen());
  EXPECT_EQ(imports, 0);

  engine.contactsCollection.addRow({Variant::text("104")});
  wizard->chkOnlySynchNewItems = false;
  wizard->chkImportOnlyWIP = false;
  wizard->duplicateCheckEnabled = false;
  wizard->cmdNav_Click(frmTPSWizard::kNavFinish);
  EXPECT_EQ(imports, 1);
  EXPECT_FALSE(wizard->isOpen());
  EXPECT_FALSE(engine.importOnlyNewEntries);
  EXPECT_FALSE(engine.importOnlyWIPTimeEntries);
  EXPECT_FALSE(engine.duplicateCheckEnabled);
}

TEST_F(TPSWizardTest, ClientStepsPreCheckThenFollowTheBusinessList) {
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  wizard->cmdOpenTPSFile("export.db");
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  ASSERT_EQ(wizard->step(), 3);
  EXPECT_EQ(wizard->captions().label,
            "Select only the business clients from the list of TPS client shown that you would "
            "like to import into Ledgerfolio Test:");
  EXPECT_EQ(wizard->tvwContacts.checkedIDs(), (std::vector<std::string>{"101", "111"}));

  // Unchanged business list: the personal step shows its own guess.
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(wizard->tvwContacts.checkedIDs(), std::vector<std::string>{"104"});
  // Back before the personal list was kept: coming again shows the guess, not an empty list.
  wizard->tvwContacts.checkAllChildNodes(false);
  wizard->cmdNav_Click(frmTPSWizard::kNavBack);
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(wizard->tvwContacts.checkedIDs(), std::vector<std::string>{"104"});
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(keysOf(engine.contactsCollection), std::vector<std::string>{"104"});

  // Back to the business list, which is re-checked from its key list and then changed: the
  // personal checks become its reverse.
  wizard->SetStep(3, -1);
  EXPECT_EQ(wizard->tvwContacts.checkedIDs(), (std::vector<std::string>{"101", "111"}));
  wizard->tvwContacts.checkOnly({"101"});
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(wizard->tvwContacts.checkedIDs(), (std::vector<std::string>{"104", "111"}));

  wizard->cmdSelectAll_Click();
  EXPECT_EQ(wizard->cmdSelectAllCaption(), "Unselect All");
  EXPECT_EQ(wizard->tvwContacts.checkedIDs().size(), 3u);
  wizard->cmdSelectAll_Click();
  EXPECT_EQ(wizard->cmdSelectAllCaption(), "Select All");
  EXPECT_TRUE(wizard->tvwContacts.checkedIDs().empty());
}

TEST_F(TPSWizardTest, DateFieldsStartFromTheDefaultsAndWriteThrough) {
  const Date today = Date::today();
  at(5, Groups{"T"});
  const auto& f = wizard->dateFields(5);
  EXPECT_EQ(f.startText, formatDate(Date{today.serial - 1}, "mmmm d, yyyy"));
  EXPECT_EQ(f.endText, "December 31, " + std::to_string(today.year()));
  EXPECT_TRUE(f.startEnabled);
  EXPECT_FALSE(f.endEnabled);

  wizard->optSynchApptDate_Click(5, kSynchBetween);
  EXPECT_TRUE(f.endEnabled);
  EXPECT_TRUE(wizard->txtDate_LostFocus(5, 0, "3/5/2024 9:30 AM"));
  EXPECT_EQ(f.startText, "March 5, 2024");
  EXPECT_EQ(engine.mvarTimeEntriesSynchStartRange, Date::fromParts(2024, 3, 5));
  EXPECT_EQ(engine.mvarTimeEntriesSynchDateRangeType, kSynchBetween);
  wizard->optApptSyncDate_Click(5, false);
  EXPECT_FALSE(f.startEnabled || f.endEnabled);
  EXPECT_FALSE(engine.mvarUseTimeEntryDateRange);
  EXPECT_TRUE(engine.mvarUseInvoiceDateRange);  // the invoice range is separate
}

TEST_F(TPSWizardTest, CategoryStepChecksTheCategoryInUseAndStoresTheChoice) {
  engine.importCategory = 5;
  at(6, Groups{"C"}, 2);
  const ClientTree& categories = wizard->tvwCategories;
  EXPECT_EQ(categories.checkedIDs(3), std::vector<std::string>{"5"});
  EXPECT_EQ(categories.node(categories.findKey("Category:6")).parent,
            categories.findKey("Category:5"));
  wizard->tvwCategories.checkAllChildNodes(true, categories.findKey("Category:6"));
  wizard->cmdNav_Click(frmTPSWizard::kNavNext);
  EXPECT_EQ(engine.importCategory, 6);
}

}  // namespace
}  // namespace lf
