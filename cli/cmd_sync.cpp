// lfimport sync tps|cch|balaboss|bill4time: synchronises a practice system's export database into a
// practice database, through the source's wizard driven by an answers file, at the terminal, or
// with the wizard's defaults (all four groups, the pre-checked client guesses, date ranges from
// yesterday, only new entries). With --list-clients it prints the export's clients as the
// wizard classifies them, as JSON. The run report (counters per stage, messages, questions
// and answers, errors) is summarised on stderr and written as JSON with --report. The exit
// code is not zero when a row failed.
//
// The command is the same for every source; a source gives its words, its contact tree and
// how its engine opens its wizard (SyncSourceCommand).
#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/json_output.hpp"
#include "cli/report_file.hpp"
#include "db/access_export_copy.hpp"
#include "db/database_factory.hpp"
#include "host/progress_dialog.hpp"
#include "sync/balaboss_contact_tree.hpp"
#include "sync/balaboss_wizard.hpp"
#include "sync/bill4time_contact_tree.hpp"
#include "sync/bill4time_wizard.hpp"
#include "sync/cch_practice_contact_tree.hpp"
#include "sync/cch_practice_wizard.hpp"
#include "sync/cls_import_balaboss_info.hpp"
#include "sync/cls_import_bill4time_info.hpp"
#include "sync/cls_import_cch_practice_info.hpp"
#include "sync/cls_import_tps_information.hpp"
#include "sync/sources/balaboss_source.hpp"
#include "sync/sources/bill4time_source.hpp"
#include "sync/sources/cch_practice_source.hpp"
#include "sync/sources/tps_source.hpp"
#include "sync/sync_wizard_terminal.hpp"
#include "sync/tps_contact_tree.hpp"
#include "sync/tps_wizard.hpp"
#include "sync/wizard_answers.hpp"

namespace lf::cli {
namespace {

struct SyncCommandOptions {
  HostOptions host;
  std::string source;
  std::string answers;
  std::string reportPath;
  bool listClients = false;
};

// Runs a source's wizard on its engine: the wizard is made with the hooks given and handed
// to the front end; answers whether it finished.
using RunWizard =
    std::function<bool(SyncWizardHooks hooks, const std::function<bool(SyncWizard&)>& front)>;

// What a source is to the command.
struct SyncSourceCommand {
  std::string name;        // the subcommand: "tps"
  std::string exportWord;  // "TPS" in "the TPS export"
  const SourceDescription& (*description)();
  std::function<std::unique_ptr<SourceContactTree>()> makeTree;
  // Makes the engine and answers it with the operation that opens its wizard.
  std::function<SyncEngine&(std::unique_ptr<SyncEngine>& owner, RunWizard& openForm)> makeEngine;
};

// Refuses an export path that names no file, before any work.
void requireExportFile(const std::string& path, const std::string& word) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found)
    throw Failure("the " + word + " export '" + path + "' does not exist");
  if (status.type() == fs::file_type::directory)
    throw Failure("'" + path + "' is a folder, not a " + word + " export");
  if (status.type() != fs::file_type::regular)
    throw Failure("'" + path + "' is not a " + word + " export file");
}

