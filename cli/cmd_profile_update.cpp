// lfimport profile update|new-return: writes a client of the practice database into the
// client's Profile return of a year, or starts a new return for the client from the blank one
// of the year, through the stand-in Profile product.
//
//   lfimport profile update --practice DB --contact ID --year Y [--file PATH]
//   lfimport profile new-return --practice DB --contact ID [--year Y] [--save-to DIR]
//                               [--template PATH] [--working-folder DIR]
//
// Questions are answered from --answers FILE.json ("questions" as in the other answers
// files, where "cancel" presses the Cancel of a question, of the year question or of the wait
// for Profile; and "year", the year question's answer), at the terminal with --interactive,
// or by their defaults. Without --year, new-return asks the year (frmProfileTaxYear). --file
// is the choice of the file dialog that asks for the client's return, --template that of the
// template dialog, and --save-to the folder browser's; each is used once, and a dialog without
// one is cancelled. How long the stand-in product takes to show a new return is the host
// setting "ProfileCurrentClientDelay". The exit code is 1 when the return was not written for
// another reason than a Cancel (which the report counts as a skipped row).
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>

#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/report_file.hpp"
#include "db/recordset_scope.hpp"
#include "host/file_dialog.hpp"
#include "sync/wizard_answers.hpp"
#include "tax/profile_new_return_questions.hpp"
#include "tax/profile_stand_in.hpp"
#include "tax/profile_t1_import.hpp"

