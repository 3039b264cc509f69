// The CANTAX import wizards and the page machine they share with the Dr. Tax wizards.
#include "tax/cantax_import_wizard.hpp"

#include <charconv>
#include <filesystem>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "frame/cls_import_info.hpp"
#include "host/client_drop_down.hpp"
#include "host/file_dialog.hpp"
#include "host/file_utilities.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "host/practice_import_duplicates.hpp"
#include "host/progress_dialog.hpp"
#include "records/export_folders.hpp"
#include "tax/cantax_modified_file.hpp"
#include "tax/cantax_t1_repair.hpp"
#include "tax/cantax_t2plus_repair.hpp"
#include "text/delimited_file_reader.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;

// Runs work inside the progress dialog of the caption, when the host makes one.
void withProgress(std::string_view caption, const std::function<void()>& work) {
  const auto& make = moduleState().makeProgressDialog;
  std::unique_ptr<ProgressDialog> dialog = make ? make() : nullptr;
  if (dialog == nullptr) {
    work();
    return;
  }
  dialog->setCaption(caption);
  dialog->showDialog([&] {
    work();
    dialog->closeDialog();
  });
}

long currentTaxYear() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr ? locale->getCurrentTaxYear() : 0;
}

}  // namespace

// --- TaxExportImportWizard ----------------------------------------------------------------

TaxExportImportWizard::TaxExportImportWizard()
    : contactDuplicates_(
          std::make_unique<PracticeImportDuplicates>(PracticeImportDuplicates::Contact)),
      companyDuplicates_(
          std::make_unique<PracticeImportDuplicates>(PracticeImportDuplicates::Company)) {}

void TaxExportImportWizard::Initialize(clsImportInfo* importObject) {
  importObject_ = importObject;
  page_ = 0;
  open_ = true;
  finished_ = false;
  imported_ = false;
}

std::string TaxExportImportWizard::cmdNextCaption() const {
  return page_ == pageCount() - 1 ? "Finish" : "Next >";
}

std::string TaxExportImportWizard::applicationName() const {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr ? locale->getApplicationName() : std::string();
}

bool TaxExportImportWizard::refuse(const std::string& message) const {
  if (MessageBox* box = moduleState().MsgboxClass) box->show(message, kMessageValidation);
  return false;
}

bool TaxExportImportWizard::validYear(long& year) const {
  const std::string trimmed = GU::trim(cboYear);
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), year);
  return !trimmed.empty() && error == std::errc() && end == trimmed.data() + trimmed.size() &&
         isValidImportYear(year);
}

void TaxExportImportWizard::cmdNext_Click() {
  if (!open_) return;
  if (page_ == pageCount() - 1) {
    cmdFinish_Click();
    return;
  }
  if (!okToLeave(page_)) return;
  ++page_;
}

void TaxExportImportWizard::cmdBack_Click() {
  if (open_ && page_ > 0) --page_;
}

void TaxExportImportWizard::cmdCancel_Click() {
  open_ = false;
}

void TaxExportImportWizard::cmdOpenFile_Click(FileDialog& dialog) {
  dialog.setDialogTitle(openDialogTitle());
  dialog.setFilter(openDialogFilter());
  dialog.setDefaultExtension(openDialogExtension());
  const std::string folder = openDialogFolder();
  if (!folder.empty()) dialog.setInitialFolder(folder);
  const FileDialogResult chosen = dialog.showOpen();
  if (!chosen.confirmed) {
    exportPath_.clear();
    fileOpened_ = false;
    return;
  }
  openExportFile(chosen.path);
}

bool TaxExportImportWizard::openExportFile(const std::string& path) {
  exportPath_ = path;
  fileOpened_ = false;
  withProgress(readingCaption(), [&] { fileOpened_ = modifyExportFile(); });
  // The location is remembered once the file proved to be an export, so that a wrong file
  // leaves the practice database as it was.
  if (fileOpened_) rememberExportPath(path);
  if (fileOpened_)
    repairSucceeded();
  else
    repairFailed();
  return fileOpened_;
}

bool TaxExportImportWizard::modifyExportFile() {
  modifiedRows_ = 0;
  if (!FileUtilities::fileExists(exportPath_)) return false;
  std::string modified;
  if (!repair(DelimitedFileReader::readFileText(exportPath_), modified, modifiedRows_))
    return false;
  modifiedPath_ = modifiedFilePathFor(exportPath_, modifiedFileName());
  writeModifiedFile(modifiedPath_, modified);

  DelimitedTextImport& importer = import();
  importer.reader.fileLocation = modifiedPath_;
  importer.reader.strDelimiter = ",";
  importer.reader.strTextQualifier = "\"";
  importer.reader.firstRowFieldNames = true;
  importer.loadFile();
  assignColumns();
  afterLoad();
  return true;
}

void TaxExportImportWizard::cmdFinish_Click() {
  if (!open_ || page_ != pageCount() - 1) return;
  if (!fileOpened_) {
    refuse(notOpenedMessage());
    return;
  }
  long year = 0;
  if (hasYear() && !validYear(year)) {
    refuse("You must enter a valid year to import into.  Please try again");
    return;
  }
  if (hasYear()) {
    // The clients go into the personal-tax category of the year, as the personal list offers.
    auto& personal = static_cast<clsImportPersonalTextFile&>(import());
    personal.importTaxYear = year;
    if (ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference)
      personal.importCategory = dropDown->getCategoryForYear(year, "");
  }
  bool succeeded = false;
  withProgress("Importing information", [&] { succeeded = runImport(); });
  if (MessageBox* box = moduleState().MsgboxClass)
    box->show(succeeded ? "The data was imported successfully"
                        : "There was a problem importing your data.  Please try again",
              kMessageInformation);
  if (importObject_ != nullptr && succeeded) importObject_->setRefreshData(true);
  imported_ = succeeded;
  finished_ = true;
  open_ = false;
}