int listClients(const SyncSourceCommand& command, const std::string& sourcePath) {
  const std::string word = command.exportWord;
  requireExportFile(sourcePath, word);
  const SourceFileCopy file(sourcePath, "the " + word + " export");
  std::unique_ptr<Database> opened = openDatabase(file.databasePath());
  Database& source = *opened;
  if (!source.isOpen())
    throw Failure("cannot open the " + word + " export '" + sourcePath +
                  "': " + source.connectFailureMessage());
  const SourceDescription& description = command.description();
  ClientTree tree;
  std::unique_ptr<SourceContactTree> contactTree = command.makeTree();
  contactTree->setTreeViewControl(&tree);
  contactTree->setShowTreeViewCheckBoxes(true);
  contactTree->setShowProgress(false);
  contactTree->setSourceDatabase(&source);
  contactTree->populateTree();
  bool result = false;
  contactTree->populateInitialClientsCheckedItems(true, result);

  nlohmann::json clients = nlohmann::json::array();
  std::int32_t rs =
      source.openRecordset(description.treeClientsStatement, kCursorKeyset, kLockReadOnly);
  for (bool more = source.hasRecord(rs); more && !source.isEOF(rs); source.moveNext(rs)) {
    std::vector<std::string> parts;
    for (const std::string& column : description.clientKey.columns)
      parts.push_back(source.getField(rs, column).toString());
    const std::string id = ClientKeyShape::join(parts);
    const int node = tree.findKey(ClientTree::clientKey(id));
    nlohmann::json client = {{"id", id},
                             {"name", source.getField(rs, description.treeNameColumn).toString()}};
    if (!description.treeInactiveColumn.empty())
      client["inactive"] = source.getField(rs, description.treeInactiveColumn).toBool();
    client["business"] = node >= 0 && tree.node(node).checked;
    clients.push_back(client);
  }
  source.closeRecordset(rs);
  std::cout << jsonText(clients) << "\n";
  return 0;
}

