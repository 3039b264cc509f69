// The Profile T1 and T2 import wizards' pages, checks and messages.
#include "tax/profile_import_wizard.hpp"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "frame/cls_import_info.hpp"
#include "host/file_dialog.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "tax/profile_return_file.hpp"

namespace lf {

namespace {

// A whole number in the box, as the year boxes require.
bool numericYear(const std::string& text, long& year) {
  const std::string trimmed = GeneralUtilities::trim(text);
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), year);
  return !trimmed.empty() && error == std::errc() && end == trimmed.data() + trimmed.size();
}

}  // namespace

// --- ProfileImportWizard ------------------------------------------------------------------

void ProfileImportWizard::Initialize(clsImportInfo* importObject) {
  importObject_ = importObject;
  open_ = true;
  finished_ = false;
  imported_ = false;
  importRan_ = false;
  showPage(0);
}

void ProfileImportWizard::showPage(int page) {
  freStep_ = page;
}

void ProfileImportWizard::close(bool imported) {
  imported_ = imported;
  finished_ = true;
  open_ = false;
  if (importObject_ != nullptr && imported) importObject_->setRefreshData(true);
}

bool ProfileImportWizard::refuse(const std::string& message) const {
  if (MessageBox* box = moduleState().MsgboxClass) box->show(message, kMessageValidation);
  return false;
}

bool ProfileImportWizard::folderChosen() const {
  if (!txtFileLocation.empty() && std::filesystem::is_directory(txtFileLocation)) return true;
  return refuse(
      "You must select a folder location before continuing.  Click the 'Browse' "
      "button to specify the folder which contains your Profile files.");
}

void ProfileImportWizard::scanFolder() {
  File1.clear();
  clearFileList();
  allSelected_ = false;
  fileLoad_.startFileScan = [this] { FileLoadClass_startFileScan(); };
  fileLoad_.initializeProgressBar = [this](long count) {
    FileLoadClass_initializeProgressBar(count);
  };
  fileLoad_.setProgressBarValue = [this](long value) { FileLoadClass_setProgressBarValue(value); };
  fileLoad_.statusLabel = [this](const std::string& text) { FileLoadClass_statusLabel(text); };
  fileLoad_.setExtensions(extensions());
  fileLoad_.scan(txtFileLocation, true, false, false, true);
  for (const FileLoadRow& row : fileLoad_.fileList()) {
    addListRow(row.key, row.path, row.display);
    File1.push_back({"Item:" + row.key, row.display, true});
  }
  if (File1.empty())
    lblNoFiles = std::string("Ledgerfolio cannot find any Profile ") + (isT1() ? "T1" : "T2") +
                 " files in this folder.";
  // The list takes the panels' place.
  fraFolderScanVisible = false;
  fraProgress.visible = false;
  panelsChanged();
}

void ProfileImportWizard::FileLoadClass_startFileScan() {
  fraFolderScanVisible = true;
  fraProgress.visible = false;
  lblNoFiles.clear();
  panelsChanged();
}

void ProfileImportWizard::FileLoadClass_initializeProgressBar(long count) {
  fraProgress.label = "Populating Profile list, Please wait ...";
  fraProgress.count = count;
  fraProgress.position = 0;
  fraProgress.visible = true;
  selectionEnabled_ = count > 0;
  panelsChanged();
}

void ProfileImportWizard::FileLoadClass_setProgressBarValue(long value) {
  fraProgress.position = value;
  panelsChanged();
}

void ProfileImportWizard::FileLoadClass_statusLabel(const std::string& text) {
  if (fraFolderScanVisible)
    lblFolderName = text;
  else
    fraProgress.label = text;
  panelsChanged();
}

void ProfileImportWizard::cmdBrowseCSV_Click(FileDialog& dialog) {
  dialog.setDialogTitle("Select profile folder");
  dialog.setInitialFolder(txtFileLocation);
  const FileDialogResult chosen = dialog.showOpen();
  if (!chosen.confirmed) return;
  std::filesystem::path path = chosen.path;
  txtFileLocation =
      std::filesystem::is_directory(path) ? path.string() : path.parent_path().string();
}

void ProfileImportWizard::setFileChecked(size_t position, bool checked) {
  if (position < File1.size()) File1[position].checked = checked;
}

void ProfileImportWizard::populateSelectedFilesIntoProfileFileList() {
  for (auto& [key, selected] : fileListTicks())
    for (const ProfileListItem& item : File1)
      if (item.key == "Item:" + key) *selected = item.checked;
}

void ProfileImportWizard::populateSelectedProfileFilesInListBoxCtrl() {
  for (auto& [key, selected] : fileListTicks())
    for (ProfileListItem& item : File1)
      if (item.key == "Item:" + key) item.checked = *selected;
}

bool ProfileImportWizard::isFilesSelected() const {
  return std::any_of(File1.begin(), File1.end(), [](const auto& item) { return item.checked; });
}

