// The stand-alone host of one lfimport command: opens the practice database, makes the
// error service (with the --on-error policy), the message box, the locale and drop-down
// services and the run report, and installs them as the module-level references.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "db/database.hpp"
#include "host/console_error_service.hpp"
#include "host/practice_host_services.hpp"
#include "host/run_report.hpp"
#include "host/terminal_message_box.hpp"
#include "sync/wizard_answers.hpp"

namespace CLI {
class App;
}

namespace lf::cli {

// Options every command that works on a practice database shares.
struct HostOptions {
  std::string practicePath;
  std::string onError = "continue";
  std::optional<int> country;
  std::optional<int> province;
  bool interactive = false;
  bool quiet = false;
  // The command only reads the practice database: it is opened so that nothing can be
  // written to it, and a read-only file will do.
  bool readOnly = false;
};

// Adds --on-error, --country and --province to a subcommand.
void addHostOptions(CLI::App& command, HostOptions& options);

// Country given as ca|us|1|2.
int parseCountry(const std::string& text);

class HostSession {
 public:
  // Opens the practice database; throws Failure with a one-line message naming the file when
  // it is missing, locked, read-only for a command that writes, or no practice database.
  explicit HostSession(const HostOptions& options);
  ~HostSession();

  Database& practice() { return *db_; }
  RunReport& report() { return report_; }
  TerminalMessageBox& messages() { return *messages_; }
  ConsoleErrorService& errors() { return *errors_; }
  PracticeLocale& locale() { return *locale_; }
  PracticeClientDropDown& dropDown() { return *dropDown_; }
  // Where the run's questions are answered: at the terminal when interactive, else from the
  // answers file's questions (the box installed as the module's message box, logging to
  // standard error unless quiet).
  void answerQuestions(bool interactive, const WizardAnswers& questions, bool quiet);

 private:
  RunReport report_;
  std::unique_ptr<Database> db_;
  std::unique_ptr<ConsoleErrorService> errors_;
  std::unique_ptr<TerminalMessageBox> messages_;
  std::unique_ptr<PracticeLocale> locale_;
  std::unique_ptr<PracticeClientDropDown> dropDown_;
  std::unique_ptr<TerminalMessageBox> answersBox_;
};

// Installs a console error service for a command that needs no practice database (the
// parsers), restoring the previous one at the end.
class ScopedErrorService {
 public:
  ScopedErrorService(int action, std::ostream* log);
  ~ScopedErrorService();

 private:
  ConsoleErrorService service_;
  ErrorService* saved_;
  bool savedIsSet_;
};

// Opens a practice database for a command, or throws Failure with a one-line message naming
// the file. Nothing is written to a file before it is known to be a complete practice
// database. A lock that another program holds is waited for LFIMPORT_LOCK_WAIT seconds
// (10 unless set) before the command gives up.
std::unique_ptr<Database> openPracticeDatabase(const std::string& path, bool readOnly);

}  // namespace lf::cli
