// lfimport parse: runs the name and address parsers on one string and prints the fields as
// JSON, so that a user can see what an import would store for it.
//
//   lfimport parse name "Mr. John Smith & Mrs. Mary Smith"      (contact and spouse columns)
//   lfimport parse name "Dr. Who" --single                      (one person)
//   lfimport parse address "123 Main St, Toronto, ON M5V1A1"
#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "base/error_service.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/json_output.hpp"
#include "cli/option_checks.hpp"
#include "records/name_parsing.hpp"
#include "summaries/address_parsing.hpp"

namespace lf::cli {
namespace {

using Json = nlohmann::ordered_json;

void addNameParts(Json& out, const PersonNameParts& parts, const std::string& columnPrefix,
                  bool trimmed) {
  auto value = [&](const std::string& text) {
    return trimmed ? GeneralUtilities::trim(text) : text;
  };
  out[columnPrefix + "NamePrefix"] = value(parts.NamePrefix);
  out[columnPrefix + "FirstName"] = value(parts.FirstName);
  out[columnPrefix + "MiddleName"] = value(parts.MiddleName);
  out[columnPrefix + "LastName"] = value(parts.LastName);
}

Json nameJson(const std::string& text, bool single) {
  ScopedErrorService errors(kErrorResumeNext, &std::cerr);  // a user would resume next
  Json out = Json::object();
  if (single) {
    const PersonNameParts parts = parseSingleNameString(text);
    addNameParts(out, parts, "", false);
    out["DisplayName"] = parts.DisplayName;
    return out;
  }
  // What parseNameForContact writes for a new contact: the name columns trimmed, then the
  // spouse columns as addSpouseNameToContact writes them.
  const ContactNameFields fields = parseNameForContactFields(text);
  const PersonNameParts contact = fields.hasResult ? fields.contact : PersonNameParts{};
  addNameParts(out, contact, "", true);
  out["DisplayName"] = GeneralUtilities::trim(contact.DisplayName);
  const PersonNameParts spouse = GeneralUtilities::isBlank(fields.spouse)
                                     ? PersonNameParts{}
                                     : parseSingleNameString(fields.spouse);
  addNameParts(out, spouse, "Spouse", false);
  out["SpouseName"] = spouse.DisplayName;
  return out;
}

Json addressJson(std::string line) {
  ScopedErrorService errors(kErrorResumeNext, &std::cerr);  // a user would resume next
  const AddressFields f = parseAddressString(line);
  Json out = Json::object();
  out["Name"] = f.Name;
  out["ContactName"] = f.ContactName;
  out["Street"] = f.Street;
  out["City"] = f.City;
  out["Province"] = f.Province;
  out["PostalCode"] = f.PostalCode;
  out["Country"] = f.Country;
  out["Phone"] = f.Phone;
  out["Fax"] = f.Fax;
  out["Cell"] = f.Cell;
  out["Home"] = f.Home;
  out["Email"] = f.Email;
  out["WebSite"] = f.WebSite;
  return out;
}

const CommandRegistration registration(60, [](CLI::App& app) {
  CLI::App* parse = app.add_subcommand("parse", "Show how a name or an address is split");
  parse->require_subcommand(1);

  struct NameOptions {
    std::string text;
    bool single = false;
  };
  auto name = std::make_shared<NameOptions>();
  CLI::App* nameCmd = parse->add_subcommand("name", "Split a personal or couple's name");
  nameCmd->add_option("TEXT", name->text, "The name as written")
      ->required()
      ->transform(outsideText());
  nameCmd->add_flag("--single", name->single, "Parse as one person (parseSingleNameString)");
  nameCmd->callback([name] {
    runCommand("parse name", [&] {
      std::cout << jsonText(nameJson(name->text, name->single)) << "\n";
      return 0;
    });
  });

  auto address = std::make_shared<std::string>();
  CLI::App* addressCmd = parse->add_subcommand("address", "Split a one-line address");
  addressCmd->add_option("TEXT", *address, "The address on one line")
      ->required()
      ->transform(outsideText());
  addressCmd->callback([address] {
    runCommand("parse address", [&] {
      std::cout << jsonText(addressJson(*address)) << "\n";
      return 0;
    });
  });
});

}  // namespace
}  // namespace lf::cli
