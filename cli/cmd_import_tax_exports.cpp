// lfimport import cantax-t1|cantax-t2plus|drtax-t1|drtax-t2: brings clients in from a tax
// product's export through its wizard: the raw export is repaired into the modified file
// beside it, loaded with its columns mapped, and imported by the personal (T1) or business
// (T2) text import; the CANTAX T1 import then sets the personal-tax marks from the line
// amounts. The wizard is driven by an answers file, at the terminal, or (with neither and no
// terminal) by its defaults. A file that is not the product's export is refused before
// anything is written to the practice database. The run report is summarised on stderr and
// written as JSON with --report; the exit code is not zero when a row failed.
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
#include "tax/cantax_wizard_answers.hpp"
#include "tax/cantax_wizard_terminal.hpp"
#include "tax/drtax_import_wizard.hpp"
#include "text/import_file_checks.hpp"

namespace lf::cli {
namespace {

struct TaxImportOptions {
  HostOptions host;
  std::string file;
  std::string answers;
  std::string reportPath;
};

struct Route {
  const char* name;
  const char* description;
  const char* stage;
};

constexpr Route kRoutes[] = {
    {"cantax-t1", "Import personal clients from a CANTAX T1 export", "personal clients"},
    {"cantax-t2plus", "Import corporations from a CANTAX T2Plus export", "business clients"},
    {"drtax-t1", "Import personal clients from a Dr. Tax T1 export", "personal clients"},
    {"drtax-t2", "Import corporations from a Dr. Tax T2 export", "business clients"},
};

std::unique_ptr<TaxExportImportWizard> makeWizard(const std::string& route,
                                                  StageCounters& counters) {
  if (route == "cantax-t1") {
    auto wizard = std::make_unique<frmImportCANTAXT1>();
    wizard->importCSV.counters = &counters;
    return wizard;
  }
  if (route == "cantax-t2plus") {
    auto wizard = std::make_unique<frmImportCANTAXT2Plus>();
    wizard->importCSV.counters = &counters;
    return wizard;
  }
  if (route == "drtax-t1") {
    auto wizard = std::make_unique<frmImportDrTaxT1>();
    wizard->importCSV.counters = &counters;
    return wizard;
  }
  auto wizard = std::make_unique<frmImportDrTaxT2>();
  wizard->importCSV.counters = &counters;
  return wizard;
}

int runTaxImport(const TaxImportOptions& o, const Route& route) {
  const std::string name = std::string("import ") + route.name;
  TaxImportAnswers answers;
  if (!o.answers.empty()) answers = readTaxImportAnswers(o.answers);
  if (!o.file.empty()) answers.text.file = o.file;
  if (answers.text.file.empty()) throw UsageError("no export file given (--file)");
  checkImportFile(answers.text.file);
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);
  const bool interactive = o.host.interactive;

  HostSession session(o.host);
  RunReport& report = session.report();
  // Unattended, the export exists already: going on without saving a template is the
  // default unless the answers say otherwise.
  if (!interactive) answers.text.questions.answers.emplace("without creating this file", true);
  session.answerQuestions(interactive, answers.text.questions, o.host.quiet);
  moduleState().makeProgressDialog = []() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<TerminalProgressDialog>();
  };

  std::unique_ptr<TaxExportImportWizard> wizard = makeWizard(route.name, report.stage(route.stage));
  const bool finished =
      interactive ? runTaxImportWizardAtTerminal(*wizard, std::cin, std::cerr, answers.text.file)
                  : runTaxImportWizardFromAnswers(*wizard, answers);
  if (wizard->fileOpened())
    report.addMessage("Modified file: " + wizard->modifiedPath() + " (" +
                          std::to_string(wizard->modifiedRows()) + " rows)",
                      kMessageInformation);
  if (auto* drtax = dynamic_cast<DrTaxImportWizard*>(wizard.get());
      drtax != nullptr && drtax->droppedRows() > 0)
    report.addMessage(std::to_string(drtax->droppedRows()) +
                          " rows of the export have fewer than 15 values and were left out",
                      kMessageInformation);

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  if (!finished) {
    std::cerr << "lfimport " << name << ": the wizard did not finish; nothing was imported\n";
    return kExitUsage;
  }
  if (!wizard->imported()) return kExitFailed;
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

void addTaxImportCommand(CLI::App& app, const Route& route) {
  auto options = std::make_shared<TaxImportOptions>();
  CLI::App* cmd = importCommand(app)->add_subcommand(route.name, route.description);
  cmd->add_option("--file", options->file, "The export file");
  cmd->add_option("--practice", options->host.practicePath, "Practice database");
  auto* answers = cmd->add_option("--answers", options->answers, "Wizard answers (JSON)");
  auto* interactive =
      cmd->add_flag("--interactive", options->host.interactive, "Run the wizard at the terminal");
  answers->excludes(interactive);
  cmd->add_option("--report", options->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--quiet", options->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, options->host);
  cmd->callback([options, &route] {
    runCommand(std::string("import ") + route.name, [&] { return runTaxImport(*options, route); });
  });
}

const CommandRegistration registration(93, [](CLI::App& app) {
  for (const Route& route : kRoutes) addTaxImportCommand(app, route);
});

}  // namespace
}  // namespace lf::cli
