// lfimport sync tps: synchronises a TPS export database into a practice database, through
// the TPS wizard driven by an answers file, at the terminal, or with the wizard's defaults
// (all four groups, the pre-checked client guesses, date ranges from yesterday, only new
// entries). With --list-clients it prints the export's clients as the wizard classifies
// them, as JSON. The run report (counters per stage, messages, questions and answers,
// errors) is summarised on stderr and written as JSON with --report. The exit code is not
// zero when a row failed.
#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "db/sqlite_database.hpp"
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

int listClients(const std::string& sourcePath) {
  SqliteDatabase source;
  source.setDatabasePath(sourcePath);
  source.connect(2);
  if (!source.isOpen()) {
    std::cerr << "lfimport sync tps: cannot open the export '" << sourcePath << "'\n";
    return 1;
  }
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
  std::cout << clients.dump(2) << "\n";
  return 0;
}

int runSync(const SyncTPSOptions& options) {
  HostSession session(options.host);
  RunReport& report = session.report();

  WizardAnswers answers;
  if (!options.answers.empty()) answers = readWizardAnswers(options.answers);
  if (!options.source.empty()) answers.source = options.source;
  if (answers.source.empty()) throw std::runtime_error("no TPS export given (--source)");

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
      finished = runTPSWizardAtTerminal(wizard, std::cin, std::cerr);
    else
      finished = runTPSWizardFromAnswers(wizard, answers);
  };
  engine.openTPSImportForm();

  if (!options.reportPath.empty()) {
    std::ofstream out(options.reportPath);
    out << report.toJson().dump(2) << "\n";
  }
  if (!options.host.quiet) std::cerr << report.summary();
  if (!finished) {
    std::cerr << "lfimport sync tps: the wizard did not finish; nothing was synchronised\n";
    return 2;
  }
  return report.failedRows() > 0 || report.errorCount() > 0 ? 1 : 0;
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
    try {
      if (options->listClients) {
        if (options->source.empty()) throw std::runtime_error("--list-clients needs --source");
        exitCode() = listClients(options->source);
        return;
      }
      exitCode() = runSync(*options);
    } catch (const std::exception& e) {
      std::cerr << "lfimport sync tps: " << e.what() << "\n";
      exitCode() = 1;
    }
  });
});

}  // namespace
}  // namespace lf::cli