bool runBusinessTextImport(clsImportBusinessTextFile& import, ImportDuplicatesControl& companies,
                           ImportDuplicatesControl& contacts) {
  import.companyDuplicatesControl = &companies;
  import.contactDuplicatesControl = &contacts;
  import.matchMode = companies.getMatchBy();
  bool succeeded = false;
  import.ImportData(succeeded);
  return succeeded;
}

// --- CANTAXImportWizard -------------------------------------------------------------------

std::string CANTAXImportWizard::cmdSaveTemplate_Click(const std::string& path) {
  const std::string remembered =
      product() == CANTAXProduct::T1 ? getCANTAXT1Folder() : getCANTAXT2Folder();
  const std::string target = path.empty() ? defaultCANTAXTemplatePath(product(), remembered) : path;
  templatePath_ = saveCANTAXTemplate(product(), target);
  templateSaved_ = true;
  return templatePath_;
}

bool CANTAXImportWizard::checkCreatedExportFile(bool checkProgramFiles) {
  if (!templateSaved_ || !FileUtilities::fileExists(templatePath_)) return false;
  if (checkProgramFiles && templatePath_.find("Program Files") != std::string::npos &&
      (systemVersionKind == 9 || systemVersionKind == 16)) {
    MessageBox* box = moduleState().MsgboxClass;
    if (box != nullptr &&
        box->ask("You have chosen to save the export file to the 'Program Files' folder on a "
                 "Vista or Server 2008 system.  We highly recommend you don't do this because of "
                 "how Vista controls the files in the 'Program Files' folder.  We recommend you "
                 "resave the file to another location on your computer.\r\nAre you sure you "
                 "want to continue with the wizard without resaving the file?",
                 kMessageValidation) != kAnswerYes)
      return false;
  }
  return true;
}

bool CANTAXImportWizard::okToLeave(int page) {
  if (page != kTemplatePage || checkCreatedExportFile(true)) return true;
  MessageBox* box = moduleState().MsgboxClass;
  if (box == nullptr) return true;
  return box->ask(
             "You have not saved the export file yet.  You need to click the 'Save Export "
             "Template File' button to let " +
                 applicationName() +
                 " create the proper CANTAX export template file so it can get the "
                 "correct information from CANTAX.\r\nAre you sure you want to continue "
                 "without creating this file?",
             kMessageValidation) == kAnswerYes;
}

// --- frmImportCANTAXT1 --------------------------------------------------------------------

frmImportCANTAXT1::frmImportCANTAXT1() {
  chkOption.fill(true);
  cboYear = std::to_string(importCSV.importTaxYear);
}

void frmImportCANTAXT1::rememberExportPath(const std::string& path) {
  putCANTAXT1Folder(path);
}

bool frmImportCANTAXT1::repair(const std::string& rawText, std::string& modified, long& rows) {
  return repairCANTAXT1Text(rawText, modified, rows);
}

void frmImportCANTAXT1::assignColumns() {
  setupMappedColumns(importCSV, cantaxT1MappedColumns());
}

void frmImportCANTAXT1::afterLoad() {
  amounts_.populateTheRestOfTheInformation(importCSV.grid);
}

bool frmImportCANTAXT1::runImport() {
  importCSV.contactDuplicatesControl = &contactDuplicates();
  importCSV.ImportingClientName = [this](const std::string& name) { setImportingCaption(name); };
  importCSV.finishImportingClientContact = [this](long contact, const std::string& sin) {
    setCANTAXT1Marks(contact, sin, importCSV.importTaxYear, chkOption, amounts_);
  };
  bool succeeded = false;
  importCSV.ImportData(succeeded);
  return succeeded;
}

// --- frmImportCANTAXT2Plus ----------------------------------------------------------------

void frmImportCANTAXT2Plus::rememberExportPath(const std::string& path) {
  putCANTAXT2Folder(path);
}

bool frmImportCANTAXT2Plus::repair(const std::string& rawText, std::string& modified, long& rows) {
  return repairCANTAXT2PlusText(rawText, currentTaxYear(), modified, rows);
}

void frmImportCANTAXT2Plus::assignColumns() {
  if (address_ != kMailingAddress) {
    setupMappedColumns(importCSV, cantaxT2PlusMappedColumns());
    return;
  }
  // The mailing address becomes the main one: the two address sets trade their fields.
  std::vector<MappedColumn> columns = cantaxT2PlusMappedColumns();
  const std::pair<int, int> pairs[] = {{5, 12}, {6, 13}, {7, 15}, {8, 14}, {9, 16}};
  for (const auto& [main, mailing] : pairs) std::swap(columns[main].field, columns[mailing].field);
  setupMappedColumns(importCSV, columns);
}

void frmImportCANTAXT2Plus::optAddress_Click(int value) {
  address_ = value == kMailingAddress ? kMailingAddress : kMainAddress;
  if (fileOpened()) assignColumns();
}

bool frmImportCANTAXT2Plus::runImport() {
  importCSV.ImportingClientName = [this](const std::string& name) { setImportingCaption(name); };
  return runBusinessTextImport(importCSV, companyDuplicates(), contactDuplicates());
}

}  // namespace lf