int runSync(const SyncSourceCommand& command, const SyncCommandOptions& options) {
  const std::string word = command.exportWord;
  WizardAnswers answers;
  if (!options.answers.empty()) answers = readWizardAnswers(options.answers);
  if (!options.source.empty()) answers.source = options.source;
  if (answers.source.empty()) throw UsageError("no " + word + " export given (--source)");
  requireExportFile(answers.source, word);
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

  std::unique_ptr<SyncEngine> owner;
  RunWizard openForm;
  SyncEngine& engine = command.makeEngine(owner, openForm);
  engine.setErrorClass(&session.errors());
  engine.setMsgboxClass(messages);
  engine.setLocaleReference(&session.locale());
  engine.setClientDropDownCtrlReference(&session.dropDown());
  engine.setDatabaseReference(&session.practice());
  engine.setRunReport(&report);

  std::unique_ptr<SourceFileCopy> sourceFile;  // an Access export is read through a copy
  SyncWizardHooks hooks;
  hooks.setDatabaseLocation = [&](const std::string& path) {
    sourceFile = std::make_unique<SourceFileCopy>(path, "the " + word + " export");
    engine.setDatabaseLocation(sourceFile->databasePath());
  };
  hooks.sourceDatabase = [&engine] { return engine.sourceDatabase(); };
  hooks.importInformation = [&engine] { engine.importInformation(); };
  const bool finished = openForm(std::move(hooks), [&](SyncWizard& wizard) {
    if (options.host.interactive)
      return runSyncWizardAtTerminal(wizard, std::cin, std::cerr, answers.source);
    return runSyncWizardFromAnswers(wizard, answers);
  });

  if (!options.host.quiet) std::cerr << report.summary();
  if (!options.reportPath.empty()) writeReportFile(report, options.reportPath);
  if (!finished) {
    std::cerr << "lfimport sync " << command.name
              << ": the wizard did not finish; nothing was synchronised\n";
    // An error on the way (an export that cannot be read) is a failure, not a usage mistake.
    return report.errorCount() > 0 ? kExitFailed : kExitUsage;
  }
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

// The sources of the command.
SyncSourceCommand tpsCommand() {
  return {"tps", "TPS", &tpsSourceDescription, [] { return std::make_unique<clsTPSContactTree>(); },
          [](std::unique_ptr<SyncEngine>& owner, RunWizard& openForm) -> SyncEngine& {
            auto engine = std::make_unique<clsImportTPSInformation>();
            clsImportTPSInformation& e = *engine;
            openForm = [&e](SyncWizardHooks hooks, const std::function<bool(SyncWizard&)>& front) {
              bool finished = false;
              e.runWizard = [&](clsImportTPSInformation& engine) {
                TPSWizardHooks tpsHooks;
                tpsHooks.importTPSInformation = std::move(hooks.importInformation);
                tpsHooks.setTPSDatabaseLocation = std::move(hooks.setDatabaseLocation);
                tpsHooks.sourceDatabase = std::move(hooks.sourceDatabase);
                frmTPSWizard wizard(engine.options(), std::move(tpsHooks));
                finished = front(wizard);
              };
              e.openTPSImportForm();
              return finished;
            };
            owner = std::move(engine);
            return e;
          }};
}

SyncSourceCommand cchCommand() {
  return {"cch", "CCH Practice", &cchPracticeSourceDescription,
          [] { return std::make_unique<clsCCHPracticeContactTree>(); },
          [](std::unique_ptr<SyncEngine>& owner, RunWizard& openForm) -> SyncEngine& {
            auto engine = std::make_unique<clsImportCCHPracticeInfo>();
            clsImportCCHPracticeInfo& e = *engine;
            openForm = [&e](SyncWizardHooks hooks, const std::function<bool(SyncWizard&)>& front) {
              bool finished = false;
              e.runWizard = [&](clsImportCCHPracticeInfo& engine) {
                frmCCHPracticeWizard wizard(engine.options(), std::move(hooks));
                finished = front(wizard);
              };
              e.openCCHPracticeImportForm();
              return finished;
            };
            owner = std::move(engine);
            return e;
          }};
}

SyncSourceCommand balabossCommand() {
  return {"balaboss", "Balaboss", &balabossSourceDescription,
          [] { return std::make_unique<clsBalabossContactTree>(); },
          [](std::unique_ptr<SyncEngine>& owner, RunWizard& openForm) -> SyncEngine& {
            auto engine = std::make_unique<clsImportBalabossInfo>();
            clsImportBalabossInfo& e = *engine;
            openForm = [&e](SyncWizardHooks hooks, const std::function<bool(SyncWizard&)>& front) {
              bool finished = false;
              e.runWizard = [&](clsImportBalabossInfo& engine) {
                frmBalabossWizard wizard(engine.options(), std::move(hooks));
                finished = front(wizard);
              };
              e.openBalabossImportForm();
              return finished;
            };
            owner = std::move(engine);
            return e;
          }};
}

SyncSourceCommand bill4TimeCommand() {
  return {"bill4time", "Bill4Time", &bill4TimeSourceDescription,
          [] { return std::make_unique<clsBill4TimeContactTree>(); },
          [](std::unique_ptr<SyncEngine>& owner, RunWizard& openForm) -> SyncEngine& {
            auto engine = std::make_unique<clsImportBill4TimeInfo>();
            clsImportBill4TimeInfo& e = *engine;
            openForm = [&e](SyncWizardHooks hooks, const std::function<bool(SyncWizard&)>& front) {
              bool finished = false;
              e.runWizard = [&](clsImportBill4TimeInfo& engine) {
                frmBill4TimeWizard wizard(engine.options(), std::move(hooks));
                finished = front(wizard);
              };
              e.openBill4TimeImportForm();
              return finished;
            };
            owner = std::move(engine);
            return e;
          }};
}

CLI::App* syncCommand(CLI::App& app) {
  for (CLI::App* sub : app.get_subcommands({}))
    if (sub->get_name() == "sync") return sub;
  CLI::App* sync = app.add_subcommand("sync", "Synchronise a practice system's export");
  sync->require_subcommand(1);
  return sync;
}

void addSourceCommand(CLI::App& app, const SyncSourceCommand& source) {
  auto command = std::make_shared<SyncSourceCommand>(source);
  auto options = std::make_shared<SyncCommandOptions>();
  const std::string word = source.exportWord;
  CLI::App* cmd =
      syncCommand(app)->add_subcommand(source.name, "Synchronise a " + word + " export database");
  cmd->add_option("--source", options->source, word + " export database");
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
  cmd->callback([command, options] {
    runCommand("sync " + command->name, [&] {
      if (!options->listClients) return runSync(*command, *options);
      if (options->source.empty()) throw UsageError("--list-clients needs --source");
      return listClients(*command, options->source);
    });
  });
}

CommandRegistration registration(30, [](CLI::App& app) {
  addSourceCommand(app, tpsCommand());
  addSourceCommand(app, cchCommand());
  addSourceCommand(app, balabossCommand());
  addSourceCommand(app, bill4TimeCommand());
});

}  // namespace
}  // namespace lf::cli
