// clsImportInfo: the public class through which the host opens the tax-file and text imports.
//
// The host creates it, sets the services (ImportServices), reads failedToInitializeFlag, calls
// one open...ImportForm operation, then reads refreshData and exitProgramFlag.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "frame/import_services.hpp"

namespace lf {

class clsImportInfo;

// A wizard opened by an entry operation: modal, returns when finished or cancelled.
using ImportFormOpener = std::function<void(clsImportInfo& importObject)>;

// Wizards register under their form name (frmImportProfileT1, frmImportCSV, ...).
void registerImportForm(const std::string& formName, ImportFormOpener opener);

class clsImportInfo : public ImportServices {
 public:
  clsImportInfo() = default;

  bool importIntoAddressBook() const { return importIntoAddressBook_; }
  void setImportIntoAddressBook(bool value) { importIntoAddressBook_ = value; }

  void openTaxCycleT1ImportForm();
  void openProfileT1ImportForm();
  void openProfileT2ImportForm();
  void openCANTAXT1ImportForm();
  void openCANTAXT2ImportForm();
  void openDrTaxT1ImportForm();
  void openDrTaxT2ImportForm();
  void openPersonalClientsImportForm();
  void openBusinessClientsImportForm();

  // The form open at the moment (its module reference), empty when none.
  const std::string& openForm() const { return openForm_; }

 private:
  void openImportForm(const char* label, const char* formName);

  bool importIntoAddressBook_ = false;
  std::string openForm_;
};

// Declared public names of the component that have no member and do nothing.
class clsImportTaxCycleT1 {};
class frmImportTaxCycleT1 {};

}  // namespace lf
