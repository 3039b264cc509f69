// A test error service: records every failure handed to it, answers with a fixed action,
// and installs itself in moduleState() for the life of the object.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/module_state.hpp"
#include "host/error_service.hpp"

namespace lf::testing {

class RecordingErrorService : public ErrorService {
 public:
  explicit RecordingErrorService(int action = kErrorResumeNext) : action_(action) {
    ModuleState& state = moduleState();
    savedService_ = state.errorClass;
    savedIsSet_ = state.errorClassIsSet;
    state.errorClass = this;
    state.errorClassIsSet = true;
  }
  ~RecordingErrorService() override {
    ModuleState& state = moduleState();
    state.errorClass = savedService_;
    state.errorClassIsSet = savedIsSet_;
  }
  RecordingErrorService(const RecordingErrorService&) = delete;
  RecordingErrorService& operator=(const RecordingErrorService&) = delete;

  void enterProcedure(std::string_view) override {}
  void leaveProcedure() override {}
  void setError(const ErrorInfo& error) override { errors.push_back(error); }
  void reportError() override { ++reports; }
  int getErrorAction() override { return action_; }

  std::vector<ErrorInfo> errors;  // in the order they were set
  int reports = 0;

 private:
  int action_;
  ErrorService* savedService_ = nullptr;
  bool savedIsSet_ = false;
};

}  // namespace lf::testing
