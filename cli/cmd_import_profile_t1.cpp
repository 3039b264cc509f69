// lfimport import profile-t1: brings the personal Profile returns of a folder into a practice
// database through the stand-in Profile product, by the import wizard: at the terminal
// (--interactive), or with the choices of an answers file (or the defaults: this year, no
// options, both spouses, every file, duplicates by SIN updated). The
// run report (returns read, clients created and updated, files skipped and failed, messages
// and questions) is summarised on stderr and written as JSON with --report; the exit code is
// not zero when a file failed.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/import_command.hpp"
#include "cli/json_output.hpp"
#include "cli/report_file.hpp"
#include "host/terminal_message_box.hpp"
#include "tax/profile_import_wizard.hpp"
#include "tax/profile_stand_in.hpp"
#include "tax/profile_wizard_answers.hpp"
#include "tax/profile_wizard_terminal.hpp"

namespace lf::cli {
namespace {

struct ImportProfileOptions {
  HostOptions host;
  std::string folder;
  std::string answers;
  std::string reportPath;
};

int runImportProfileT1(const ImportProfileOptions& o) {
  ProfileT1Answers answers;
  if (!o.answers.empty()) answers = readProfileT1Answers(o.answers);
  if (!o.folder.empty()) answers.folder = o.folder;
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);
  if (!answers.folder.empty() && !std::filesystem::is_directory(answers.folder))
    throw Failure("the folder '" + answers.folder + "' does not exist");
  const bool interactive = o.host.interactive;

  HostSession session(o.host);
  RunReport& report = session.report();
  session.answerQuestions(interactive, answers.questions, o.host.quiet);
  setProfileObjectFactory(makeProfileStandIn(session.practice()));

  // Without a folder the wizard starts on the one the user's last import read.
  frmImportProfileT1 wizard;
  ProfileListedPasswords listed(answers.passwords);
  ProfilePasswordTerminal asked(std::cin, std::cerr);
  wizard.ProfileImport.setPasswordForm(interactive ? static_cast<ProfilePasswordForm*>(&asked)
                                                   : &listed);
  wizard.ProfileImport.counters = &report.stage("personal returns");
  wizard.Initialize();
  if (!answers.folder.empty()) wizard.txtFileLocation = answers.folder;
  const bool finished = interactive ? runProfileWizardAtTerminal(wizard, std::cin, std::cerr)
                                    : runProfileT1WizardFromAnswers(wizard, answers);
  setProfileObjectFactory(nullptr);

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  if (!finished && !wizard.importRan()) {
    std::cerr << "lfimport import profile-t1: the wizard did not finish; nothing was imported\n";
    return kExitFailed;
  }
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

const CommandRegistration registration(92, [](CLI::App& app) {
  auto options = std::make_shared<ImportProfileOptions>();
  CLI::App* cmd = importCommand(app)->add_subcommand(
      "profile-t1", "Import the clients of a folder of Profile personal returns");
  cmd->add_option("--folder", options->folder, "The folder of returns (.04T to .18T)");
  cmd->add_option("--practice", options->host.practicePath, "Practice database")->required();
  auto* answers = cmd->add_option("--answers", options->answers, "The import's answers (JSON)");
  auto* interactive =
      cmd->add_flag("--interactive", options->host.interactive, "Run the wizard at the terminal");
  answers->excludes(interactive);
  cmd->add_option("--report", options->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--quiet", options->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, options->host);
  cmd->callback(
      [options] { runCommand("import profile-t1", [&] { return runImportProfileT1(*options); }); });
});

}  // namespace
}  // namespace lf::cli
