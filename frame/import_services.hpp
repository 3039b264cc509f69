// ImportServices: the service setters every public class of the component shares, and their
// side effects on the module-level state.
//
// The host creates a public class, sets its services (errorClass first, DatabaseReference
// last), reads failedToInitializeFlag, calls an entry operation, then reads refreshData and
// exitProgramFlag. The services go into the module state shared by every class and form;
// creating a public class replaces the utility objects there. A class that passes services on
// further (to its duplicate finders, say) overrides the matching on... hook, which runs after
// the module state took the service.
//
// Example:
//   class clsImportSomething : public ImportServices {
//    protected:
//     void onMsgboxClass(MessageBox* msgbox) override { finder_.setMsgbox(msgbox); }
//   };
#pragma once

#include <functional>

namespace lf {

class DatabaseService;
class ErrorService;
class MessageBox;
class LocaleService;
class TasksService;
class WorkingFolderService;
class ClientDropDownService;

class ImportServices {
 public:
  virtual ~ImportServices();
  ImportServices(const ImportServices&) = delete;
  ImportServices& operator=(const ImportServices&) = delete;

  // Passes the service to the utility objects and sets errorClassIsSet.
  void setErrorClass(ErrorService* errorClass);
  // Sets msgboxClassIsSet.
  void setMsgboxClass(MessageBox* msgbox);
  void setLocaleReference(LocaleService* locale);
  void setTasksCtrlReference(TasksService* tasks);
  void setWorkingFolderReference(WorkingFolderService* folder);
  // Drops the former control before storing the new one.
  void setClientDropDownCtrlReference(ClientDropDownService* dropDown);
  // failedToInitializeFlag becomes true when the database is nothing, false otherwise.
  void setDatabaseReference(DatabaseService* db);

  bool failedToInitializeFlag() const { return failedToInitializeFlag_; }
  bool exitProgramFlag() const { return exitProgramFlag_; }
  bool refreshData() const { return refreshData_; }
  void setRefreshData(bool value) { refreshData_ = value; }

  // The ExitProgram event; action 3 of the error service raises it through the module state.
  std::function<void()> ExitProgram;
  // Sets exitProgramFlag and raises ExitProgram.
  void raiseExitProgram();

  // Friend accessors of the forms.
  void setFailedToInitializeFlag(bool value) { failedToInitializeFlag_ = value; }
  void setExitProgramFlag(bool value) { exitProgramFlag_ = value; }

 protected:
  // Makes new utility objects in the module state and routes its ExitProgram to this object.
  ImportServices();

  // Side effects of a class of its own, run after the module state took the service. The
  // locale, drop-down and database hooks run only for a service that is set (not nothing).
  virtual void onErrorClass(ErrorService* /*errorClass*/) {}
  virtual void onMsgboxClass(MessageBox* /*msgbox*/) {}
  virtual void onLocaleReference(LocaleService& /*locale*/) {}
  virtual void onClientDropDownCtrlReference(ClientDropDownService& /*dropDown*/) {}
  virtual void onDatabaseReference(DatabaseService& /*db*/) {}

 private:
  bool exitProgramFlag_ = false;
  bool failedToInitializeFlag_ = false;
  bool refreshData_ = false;
};

}  // namespace lf
