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

// The summary of the options' client, or a message for stderr when the client or the kind
// does not fit.
std::string buildSummary(HostSession& session, const SummaryOptions& o, std::string& problem) {
  DatabaseService& db = session.practice();
  const bool personKind = o.kind == "personal" || o.kind == "business" || o.kind == "tax";
  if (personKind) {
    if (o.employee < 0 && o.contact < 0) {
      problem = "--kind " + o.kind + " needs --contact or --employee";
      return {};
    }
    if (o.employee >= 0 && !rowExists(db, employeeStatement(o.employee))) {
      problem = "no employee with ID " + std::to_string(o.employee);
      return {};
    }
    if (o.contact >= 0 && !rowExists(db, contactStatement(o.contact))) {
      problem = "no contact with ID " + std::to_string(o.contact);
      return {};
    }
    long year = o.year > 0 ? o.year : session.locale().getCurrentPersonalYear();
    if (o.kind == "personal") return saveContactPersonalRTF(o.contact, o.employee);
    if (o.kind == "business") return saveContactBusinessRTF(o.contact, o.employee, -1, false);
    return saveContactPersonalTaxRTF(o.contact, year, o.employee);
  }
  if (o.company < 0) {
    problem = "--kind " + o.kind + " needs --company";
    return {};
  }
  if (!rowExists(db, companyStatement(o.company))) {
    problem = "no company with ID " + std::to_string(o.company);
    return {};
  }
  if (o.kind == "company") return saveCompanyRTF(o.company, -1);
  long contact = defaultContactOfCompany(o.company);
  std::string rtf = saveCompanyContactRTF(o.company, contact > 0 ? contact : -1);
  if (rtf.empty()) problem = "company " + std::to_string(o.company) + " has no notes row";
  return rtf;
}

void runSummary(const SummaryOptions& options) {
  try {
    HostSession session(options.host);
    std::string problem;
    std::string rtf = buildSummary(session, options, problem);
    if (rtf.empty()) {
      std::cerr << "lfimport summary: "
                << (problem.empty() ? "the summary could not be written" : problem) << "\n";
      exitCode() = 1;
      return;
    }
    std::cout << rtf << "\n";
  } catch (const std::exception& e) {
    std::cerr << "lfimport summary: " << e.what() << "\n";
    exitCode() = 1;
  }
}

const CommandRegistration registration(70, [](CLI::App& app) {
  auto options = std::make_shared<SummaryOptions>();
  CLI::App* cmd = app.add_subcommand("summary", "Write a client's stored RTF summary and print it");
  cmd->add_option("--practice", options->host.practicePath, "Practice database")->required();
  auto* contact = cmd->add_option("--contact", options->contact, "Contact ID");
  auto* company = cmd->add_option("--company", options->company, "Company ID");
  auto* employee = cmd->add_option("--employee", options->employee, "Employee ID");
  contact->excludes(company)->excludes(employee);
  company->excludes(employee);
  cmd->add_option("--kind", options->kind, "personal, business, tax, company or company-contact")
      ->required()
      ->check(CLI::IsMember({"personal", "business", "tax", "company", "company-contact"}));
  cmd->add_option("--year", options->year, "Tax year of the tax summary (default: current)");
  addHostOptions(*cmd, options->host);
  cmd->callback([options] { runSummary(*options); });
});

}  // namespace
}  // namespace lf::cli
