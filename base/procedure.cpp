// The procedure guard: trace calls and the handler of every procedure.
#include "base/procedure.hpp"

#include "base/error_service.hpp"
#include "base/failure.hpp"
#include "base/module_state.hpp"

namespace lf {
namespace {
thread_local ProcedureGuard* innermost = nullptr;

ErrorInfo describe(std::exception_ptr failure, std::string_view label) {
  ErrorInfo info;
  info.source = std::string(label);
  try {
    std::rethrow_exception(failure);
  } catch (const Failure& f) {
    info.number = f.number();
    info.description = f.what();
  } catch (const std::exception& e) {
    info.number = 5;
    info.description = e.what();
  } catch (...) {
    info.number = 5;
    info.description = "Unknown failure";
  }
  return info;
}
}  // namespace

ProcedureGuard::ProcedureGuard(std::string_view label) : label_(label), outer_(innermost) {
  innermost = this;
  ModuleState& state = moduleState();
  if (state.errorClassIsSet && state.errorClass != nullptr) {
    state.errorClass->enterProcedure(label_);
    traced_ = true;
  }
}

ProcedureGuard::~ProcedureGuard() {
  innermost = outer_;
  ModuleState& state = moduleState();
  if (traced_ && state.errorClass != nullptr) state.errorClass->leaveProcedure();
}

ProcedureGuard* ProcedureGuard::current() {
  return innermost;
}

bool ProcedureGuard::handle(std::exception_ptr failure) {
  ModuleState& state = moduleState();
  if (!state.errorClassIsSet || state.errorClass == nullptr) throw Leave{this};
  ErrorService& errors = *state.errorClass;
  errors.setError(describe(failure, label_));
  errors.reportError();
  int action = errors.getErrorAction();
  if (action == kErrorResumeNext) return true;
  if (action == kErrorExitProgram && state.raiseExitProgram) state.raiseExitProgram();
  throw Leave{this};
}

}  // namespace lf
