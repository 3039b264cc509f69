// clsImportInfo: the public class through which the host opens the tax-file and text imports.
//
// The host creates it, sets the services (errorClass first, DatabaseReference last), reads
// failedToInitializeFlag, calls one open...ImportForm operation, then reads refreshData and
// exitProgramFlag. The services go into the module-level state shared by every class and
// form; the last class created replaces the utility objects.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace lf {

class DatabaseService;
class ErrorService;
class MessageBox;
class LocaleService;
class TasksService;
class WorkingFolderService;
class ClientDropDownService;
class clsImportInfo;

// A wizard opened by an entry operation: modal, returns when finished or cancelled.
using ImportFormOpener = std::function<void(clsImportInfo& importObject)>;

// Wizards register under their form name (frmImportProfileT1, frmImportCSV, ...).
void registerImportForm(const std::string& formName, ImportFormOpener opener);

class clsImportInfo {
 public:
  clsImportInfo();
  ~clsImportInfo();

  void setErrorClass(ErrorService* errorClass);
  void setMsgboxClass(MessageBox* msgbox);
  void setLocaleReference(LocaleService* locale);
  bool exitProgramFlag() const { return exitProgramFlag_; }
  void setWorkingFolderReference(WorkingFolderService* folder);
  bool failedToInitializeFlag() const { return failedToInitializeFlag_; }
  void setDatabaseReference(DatabaseService* db);
  void setTasksCtrlReference(TasksService* tasks);
  void setClientDropDownCtrlReference(ClientDropDownService* dropDown);
  bool refreshData() const { return refreshData_; }
  void setRefreshData(bool value) { refreshData_ = value; }
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

  // The ExitProgram event.
  std::function<void()> ExitProgram;

  // Friend accessors of the forms.
  void setFailedToInitializeFlag(bool value) { failedToInitializeFlag_ = value; }
  void setExitProgramFlag(bool value) { exitProgramFlag_ = value; }
  void raiseExitProgram();
  // The form open at the moment (its module reference), empty when none.
  const std::string& openForm() const { return openForm_; }

 private:
  void openImportForm(const char* label, const char* formName);

  bool importIntoAddressBook_ = false;
  bool exitProgramFlag_ = false;
  bool refreshData_ = false;
  bool failedToInitializeFlag_ = false;
  std::string openForm_;
};

// Declared public names of the component that have no member and do nothing.
class clsImportTaxCycleT1 {};
class frmImportTaxCycleT1 {};

}  // namespace lf
