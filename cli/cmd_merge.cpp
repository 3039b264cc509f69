// lfimport merge: merges a template with the records given by their IDs and prints the text.
//
//   lfimport merge --practice practice.db --company 12 --text "Dear «Contact Display Name»,"
//   lfimport merge --practice practice.db --contact 7 --file letter.rtf --convert-company-name
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_registry.hpp"
#include "cli/merge_cli_support.hpp"
#include "cli/merge_ids.hpp"
#include "cli/option_checks.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace lf::cli {
namespace {

struct MergeOptions {
  HostOptions host;
  std::string text;
  std::string file;
  CLI::Option* textOption = nullptr;
  std::int32_t company = -1, contact = -1, firm = -1, user = -1;
  std::int32_t appointment = -1, docket = -1, task = -1;
  int listType = -1;
  bool test = false;
  bool noRtfValues = false;
  bool convertCompanyName = false;
};

int runMerge(const MergeOptions& o) {
  std::string templateText = readTemplate(o.text, o.file, o.textOption->count() > 0);
  MergeHost host(o.host);
  DatabaseService& db = host.session().practice();
  if (o.company >= 0) requireRow(db, "Companies", "CompanyID", o.company, "company");
  if (o.contact >= 0) requireRow(db, "Contacts", "ContactID", o.contact, "contact");
  if (o.firm >= 0) requireRow(db, "AccountantFirmInfo", "CompanyID", o.firm, "firm");
  if (o.user >= 0) requireRow(db, "AccountantEmployeeInfo", "ContactID", o.user, "user");
  if (o.appointment >= 0)
    requireRow(db, "Appointments", "AppointmentID", o.appointment, "appointment");
  if (o.docket >= 0) requireRow(db, "Dockets", "DocketID", o.docket, "time entry");
  if (o.task >= 0) requireRow(db, "Tasks", "TaskID", o.task, "task");

  clsInsertFieldsInRTB rtb;
  rtb.companyID = o.company;
  rtb.contactID = o.contact;
  rtb.firmID = o.firm;
  rtb.userID = o.user;
  rtb.appointmentID = o.appointment;
  rtb.docketID = o.docket;
  rtb.TaskID = o.task;
  // Without a list type, the kind of the records given decides, as for a first merge.
  int listType = o.listType;
  if (listType < 0) {
    if (o.appointment >= 0)
      listType = 5;
    else if (o.task >= 0)
      listType = 8;
    else if (o.docket >= 0)
      listType = 6;
    else if (o.company >= 0 || o.contact >= 0)
      listType = 2;
    else
      listType = 1;
  }
  rtb.ListType = listType;
  rtb.TestComment = o.test;
  rtb.ConvertStrToRTF = !o.noRtfValues;
  rtb.ConvertCompanyNameToContactNameForContacts = o.convertCompanyName;
  rtb.initializeDataRecordsetsForSingleDocMerge();
  rtb.TemplateText = templateText;
  std::string merged = rtb.parseRTBComment();
  rtb.Terminate();
  // A failure inside the merge was reported and the merge went on as --on-error says; the
  // text may then lack values, so the run has failed. After "stop" nothing is printed.
  const long failures = host.session().errors().reportedCount();
  if (failures == 0 || o.host.onError != "stop") {
    std::cout << merged;
    if (merged.empty() || merged.back() != '\n') std::cout << "\n";
  }
  if (failures == 0) return 0;
  throw Failure(
      fmt::format("{} failure(s) while merging; {}", failures,
                  o.host.onError == "stop" ? "the merge was stopped" : "the text may lack values"));
}

CommandRegistration registration(42, [](CLI::App& app) {
  auto o = std::make_shared<MergeOptions>();
  CLI::App* cmd = app.add_subcommand("merge", "Merge a template with practice records");
  cmd->add_option("--practice", o->host.practicePath, "Practice database")->required();
  o->textOption = cmd->add_option("--text", o->text, "The template text");
  CLI::Option* file = cmd->add_option("--file", o->file, "A file holding the template");
  o->textOption->excludes(file);
  cmd->add_option("--company", o->company, "Company ID")->check(recordID());
  cmd->add_option("--contact", o->contact, "Contact ID")->check(recordID());
  cmd->add_option("--firm", o->firm, "Firm ID (the practice's own company)")->check(recordID());
  cmd->add_option("--user", o->user, "User (employee) ID")->check(recordID());
  cmd->add_option("--appointment", o->appointment, "Appointment ID")->check(recordID());
  cmd->add_option("--docket", o->docket, "Time entry ID")->check(recordID());
  cmd->add_option("--task", o->task, "Task ID")->check(recordID());
  cmd->add_option("--list-type", o->listType, "List type of the field catalogue");
  cmd->add_flag("--test", o->test, "Show the sample values instead of the data");
  cmd->add_flag("--no-rtf-values", o->noRtfValues,
                "Put values in as plain text (no \\par, no separating blank)");
  cmd->add_flag("--convert-company-name", o->convertCompanyName,
                "For a contact without a company, «Company Name» shows the contact's name");
  o->host.readOnly = true;
  addHostOptions(*cmd, o->host);
  cmd->callback([o] { runCommand("merge", [&] { return runMerge(*o); }); });
});

}  // namespace
}  // namespace lf::cli
