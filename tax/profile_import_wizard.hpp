// The Profile import wizards, frmImportProfileT1 and frmImportProfileT2, as step machines with
// no input or output of their own: the folder page, the file list with its ticks and selection
// buttons, the options pages and the duplicates controls. Front ends (the terminal, an answers
// file) press the buttons and fill the boxes; messages go through MsgboxClass.
//
// The T1 pages are frames 0 to 7: 0 folder, 4 files, 5 import options, 6 contact duplicates
// and year, with the advanced options 1 to 3 and the business page 7 reached by their buttons.
// The T2 wizard has the folder, the files, the address option and the company duplicates.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/file_load_class.hpp"
#include "host/practice_import_duplicates.hpp"
#include "tax/profile_t1_import.hpp"
#include "tax/profile_t2_import.hpp"

namespace lf {

class clsImportInfo;
class FileDialog;

// The progress panel of the files page: its label, its bar (0 to count, at position) and
// whether it shows.
struct ProfileProgressPanel {
  std::string label;
  long count = 0;
  long position = 0;
  bool visible = false;
};

// One item of the list view File1: the text of the row, its key "Item:" + the row's key, and
// its tick.
struct ProfileListItem {
  std::string key;
  std::string text;
  bool checked = true;
};

// The page machine the two wizards share: the folder, the scan and the list view.
class ProfileImportWizard {
 public:
  virtual ~ProfileImportWizard() = default;
  ProfileImportWizard(const ProfileImportWizard&) = delete;
  ProfileImportWizard& operator=(const ProfileImportWizard&) = delete;

  // Opening the form on the folder page; the dispatcher, when given, hears the outcome.
  void Initialize(clsImportInfo* importObject = nullptr);

  int freStep() const { return freStep_; }
  bool isOpen() const { return open_; }
  bool finished() const { return finished_; }
  bool imported() const { return imported_; }
  // Finish passed its checks and the import ran (the form may stay open after it).
  bool importRan() const { return importRan_; }
  virtual bool isT1() const = 0;
  virtual int filesPage() const = 0;

  std::string txtFileLocation;  // the folder
  std::vector<ProfileListItem> File1;
  std::array<bool, 2> chkSelectFiles{};
  std::string lblNoFiles;  // shown when the scan found nothing
  // The panels of the folder scan: the folder-scan panel with lblFolderName, and the progress
  // panel. Front ends redraw them when told by progressChanged.
  bool fraFolderScanVisible = false;
  std::string lblFolderName;
  ProfileProgressPanel fraProgress;
  std::function<void()> progressChanged;
  std::string cmdSelectAllCaption() const { return allSelected_ ? "Unselect All" : "Select All"; }
  // The two selection buttons, enabled when the scan found files.
  bool cmdSelectAllEnabled() const { return selectionEnabled_; }
  std::string cmdFinishCaption() const { return finishCaption_; }
  bool cmdFinishEnabled() const { return finishEnabled_; }

  virtual void cmdNext_Click() = 0;
  virtual void cmdBack_Click() = 0;
  virtual void cmdFinish_Click() = 0;
  void cmdCancel_Click() { open_ = false; }
  // The browse button: the host's dialog titled "Select profile folder", starting at the
  // folder in the box; a confirmed choice fills the box (a file chosen gives its folder).
  void cmdBrowseCSV_Click(FileDialog& dialog);
  // Index 0 selects or unselects every file; index 1 selects by the File Selection Options.
  void cmdSelectAll_Click(int index);

  // A tick in the list view by the item's position.
  void setFileChecked(size_t position, bool checked);
  // Copies the ticks into the class's file list (column 4), found by key.
  void populateSelectedFilesIntoProfileFileList();
  // Copies column 4 of the class's file list back to the ticks.
  void populateSelectedProfileFilesInListBoxCtrl();
  bool isFilesSelected() const;

 protected:
  ProfileImportWizard() = default;
  bool refuse(const std::string& message) const;
  // The folder page's check on Next: a folder that exists is chosen, else the message.
  bool folderChosen() const;
  // Scans the folder for the wizard's extensions and lists what it finds; the panels follow
  // the scanner's events and are hidden when the list is built.
  void scanFolder();
  // The events of the folder scanner.
  void FileLoadClass_startFileScan();
  void FileLoadClass_initializeProgressBar(long count);
  void FileLoadClass_setProgressBarValue(long value);
  void FileLoadClass_statusLabel(const std::string& text);
  void showPage(int page);
  void close(bool imported);

