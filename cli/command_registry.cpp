// The registry of lfimport's subcommands and the exit code they leave for main().
#include "cli/command_registry.hpp"

#include <iostream>
#include <utility>

namespace lf::cli {

std::vector<std::pair<int, CommandFactory>>& commandFactories() {
  static std::vector<std::pair<int, CommandFactory>> factories;
  return factories;
}

CommandRegistration::CommandRegistration(int order, CommandFactory factory) {
  commandFactories().emplace_back(order, std::move(factory));
}

int& exitCode() {
  static int code = 0;
  return code;
}

void runCommand(std::string_view name, const std::function<int()>& body) {
  try {
    exitCode() = body();
  } catch (const UsageError& e) {
    std::cerr << "lfimport " << name << ": " << e.what() << "\n";
    exitCode() = kExitUsage;
  } catch (const std::exception& e) {
    std::cerr << "lfimport " << name << ": " << e.what() << "\n";
    exitCode() = kExitFailed;
  }
}

}  // namespace lf::cli