namespace lf::cli {
namespace {

struct ProfileUpdateOptions {
  HostOptions host;
  long contact = 0;
  std::optional<long> year;
  std::string file;
  std::string templatePath;
  std::string saveTo;
  std::string workingFolder;
  std::string answers;
  std::string reportPath;
};

// Runs one of the two operations with the host's services in place; answers the exit code.
int runProfileCommand(const ProfileUpdateOptions& o, bool newReturn) {
  if (!o.reportPath.empty()) requireReportPath(o.reportPath);
  std::optional<WizardAnswers> answers;
  std::optional<long> answersYear;  // the year question's answer in the answers file
  if (!o.answers.empty())
    answers = readAnswersFile(o.answers, [&](const std::string& text, const std::string& base) {
      const nlohmann::json j = parseAnswersObject(text);
      if (j.contains("year")) {
        if (!j["year"].is_number_integer()) throw Failure("\"year\" must be a whole number");
        answersYear = j["year"].get<long>();
      }
      return parseWizardAnswers(text, base);
    });

  HostSession session(o.host);
  {
    RecordsetScope contact(session.practice(),
                           "SELECT Contacts.ContactID FROM Contacts WHERE ContactID=" +
                               std::to_string(o.contact) + ";",
                           kLockReadOnly);
    if (!session.practice().hasRecord(contact))
      throw Failure("contact " + std::to_string(o.contact) + " is not in the practice database");
  }
  RunReport& report = session.report();
  std::ostream* log = o.host.quiet ? nullptr : &std::cerr;
  std::unique_ptr<TerminalMessageBox> answersBox;
  if (answers) {
    answersBox = makeAnswersMessageBox(*answers, &report, log);
    moduleState().MsgboxClass = answersBox.get();
  }
  std::shared_ptr<ProfileStandInFactory> standIn = makeProfileStandIn(session.practice());
  setProfileObjectFactory(standIn);

  clsImportProfileT1 profile;
  PresetFileDialog fileDialog(o.file), templateDialog(o.templatePath);
  if (!o.file.empty()) profile.profileFileDialog = &fileDialog;
  if (!o.templatePath.empty()) profile.templateFileDialog = &templateDialog;
  bool folderGiven = false;
  profile.browseForFolder = [&](const std::string& title) -> std::optional<std::string> {
    if (folderGiven || o.saveTo.empty())
      throw Failure("no folder to save the new return to (--save-to): " + title);
    folderGiven = true;
    return o.saveTo;
  };
  const long year = o.year ? *o.year : session.locale().getCurrentPersonalYear();
  if (newReturn && o.year) {
    profile.askProfileTaxYear = [year] { return year; };
  } else if (newReturn && o.host.interactive) {
    profile.askProfileTaxYear = [] {
      return askProfileTaxYearAtTerminal(profileTaxYearItems(), std::cin, std::cerr);
    };
  } else if (newReturn) {
    profile.askProfileTaxYear = [answersYear] {
      return askProfileTaxYearFromAnswers(profileTaxYearItems(), answersYear);
    };
  }
  if (o.host.interactive)
    connectNewProfileFileDialogToTerminal(profile, std::cin, STDIN_FILENO, std::cerr);
  else
    connectNewProfileFileDialogToAnswers(profile);
  profile.openDocument = [&](const std::string& path) -> long {
    standIn->product().openInProduct(path);
    return 42;
  };
  profile.workingFolder =
      o.workingFolder.empty()
          ? std::filesystem::absolute(o.host.practicePath).parent_path().string()
          : o.workingFolder;

  StageCounters& counters = report.stage(newReturn ? "new return" : "update");
  ++counters.read;
  std::string problem;
  if (newReturn) {
    profile.createNewProfileReturn(o.contact);
    if (profile.newProfileFileCreated()) {
      ++counters.created;
    } else {
      switch (profile.newProfileFileEnding()) {
        case NewProfileFileEnding::TimedOut:
          problem = "Profile did not open the new return in time";
          break;
        case NewProfileFileEnding::Cancelled:
          counters.skip("the wait for Profile was cancelled");
          break;
        case NewProfileFileEnding::Connected:
          problem = "the new return could not be written";
          break;
        case NewProfileFileEnding::None:
          counters.skip("no new return made for contact " + std::to_string(o.contact));
          break;
      }
    }
  } else {
    switch (profile.updateProfile(o.contact, year)) {
      case ProfileUpdateStatus::Updated:
        ++counters.updated;
        break;
      case ProfileUpdateStatus::Stopped:
        counters.skip("no Profile file updated for contact " + std::to_string(o.contact));
        break;
      case ProfileUpdateStatus::Failed:
        problem =
            "the Profile file of contact " + std::to_string(o.contact) + " could not be updated";
        break;
    }
  }
  if (!problem.empty()) counters.fail(problem);
  setProfileObjectFactory(nullptr);

  if (!o.host.quiet) std::cerr << report.summary();
  if (!o.reportPath.empty()) writeReportFile(report, o.reportPath);
  return report.failedRows() > 0 || report.errorCount() > 0 ? kExitFailed : 0;
}

CLI::App* addProfileSubcommand(CLI::App& parent, const char* name, const char* description,
                               const std::shared_ptr<ProfileUpdateOptions>& options) {
  CLI::App* cmd = parent.add_subcommand(name, description);
  cmd->add_option("--practice", options->host.practicePath, "Practice database")->required();
  cmd->add_option("--contact", options->contact, "ContactID of the client")->required();
  cmd->add_option("--answers", options->answers, "Answers to the questions (JSON)");
  cmd->add_flag("--interactive", options->host.interactive, "Ask the questions at the terminal");
  cmd->add_option("--report", options->reportPath, "Write the run report (JSON) here");
  cmd->add_flag("--quiet", options->host.quiet, "No messages on stderr");
  addHostOptions(*cmd, options->host);
  return cmd;
}

const CommandRegistration registration(94, [](CLI::App& app) {
  CLI::App* profile =
      app.add_subcommand("profile", "Write a client into their Profile return, or start one");
  profile->require_subcommand(1);

  auto update = std::make_shared<ProfileUpdateOptions>();
  CLI::App* u = addProfileSubcommand(
      *profile, "update", "Write the client's details into their Profile T1 return", update);
  u->add_option("--year", update->year, "Tax year of the return")->required();
  u->add_option("--file", update->file, "The return, when asked where it is");
  u->callback([update] {
    runCommand("profile update", [&] { return runProfileCommand(*update, false); });
  });

  auto created = std::make_shared<ProfileUpdateOptions>();
  CLI::App* n = addProfileSubcommand(*profile, "new-return",
                                     "Start the client's Profile T1 return of a year", created);
  n->add_option("--year", created->year, "Tax year (default: the current personal year)");
  n->add_option("--save-to", created->saveTo, "Folder for new returns, when asked");
  n->add_option("--template", created->templatePath, "A blank return of one's own, when asked");
  n->add_option("--working-folder", created->workingFolder,
                "Folder of the temporary template (default: the practice database's)");
  n->callback([created] {
    runCommand("profile new-return", [&] { return runProfileCommand(*created, true); });
  });
});

}  // namespace
}  // namespace lf::cli
