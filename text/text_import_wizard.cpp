// The text import dialogs as a step machine: steps, checks, messages and the run.
#include "text/text_import_wizard.hpp"

#include <charconv>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "host/file_dialog.hpp"
#include "host/file_utilities.hpp"
#include "host/folder_services.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"
#include "host/practice_import_duplicates.hpp"
#include "host/progress_dialog.hpp"
#include "records/lookups.hpp"
#include "text/cls_import_business_text_file.hpp"
#include "text/cls_import_personal_text_file.hpp"
#include "text/delimiter_words.hpp"

namespace lf {

namespace {

constexpr char kOneColumnMessage[] =
    "You must specify the column information of at least one column by using the drop-down "
    "list at the top of the columns.";

// Runs work inside the progress dialog of the caption, when the host makes one; the work
// gets the dialog (null without one).
void withProgress(std::string_view caption, const std::function<void(ProgressDialog*)>& work) {
  const auto& make = moduleState().makeProgressDialog;
  std::unique_ptr<ProgressDialog> dialog = make ? make() : nullptr;
  if (dialog == nullptr) {
    work(nullptr);
    return;
  }
  dialog->setCaption(caption);
  dialog->showDialog([&] {
    work(dialog.get());
    dialog->closeDialog();
  });
}

// Shows "Importing row i of n" in the dialog: at the first and the last row and whenever the
// percentage changes, so that a large file redraws about a hundred times.
std::function<void(long, long)> rowProgressIn(ProgressDialog* dialog) {
  if (dialog == nullptr) return {};
  return [dialog, shown = -1L](long row, long rows) mutable {
    const long percent = rows > 0 ? row * 100 / rows : 100;
    if (row != 1 && row != rows && percent == shown) return;
    shown = percent;
    dialog->setMaximum(rows);
    dialog->setValue(row);
    dialog->setCaption("Importing row " + std::to_string(row) + " of " + std::to_string(rows));
  };
}

bool wholeYear(const std::string& text, long& year) {
  const std::string trimmed = GeneralUtilities::trim(text);
  const auto [end, error] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), year);
  return !trimmed.empty() && error == std::errc() && end == trimmed.data() + trimmed.size();
}

}  // namespace

TextImportWizard::TextImportWizard(DelimitedTextImport& import)
    : import_(import),
      contactDuplicates_(
          std::make_unique<PracticeImportDuplicates>(PracticeImportDuplicates::Contact)),
      companyDuplicates_(
          std::make_unique<PracticeImportDuplicates>(PracticeImportDuplicates::Company)) {}

void TextImportWizard::Initialize(long givenCategory) {
  open_ = true;
  finished_ = false;
  imported_ = false;
  step_ = kFileStep;
  categoryGiven_ = givenCategory >= 0;
  selectedCategory = givenCategory;
}

bool TextImportWizard::finishEnabled() const {
  return open_ && step_ != kFileStep && step_ == lastStep();
}

std::string TextImportWizard::applicationName() const {
  LocaleService* locale = moduleState().LocaleReference;
  return locale != nullptr ? locale->getApplicationName() : std::string();
}

bool TextImportWizard::refuse(const std::string& message) const {
  if (MessageBox* box = moduleState().MsgboxClass) box->show(message, kMessageValidation);
  return false;
}

bool TextImportWizard::anyColumnIs(std::initializer_list<std::string_view> keys) const {
  return import_.mapping.anyColumnIs(keys, import_.grid.cols());
}

bool TextImportWizard::anyColumnAssigned() const {
  for (int col = 1; col < import_.grid.cols(); ++col)
    if (import_.columnKey(col) != kNotAssignedKey) return true;
  return false;
}

void TextImportWizard::cmdBrowseCSV_Click(FileDialog& dialog) {
  dialog.setDialogTitle("Select a file to import");
  dialog.setFlags(4096);
  dialog.setFilter(
      "Import Files (*.csv;*.txt)|*.csv;*.txt|Comma Separated Value Files (*.csv)|*.csv|Text "
      "Files (*.txt)|*.txt|All Files (*.*)|*.*");
  if (WorkingFolderService* folder = moduleState().WorkingFolderReference)
    dialog.setInitialFolder(folder->getImportFolder());
  const FileDialogResult chosen = dialog.showOpen();
  if (chosen.confirmed) chooseFile(chosen.path);
}

