// The error service (errorClass): a procedure trace, a log, and the user's decision on
// what to do after a failure. The component reports every failure here and obeys the action.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// What getErrorAction answers.
enum ErrorAction : int {
  kErrorResumeNext = 1,  // carry on with the next statement (record)
  kErrorLeaveProcedure = 2,
  kErrorExitProgram = 3,
};

// The failure handed to setError: the language's current error object.
struct ErrorInfo {
  long number = 0;
  std::string description;
  std::string source;  // label of the procedure that failed
};

class ErrorService {
 public:
  virtual ~ErrorService() = default;
  virtual void enterProcedure(std::string_view label) = 0;
  virtual void leaveProcedure() = 0;
  virtual void setError(const ErrorInfo& error) = 0;
  virtual void reportError() = 0;
  virtual int getErrorAction() = 0;
};

}  // namespace lf
