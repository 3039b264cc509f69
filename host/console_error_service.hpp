// The error service of lfimport: keeps the procedure trace, logs each failure with its trace
// to stderr and to the run report, and answers getErrorAction from the policy chosen on the
// command line (--on-error continue|leave|stop).
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "base/error_service.hpp"

namespace lf {

class RunReport;

class ConsoleErrorService : public ErrorService {
 public:
  // action: 1 continue, 2 leave, 3 stop. log may be null (silent), report may be null.
  ConsoleErrorService(int action, std::ostream* log, RunReport* report);

  static int actionFromPolicy(const std::string& policy);  // throws std::invalid_argument

  void enterProcedure(std::string_view label) override;
  void leaveProcedure() override;
  void setError(const ErrorInfo& error) override;
  void reportError() override;
  int getErrorAction() override;

  const std::vector<std::string>& trace() const { return trace_; }
  long reportedCount() const { return reported_; }
  const ErrorInfo& lastError() const { return last_; }

 private:
  int action_;
  std::ostream* log_;
  RunReport* report_;
  std::vector<std::string> trace_;
  ErrorInfo last_;
  long reported_ = 0;
};

}  // namespace lf
