// Setting up the stand-alone host of a command.
#include "cli/host_session.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "base/date_utilities.hpp"
#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/component_wiring.hpp"
#include "cli/option_checks.hpp"
#include "db/database_factory.hpp"
#include "db/practice_database.hpp"
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
  command
      .add_option_function<int>(
          "--province", [&options](int p) { options.province = p; },
          "Province index (overrides the practice database)")
      ->check(provinceIndex());
}

int parseCountry(const std::string& text) {
  std::string c = GeneralUtilities::lowerCase(text);
  if (c == "ca" || c == "1") return 1;
  if (c == "us" || c == "2") return 2;
  throw CLI::ValidationError("--country", "takes ca or us");
}

namespace {

// Seconds to wait for a lock that another program holds.
double lockWaitSeconds() {
  const char* text = std::getenv("LFIMPORT_LOCK_WAIT");
  if (text == nullptr || *text == '\0') return 10;
  char* end = nullptr;
  const double seconds = std::strtod(text, &end);
  if (*end != '\0' || !(seconds >= 0) || seconds > 3600)
    throw Failure("LFIMPORT_LOCK_WAIT must be a number of seconds, not '" + std::string(text) +
                  "'");
  return seconds;
}

}  // namespace

std::unique_ptr<Database> openPracticeDatabase(const std::string& path, bool readOnly) {
  namespace fs = std::filesystem;
  if (path.empty()) throw UsageError("no practice database given (--practice)");
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found)
    throw Failure("the practice database '" + path +
                  "' does not exist (create one with lfimport init)");
  if (status.type() == fs::file_type::directory)
    throw Failure("'" + path + "' is a folder, not a practice database");
  if (status.type() != fs::file_type::regular)
    throw Failure("'" + path + "' is not a practice database file");

  const double wait = lockWaitSeconds();
  DatabaseOptions options;
  options.practice = true;
  options.readOnly = readOnly;
  options.busyTimeoutMs = static_cast<int>(wait * 1000);
  options.openCheck = [&path](Database& opened) {
    try {
      checkPracticeTables(opened);
    } catch (const Failure& refused) {
      throw Failure("'" + path + "' is not a Ledgerfolio practice database: " + refused.what());
    }
  };
  std::unique_ptr<Database> db = openDatabase(path, options);
  if (db->isOpen()) return db;
  switch (db->connectFailure()) {
    case ConnectFailure::Busy:
      throw Failure(fmt::format(
          "the practice database '{}' is locked by another program (waited {} s); try again "
          "when it has finished",
          path, wait));
    case ConnectFailure::ReadOnly:
      throw Failure("the practice database '" + path +
                    "' is read-only, and this command writes to it");
    case ConnectFailure::NotADatabase:
      throw Failure("'" + path + "' is not a Ledgerfolio practice database (not a database file)");
    default:
      throw Failure("cannot open the practice database '" + path +
                    "': " + db->connectFailureMessage());
  }
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
  db_ = openPracticeDatabase(options.practicePath, options.readOnly);
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

void HostSession::answerQuestions(bool interactive, const WizardAnswers& questions, bool quiet) {
  if (interactive) {
    messages_->setInput(&std::cin);
    return;
  }
  answersBox_ = makeAnswersMessageBox(questions, &report_, quiet ? nullptr : &std::cerr);
  moduleState().MsgboxClass = answersBox_.get();
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
