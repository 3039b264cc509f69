// Subcommands of lfimport register themselves here; main() adds each to the application.
// A subcommand lives in its own cli/cmd_*.cpp with one static CommandRegistration.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace lf::cli {

// Adds the subcommand to the app. The returned callback (set with sub->callback or by
// storing state) runs it; the process exit code is taken from exitCode().
using CommandFactory = std::function<void(CLI::App& app)>;

struct CommandRegistration {
  CommandRegistration(int order, CommandFactory factory);
};

std::vector<std::pair<int, CommandFactory>>& commandFactories();

// The exit code a subcommand's callback leaves for main().
int& exitCode();

}  // namespace lf::cli
