// lfimport sync tps: synchronises a TPS export database into a practice database, through
// the TPS wizard driven by an answers file, at the terminal, or with the wizard's defaults
// (all four groups, the pre-checked client guesses, date ranges from yesterday, only new
// entries). With --list-clients it prints the export's clients as the wizard classifies
// them, as JSON. The run report (counters per stage, messages, questions and answers,
// errors) is summarised on stderr and written as JSON with --report. The exit code is not
// zero when a row failed.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/json_output.hpp"
#include "db/database_factory.hpp"
#include "host/progress_dialog.hpp"
#include "sync/cls_import_tps_information.hpp"
#include "sync/tps_contact_tree.hpp"
#include "sync/tps_wizard.hpp"
#include "sync/tps_wizard_terminal.hpp"
#include "sync/wizard_answers.hpp"

namespace lf::cli {
namespace {

struct SyncTPSOptions {
  HostOptions host;
  std::string source;
  std::string answers;
  std::string reportPath;
  bool listClients = false;
};

// Refuses an export path that names no file, before any work.
void requireExportFile(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found)
    throw Failure("the TPS export '" + path + "' does not exist");
  if (status.type() == fs::file_type::directory)
    throw Failure("'" + path + "' is a folder, not a TPS export");
  if (status.type() != fs::file_type::regular)
    throw Failure("'" + path + "' is not a TPS export file");
}

// Refuses a report path that cannot be written, before the sync runs rather than after it.
void requireReportPath(const std::string& path) {
  namespace fs = std::filesystem;
  if (fs::is_directory(path)) throw Failure("the report '" + path + "' is a folder");
  const fs::path folder = fs::path(path).parent_path();
  if (!folder.empty() && !fs::is_directory(folder))
    throw Failure("the folder of the report '" + path + "' does not exist");
}

void writeReport(const RunReport& report, const std::string& path) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (out) out << jsonText(report.toJson()) << "\n";
  out.close();
  if (!out) throw Failure("cannot write the report '" + path + "'");
}

int listClients(const std::string& sourcePath) {
  requireExportFile(sourcePath);
  std::unique_ptr<Database> opened = openDatabase(sourcePath);
  Database& source = *opened;
  if (!source.isOpen())
    throw Failure("cannot open the TPS export '" + sourcePath +
                  "': " + source.connectFailureMessage());
  ClientTree tree;
  clsTPSContactTree contactTree;
  contactTree.setTreeViewControl(&tree);
  contactTree.setShowTreeViewCheckBoxes(true);
  contactTree.setShowProgress(false);
  contactTree.setSourceDatabase(&source);
  contactTree.populateTPSTree();
  bool result = false;
  contactTree.populateInitialTPSClientsCheckedItems(true, result);

  nlohmann::json clients = nlohmann::json::array();
  std::int32_t rs =
      source.openRecordset("SELECT Clients.ClientID, Clients.Name, Clients.InActive FROM Clients;",
                           kCursorKeyset, kLockReadOnly);
  for (bool more = source.hasRecord(rs); more && !source.isEOF(rs); source.moveNext(rs)) {
    const std::string id = source.getField(rs, "ClientID").toString();
    const int node = tree.findKey(ClientTree::clientKey(id));
    clients.push_back({{"id", id},
                       {"name", source.getField(rs, "Name").toString()},
                       {"inactive", source.getField(rs, "InActive").toBool()},
                       {"business", node >= 0 && tree.node(node).checked}});
  }
  source.closeRecordset(rs);
  std::cout << jsonText(clients) << "\n";
  return 0;
}

int runSync(const SyncTPSOptions& options) {
  WizardAnswers answers;
  if (!options.answers.empty()) answers = readWizardAnswers(options.answers);
  if (!options.source.empty()) answers.source = options.source;
  if (answers.source.empty()) throw UsageError("no TPS export given (--source)");
  requireExportFile(answers.source);
  if (!options.reportPath.empty()) requireReportPath(options.reportPath);

  HostSession session(options.host);
  RunReport& report = session.report();

  std::ostream* log = options.host.quiet ? nullptr : &std::cerr;
  std::unique_ptr<TerminalMessageBox> answersBox;
  MessageBox* messages = &session.messages();
  if (!options.host.interactive) {
    answersBox = makeAnswersMessageBox(answers, &report, log);
    messages = answersBox.get();
  } else {
    session.messages().setInput(&std::cin);  // the run's questions are asked at the terminal
  }
  // The bar is drawn only when stderr is a terminal.
  moduleState().makeProgressDialog = []() -> std::unique_ptr<ProgressDialog> {
    return std::make_unique<TerminalProgressDialog>();
  };

  clsImportTPSInformation engine;
  engine.setErrorClass(&session.errors());
  engine.setMsgboxClass(messages);
  engine.setLocaleReference(&session.locale());
  engine.setClientDropDownCtrlReference(&session.dropDown());
  engine.setDatabaseReference(&session.practice());
  engine.setRunReport(&report);

  bool finished = false;
  engine.runWizard = [&](clsImportTPSInformation& e) {
    TPSWizardHooks hooks;
    hooks.setTPSDatabaseLocation = [&e](const std::string& path) {
      e.setTPSDatabaseLocation(path);
    };
    hooks.sourceDatabase = [&e] { return e.sourceDatabase(); };
    hooks.importTPSInformation = [&e] { e.importTPSInformation(); };
    frmTPSWizard wizard(e.options(), hooks);
    if (options.host.interactive)
      finished = runTPSWizardAtTerminal(wizard, std::cin, std::cerr, answers.source);
    else
      finished = runTPSWizardFromAnswers(wizard, answers);
  };
  engine.openTPSImportForm();

  if (!options.host.quiet) std::cerr << report.summary();
  if (!options.reportPath.empty()) writeReport(report, options.reportPath);
  if (!finished) {
    std::cerr << "lfimport sync tps: the wizard did not finish; nothing was synchronised\n";
    return kExitUsage;
  }
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

CLI::App* syncCommand(CLI::App& app) {
  for (CLI::App* sub : app.get_subcommands({}))
    if (sub->get_name() == "sync") return sub;
  CLI::App* sync = app.add_subcommand("sync", "Synchronise a practice system's export");
  sync->require_subcommand(1);
  return sync;
}

CommandRegistration registration(30, [](CLI::App& app) {
  auto options = std::make_shared<SyncTPSOptions>();
  CLI::App* cmd = syncCommand(app)->add_subcommand("tps", "Synchronise a TPS export database");
  cmd->add_option("--source", options->source, "TPS export database");
  cmd->add_option("--practice", options->host.practicePath, "Practice database");
  auto* answers = cmd->add_option("--answers", options->answers, "Wizard answers (JSON)")
                      ->check(CLI::ExistingFile);
  auto* interactive =
      cmd->add_flag("--interactive", options->host.interactive, "Run the wizard at the terminal");
  answers->excludes(interactive);
  cmd->add_option("--report", options->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--list-clients", options->listClients,
                "Print the export's clients as classified (JSON) and stop");
  cmd->add_flag("--quiet", options->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, options->host);
  cmd->callback([options] {
    runCommand("sync tps", [&] {
      if (!options->listClients) return runSync(*options);
      if (options->source.empty()) throw UsageError("--list-clients needs --source");
      return listClients(options->source);
    });
  });
});

}  // namespace
}  // namespace lf::cli
