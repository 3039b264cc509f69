// The Dr. Tax import wizards.
#include "tax/drtax_import_wizard.hpp"

#include <filesystem>

#include "base/module_state.hpp"
#include "host/folder_services.hpp"
#include "host/locale_service.hpp"
#include "host/message_box.hpp"

namespace lf {

std::string DrTaxImportWizard::openDialogFolder() const {
  WorkingFolderService* folder = moduleState().WorkingFolderReference;
  if (folder == nullptr) return {};
  return (std::filesystem::path(folder->getImportFolder()) / "DrTax Import").string();
}

bool DrTaxImportWizard::repair(const std::string& rawText, std::string& modified, long& rows) {
  LocaleService* locale = moduleState().LocaleReference;
  const long year = locale != nullptr ? locale->getCurrentTaxYear() : 0;
  return repairDrTaxText(product(), rawText, year, modified, rows, dropped_);
}

void DrTaxImportWizard::repairFailed() {
  // Intended: the T2 wording spells the product without its period.
  refuse(applicationName() +
         (product() == DrTaxProduct::T1
              ? " did not recognize this file as a Dr. Tax export file.  Try opening the file "
                "created by the Dr. Tax Export process."
              : " did not recognize this file as a Dr Tax export file.  Try opening the file "
                "created by the Dr Tax Export process."));
}

frmImportDrTaxT1::frmImportDrTaxT1() {
  cboYear = std::to_string(importCSV.importTaxYear);
}

bool frmImportDrTaxT1::runImport() {
  importCSV.contactDuplicatesControl = &contactDuplicates();
  importCSV.ImportingClientName = [this](const std::string& name) { setImportingCaption(name); };
  bool succeeded = false;
  importCSV.ImportData(succeeded);
  return succeeded;
}

bool frmImportDrTaxT2::runImport() {
  return runBusinessTextImport(importCSV, companyDuplicates(), contactDuplicates());
}

}  // namespace lf
