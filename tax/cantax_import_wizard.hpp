// The wizards that import a tax product's export through a repaired text file, as step
// machines with no input or output of their own: frmImportCANTAXT1, frmImportCANTAXT2Plus
// here, and the Dr. Tax pair (tax/drtax_import_wizard.hpp) on the same base.
//
// The pages are a straight sequence: Next and Back move one page, and Next on the last page is
// Finish (its caption says so). Opening the export repairs it into the modified file beside it
// (replaced on each run), loads that into the importer's grid with its first line as captions
// and assigns the mapped columns. Finish checks that an export was opened (and on the T1
// wizards that the year is valid), runs the importer under a progress dialog and tells the
// user how it went. Messages and questions go through MsgboxClass.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "host/import_duplicates_control.hpp"
#include "tax/cantax_export_template.hpp"
#include "tax/cantax_mapped_columns.hpp"
#include "tax/cantax_t1_marks.hpp"
#include "text/cls_import_business_text_file.hpp"
#include "text/cls_import_personal_text_file.hpp"

namespace lf {

class FileDialog;
class clsImportInfo;

class TaxExportImportWizard {
 public:
  virtual ~TaxExportImportWizard() = default;
  TaxExportImportWizard(const TaxExportImportWizard&) = delete;
  TaxExportImportWizard& operator=(const TaxExportImportWizard&) = delete;

  // Opening the form: the first page. The dispatcher, when given, hears the outcome.
  void Initialize(clsImportInfo* importObject = nullptr);

  int page() const { return page_; }
  virtual int pageCount() const = 0;
  virtual int openPage() const = 0;  // the page with the open button
  virtual int gridPage() const { return openPage() + 1; }
  bool isOpen() const { return open_; }
  bool finished() const { return finished_; }
  bool imported() const { return imported_; }
  std::string cmdNextCaption() const;
  virtual bool isPersonal() const = 0;
  virtual bool hasYear() const { return isPersonal(); }

  void cmdNext_Click();
  void cmdBack_Click();
  void cmdCancel_Click();
  void cmdFinish_Click();

  // The open button: the product's open dialog, then openExportFile with its choice; a
  // cancelled dialog clears the path and the flag that a file is open.
  void cmdOpenFile_Click(FileDialog& dialog);
  // Repairs the export and loads the modified file (under the progress dialog). Answers
  // whether a modified file was written and loaded.
  bool openExportFile(const std::string& path);
  bool fileOpened() const { return fileOpened_; }
  const std::string& exportPath() const { return exportPath_; }
  const std::string& modifiedPath() const { return modifiedPath_; }
  long modifiedRows() const { return modifiedRows_; }

  std::string cboYear;  // the T1 wizards' year

  virtual DelimitedTextImport& import() = 0;
  ImportDuplicatesControl& contactDuplicates() { return *contactDuplicates_; }
  ImportDuplicatesControl& companyDuplicates() { return *companyDuplicates_; }
  // The caption of the progress dialog while clients are imported ("Importing " + name).
  const std::string& importingCaption() const { return importingCaption_; }

 protected:
  TaxExportImportWizard();
  std::string applicationName() const;
  bool refuse(const std::string& message) const;
  bool validYear(long& year) const;

  // The product's parts.
  virtual const char* openDialogTitle() const = 0;
  virtual const char* openDialogFilter() const = 0;
  virtual const char* openDialogExtension() const = 0;
  virtual std::string openDialogFolder() const { return {}; }
  virtual const char* readingCaption() const = 0;
  virtual const char* modifiedFileName() const = 0;
  virtual const char* notOpenedMessage() const = 0;
  virtual void rememberExportPath(const std::string&) {}
  virtual bool repair(const std::string& rawText, std::string& modified, long& rows) = 0;
  virtual void repairFailed() {}
  virtual void repairSucceeded() {}
  void goToPage(int page) { page_ = page; }
  virtual void assignColumns() = 0;
  virtual void afterLoad() {}
  // A check before leaving the page forward; false keeps the page.
  virtual bool okToLeave(int page) { return page >= 0; }
  virtual bool runImport() = 0;
  void setImportingCaption(const std::string& name) { importingCaption_ = "Importing " + name; }

 private:
  bool modifyExportFile();