void ProfileImportWizard::cmdSelectAll_Click(int index) {
  if (!open_ || freStep_ != filesPage() || !selectionEnabled_) return;
  if (index == 0) {
    allSelected_ = !allSelected_;
    selectAll(allSelected_);
  } else {
    if (!chkSelectFiles[0] && !chkSelectFiles[1]) {
      // Intended: the message's misspelling is the one users know.
      refuse(
          "You need to select one of the two check box options in the 'File Selection "
          "Options' box in order to use this file selcyion action.");
      return;
    }
    if (!selectSpecific()) return;
  }
  populateSelectedProfileFilesInListBoxCtrl();
}

// --- frmImportProfileT1 -------------------------------------------------------------------

frmImportProfileT1::frmImportProfileT1() {
  txtFileLocation = ProfileImport.folderString();
  if (LocaleService* locale = moduleState().LocaleReference)
    cboYear = std::to_string(locale->getCurrentPersonalYear());
  contactDuplicates_.setMatchBy(kMatchBySIN);
  contactDuplicates_.setAction(kDuplicateUpdate);
}

const std::vector<std::string>& frmImportProfileT1::extensions() const {
  static const std::vector<std::string> list = {"04T", "05T", "06T", "07T", "08T",
                                                "09T", "10T", "11T", "12T", "13T",
                                                "14T", "15T", "16T", "17T", "18T"};
  return list;
}

void frmImportProfileT1::addListRow(const std::string& key, const std::string& path,
                                    const std::string& display) {
  ProfileImport.profileFileList.push_back({key, path, display, true, "", 0});
}

std::vector<std::pair<std::string, bool*>> frmImportProfileT1::fileListTicks() {
  std::vector<std::pair<std::string, bool*>> ticks;
  for (ProfileFileRow& row : ProfileImport.profileFileList)
    ticks.emplace_back(row.key, &row.selected);
  return ticks;
}

bool frmImportProfileT1::selectSpecific() {
  ProfileImport.selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = chkSelectFiles[0];
  ProfileImport.selectOnlySpecificTaxYearFlag = chkSelectFiles[1];
  if (chkSelectFiles[1]) {
    long year = 0;
    if (!numericYear(cboSelectYear, year))
      return refuse("You must enter a valid year for the selection process.  Please try again");
    ProfileImport.specificTaxYearSelection = year;
  }
  ProfileImport.contactDuplicatesControl = &contactDuplicates_;
  ProfileImport.selectSpecificProfileT1Files(true);
  return true;
}

void frmImportProfileT1::cmdNext_Click() {
  if (!isOpen()) return;
  switch (freStep_) {
    case kFolderPage:
      if (!folderChosen()) return;
      ProfileImport.setFolderString(txtFileLocation);
      showPage(kFilesPage);
      scanFolder();
      return;
    case kFilesPage:
      populateSelectedFilesIntoProfileFileList();
      if (!isFilesSelected()) {
        refuse(
            "You must select some files to import before continuing.  Click on Profile T1 "
            "client files in the list to select files.");
        return;
      }
      showPage(kOptionsPage);
      return;
    case kOptionsPage:
      showPage(kDuplicatesPage);
      finishCaption_ = "Finish";
      finishEnabled_ = true;
      return;
    case 1:
    case 2:
      showPage(freStep_ + 1);
      return;
    default:
      return;  // the last page of a branch goes back by "Back To Start"
  }
}

void frmImportProfileT1::cmdBack_Click() {
  if (!isOpen()) return;
  switch (freStep_) {
    case kFilesPage:
      showPage(kFolderPage);  // the list stays as it was
      break;
    case kOptionsPage:
      showPage(kFilesPage);
      break;
    case kDuplicatesPage:
      showPage(kOptionsPage);
      finishEnabled_ = false;
      break;
    case 2:
    case 3:
      showPage(freStep_ - 1);
      break;
    case 1:
    case kBusinessPage:
      showPage(kOptionsPage);
      finishCaption_ = "Finish";
      finishEnabled_ = false;
      break;
    default:
      break;
  }
  if (freStep_ >= 1 && freStep_ <= 3) finishCaption_ = "Back To Start";
}