void TextImportWizard::chooseFile(const std::string& path) {
  txtOldLocation = path;
  import_.reader.fileLocation = path;
  std::string found;
  import_.reader.determineDelimiter(found);
  delimiter_ = found == "\t" ? kTab : found == ";" ? kSemicolon : kComma;
}

void TextImportWizard::loadCSV() {
  withProgress("Loading file information", [&](ProgressDialog*) { import_.loadFile(); });
  checkAllCaption_ = "Unselect All";
}

void TextImportWizard::optDelimiter_Click(int index, const std::string& other) {
  delimiter_ = index;
  other_ = other;
  static const char* const kDelimiters[] = {"\t", ";", ",", " "};
  import_.reader.strDelimiter =
      index >= kTab && index <= kSpace ? std::string(kDelimiters[index]) : other;
  if (step_ == kGridStep) loadCSV();
}

void TextImportWizard::cboTextQualifier_Click(const std::string& qualifier) {
  qualifier_ = qualifier;
  import_.reader.strTextQualifier = qualifier == kNoQualifier ? std::string() : qualifier;
  if (step_ == kGridStep) loadCSV();
}

void TextImportWizard::chkFirstRow_Click(bool on) {
  import_.reader.firstRowFieldNames = on;
  if (step_ == kGridStep) loadCSV();
}

void TextImportWizard::chkRemoveCaps_Click(bool on) {
  import_.reader.checkRemoveCaps = on;
  if (on && step_ == kGridStep) import_.changeCaps();
}

bool TextImportWizard::listBoxGridEdit_Choose(int column, std::int32_t itemKey) {
  return import_.mapping.assign(import_.grid, column, itemKey);
}

void TextImportWizard::toggleRow(int row) {
  if (row < kFirstDataRow || row >= import_.grid.rows()) return;
  import_.grid.setRowSelected(row, !import_.grid.isRowSelected(row));
}

void TextImportWizard::cmdCheckAll_Click() {
  const bool select = checkAllCaption_ == "Select All";
  import_.grid.selectAllRows(select);
  checkAllCaption_ = select ? "Unselect All" : "Select All";
}

bool TextImportWizard::okToContinue() {
  if (!FileUtilities::fileExists(txtOldLocation))
    return refuse("You must enter a valid file location for the existing data file.");
  return true;
}

bool TextImportWizard::okToContinue3() {
  if (!validCategoryID(selectedCategory))
    return refuse("You must select a category from the list to import your clients into.");
  return true;
}

void TextImportWizard::cmdNext_Click() {
  if (!open_) return;
  if (step_ == kFileStep) {
    if (!okToContinue()) return;
    import_.reader.fileLocation = txtOldLocation;
    loadCSV();
    step_ = kGridStep;
  } else if (step_ == kGridStep && !categoryGiven_) {
    if (!okToContinue2()) return;
    step_ = kCategoryStep;
  }
}

void TextImportWizard::cmdBack_Click() {
  if (open_ && step_ > kFileStep) --step_;
}

void TextImportWizard::cmdCancel_Click() {
  open_ = false;
}

void TextImportWizard::cmdFinish_Click() {
  if (!finishEnabled()) return;
  if (step_ == kGridStep && !okToContinue2()) return;
  if (step_ == kCategoryStep && !okToContinue3()) return;
  if (!finishChecks()) return;
  bool succeeded = false;
  withProgress("Importing information", [&](ProgressDialog* dialog) {
    import_.rowProgress = rowProgressIn(dialog);
    succeeded = runImport();
    import_.rowProgress = nullptr;
  });
  if (MessageBox* box = moduleState().MsgboxClass)
    box->show(succeeded ? "The data was imported successfully"
                        : "There was a problem importing your data.  Please try again",
              kMessageInformation);
  imported_ = succeeded;
  finished_ = true;
  open_ = false;
}

// --- frmImportPersonalClients -------------------------------------------------------------

frmImportPersonalClients::frmImportPersonalClients(clsImportPersonalTextFile& import)
    : TextImportWizard(import), personal_(import) {
  cboYear = std::to_string(import.importTaxYear);
}

