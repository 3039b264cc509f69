// Stands in for the error service during one record of an import: forwards every call and
// keeps the last failure it was told of, so that a failure handled inside the record's own
// procedures (which then return their neutral value) fails the record, with its description
// as reason. Installed for its lifetime as the module's errorClass, when one is set.
#pragma once

#include <string>

#include "base/error_service.hpp"
#include "base/module_state.hpp"

namespace lf {

class RecordErrorWatch final : public ErrorService {
 public:
  RecordErrorWatch() : state_(moduleState()), host_(state_.errorClass) {
    if (host_ == nullptr || !state_.errorClassIsSet) {
      host_ = nullptr;
      return;
    }
    state_.errorClass = this;
  }
  ~RecordErrorWatch() override {
    if (host_ != nullptr) state_.errorClass = host_;
  }
  RecordErrorWatch(const RecordErrorWatch&) = delete;
  RecordErrorWatch& operator=(const RecordErrorWatch&) = delete;

  void enterProcedure(std::string_view label) override { host_->enterProcedure(label); }
  void leaveProcedure() override { host_->leaveProcedure(); }
  void setError(const ErrorInfo& error) override {
    failed_ = true;
    description_ = error.description;
    host_->setError(error);
  }
  void reportError() override { host_->reportError(); }
  int getErrorAction() override { return host_->getErrorAction(); }

  bool failed() const { return failed_; }
  // The last failure's description; a failure no error service was told of has none.
  std::string reason() const { return description_.empty() ? "failed" : description_; }

 private:
  ModuleState& state_;
  ErrorService* host_;
  bool failed_ = false;
  std::string description_;
};

}  // namespace lf
