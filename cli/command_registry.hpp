// Subcommands of lfimport register themselves here; main() adds each to the application.
// A subcommand lives in its own cli/cmd_*.cpp with one static CommandRegistration.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.hpp"

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

// The exit code a subcommand's callback leaves for main(): 0 all done, 1 something failed,
// 2 bad usage.
int& exitCode();
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

// Options that parse but do not fit together or say too little ("--list-clients needs
// --source"): exit code 2, as for a command line that does not parse.
class UsageError : public Failure {
 public:
  using Failure::Failure;
};

// Runs the body of subcommand `name` and leaves its exit code. A failure that escapes the body
// ends the command with one line on stderr, "lfimport <name>: <what>", and exit code 1 (2 for
// a UsageError).
void runCommand(std::string_view name, const std::function<int()>& body);

}  // namespace lf::cli
