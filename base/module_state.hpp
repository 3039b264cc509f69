// The module-level references shared by every class and form of the component. The host
// sets them through a public class; the last class created replaces the utility objects.
#pragma once

#include <functional>
#include <memory>

namespace lf {

class DatabaseService;
class ErrorService;
class MessageBox;
class LocaleService;
class TasksService;
class WorkingFolderService;
class ClientDropDownService;
class GeneralUtilities;
class DateUtilities;
class FileUtilities;
class ProgressDialog;

struct ModuleState {
  DatabaseService* DatabaseReference = nullptr;
  ErrorService* errorClass = nullptr;
  bool errorClassIsSet = false;
  MessageBox* MsgboxClass = nullptr;
  bool msgboxClassIsSet = false;
  LocaleService* LocaleReference = nullptr;
  TasksService* TasksCtrlReference = nullptr;
  WorkingFolderService* WorkingFolderReference = nullptr;
  ClientDropDownService* clientDropDownCtrlReference = nullptr;
  std::shared_ptr<GeneralUtilities> generalUtilities;
  std::shared_ptr<DateUtilities> dateUtilities;
  std::shared_ptr<FileUtilities> fileUtilities;

  // The ExitProgram event of the public object in use; action 3 of the error service raises it.
  std::function<void()> raiseExitProgram;
  // Makes the progress dialog of a long run (the terminal bar, or a silent one in tests).
  std::function<std::unique_ptr<ProgressDialog>()> makeProgressDialog;
};

ModuleState& moduleState();

}  // namespace lf
