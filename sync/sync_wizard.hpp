// The dialog that sets up a sync (frmTPSWizard and its siblings), as a step machine with no
// input or output of its own, over a source's description: the source's word in titles,
// labels, messages and captions, its file dialog and refusal, and its contact tree.
//
// Steps are numbered as the dialog's frames: 0 what to sync, 1 introduction, 2 export file,
// 3 business clients, 8 personal clients, 5 time entry dates, 7 invoice dates, 6 category,
// 4 finish. A front end sets the controls' values, calls the click and focus handlers, and
// reads back the step, captions and enabled buttons; validation messages go through
// moduleState().MsgboxClass. The machine writes the user's choices into the engine's options
// and, at finish, calls the engine's run.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sync/client_tree.hpp"
#include "sync/source_contact_tree.hpp"
#include "sync/source_description.hpp"
#include "sync/sync_options.hpp"

namespace lf {

class DatabaseService;
class FileDialog;

// A category of the practice, for the category step.
struct WizardCategory {
  long id = 0;
  long parentID = -1;
  std::string name;
};

// What the wizard asks of its engine besides the options.
struct SyncWizardHooks {
  // The engine's location setter: stores the path, opens the export when the file exists and
  // sets useDatabase.
  std::function<void(const std::string& path)> setDatabaseLocation;
  // The engine's open export database, read by the client tree.
  std::function<DatabaseService*()> sourceDatabase;
  // Runs the sync.
  std::function<void()> importInformation;
  // The practice's categories; when unset they are read from DatabaseReference.
  std::function<std::vector<WizardCategory>()> categories;
  // Shows the caption of a long piece of work (tree fill, initial selections).
  std::function<void(const std::string& caption)> showProgressCaption;
};

class SyncWizard {
 public:
  enum NavButton : int { kNavCancel = 1, kNavBack = 2, kNavNext = 3, kNavFinish = 4 };
  enum SynchObject : int {
    kSynchContacts = 0,
    kSynchTimeEntries = 1,
    kSynchInvoices = 2,
    kSynchWorkCodes = 3
  };
  static constexpr int kFirstStep = 0;
  static constexpr int kFinishStep = 4;

  // The date fields of step 5 (time entries) or step 7 (invoices).
  struct DateRangeFields {
    bool useRange = true;              // optApptSyncDate: false "all", true "by a date range"
    long rangeType = kSynchOnOrAfter;  // optSynchApptDate
    std::string startText;
    std::string endText;
    bool startEnabled = true;
    bool endEnabled = false;
  };

  // Captions of a step as the dialog shows them; empty where the step has none.
  struct StepCaptions {
    std::string title;
    std::string heading;
    std::string label;
    std::string checkBox;
    std::vector<std::string> options;  // date steps: all / by range, then the four range types
  };

  // REQUIRES: engine and description outlive the wizard; the tree is the source's.
  SyncWizard(SyncOptions& engine, SyncWizardHooks hooks, const SourceDescription& description,
             std::unique_ptr<SourceContactTree> contactTree);
  virtual ~SyncWizard() = default;
  SyncWizard(const SyncWizard&) = delete;
  SyncWizard& operator=(const SyncWizard&) = delete;

  // Opening the form: engine defaults, all frames hidden, the first step shown.
  void Initialize();

  int step() const { return step_; }
  const SyncOptions& engine() const { return engine_; }
  bool isOpen() const { return open_; }
  bool finished() const { return finished_; }
  bool navEnabled(int button) const;
  StepCaptions captions() const;
  // The summary of the finish step.
  std::string summary() const;

  // cmdNav: 1 cancel, 2 back, 3 next, 4 finish. A disabled button does nothing.
  void cmdNav_Click(int index);
  // Shows the target step and runs its entry work; direction +1 forward, -1 back.
  void SetStep(int target, int direction);

  // Step 0.
  std::array<bool, 4> chkSynchObjects{true, true, true, true};
  // Step 2: the open button shows the file dialog and takes the file chosen in it.
  void cmdOpenFile_Click(FileDialog& dialog);
  // The export file was chosen: the engine's location takes it (which opens the export).
  void cmdOpenFile(const std::string& chosenPath);

  // Steps 3 and 8 share the client tree.
  ClientTree tvwContacts;
  SourceContactTree& contactTree() { return *contactTree_; }
  const std::string& cmdSelectAllCaption() const { return selectAllCaption_; }
  void cmdSelectAll_Click();

  // Steps 5 and 7. The handlers write through to the engine's date fields.
  const DateRangeFields& dateFields(int dateStep) const;
  void optApptSyncDate_Click(int dateStep, bool byRange);
  void optSynchApptDate_Click(int dateStep, long rangeType);
  // A date text box losing the focus (which 0 start, 1 end). False when the text is no valid
  // date: the message is shown and the focus stays.
  bool txtDate_LostFocus(int dateStep, int which, const std::string& text);
  bool chkImportOnlyWIP = true;

  // Step 6.
  ClientTree tvwCategories;

  // Step 4.
  bool chkOnlySynchNewItems = true;
  // The company duplicate finder's setting as the user leaves it (nvCompanyDuplicates1).
  bool duplicateCheckEnabled = true;

 private:
  void next();
  void back();
  void finish();
  void SetNavBtns();
  void enterStep(int target);
  int routeByImportOption() const;
  int backFromCategoryStep() const;
  void getSelectedCompanies();
  void getSelectedContacts();
  void populateClients();
  // The checks of a client step: the list Next kept when stored, else the initial guess.
  void checkClientList(bool business, bool stored);
  void populatePersonalClientsCheckedItemsFromReverseOfCompaniesList(
      const std::vector<std::string>& companies);
  void populateDateFields(int dateStep);
  void enableDateFields(int dateStep);
  void populateCategories();
  void storeSelectedCategory();
  DateRangeFields& fieldsOf(int dateStep);
  void showMessage(const std::string& text) const;
  void progressCaption(const std::string& caption) const;
  std::string label(std::string_view procedureName) const;

  SyncOptions& engine_;
  SyncWizardHooks hooks_;
  const SourceDescription& description_;
  std::unique_ptr<SourceContactTree> contactTree_;
  int step_ = -1;
  bool open_ = false;
  bool finished_ = false;
  std::array<bool, 4> navEnabled_{};
  bool businessListLoaded_ = false;  // the client tree is filled
  bool companiesStored_ = false;     // Next has kept the business list at least once
  bool contactsStored_ = false;      // Next has kept the personal list at least once
  std::vector<std::string> companiesAtPersonalStep_;  // business list the personal checks last saw
  std::string selectAllCaption_ = "Select All";
  DateRangeFields timeFields_;
  DateRangeFields invoiceFields_;
};

}  // namespace lf
