// The parent of the import commands (lfimport import preview|personal|business of text files,
// wip|invoices|ar of prepared databases): each command's file adds its subcommand to the one
// "import" command.
#pragma once

#include <CLI/CLI.hpp>

namespace lf::cli {

inline CLI::App* importCommand(CLI::App& app) {
  for (CLI::App* sub : app.get_subcommands([](CLI::App* s) { return s->get_name() == "import"; }))
    return sub;
  CLI::App* import = app.add_subcommand(
      "import",
      "Import clients from a delimited text file (or preview one), or opening balances from a "
      "prepared database");
  import->require_subcommand(1);
  return import;
}

}  // namespace lf::cli
