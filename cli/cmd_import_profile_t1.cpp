// lfimport import profile-t1: brings the personal Profile returns of a folder into a practice
// database through the stand-in Profile product, with the choices of an answers file (or the
// defaults: this year, no options, both spouses, every file, duplicates by SIN updated). The
// run report (returns read, clients created and updated, files skipped and failed, messages
// and questions) is summarised on stderr and written as JSON with --report; the exit code is
// not zero when a file failed.
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
#include "host/practice_import_duplicates.hpp"
#include "records/export_folders.hpp"
#include "tax/profile_return_file.hpp"
#include "tax/profile_stand_in.hpp"
#include "tax/profile_t1_answers.hpp"
#include "tax/profile_t1_import.hpp"

namespace lf::cli {
namespace {

struct ImportProfileOptions {
  HostOptions host;
  std::string folder;
  std::string answers;
  std::string reportPath;
};

// The personal returns of the folder (not its subfolders), by name: the extensions "04T" to
// "18T" in any letter case.
std::vector<std::string> scanProfileT1Folder(const std::string& folder) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::optional<ProfileExtensionKind> kind =
        profileKindOfExtension(profileFileExtension(entry.path().string()));
    if (kind && kind->kind == "T1" && kind->year >= 2004 && kind->year <= 2018)
      files.push_back(entry.path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

int runImportProfileT1(const ImportProfileOptions& o) {
  ProfileT1Answers answers;
  if (!o.answers.empty()) answers = readProfileT1Answers(o.answers);
  if (!o.folder.empty()) answers.folder = o.folder;
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);

  HostSession session(o.host);
  // Without a folder, the one the user's last import read.
  if (answers.folder.empty()) answers.folder = getProfileT1Folder();
  if (answers.folder.empty())
    throw UsageError("no folder of returns given (--folder), and none remembered");
  if (!std::filesystem::is_directory(answers.folder))
    throw Failure("the folder '" + answers.folder + "' does not exist");
  RunReport& report = session.report();
  std::ostream* log = o.host.quiet ? nullptr : &std::cerr;
  auto answersBox = makeAnswersMessageBox(answers.questions, &report, log);
  moduleState().MsgboxClass = answersBox.get();
  setProfileObjectFactory(makeProfileStandIn(session.practice()));

  clsImportProfileT1 import;
  ProfileListedPasswords passwords(answers.passwords);
  import.setPasswordForm(&passwords);
  import.importTaxYear = answers.year ? *answers.year : session.locale().getCurrentPersonalYear();
  for (int option : answers.options) import.chkOption[option] = true;
  import.optCouplesReturn = answers.couples;
  import.chkImprtBusinessInformation = answers.business;
  PracticeImportDuplicates duplicates(PracticeImportDuplicates::Contact);
  duplicates.setCheckingOn(answers.duplicateCheck);
  duplicates.setMatchBy(kMatchBySIN);
  duplicates.setAction(answers.action);
  import.contactDuplicatesControl = &duplicates;

  import.setFolderString(answers.folder);
  for (const std::string& path : scanProfileT1Folder(answers.folder))
    import.addProfileFileToImportList(path);
  if (answers.selectByYear || answers.selectNotInLedgerfolio) {
    import.selectOnlySpecificTaxYearFlag = answers.selectByYear;
    import.specificTaxYearSelection = answers.selectYear;
    import.selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = answers.selectNotInLedgerfolio;
    import.selectSpecificProfileT1Files(false);
  }
  import.counters = &report.stage("personal returns");
  import.importProfileT1Files(false);
  setProfileObjectFactory(nullptr);

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

const CommandRegistration registration(92, [](CLI::App& app) {
  auto options = std::make_shared<ImportProfileOptions>();
  CLI::App* cmd = importCommand(app)->add_subcommand(
      "profile-t1", "Import the clients of a folder of Profile personal returns");
  cmd->add_option("--folder", options->folder, "The folder of returns (.04T to .18T)");
  cmd->add_option("--practice", options->host.practicePath, "Practice database")->required();
  cmd->add_option("--answers", options->answers, "The import's answers (JSON)");
  cmd->add_option("--report", options->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--quiet", options->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, options->host);
  cmd->callback(
      [options] { runCommand("import profile-t1", [&] { return runImportProfileT1(*options); }); });
});

}  // namespace
}  // namespace lf::cli