void frmImportProfileT1::cmdFinish_Click() {
  if (!isOpen()) return;
  if ((freStep_ >= 1 && freStep_ <= 3) || freStep_ == kBusinessPage) {
    showPage(kOptionsPage);
    finishCaption_ = "Finish";
    finishEnabled_ = false;
    return;
  }
  if (freStep_ != kDuplicatesPage) return;
  long year = 0;
  if (!numericYear(cboYear, year)) {
    refuse("You must enter a valid year to import into.  Please try again");
    return;
  }
  ProfileImport.contactDuplicatesControl = &contactDuplicates_;
  ProfileImport.companyDuplicatesControl = &companyDuplicates_;
  ProfileImport.importTaxYear = year;
  populateSelectedFilesIntoProfileFileList();
  std::vector<std::string> ticked;
  for (const ProfileFileRow& row : ProfileImport.profileFileList)
    if (row.selected) ticked.push_back(row.path);
  if (ticked.empty()) {
    refuse(
        "You must select some profile files in the list.  If there are no profile files "
        "shown in the list, than click 'Back' and browse to a folder which contains "
        "'*.04T', '*.05T', '*.06T', or '*.07T' files.");
    return;
  }
  ProfileImport.profileFileList.clear();
  for (const std::string& path : ticked) ProfileImport.addProfileFileToImportList(path);
  ProfileImport.profileFileAction = kProfileImportClient;
  importRan_ = true;
  // Intended: the form closes only when the run answers success; otherwise it stays on the
  // page for another try or Cancel.
  if (ProfileImport.importProfileT1Files(true)) close(true);
}

// --- frmImportProfileT2 -------------------------------------------------------------------

frmImportProfileT2::frmImportProfileT2() {
  cboProfileAddress = profileAddressItems()[0];
  ProfileImport.importingProfileClientsStart = [this](long total) {
    progressValue = 0;
    progressMax = total;
  };
  ProfileImport.importingProfileClientsInc = [this](long position, long total) {
    progressValue = position;
    progressMax = total;
  };
  ProfileImport.importingProfileClientsPrompt = [this](const std::string& caption) {
    lblProgress = caption;
  };
  companyDuplicates_.setMatchBy(kMatchByBusinessNumber);
  companyDuplicates_.setAction(kDuplicateUpdate);
}

const std::array<std::string, 4>& frmImportProfileT2::profileAddressItems() {
  static const std::array<std::string, 4> items = {
      "Profile Head Office Address", "Profile Mailing Address", "Profile Location of Books Address",
      "Profile Signing Officer Address"};
  return items;
}

const std::vector<std::string>& frmImportProfileT2::extensions() const {
  static const std::vector<std::string> list = {"GT2"};
  return list;
}

void frmImportProfileT2::addListRow(const std::string& key, const std::string& path,
                                    const std::string& display) {
  ProfileImport.profileFileList.push_back({key, path, display, true, "", ""});
}

std::vector<std::pair<std::string, bool*>> frmImportProfileT2::fileListTicks() {
  std::vector<std::pair<std::string, bool*>> ticks;
  for (ProfileT2FileRow& row : ProfileImport.profileFileList)
    ticks.emplace_back(row.key, &row.selected);
  return ticks;
}

bool frmImportProfileT2::selectSpecific() {
  ProfileImport.selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = chkSelectFiles[0];
  ProfileImport.selectOnlyMostRecentClientsFlag = chkSelectFiles[1];
  ProfileImport.companyDuplicatesControl = &companyDuplicates_;
  ProfileImport.selectSpecificProfileT2Files();
  return true;
}

void frmImportProfileT2::cmdNext_Click() {
  if (!isOpen()) return;
  switch (freStep_) {
    case kFolderPage:
      if (!folderChosen()) return;
      showPage(kFilesPage);
      scanFolder();
      return;
    case kFilesPage:
      populateSelectedFilesIntoProfileFileList();
      if (!isFilesSelected()) {
        refuse(
            "You must select some files to import before continuing.  Click on Profile T2 "
            "client files in the list to select files.");
        return;
      }
      showPage(kOptionsPage);
      return;
    case kOptionsPage:
      showPage(kDuplicatesPage);
      finishCaption_ = "Finish";
      finishEnabled_ = true;
      return;
    default:
      return;
  }
}

void frmImportProfileT2::cmdBack_Click() {
  if (!isOpen() || freStep_ == kFolderPage) return;
  if (freStep_ == kDuplicatesPage) finishEnabled_ = false;
  showPage(freStep_ - 1);
}

void frmImportProfileT2::cmdFinish_Click() {
  if (!isOpen() || freStep_ != kDuplicatesPage) return;
  ProfileImport.companyDuplicatesControl = &companyDuplicates_;
  ProfileImport.setProfileAddressType(cboProfileAddress);
  populateSelectedFilesIntoProfileFileList();
  std::vector<std::string> ticked;
  for (const ProfileT2FileRow& row : ProfileImport.profileFileList)
    if (row.selected) ticked.push_back(row.path);
  ProfileImport.profileFileList.clear();
  for (const std::string& path : ticked) ProfileImport.addProfileFileToImportList(path);
  // The class gives its own message when nothing is selected or Profile is missing.
  if (!ProfileImport.startImportProfileT2Files()) return;
  importRan_ = true;
  ProfileImport.importProfileT2Files();
  if (ProfileImport.successFlag) close(true);
}

}  // namespace lf