  virtual const std::vector<std::string>& extensions() const = 0;
  virtual void clearFileList() = 0;
  virtual void addListRow(const std::string& key, const std::string& path,
                          const std::string& display) = 0;
  virtual std::vector<std::pair<std::string, bool*>> fileListTicks() = 0;
  virtual void selectAll(bool selected) = 0;
  // The selection by the two boxes; false after its message.
  virtual bool selectSpecific() = 0;

  int freStep_ = 0;
  std::string finishCaption_ = "Finish";
  bool finishEnabled_ = false;
  bool importRan_ = false;

 private:
  clsImportInfo* importObject_ = nullptr;
  bool open_ = false;
  bool finished_ = false;
  bool imported_ = false;
  bool allSelected_ = false;
  bool selectionEnabled_ = false;
  FileLoadClass fileLoad_;
  void panelsChanged() const {
    if (progressChanged) progressChanged();
  }
};

class frmImportProfileT1 : public ProfileImportWizard {
 public:
  static constexpr int kFolderPage = 0;
  static constexpr int kFilesPage = 4;
  static constexpr int kOptionsPage = 5;
  static constexpr int kDuplicatesPage = 6;
  static constexpr int kBusinessPage = 7;

  frmImportProfileT1();
  bool isT1() const override { return true; }
  int filesPage() const override { return kFilesPage; }

  clsImportProfileT1 ProfileImport;
  std::string cboSelectYear;
  std::string cboYear;
  bool chkImportShareholders = false;
  PracticeImportDuplicates& contactDuplicates() { return contactDuplicates_; }
  PracticeImportDuplicates& companyDuplicates() { return companyDuplicates_; }

  void cmdNext_Click() override;
  void cmdBack_Click() override;
  void cmdFinish_Click() override;
  void cmdAdvancedOptions_Click() { showPage(1); }
  void cmdBusinessImportOptions_Click() { showPage(kBusinessPage); }

 protected:
  const std::vector<std::string>& extensions() const override;
  void clearFileList() override { ProfileImport.profileFileList.clear(); }
  void addListRow(const std::string& key, const std::string& path,
                  const std::string& display) override;
  std::vector<std::pair<std::string, bool*>> fileListTicks() override;
  void selectAll(bool selected) override { ProfileImport.selectAllProfileFiles(selected); }
  bool selectSpecific() override;

 private:
  PracticeImportDuplicates contactDuplicates_{PracticeImportDuplicates::Contact};
  PracticeImportDuplicates companyDuplicates_{PracticeImportDuplicates::Company};
};

class frmImportProfileT2 : public ProfileImportWizard {
 public:
  static constexpr int kFolderPage = 0;
  static constexpr int kFilesPage = 1;
  static constexpr int kOptionsPage = 2;
  static constexpr int kDuplicatesPage = 3;

  frmImportProfileT2();
  bool isT1() const override { return false; }
  int filesPage() const override { return kFilesPage; }

  clsImportProfileT2 ProfileImport;
  // The four items under "Profile Address to Import:".
  static const std::array<std::string, 4>& profileAddressItems();
  std::string cboProfileAddress;
  // The import dialog, following the class's events: its label and bar.
  std::string lblProgress;
  long progressValue = 0;
  long progressMax = 0;
  PracticeImportDuplicates& companyDuplicates() { return companyDuplicates_; }

  void cmdNext_Click() override;
  void cmdBack_Click() override;
  void cmdFinish_Click() override;

 protected:
  const std::vector<std::string>& extensions() const override;
  void clearFileList() override { ProfileImport.profileFileList.clear(); }
  void addListRow(const std::string& key, const std::string& path,
                  const std::string& display) override;
  std::vector<std::pair<std::string, bool*>> fileListTicks() override;
  void selectAll(bool selected) override { ProfileImport.selectAllProfileFiles(selected); }
  bool selectSpecific() override;

 private:
  PracticeImportDuplicates companyDuplicates_{PracticeImportDuplicates::Company};
};

// The matching labels of the wizards' company duplicates controls.
inline constexpr const char* kProfileT1CompanyMatchLabel = "Match by Business Name on 2125 form";
inline constexpr const char* kProfileT2BusinessMatchLabel = "Match by Business (Operating) Name";
inline constexpr const char* kProfileT2CorporateMatchLabel = "Match by Corporate (Legal) Name";

}  // namespace lf
