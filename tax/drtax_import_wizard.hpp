// frmImportDrTaxT1 and frmImportDrTaxT2: the Dr. Tax export, prepared by hand in the product
// by the wizard's instruction pages, repaired into "DrTax_Modified.txt" and imported through
// the personal (T1) or business (T2) text importer. The page machine is the one of the CANTAX
// wizards (tax/cantax_import_wizard.hpp) without a template page. The options of the advanced
// page have no effect: nothing but the mapped columns is imported.
#pragma once

#include "tax/cantax_import_wizard.hpp"
#include "tax/drtax_repair.hpp"

namespace lf {

class DrTaxImportWizard : public TaxExportImportWizard {
 public:
  static constexpr int kOpenPage = 3;
  static constexpr int kAdvancedPage = 5;
  int pageCount() const override { return 7; }
  int openPage() const override { return kOpenPage; }
  virtual DrTaxProduct product() const = 0;
  // The rows of the last export left out for having fewer than 15 values.
  long droppedRows() const { return dropped_; }

 protected:
  const char* openDialogTitle() const override {
    return "Open the Dr. Tax export file created by Dr. Tax";
  }
  const char* openDialogFilter() const override {
    return "Dr Tax Export File (*.csv)|*.csv|All Files (*.*)|*.*";
  }
  const char* openDialogExtension() const override { return "csv"; }
  std::string openDialogFolder() const override;
  const char* readingCaption() const override {
    return "Reading Dr. Tax Information.  Please wait ...";
  }
  const char* modifiedFileName() const override { return "DrTax_Modified.txt"; }
  const char* notOpenedMessage() const override {
    return "You must open the results of the Dr. Tax export by clicking the 'Open Dr. Tax "
           "Export File' button above.";
  }
  bool repair(const std::string& rawText, std::string& modified, long& rows) override;
  void repairFailed() override;
  // On success the wizard moves on to the grid page.
  void repairSucceeded() override { goToPage(gridPage()); }

 private:
  long dropped_ = 0;
};

class frmImportDrTaxT1 : public DrTaxImportWizard {
 public:
  frmImportDrTaxT1();
  DrTaxProduct product() const override { return DrTaxProduct::T1; }
  bool isPersonal() const override { return true; }
  DelimitedTextImport& import() override { return importCSV; }
  clsImportPersonalTextFile importCSV;

 protected:
  void assignColumns() override { setupMappedColumns(importCSV, drTaxT1MappedColumns()); }
  bool runImport() override;
};

class frmImportDrTaxT2 : public DrTaxImportWizard {
 public:
  DrTaxProduct product() const override { return DrTaxProduct::T2; }
  bool isPersonal() const override { return false; }
  DelimitedTextImport& import() override { return importCSV; }
  clsImportBusinessTextFile importCSV;

  // The note beside cmdShowGrid, which shows the grid before the import.
  static constexpr const char* kShowGridNote =
      "It is important to check off only the items in the list or the Dr. Tax information will "
      "not be imported into Ledgerfolio properly.";

 protected:
  void assignColumns() override { setupMappedColumns(importCSV, drTaxT2MappedColumns()); }
  bool runImport() override;
};

}  // namespace lf
