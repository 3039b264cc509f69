// lfimport: the command-line program of the import component.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

#include "cli/command_registry.hpp"

int main(int argc, char** argv) {
  CLI::App app{"lfimport: brings outside data into a Ledgerfolio practice database"};
  app.require_subcommand(1);
  auto& factories = lf::cli::commandFactories();
  std::stable_sort(factories.begin(), factories.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& [order, factory] : factories) factory(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() == 0) return app.exit(e);  // --help
    // One line naming the option, and the usage exit code whatever CLI11's own number.
    std::cerr << "lfimport: " << e.what() << " (see lfimport --help)\n";
    return lf::cli::kExitUsage;
  } catch (const std::exception& e) {
    std::cerr << "lfimport: " << e.what() << "\n";
    return lf::cli::kExitFailed;
  }
  return lf::cli::exitCode();
}
