// clsImportProfileT1: the personal Profile returns of a folder into the practice database.
//
// The class keeps the list of files the wizard found (six columns: key, path, display text,
// selected, SIN, tax year), selects among them (all, none, or by the two options that add up:
// a tax year, and clients not yet known), and runs the file loop that opens each selected
// return through the automation layer and does with it what profileFileAction says: import
// its client (1), or gather its SIN and year for the selection (3).
//
// One return imported makes or finds the taxpayer's contact, makes it a personal-tax client
// of importTaxYear, writes the fields of the client field list onto the contact, sets the
// check marks of the ticked options, writes the return's row of PersonalTaxProfileInfo, and,
// for a couple, makes the spouse's contact with its fields and the two links between them.
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "frame/import_services.hpp"
#include "tax/profile_automation_layer.hpp"

namespace lf {

class FileDialog;
class ImportDuplicatesControl;
class RowWriteGroups;
struct StageCounters;

// One row of the profile file list.
struct ProfileFileRow {
  std::string key;       // 1: key of the file in the scan
  std::string path;      // 2: full path
  std::string display;   // 3: display text
  bool selected = true;  // 4
  std::string sin;       // 5: normalised SIN, from the analysis
  int taxYear = 0;       // 6: from the analysis
};

// What an opened return is used for.
enum ProfileFileAction : int {
  kProfileImportClient = 1,
  kProfileUpdateReturn = 2,
  kProfileAnalyze = 3,
};

// How a push of a client into Profile ended: written, stopped by the user or by a missing
// file, or failed (the return could not be opened or saved).
enum class ProfileUpdateStatus { Updated, Stopped, Failed };

// How the wait for Profile to open a new return ended.
enum class NewProfileFileEnding { None, Connected, TimedOut, Cancelled };

class clsImportProfileT1 : public ImportServices, public ProfileAutomationLayer {
 public:
  clsImportProfileT1();

  // The file list.
  std::vector<ProfileFileRow> profileFileList;
  // Adds a row keyed by a running counter from 1.
  void addProfileFileToImportList(const std::string& path);
  void selectAllProfileFiles(bool selected);
  // Runs the selection by the two options (under the analysis dialog when asked).
  void selectSpecificProfileT1Files(bool showDialog);

  // The remembered folder of the returns: the stored one when that folder exists, else the
  // root of the system drive. Setting it stores it for the signed-in user.
  std::string folderString();
  void setFolderString(const std::string& folder);

  bool selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = false;
  bool selectOnlySpecificTaxYearFlag = false;
  long specificTaxYearSelection = 0;

  int profileFileAction = kProfileImportClient;
  long importTaxYear = 0;

  // The wizard's options read by the import: chkOption by index, optCouplesReturn (0 both
  // contacts, 1 the primary only, 2 the couple on one contact) and chkImprtBusinessInformation.
  std::array<bool, 39> chkOption{};
  int optCouplesReturn = 0;
  bool chkImprtBusinessInformation = false;

  // The contact duplicates control of the wizard (nvContactDuplicates1); none: no checking.
  ImportDuplicatesControl* contactDuplicatesControl = nullptr;
  // The company duplicates control, for the businesses of the returns.
  ImportDuplicatesControl* companyDuplicatesControl = nullptr;

  // The run report's counts of an import: each selected file read, its client created or
  // updated, or the file skipped or failed with the reason.
  StageCounters* counters = nullptr;

  // Caption of the progress dialog while the loop runs.
  std::function<void(const std::string&)> onCaption;

  // Tests Profile, then runs the file loop. Answers whether the last file was imported.
  bool importProfileT1Files(bool showDialog);
  // The file loop over the selected rows (every row when analysing).
  void openProfileT1Files();
  // One return; answers whether the client was imported.
  bool importProfileT1FileInformation(const std::string& path, ProfileClient& client,
                                      ProfileClient* second);

  // Contacts created and updated by the last run.
  long contactsCreated = 0;
  long contactsImported = 0;

