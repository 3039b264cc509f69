// The registry of lfimport's subcommands and the exit code they leave for main().
#include "cli/command_registry.hpp"

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

}  // namespace lf::cli
