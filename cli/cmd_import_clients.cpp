// lfimport import personal|business: brings clients from a delimited text file into a
// practice database through the text import wizard, driven by an answers file or at the
// terminal. There is no sensible default mapping of columns to fields, so without an answers
// file and without a terminal the command refuses. The run report (rows read, created,
// updated, skipped and failed, messages, questions, automatic column choices) is summarised
// on stderr and written as JSON with --report; the exit code is not zero when a row failed.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/import_command.hpp"
#include "cli/json_output.hpp"
#include "cli/report_file.hpp"
#include "host/message_box.hpp"
#include "host/progress_dialog.hpp"
#include "text/cls_import_business_text_file.hpp"
#include "text/cls_import_personal_text_file.hpp"
#include "text/import_file_checks.hpp"
#include "text/text_import_answers.hpp"
#include "text/text_import_terminal.hpp"
#include "text/text_import_wizard.hpp"

namespace lf::cli {
namespace {

struct ImportClientsOptions {
  HostOptions host;
  std::string file;
  std::string answers;
  std::string reportPath;
  bool autoMap = false;
};

int runImport(const ImportClientsOptions& o, bool personal) {
  const char* name = personal ? "import personal" : "import business";
  TextImportAnswers answers;
  if (!o.answers.empty()) answers = readTextImportAnswers(o.answers);
  if (!o.file.empty()) answers.file = o.file;
  if (answers.file.empty()) throw UsageError("no client file given (--file)");
  const bool interactive = o.host.interactive || (o.answers.empty() && ::isatty(STDIN_FILENO));
  if (o.answers.empty() && !interactive)
    throw UsageError(
        "no answers file (--answers) and no terminal to ask at: which field each column holds "
        "must be given in an answers file, or at the terminal with --interactive");
  checkImportFile(answers.file);
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);

  HostSession session(o.host);
  RunReport& report = session.report();
  session.answerQuestions(interactive, answers.questions, o.host.quiet);
  moduleState().makeProgressDialog = []() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<TerminalProgressDialog>();
  };

  clsImportPersonalTextFile personalImport;
  clsImportBusinessTextFile businessImport;
  std::unique_ptr<TextImportWizard> wizard;
  if (personal) {
    personalImport.counters = &report.stage("personal clients");
    wizard = std::make_unique<frmImportPersonalClients>(personalImport);
  } else {
    businessImport.counters = &report.stage("business clients");
    wizard = std::make_unique<frmImportCSV>(businessImport);
  }
  std::vector<std::string> autoChoices;
  const bool finished =
      interactive ? runTextImportWizardAtTerminal(*wizard, std::cin, std::cerr, answers.file)
                  : runTextImportWizardFromAnswers(*wizard, answers, o.autoMap, autoChoices);
  for (const std::string& choice : autoChoices)
    report.addMessage("Assigned automatically: " + choice, kMessageInformation);

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  if (!finished) {
    std::cerr << "lfimport " << name << ": the wizard did not finish; nothing was imported\n";
    return kExitUsage;
  }
  if (!wizard->imported()) return kExitFailed;
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

void addImportCommand(CLI::App& app, bool personal) {
  auto options = std::make_shared<ImportClientsOptions>();
  CLI::App* cmd = importCommand(app)->add_subcommand(
      personal ? "personal" : "business",
      personal ? "Import people from a delimited file as contacts or personal-tax clients"
               : "Import companies (and a contact of each) from a delimited file");
  cmd->add_option("--file", options->file, "The delimited client file");
  cmd->add_option("--practice", options->host.practicePath, "Practice database");
  auto* answers = cmd->add_option("--answers", options->answers, "Wizard answers (JSON)");
  auto* interactive =
      cmd->add_flag("--interactive", options->host.interactive, "Run the wizard at the terminal");
  answers->excludes(interactive);
  cmd->add_option("--report", options->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--auto-map", options->autoMap,
                "Assign columns the answers leave open by their captions");
  cmd->add_flag("--quiet", options->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, options->host);
  cmd->callback([options, personal] {
    runCommand(personal ? "import personal" : "import business",
               [&] { return runImport(*options, personal); });
  });
}

const CommandRegistration registration(91, [](CLI::App& app) {
  addImportCommand(app, true);
  addImportCommand(app, false);
});

}  // namespace
}  // namespace lf::cli
