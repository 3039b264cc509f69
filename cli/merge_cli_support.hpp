// What the merge commands (fields, check-template, merge, calendar-text) share: the host they
// run in, with or without a practice database, and reading a template from the command line.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/host_session.hpp"
#include "host/locale_service.hpp"

namespace CLI {
class App;
}

namespace lf::cli {

// Country and province without a practice database (Canada, Ontario unless told).
class FixedLocale : public LocaleService {
 public:
  FixedLocale(int country, int province) : country_(country), province_(province) {}
  std::string getApplicationName() override { return "Ledgerfolio"; }
  int getCountryMode() override { return country_; }
  int getProvinceIndex() override { return province_; }
  long getCurrentUserID() override { return 1; }
  long getCurrentPersonalYear() override { return 0; }
  long getCurrentTaxYear() override { return 0; }
  std::string getDefaultFileFolder() override { return {}; }

 private:
  int country_;
  int province_;
};

// The practice database and host services when a path was given; otherwise only a fixed
// locale. Installs itself in the module state and takes itself out again.
class MergeHost {
 public:
  explicit MergeHost(const HostOptions& options);
  ~MergeHost();
  MergeHost(const MergeHost&) = delete;
  MergeHost& operator=(const MergeHost&) = delete;

  bool hasDatabase() const { return session_ != nullptr; }
  HostSession& session() { return *session_; }

 private:
  std::unique_ptr<HostSession> session_;
  std::unique_ptr<FixedLocale> locale_;
};

// The template of --text, or the contents of --file, as clean text; throws Failure naming the
// file when it cannot be read or is a folder, UsageError when neither was given.
std::string readTemplate(const std::string& text, const std::string& file, bool textGiven);

}  // namespace lf::cli
