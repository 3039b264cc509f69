// lfimport init: creates a new practice database with the schema and seed rows.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "cli/command_registry.hpp"
#include "cli/host_session.hpp"
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

void runInit(const InitOptions& o) {
  if (std::filesystem::exists(o.path)) {
    std::cerr << "lfimport init: '" << o.path
              << "' already exists; init never writes over an existing file\n";
    exitCode() = 1;
    return;
  }
  PracticeSeed seed;
  seed.countryMode = parseCountry(o.country);
  seed.provinceIndex = o.province;
  seed.currentYear = o.year;
  seed.firmName = o.firm;
  try {
    auto db = createPracticeDatabase(o.path, seed);
    db->close();
  } catch (const std::exception& e) {
    std::cerr << "lfimport init: " << e.what() << "\n";
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(o.path + suffix);
    exitCode() = 1;
    return;
  }
  std::cout << "created practice database " << o.path << "\n";
}

CommandRegistration registration(10, [](CLI::App& app) {
  auto options = std::make_shared<InitOptions>();
  CLI::App* cmd =
      app.add_subcommand("init", "Create a new practice database with its tables and seed rows");
  cmd->add_option("PRACTICE", options->path, "Path of the new practice database")->required();
  cmd->add_option("--country", options->country, "Country: ca or us")
      ->check(CLI::IsMember({"ca", "us", "1", "2"}));
  cmd->add_option("--province", options->province,
                  "Province index (0 Alberta ... 3 Ontario ... 12 PEI)");
  cmd->add_option("--year", options->year, "Current year of the practice (default: this year)");
  cmd->add_option("--firm", options->firm, "Name of the practice");
  cmd->callback([options] { runInit(*options); });
});

}  // namespace
}  // namespace lf::cli