bool frmImportPersonalClients::okToContinue2() {
  if (!anyColumnAssigned()) return refuse(kOneColumnMessage);
  if (!anyColumnIs({"FIRSTNAME", "LASTNAME", "DISPLAYNAME"}))
    return refuse(
        "You must specify one of the columns to be either 'First Name', or 'Last Name', or "
        "'Full Name' in order to import contact information into " +
        applicationName() + " by using the drop-down list at the top of the columns.");
  return true;
}

bool frmImportPersonalClients::finishChecks() {
  long year = 0;
  if (!wholeYear(cboYear, year) || !isValidImportYear(year))
    return refuse("You must enter a valid year to import into.  Please try again");
  personal_.importTaxYear = year;
  ImportDuplicatesControl& duplicates = contactDuplicates();
  if (duplicates.checkingOn() && duplicates.getMatchBy() == kMatchBySIN &&
      !anyColumnIs({"SOCIALINSURANCENUMBER"}))
    return refuse(
        "You have selected to use the SIN as a way to match existing clients, however, you "
        "must select a column as 'SIN' before using this feature");
  if (duplicates.checkingOn() && duplicates.getMatchBy() == kMatchByClientID &&
      !anyColumnIs({"CLIENTID"}))
    return refuse(
        "You have selected to use the Client ID as a way to match existing clients, however, "
        "you must select a column as 'Client ID' before using this feature");
  return true;
}

bool frmImportPersonalClients::runImport() {
  personal_.importCategory = selectedCategory;
  personal_.putUnmatchedFieldsInNotes = chkUnmatchedFields;
  personal_.contactDuplicatesControl = &contactDuplicates();
  bool succeeded = false;
  personal_.ImportData(succeeded);
  return succeeded;
}

// --- frmImportCSV -------------------------------------------------------------------------

frmImportCSV::frmImportCSV(clsImportBusinessTextFile& import)
    : TextImportWizard(import), business_(import) {}

bool frmImportCSV::okToContinue2() {
  if (!anyColumnAssigned()) return refuse(kOneColumnMessage);
  if (!anyColumnIs({"COMPANYNAME", "CORPORATENAME", "CLIENTID"}))
    return refuse(
        "You must specify one of the columns to be an identifier field of one of: 'Company "
        "Name', 'Corporate Name', or 'Client ID' in order to import this information into " +
        applicationName() + " by using the drop-down list at the top of the columns.");
  bool contactColumns = false;
  for (int col = 1; col < import().grid.cols(); ++col) {
    const FieldItem* item = import().mapping.columnItem(col);
    if (item != nullptr && item->tableTag == "ContactInfo") contactColumns = true;
  }
  if (contactColumns && !anyColumnIs({"FIRSTNAME", "LASTNAME", "DISPLAYNAME"}))
    return refuse(
        "You must specify one of the columns to be either 'Contact First Name', or 'Contact "
        "Last Name', or 'Contact Full Name' in order to import contact information into " +
        applicationName() + " by using the drop-down list at the top of the columns.");
  return true;
}

bool frmImportCSV::finishChecks() {
  ImportDuplicatesControl& duplicates = companyDuplicates();
  if (!duplicates.checkingOn()) return true;
  switch (duplicates.getMatchBy()) {
    case kMatchByBusinessNumber:
      if (!anyColumnIs({"BUSINESSNUMBER", "GSTNUMBER", "PAYROLLNUMBER", "FEDERALCORPNUMBER"}))
        return refuse(
            "You have selected to use the Business Number as a way to match existing clients, "
            "however, you must select a column as 'Business Number' before using this feature");
      break;
    case kMatchByCorporateName:
      if (!anyColumnIs({"CORPORATENAME"}))
        return refuse(
            "You have selected to use the Corporate Name as a way to match existing clients, "
            "however, you must select a column as 'Corporate Name' before using this feature");
      break;
    case kMatchByClientID:
      if (!anyColumnIs({"CLIENTID"}))
        return refuse(
            "You have selected to use the Client ID as a way to match existing clients, "
            "however, you must select a column as 'Client ID' before using this feature");
      break;
  }
  return true;
}

bool frmImportCSV::runImport() {
  business_.importCategory = selectedCategory;
  business_.companyDuplicatesControl = &companyDuplicates();
  business_.contactDuplicatesControl = &contactDuplicates();
  business_.matchMode = companyDuplicates().getMatchBy();
  bool succeeded = false;
  business_.ImportData(succeeded);
  return succeeded;
}

}  // namespace lf
