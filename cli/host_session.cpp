// Setting up the stand-alone host of a command.
#include "cli/host_session.hpp"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "cli/component_wiring.hpp"
#include "host/file_utilities.hpp"
#include "host/progress_dialog.hpp"

namespace lf::cli {

void addHostOptions(CLI::App& command, HostOptions& options) {
  command
      .add_option("--on-error", options.onError,
                  "What to do after a failure: continue, leave or stop")
      ->check(CLI::IsMember({"continue", "leave", "stop"}));
  command.add_option_function<std::string>(
      "--country", [&options](const std::string& c) { options.country = parseCountry(c); },
      "Country mode: ca or us (overrides the practice database)");
  command.add_option_function<int>(
      "--province", [&options](int p) { options.province = p; },
      "Province index (overrides the practice database)");
}

int parseCountry(const std::string& text) {
  std::string c = GeneralUtilities::lowerCase(text);
  if (c == "ca" || c == "1") return 1;
  if (c == "us" || c == "2") return 2;
  throw CLI::ValidationError("--country", "takes ca or us");
}

std::unique_ptr<SqliteDatabase> openPracticeDatabase(const std::string& path) {
  if (path.empty()) throw std::runtime_error("no practice database given (--practice)");
  if (!std::filesystem::is_regular_file(path))
    throw std::runtime_error("the practice database '" + path +
                             "' does not exist (create one with lfimport init)");
  auto db = std::make_unique<SqliteDatabase>();
  db->setDatabasePath(path);
  db->setWriteAheadLog(true);
  db->connect(2);
  if (!db->isOpen() || !db->hasTable("Companies") || !db->hasTable("HostSettings"))
    throw std::runtime_error("'" + path + "' is not a Ledgerfolio practice database");
  return db;
}

ScopedErrorService::ScopedErrorService(int action, std::ostream* log)
    : service_(action, log, nullptr),
      saved_(moduleState().errorClass),
      savedIsSet_(moduleState().errorClassIsSet) {
  moduleState().errorClass = &service_;
  moduleState().errorClassIsSet = true;
}

ScopedErrorService::~ScopedErrorService() {
  moduleState().errorClass = saved_;
  moduleState().errorClassIsSet = savedIsSet_;
}

HostSession::HostSession(const HostOptions& options) {
  db_ = openPracticeDatabase(options.practicePath);
  std::ostream* log = options.quiet ? nullptr : &std::cerr;
  errors_ = std::make_unique<ConsoleErrorService>(
      ConsoleErrorService::actionFromPolicy(options.onError), log, &report_);
  bool terminal = options.interactive || (isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0);
  messages_ = std::make_unique<TerminalMessageBox>(&report_, log, terminal && options.interactive);
  HostOverrides overrides;
  overrides.countryMode = options.country;
  overrides.provinceIndex = options.province;
  locale_ = std::make_unique<PracticeLocale>(*db_, overrides);
  dropDown_ = std::make_unique<PracticeClientDropDown>(*db_, overrides);

  ModuleState& state = moduleState();
  state.DatabaseReference = db_.get();
  state.errorClass = errors_.get();
  state.errorClassIsSet = true;
  state.MsgboxClass = messages_.get();
  state.msgboxClassIsSet = true;
  state.LocaleReference = locale_.get();
  state.clientDropDownCtrlReference = dropDown_.get();
  if (!state.generalUtilities) state.generalUtilities = std::make_shared<GeneralUtilities>();
  if (!state.dateUtilities) state.dateUtilities = std::make_shared<DateUtilities>();
  if (!state.fileUtilities) state.fileUtilities = std::make_shared<FileUtilities>();
  installComponentWiring();
  state.makeProgressDialog = [] { return std::make_unique<TerminalProgressDialog>(); };
}

HostSession::~HostSession() {
  ModuleState& state = moduleState();
  state.DatabaseReference = nullptr;
  state.errorClass = nullptr;
  state.errorClassIsSet = false;
  state.MsgboxClass = nullptr;
  state.msgboxClassIsSet = false;
  state.LocaleReference = nullptr;
  state.clientDropDownCtrlReference = nullptr;
}

}  // namespace lf::cli
