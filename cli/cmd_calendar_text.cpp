// lfimport calendar-text: the calendar's display text (or, with --title, its title bar) of one
// appointment, time entry or task, from the user's calendar templates.
//
//   lfimport calendar-text --practice practice.db --kind docket --id 31
//   lfimport calendar-text --practice practice.db --kind task --id 5 --title
#include <CLI/CLI.hpp>
#include <iostream>

#include "base/general_utilities.hpp"
#include "base/procedure.hpp"
#include "cli/command_registry.hpp"
#include "cli/merge_cli_support.hpp"
#include "cli/merge_ids.hpp"
#include "cli/option_checks.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace lf::cli {
namespace {

struct CalendarOptions {
  HostOptions host;
  std::string kind;
  std::int32_t id = -1;
  std::int32_t company = -1;
  std::int32_t contact = -1;
  bool title = false;
};

// The company and contact of the item, where its table records them.
std::int32_t readLink(DatabaseService& db, const std::string& table, const std::string& key,
                      std::int32_t id, const std::string& column) {
  std::int32_t link = -1;
  ignoreErrors([&] {
    std::int32_t h = db.openRecordset("SELECT " + table + ".* FROM " + table + " WHERE " + table +
                                          "." + key + "=" + std::to_string(id) + ";",
                                      kCursorKeyset, kLockReadOnly);
    if (db.hasRecord(h)) {
      Variant v = db.getField(h, column);
      if (!GeneralUtilities::isBlank(v)) link = static_cast<std::int32_t>(v.toLong());
    }
    db.closeRecordset(h);
  });
  return link;
}

int runCalendarText(const CalendarOptions& o) {
  MergeHost host(o.host);
  DatabaseService& db = host.session().practice();
  clsInsertFieldsInRTB rtb;
  std::string table, key;
  if (o.kind == "appt") {
    table = "Appointments", key = "AppointmentID";
    rtb.ListType = 5;
    rtb.appointmentID = o.id;
  } else if (o.kind == "docket") {
    table = "Dockets", key = "DocketID";
    rtb.ListType = 6;
    rtb.docketID = o.id;
  } else {
    table = "Tasks", key = "TaskID";
    rtb.ListType = 8;
    rtb.TaskID = o.id;
  }
  requireRow(db, table, key, o.id,
             o.kind == "appt"     ? "appointment"
             : o.kind == "docket" ? "time entry"
                                  : "task");
  rtb.companyID = o.company >= 0 ? o.company : readLink(db, table, key, o.id, "CompanyIDNum");
  rtb.contactID = o.contact >= 0 ? o.contact : readLink(db, table, key, o.id, "ContactIDNum");
  if (rtb.companyID >= 0) requireRow(db, "Companies", "CompanyID", rtb.companyID, "company");
  if (rtb.contactID >= 0) requireRow(db, "Contacts", "ContactID", rtb.contactID, "contact");
  std::string text = o.title ? rtb.createTitleBarTextByID2() : rtb.createDisplayTextByID2();
  rtb.Terminate();
  std::cout << text << "\n";
  return 0;
}

CommandRegistration registration(43, [](CLI::App& app) {
  auto o = std::make_shared<CalendarOptions>();
  CLI::App* cmd =
      app.add_subcommand("calendar-text", "Calendar text of an appointment, time entry or task");
  cmd->add_option("--practice", o->host.practicePath, "Practice database")->required();
  cmd->add_option("--kind", o->kind, "appt, docket or task")
      ->required()
      ->check(CLI::IsMember({"appt", "docket", "task"}));
  cmd->add_option("--id", o->id, "ID of the item")->required()->check(recordID());
  cmd->add_option("--company", o->company, "Company of the item (else read from the item)")
      ->check(recordID());
  cmd->add_option("--contact", o->contact, "Contact of the item (else read from the item)")
      ->check(recordID());
  cmd->add_flag("--title", o->title, "The title bar text instead of the display text");
  o->host.readOnly = true;
  addHostOptions(*cmd, o->host);
  cmd->callback([o] { runCommand("calendar-text", [&] { return runCalendarText(*o); }); });
});

}  // namespace
}  // namespace lf::cli
