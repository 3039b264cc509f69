// lfimport import profile-t2: brings the corporations of the Profile T2 returns (".GT2") of a
// folder into a practice database as companies, through the stand-in Profile product, by the
// import wizard: at the terminal (--interactive) or with an answers file. The options are
// shortcuts that stand over the answers file: which address of the return the company takes, the
// selection (the most recent return of each business number, corporations not yet known), what to
// do with a company found by business number or name, and passwords to answer the password question
// with. The run report is summarised on stderr and written as JSON with --report.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/import_command.hpp"
#include "cli/json_output.hpp"
#include "cli/report_file.hpp"
#include "host/import_duplicates_control.hpp"
#include "host/terminal_message_box.hpp"
#include "tax/profile_import_wizard.hpp"
#include "tax/profile_stand_in.hpp"
#include "tax/profile_wizard_answers.hpp"
#include "tax/profile_wizard_terminal.hpp"

namespace lf::cli {
namespace {

struct ImportProfileT2Options {
  HostOptions host;
  std::string folder;
  std::string answers;
  std::string address;
  bool mostRecent = false;
  bool notInLedgerfolio = false;
  std::string duplicates;
  std::vector<std::string> passwords;
  std::string reportPath;
};

// The options given on the command line stand over the answers file's choices.
void applyShortcuts(const ImportProfileT2Options& o, ProfileT2Answers& answers) {
  if (!o.folder.empty()) answers.folder = o.folder;
  for (int i = 0; i < 4; ++i)
    if (o.address == kProfileT2AddressWords[i]) answers.address = i;
  answers.selectMostRecent = answers.selectMostRecent || o.mostRecent;
  answers.selectNotInLedgerfolio = answers.selectNotInLedgerfolio || o.notInLedgerfolio;
  if (!o.duplicates.empty()) {
    answers.duplicateCheck = o.duplicates != "off";
    const std::map<std::string, int> actions = {{"skip", kDuplicateSkip},
                                                {"new", kDuplicateNewClient},
                                                {"update", kDuplicateUpdate},
                                                {"ask", kDuplicateAsk},
                                                {"off", kDuplicateUpdate}};
    answers.action = actions.at(o.duplicates);
  }
  answers.passwords.insert(answers.passwords.end(), o.passwords.begin(), o.passwords.end());
}

int runImportProfileT2(const ImportProfileT2Options& o) {
  ProfileT2Answers answers;
  if (!o.answers.empty()) answers = readProfileT2Answers(o.answers);
  applyShortcuts(o, answers);
  if (answers.folder.empty()) throw UsageError("no folder of returns given (--folder)");
  if (!std::filesystem::is_directory(answers.folder))
    throw Failure("the folder '" + answers.folder + "' does not exist");
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);
  const bool interactive = o.host.interactive;

  HostSession session(o.host);
  RunReport& report = session.report();
  session.answerQuestions(interactive, answers.questions, o.host.quiet);
  setProfileObjectFactory(makeProfileStandIn(session.practice()));

  frmImportProfileT2 wizard;
  ProfileListedPasswords listed(answers.passwords);
  ProfilePasswordTerminal asked(std::cin, std::cerr);
  wizard.ProfileImport.setPasswordForm(interactive ? static_cast<ProfilePasswordForm*>(&asked)
                                                   : &listed);
  wizard.ProfileImport.counters = &report.stage("corporate returns");
  wizard.Initialize();
  wizard.txtFileLocation = answers.folder;
  const bool finished = interactive ? runProfileWizardAtTerminal(wizard, std::cin, std::cerr)
                                    : runProfileT2WizardFromAnswers(wizard, answers);
  setProfileObjectFactory(nullptr);

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  if (!finished && !wizard.importRan()) {
    std::cerr << "lfimport import profile-t2: the wizard did not finish; nothing was imported\n";
    return kExitFailed;
  }
  if (!wizard.ProfileImport.successFlag) return kExitFailed;
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

const CommandRegistration registration(93, [](CLI::App& app) {
  auto o = std::make_shared<ImportProfileT2Options>();
  CLI::App* cmd = importCommand(app)->add_subcommand(
      "profile-t2", "Import the corporations of a folder of Profile T2 returns");
  cmd->add_option("--folder", o->folder, "The folder of returns (.GT2)");
  cmd->add_option("--practice", o->host.practicePath, "Practice database")->required();
  auto* answers = cmd->add_option("--answers", o->answers, "The import's answers (JSON)");
  auto* interactive =
      cmd->add_flag("--interactive", o->host.interactive, "Run the wizard at the terminal");
  answers->excludes(interactive);
  cmd->add_option("--address", o->address, "The company's address from the return")
      ->check(CLI::IsMember({"head-office", "mailing", "books", "signing-officer"}));
  cmd->add_flag("--most-recent", o->mostRecent, "Only the latest return of a business number");
  cmd->add_flag("--not-in-ledgerfolio", o->notInLedgerfolio, "Only corporations not yet known");
  cmd->add_option("--duplicates", o->duplicates, "A known company: skip, new, update, ask, off")
      ->check(CLI::IsMember({"skip", "new", "update", "ask", "off"}));
  cmd->add_option("--password", o->passwords, "A password to answer the question with");
  cmd->add_option("--report", o->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--quiet", o->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, o->host);
  cmd->callback([o] { runCommand("import profile-t2", [&] { return runImportProfileT2(*o); }); });
});

}  // namespace
}  // namespace lf::cli