  // Writing Ledgerfolio's client into Profile (profile_t1_update.cpp).
  // Finds the client's return of the year (asking where it is when needed) and writes the
  // contact into it.
  ProfileUpdateStatus updateProfile(long contactID, long taxYear);
  // The open dialog for the client's return; stores the chosen path. Blank when cancelled.
  std::string promptUserForProfileFileLocation(long taxYear, long contactID);
  // Writes the kept contact into the loaded return, saves it under the kept path and rewrites
  // the contact's PersonalTaxProfileInfo row of the kept year.
  void updateProfileT1FileInformation(ProfileFile& file, ProfileClient& client,
                                      ProfileClient* second, bool& success);

  // A new return from a blank one (profile_new_return.cpp).
  void createNewProfileReturn(long contactID);
  std::string requestTemplateProfileFile(const std::string& fileName, const std::string& folder);
  void startCreateNewProfileFile();
  void newProfileFileDialog_StartProgress();
  // The Cancel button of the waiting dialog.
  void newProfileFileDialog_ButtonClicked();
  void createNewProfileFile();
  void openNewProfileFile(long contactID, ProfileServices& services, long taxYear,
                          const std::string& path);
  void openProfileNewT1File(ProfileServices& services);
  // One of the per-year steps (createNew16ProfileReturn down to createNew04ProfileReturn).
  void createNewYearProfileReturn(const ProfileT1YearRow& row, ProfileServices& services);
  NewProfileFileEnding newProfileFileEnding() const { return newProfileFileEnding_; }
  bool newProfileFileCreated() const { return newProfileFileCreated_; }

  // The host's dialogs for the two procedures above; a missing one answers Cancel.
  FileDialog* profileFileDialog = nullptr;   // the client's return
  FileDialog* templateFileDialog = nullptr;  // a template of one's own
  // The folder browser: the chosen folder, or nothing for Cancel.
  std::function<std::optional<std::string>(const std::string& title)> browseForFolder;
  // frmProfileTaxYear: the year chosen, 0 for Cancel.
  std::function<long()> askProfileTaxYear;
  // The platform's open action on a document: above 32 when it started, else a shell error.
  std::function<long(const std::string& path)> openDocument;
  // The waiting loop's clock, and what runs between two polls (the dialog's events, where a
  // Cancel arrives). Default: the steady clock, and a pause of 50 ms.
  std::function<std::chrono::steady_clock::time_point()> waitClock;
  std::function<void()> betweenPolls;
  // The working folder; the temporary template goes into its "Temp" folder. Blank: the
  // current folder.
  std::string workingFolder;

 protected:
  void runProfileFileAction(const std::string& path, ProfileFile& file, ProfileClient& client,
                            ProfileClient* second) override;

 private:
  void analyizeAndSelectSpecificProfileT1Files();
  void getAnalysisInfoFromAllProfileFiles();
  void doesProfileFileSINAlreadyExistInLedgerfolio(ProfileClient* client);
  void caption(const std::string& text);
  // The return's row of PersonalTaxProfileInfo for the contact and year, from its fields.
  void writePersonalTaxProfileInfo(long contact, long taxYear, const std::string& path,
                                   ProfileClient& client);
  bool askForSaveToFolder(std::string& folder);

  long nextFileKey_ = 1;
  size_t currentRow_ = 0;
  long progressPosition_ = 1;
  long progressTotal_ = 0;
  bool lastImported_ = false;
  bool actionRan_ = false;
  bool clientCreated_ = false;
  // The write groups of the running file loop; none outside it (each return commits alone).
  RowWriteGroups* rowGroups_ = nullptr;

  // The client, year and return file of an update or a new return.
  long profileContactID_ = -1;
  long profileTaxYear_ = 0;
  std::string profileFilePath_;
  bool updateSucceeded_ = false;
  bool updateStoppedByUser_ = false;  // a SIN question answered other than Yes
  // The waiting loop: its end flag, how it ended, and the copy Profile is to open.
  bool newProfileFileDone_ = false;
  bool newProfileFileCreated_ = false;
  NewProfileFileEnding newProfileFileEnding_ = NewProfileFileEnding::None;
  std::string newProfileFilePath_;
};

}  // namespace lf
