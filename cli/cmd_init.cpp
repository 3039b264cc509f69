// lfimport init: creates a new practice database with the schema and seed rows.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
#include "cli/option_checks.hpp"
#include "db/practice_database.hpp"

namespace lf::cli {
namespace {

struct InitOptions {
  std::string path;
  std::string country = "ca";
  int province = 3;
  long year = 0;
  std::string firm = "Maple Ridge Accounting";
};

int runInit(const InitOptions& o) {
  if (std::filesystem::exists(o.path))
    throw Failure("'" + o.path + "' already exists; init never writes over an existing file");
  PracticeSeed seed;
  seed.countryMode = parseCountry(o.country);
  seed.provinceIndex = o.province;
  seed.currentYear = o.year;
  seed.firmName = o.firm;
  try {
    auto db = createPracticeDatabase(o.path, seed);
    db->close();
  } catch (const std::exception&) {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(o.path + suffix);
    throw;
  }
  std::cout << "created practice database " << o.path << "\n";
  return 0;
}

CommandRegistration registration(10, [](CLI::App& app) {
  auto options = std::make_shared<InitOptions>();
  CLI::App* cmd =
      app.add_subcommand("init", "Create a new practice database with its tables and seed rows");
  cmd->add_option("PRACTICE", options->path, "Path of the new practice database")->required();
  cmd->add_option("--country", options->country, "Country: ca or us")
      ->check(CLI::IsMember({"ca", "us", "1", "2"}));
  cmd->add_option("--province", options->province,
                  "Province index (0 Alberta ... 3 Ontario ... 12 PEI)")
      ->check(provinceIndex());
  // The personal-tax categories go back three years from it, and its tax year is one less.
  cmd->add_option("--year", options->year, "Current year of the practice (default: this year)")
      ->check(wholeNumber(1900, 9999, "a year from 1900 to 9999"));
  cmd->add_option("--firm", options->firm, "Name of the practice")->transform(outsideText());
  cmd->callback([options] { runCommand("init", [&] { return runInit(*options); }); });
});

}  // namespace
}  // namespace lf::cli
