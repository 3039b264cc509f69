// lfimport summary: writes one stored summary of a client again and prints its RTF.
//
//   lfimport summary --practice p.lfdb --contact 40 --kind personal|business|tax [--year 2024]
//   lfimport summary --practice p.lfdb --employee 2 --kind personal|business|tax
//   lfimport summary --practice p.lfdb --company 7 --kind company|company-contact
//
// The summary goes to its column as an import would write it (PersonalNotes, BusinessNotes,
// the tax summary of the year, the company's BusinessNotes or ContactNotes).
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/option_checks.hpp"
#include "summaries/company_summaries.hpp"
#include "summaries/contact_summaries.hpp"
#include "summaries/summary_records.hpp"

namespace lf::cli {
namespace {

struct SummaryOptions {
  HostOptions host;
  long contact = -1;
  long company = -1;
  long employee = -1;
  std::string kind;
  long year = 0;
};

bool rowExists(DatabaseService& db, const std::string& sql) {
  RecordsetScope rows(db, sql, kLockReadOnly);
  return db.hasRecord(rows);
}

// The summary of the options' client; throws when the client or the kind does not fit.
std::string buildSummary(HostSession& session, const SummaryOptions& o) {
  DatabaseService& db = session.practice();
  const bool personKind = o.kind == "personal" || o.kind == "business" || o.kind == "tax";
  if (personKind) {
    if (o.employee < 0 && o.contact < 0)
      throw UsageError("--kind " + o.kind + " needs --contact or --employee");
    if (o.employee >= 0 && !rowExists(db, employeeStatement(o.employee)))
      throw Failure("no employee with ID " + std::to_string(o.employee));
    if (o.contact >= 0 && !rowExists(db, contactStatement(o.contact)))
      throw Failure("no contact with ID " + std::to_string(o.contact));
    long year = o.year > 0 ? o.year : session.locale().getCurrentPersonalYear();
    if (o.kind == "personal") return saveContactPersonalRTF(o.contact, o.employee);
    if (o.kind == "business") return saveContactBusinessRTF(o.contact, o.employee, -1, false);
    return saveContactPersonalTaxRTF(o.contact, year, o.employee);
  }
  if (o.company < 0) throw UsageError("--kind " + o.kind + " needs --company");
  if (!rowExists(db, companyStatement(o.company)))
    throw Failure("no company with ID " + std::to_string(o.company));
  if (o.kind == "company") return saveCompanyRTF(o.company, -1);
  long contact = defaultContactOfCompany(o.company);
  std::string rtf = saveCompanyContactRTF(o.company, contact > 0 ? contact : -1);
  if (rtf.empty()) throw Failure("company " + std::to_string(o.company) + " has no notes row");
  return rtf;
}

int runSummary(const SummaryOptions& options) {
  HostSession session(options.host);
  std::string rtf = buildSummary(session, options);
  if (rtf.empty()) throw Failure("the summary could not be written");
  std::cout << rtf << "\n";
  return 0;
}

const CommandRegistration registration(70, [](CLI::App& app) {
  auto options = std::make_shared<SummaryOptions>();
  CLI::App* cmd = app.add_subcommand("summary", "Write a client's stored RTF summary and print it");
  cmd->add_option("--practice", options->host.practicePath, "Practice database")->required();
  auto* contact = cmd->add_option("--contact", options->contact, "Contact ID")->check(recordID());
  auto* company = cmd->add_option("--company", options->company, "Company ID")->check(recordID());
  auto* employee =
      cmd->add_option("--employee", options->employee, "Employee ID")->check(recordID());
  contact->excludes(company)->excludes(employee);
  company->excludes(employee);
  cmd->add_option("--kind", options->kind, "personal, business, tax, company or company-contact")
      ->required()
      ->check(CLI::IsMember({"personal", "business", "tax", "company", "company-contact"}));
  cmd->add_option("--year", options->year, "Tax year of the tax summary (default: current)")
      ->check(wholeNumber(1900, 9999, "a year from 1900 to 9999"));
  addHostOptions(*cmd, options->host);
  cmd->callback([options] { runCommand("summary", [&] { return runSummary(*options); }); });
});

}  // namespace
}  // namespace lf::cli
