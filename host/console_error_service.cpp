// Error trace, log and policy answer.
#include "host/console_error_service.hpp"

#include <ostream>
#include <stdexcept>

#include "host/run_report.hpp"

namespace lf {

ConsoleErrorService::ConsoleErrorService(int action, std::ostream* log, RunReport* report)
    : action_(action), log_(log), report_(report) {}

int ConsoleErrorService::actionFromPolicy(const std::string& policy) {
  if (policy == "continue") return kErrorResumeNext;
  if (policy == "leave") return kErrorLeaveProcedure;
  if (policy == "stop") return kErrorExitProgram;
  throw std::invalid_argument("--on-error takes continue, leave or stop");
}

void ConsoleErrorService::enterProcedure(std::string_view label) {
  trace_.emplace_back(label);
}

void ConsoleErrorService::leaveProcedure() {
  if (!trace_.empty()) trace_.pop_back();
}

void ConsoleErrorService::setError(const ErrorInfo& error) {
  last_ = error;
}

void ConsoleErrorService::reportError() {
  ++reported_;
  if (log_ != nullptr) {
    *log_ << "error " << last_.number << " in " << last_.source << ": " << last_.description
          << "\n";
  }
  if (report_ != nullptr)
    report_->addError(last_.source, last_.number, last_.description, trace_, action_);
}

int ConsoleErrorService::getErrorAction() {
  return action_;
}

}  // namespace lf