  std::unique_ptr<ImportDuplicatesControl> contactDuplicates_;
  std::unique_ptr<ImportDuplicatesControl> companyDuplicates_;
  clsImportInfo* importObject_ = nullptr;
  int page_ = 0;
  bool open_ = false;
  bool finished_ = false;
  bool imported_ = false;
  bool fileOpened_ = false;
  std::string exportPath_;
  std::string modifiedPath_;
  long modifiedRows_ = 0;
  std::string importingCaption_;
};

// frmImportCANTAXT1 and frmImportCANTAXT2Plus: the template page, the open page, the grid, the
// advanced page (options of T1, the address choice of T2Plus), the duplicates and the finish.
class CANTAXImportWizard : public TaxExportImportWizard {
 public:
  static constexpr int kTemplatePage = 1;
  static constexpr int kOpenPage = 3;
  static constexpr int kAdvancedPage = 5;
  int pageCount() const override { return 8; }
  int openPage() const override { return kOpenPage; }
  virtual CANTAXProduct product() const = 0;

  // The save button after its dialog (titled "Type the file name to create the CANTAX Export
  // template file:"): writes the template and remembers it; answers the path written (".tpl"
  // appended when missing). An empty path takes defaultCANTAXTemplatePath.
  std::string cmdSaveTemplate_Click(const std::string& path);
  // A template was saved in this run and exists. With checkProgramFiles, a template under
  // "Program Files" on a system of version kind 9 or 16 asks whether to go on anyway.
  bool checkCreatedExportFile(bool checkProgramFiles);
  int systemVersionKind = 0;  // the platform's version kind; this host reports none of 9, 16
  const std::string& templatePath() const { return templatePath_; }

 protected:
  const char* openDialogFilter() const override {
    return "CANTAX Export File (*.txt)|*.txt|All Files (*.*)|*.*";
  }
  const char* openDialogTitle() const override {
    return "Open the CANTAX export file created by CANTAX";
  }
  const char* openDialogExtension() const override { return "txt"; }
  const char* readingCaption() const override {
    return "Reading CANTAX Information.  Please wait ...";
  }
  const char* modifiedFileName() const override { return "CANTAX_Modified.txt"; }
  const char* notOpenedMessage() const override {
    return "You must open the results of the CANTAX export by clicking the 'Open CANTAX Export "
           "File' button above.";
  }
  bool okToLeave(int page) override;

 private:
  std::string templatePath_;
  bool templateSaved_ = false;
};

class frmImportCANTAXT1 : public CANTAXImportWizard {
 public:
  frmImportCANTAXT1();
  CANTAXProduct product() const override { return CANTAXProduct::T1; }
  bool isPersonal() const override { return true; }
  DelimitedTextImport& import() override { return importCSV; }

  clsImportPersonalTextFile importCSV;
  std::array<bool, kCANTAXT1OptionCount> chkOption;  // all ticked at the start
  const CANTAXT1LineAmounts& lineAmounts() const { return amounts_; }

 protected:
  void rememberExportPath(const std::string& path) override;
  bool repair(const std::string& rawText, std::string& modified, long& rows) override;
  void assignColumns() override;
  void afterLoad() override;
  bool runImport() override;

 private:
  CANTAXT1LineAmounts amounts_;
};

class frmImportCANTAXT2Plus : public CANTAXImportWizard {
 public:
  // optAddress: which CANTAX address becomes the company's main one.
  static constexpr int kMailingAddress = 1;
  static constexpr int kMainAddress = 2;

  frmImportCANTAXT2Plus() = default;
  CANTAXProduct product() const override { return CANTAXProduct::T2Plus; }
  bool isPersonal() const override { return false; }
  DelimitedTextImport& import() override { return importCSV; }

  clsImportBusinessTextFile importCSV;
  int optAddress() const { return address_; }
  // The choice under "Which CANTAX Address do you want to use for the main Ledgerfolio
  // address?"; an opened export has its columns assigned again.
  void optAddress_Click(int value);

 protected:
  void rememberExportPath(const std::string& path) override;
  bool repair(const std::string& rawText, std::string& modified, long& rows) override;
  void assignColumns() override;
  bool runImport() override;

 private:
  int address_ = kMainAddress;
};

// The business import with the wizard's duplicates controls, as frmImportCSV runs it.
bool runBusinessTextImport(clsImportBusinessTextFile& import, ImportDuplicatesControl& companies,
                           ImportDuplicatesControl& contacts);

}  // namespace lf
