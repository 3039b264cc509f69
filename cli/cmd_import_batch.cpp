// lfimport import wip|invoices|ar: loads opening balances from a prepared database (SQLite or
// Access) into a practice database: work in progress from its WIP table as dockets, open
// invoices or aged receivable totals from its AR table as invoices. Clients are found through
// the cross-references a CCH Practice sync keeps; a client not known there is made after the
// question "<name>: Is this a business client?", answered from the answers file (its
// "questions"), at the terminal with --interactive, or "no" without either. The run report is
// summarised on stderr and written as JSON with --report; the exit code is not zero when a row
// failed or the prepared database could not be read.
#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>
#include <memory>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/import_command.hpp"
#include "cli/report_file.hpp"
#include "db/access_export_copy.hpp"
#include "host/progress_dialog.hpp"
#include "sync/batch/cls_import_ar_aged_summaries.hpp"
#include "sync/batch/cls_import_invoices.hpp"
#include "sync/batch/cls_import_wip.hpp"
#include "sync/wizard_answers.hpp"

namespace lf::cli {
namespace {

struct BatchImportOptions {
  HostOptions host;
  std::string source;
  std::string answers;
  std::string reportPath;
};

// What one batch import is to the command.
struct BatchImportCommand {
  std::string name;         // the subcommand: "wip"
  std::string description;  // its help line
  std::function<std::unique_ptr<BatchImportEngine>()> makeEngine;
};

int runBatchImport(const BatchImportCommand& command, const BatchImportOptions& o) {
  WizardAnswers answers;
  if (!o.answers.empty()) answers = readWizardAnswers(o.answers);
  if (!o.source.empty()) answers.source = o.source;
  if (answers.source.empty()) throw UsageError("no prepared database given (--source)");
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);
  // An Access file is read through a SQLite copy, deleted at the end.
  const SourceFileCopy sourceFile(answers.source, "the prepared database");

  HostSession session(o.host);
  RunReport& report = session.report();
  std::ostream* log = o.host.quiet ? nullptr : &std::cerr;
  std::unique_ptr<TerminalMessageBox> answersBox;
  MessageBox* messages = &session.messages();
  if (!o.host.interactive) {
    answersBox = makeAnswersMessageBox(answers, &report, log);
    messages = answersBox.get();
  } else {
    session.messages().setInput(&std::cin);
  }
  moduleState().makeProgressDialog = []() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<TerminalProgressDialog>();
  };

  std::unique_ptr<BatchImportEngine> engine = command.makeEngine();
  engine->setErrorClass(&session.errors());
  engine->setMsgboxClass(messages);
  engine->setLocaleReference(&session.locale());
  engine->setClientDropDownCtrlReference(&session.dropDown());
  engine->setDatabaseReference(&session.practice());
  engine->setRunReport(&report);
  SyncOptions& options = engine->options();
  if (answers.onlyNewEntries) options.importOnlyNewEntries = *answers.onlyNewEntries;
  if (answers.duplicateCheck) options.duplicateCheckEnabled = *answers.duplicateCheck;
  if (answers.category) options.importCategory = *answers.category;
  engine->setImportDatabaseLocation(sourceFile.databasePath());
  if (!engine->useImportDatabase())
    throw Failure("cannot open the prepared database '" + answers.source + "'");
  engine->ImportImportInformation();
  engine.reset();  // the last records are committed and the recordsets closed

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

void addBatchImportCommand(CLI::App& app, const BatchImportCommand& source) {
  auto command = std::make_shared<BatchImportCommand>(source);
  auto options = std::make_shared<BatchImportOptions>();
  CLI::App* cmd = importCommand(app)->add_subcommand(source.name, source.description);
  cmd->add_option("--source", options->source, "Prepared database (SQLite or Access)");
  cmd->add_option("--practice", options->host.practicePath, "Practice database");
  auto* answers = cmd->add_option("--answers", options->answers, "Answers to the questions (JSON)")
                      ->check(CLI::ExistingFile);
  auto* interactive = cmd->add_flag("--interactive", options->host.interactive,
                                    "Ask the questions at the terminal");
  answers->excludes(interactive);
  cmd->add_option("--report", options->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--quiet", options->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, options->host);
  cmd->callback([command, options] {
    runCommand("import " + command->name, [&] { return runBatchImport(*command, *options); });
  });
}

const CommandRegistration registration(92, [](CLI::App& app) {
  addBatchImportCommand(app, {"wip", "Load work in progress (WIP table) as dockets",
                              [] { return std::make_unique<clsImportWIP>(); }});
  addBatchImportCommand(app, {"invoices", "Load open invoices (AR table)",
                              [] { return std::make_unique<clsImportInvoices>(); }});
  addBatchImportCommand(app, {"ar", "Load aged receivable totals (AR table) as starting balances",
                              [] { return std::make_unique<clsImportARAgedSummaries>(); }});
});

}  // namespace
}  // namespace lf::cli
