// The shared service setters of the public classes.
#include "frame/import_services.hpp"

#include <memory>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "host/file_utilities.hpp"

namespace lf {

ImportServices::ImportServices() {
  ModuleState& state = moduleState();
  state.generalUtilities = std::make_shared<GeneralUtilities>();
  state.dateUtilities = std::make_shared<DateUtilities>();
  state.fileUtilities = std::make_shared<FileUtilities>();
  if (state.errorClass != nullptr) {
    state.generalUtilities->setErrorService(state.errorClass);
    state.dateUtilities->setErrorService(state.errorClass);
  }
  state.raiseExitProgram = [this] { raiseExitProgram(); };
}

ImportServices::~ImportServices() {
  moduleState().raiseExitProgram = nullptr;
}

void ImportServices::setErrorClass(ErrorService* errorClass) {
  ModuleState& state = moduleState();
  state.errorClass = errorClass;
  if (state.generalUtilities) state.generalUtilities->setErrorService(errorClass);
  if (state.dateUtilities) state.dateUtilities->setErrorService(errorClass);
  onErrorClass(errorClass);
  state.errorClassIsSet = true;
}

void ImportServices::setMsgboxClass(MessageBox* msgbox) {
  ModuleState& state = moduleState();
  state.MsgboxClass = msgbox;
  onMsgboxClass(msgbox);
  state.msgboxClassIsSet = true;
}

void ImportServices::setLocaleReference(LocaleService* locale) {
  moduleState().LocaleReference = locale;
  if (locale != nullptr) onLocaleReference(*locale);
}

void ImportServices::setTasksCtrlReference(TasksService* tasks) {
  moduleState().TasksCtrlReference = tasks;
}

void ImportServices::setWorkingFolderReference(WorkingFolderService* folder) {
  moduleState().WorkingFolderReference = folder;
}

void ImportServices::setClientDropDownCtrlReference(ClientDropDownService* dropDown) {
  ModuleState& state = moduleState();
  state.clientDropDownCtrlReference = nullptr;
  state.clientDropDownCtrlReference = dropDown;
  if (dropDown != nullptr) onClientDropDownCtrlReference(*dropDown);
}

void ImportServices::setDatabaseReference(DatabaseService* db) {
  moduleState().DatabaseReference = db;
  failedToInitializeFlag_ = db == nullptr;
  if (db != nullptr) onDatabaseReference(*db);
}

void ImportServices::raiseExitProgram() {
  exitProgramFlag_ = true;
  if (ExitProgram) ExitProgram();
}

}  // namespace lf
