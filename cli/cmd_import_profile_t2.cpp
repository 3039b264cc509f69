// lfimport import profile-t2: brings the corporations of the Profile T2 returns (".GT2") of a
// folder into a practice database as companies, through the stand-in Profile product. The
// choices are options: which address of the return the company takes, the selection (the most
// recent return of each business number, corporations not yet known), what to do with a
// company found by business number or name, and passwords to answer the password question
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
#include "host/practice_import_duplicates.hpp"
#include "tax/profile_return_file.hpp"
#include "tax/profile_stand_in.hpp"
#include "tax/profile_t2_import.hpp"

namespace lf::cli {
namespace {

struct ImportProfileT2Options {
  HostOptions host;
  std::string folder;
  std::string address = "head-office";
  bool mostRecent = false;
  bool notInLedgerfolio = false;
  std::string duplicates = "update";
  std::vector<std::string> passwords;
  std::string reportPath;
};

int runImportProfileT2(const ImportProfileT2Options& o) {
  if (!std::filesystem::is_directory(o.folder))
    throw Failure("the folder '" + o.folder + "' does not exist");
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);
  HostSession session(o.host);
  RunReport& report = session.report();
  setProfileObjectFactory(makeProfileStandIn(session.practice()));

  clsImportProfileT2 import;
  ProfileListedPasswords passwords(o.passwords);
  import.setPasswordForm(&passwords);
  const std::map<std::string, std::string> addressTexts = {
      {"head-office", "Profile Head Office Address"},
      {"mailing", "Profile Mailing Address"},
      {"books", "Profile Location of Books Address"},
      {"signing-officer", "Profile Signing Officer Address"}};
  import.setProfileAddressType(addressTexts.at(o.address));
  PracticeImportDuplicates companies(PracticeImportDuplicates::Company);
  companies.setCheckingOn(o.duplicates != "off");
  companies.setMatchBy(kMatchByBusinessNumber);
  const std::map<std::string, int> actions = {{"skip", kDuplicateSkip},
                                              {"new", kDuplicateNewClient},
                                              {"update", kDuplicateUpdate},
                                              {"ask", kDuplicateAsk},
                                              {"off", kDuplicateUpdate}};
  companies.setAction(actions.at(o.duplicates));
  import.companyDuplicatesControl = &companies;

  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(o.folder)) {
    auto kind = profileKindOfExtension(profileFileExtension(entry.path().string()));
    if (entry.is_regular_file() && kind && kind->kind == "T2") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  for (const std::string& path : files) import.addProfileFileToImportList(path);
  import.selectOnlyMostRecentClientsFlag = o.mostRecent;
  import.selectOnlyClientsNotAlreadyEnteredInLedgerfolioFlag = o.notInLedgerfolio;
  import.selectSpecificProfileT2Files();
  import.counters = &report.stage("corporate returns");
  if (import.startImportProfileT2Files()) import.importProfileT2Files();
  setProfileObjectFactory(nullptr);

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  if (!import.successFlag) return kExitFailed;
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

const CommandRegistration registration(93, [](CLI::App& app) {
  auto o = std::make_shared<ImportProfileT2Options>();
  CLI::App* cmd = importCommand(app)->add_subcommand(
      "profile-t2", "Import the corporations of a folder of Profile T2 returns");
  cmd->add_option("--folder", o->folder, "The folder of returns (.GT2)")->required();
  cmd->add_option("--practice", o->host.practicePath, "Practice database")->required();
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
