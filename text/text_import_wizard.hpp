// The two text import dialogs (frmImportCSV for business clients, frmImportPersonalClients
// for personal ones) as one step machine with no input or output of its own.
//
// Steps: 0 the file, 1 the grid with its options and the column assignments, 2 the category
// (and on the personal dialog the year), shown only when the dialog was not told which
// category to use. Next runs the step's check; a failing check shows its message (kind 3)
// through MsgboxClass and keeps the step. Finish, on the last step, runs the checks of the
// duplicate matching and the year, then the import, and tells the user how it went.
// Changing the delimiter, the qualifier or the first-row option reloads the grid and drops
// every assignment. A front end sets the controls through the handlers and reads back the
// step, the grid, the field list and the captions.
#pragma once

#include <memory>
#include <string>

#include "host/import_duplicates_control.hpp"
#include "text/delimited_text_import.hpp"

namespace lf {

class FileDialog;
class clsImportPersonalTextFile;
class clsImportBusinessTextFile;

class TextImportWizard {
 public:
  enum Delimiter : int { kTab = 0, kSemicolon = 1, kComma = 2, kSpace = 3, kOther = 4 };
  static constexpr int kFileStep = 0;
  static constexpr int kGridStep = 1;
  static constexpr int kCategoryStep = 2;
  static constexpr std::string_view kNoQualifier = "(None)";

  virtual ~TextImportWizard() = default;
  TextImportWizard(const TextImportWizard&) = delete;
  TextImportWizard& operator=(const TextImportWizard&) = delete;

  // Opening the form: step 0, Finish disabled. A category of 0 or more given here skips the
  // category step.
  void Initialize(long givenCategory = -1);

  int step() const { return step_; }
  bool isOpen() const { return open_; }
  bool finished() const { return finished_; }
  // Finish ran the import and it succeeded.
  bool imported() const { return imported_; }
  bool finishEnabled() const;
  virtual bool isPersonal() const = 0;
  DelimitedTextImport& import() { return import_; }

  // Step 0.
  std::string txtOldLocation;
  // The browse button: the file dialog, then the chosen file's delimiter guess.
  void cmdBrowseCSV_Click(FileDialog& dialog);
  // A file was chosen: txtOldLocation takes it and the delimiter option is set from the guess.
  void chooseFile(const std::string& path);

  // Step 1.
  int optDelimiter() const { return delimiter_; }
  const std::string& txtOther() const { return other_; }
  const std::string& cboTextQualifier() const { return qualifier_; }
  bool chkFirstRow() const { return import_.reader.firstRowFieldNames; }
  bool chkRemoveCaps() const { return import_.reader.checkRemoveCaps; }
  void optDelimiter_Click(int index, const std::string& other = {});
  void cboTextQualifier_Click(const std::string& qualifier);  // "(None)" for none
  void chkFirstRow_Click(bool on);
  void chkRemoveCaps_Click(bool on);
  bool chkUnmatchedFields = false;  // personal dialog only
  // The list box over a cell of row 1: the entry with the item key (-1 "Not Assigned").
  bool listBoxGridEdit_Choose(int column, std::int32_t itemKey);
  // A click in column 0 toggles the row's mark.
  void toggleRow(int row);
  const std::string& cmdCheckAllCaption() const { return checkAllCaption_; }
  void cmdCheckAll_Click();

  // Step 2.
  long selectedCategory = -1;  // the category node chosen in the tree
  std::string cboYear;         // personal dialog only

  // The duplicates controls as the user leaves them.
  ImportDuplicatesControl& contactDuplicates() { return *contactDuplicates_; }
  ImportDuplicatesControl& companyDuplicates() { return *companyDuplicates_; }

  void cmdNext_Click();
  void cmdBack_Click();
  void cmdFinish_Click();
  void cmdCancel_Click();

 protected:
  explicit TextImportWizard(DelimitedTextImport& import);
  std::string applicationName() const;
  bool anyColumnIs(std::initializer_list<std::string_view> keys) const;
  bool anyColumnAssigned() const;
  bool refuse(const std::string& message) const;

  // The grid step's check (okToContinue2), the finish checks, and the run.
  virtual bool okToContinue2() = 0;
  virtual bool finishChecks() = 0;
  virtual bool runImport() = 0;

 private:
  bool okToContinue();
  bool okToContinue3();
  void loadCSV();
  int lastStep() const { return categoryGiven_ ? kGridStep : kCategoryStep; }

  DelimitedTextImport& import_;
  std::unique_ptr<ImportDuplicatesControl> contactDuplicates_;
  std::unique_ptr<ImportDuplicatesControl> companyDuplicates_;
  int step_ = kFileStep;
  bool open_ = false;
  bool finished_ = false;
  bool imported_ = false;
  bool categoryGiven_ = false;
  int delimiter_ = kComma;
  std::string other_;
  std::string qualifier_ = "\"";
  std::string checkAllCaption_ = "Unselect All";
};

// frmImportPersonalClients.
class frmImportPersonalClients : public TextImportWizard {
 public:
  explicit frmImportPersonalClients(clsImportPersonalTextFile& import);
  bool isPersonal() const override { return true; }

 private:
  bool okToContinue2() override;
  bool finishChecks() override;
  bool runImport() override;
  clsImportPersonalTextFile& personal_;
};

// frmImportCSV: business clients.
class frmImportCSV : public TextImportWizard {
 public:
  explicit frmImportCSV(clsImportBusinessTextFile& import);
  bool isPersonal() const override { return false; }

 private:
  bool okToContinue2() override;
  bool finishChecks() override;
  bool runImport() override;
  clsImportBusinessTextFile& business_;
};

}  // namespace lf
