// lfimport source inspect: what a source file holds (a SQLite export, or an Access export
// read through its temporary copy): its tables, each column with its type, and row counts. A
// table on the terminal, or JSON with --json.
#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>

#include "base/text_encoding.hpp"
#include "cli/command_registry.hpp"
#include "cli/json_output.hpp"
#include "db/access_export_copy.hpp"

namespace lf::cli {
namespace {

int runInspect(const std::string& path, bool json) {
  const SourceFileKind kind = sourceFileKind(path);
  const std::vector<SourceTable> tables = inspectSourceFile(path);
  if (json) {
    nlohmann::ordered_json out = {{"file", textFromOutside(path)},
                                  {"kind", sourceFileKindName(kind)},
                                  {"tables", nlohmann::ordered_json::array()}};
    for (const SourceTable& table : tables) {
      nlohmann::ordered_json columns = nlohmann::ordered_json::array();
      for (const SourceColumn& column : table.columns)
        columns.push_back({{"name", column.name}, {"type", column.type}});
      out["tables"].push_back({{"name", table.name}, {"rows", table.rows}, {"columns", columns}});
    }
    std::cout << jsonText(out) << "\n";
    return 0;
  }
  std::cout << textFromOutside(path) << ": " << sourceFileKindName(kind) << ", " << tables.size()
            << " tables\n";
  for (const SourceTable& table : tables) {
    std::cout << "\n" << table.name << " (" << table.rows << " rows)\n";
    for (const SourceColumn& column : table.columns)
      std::cout << "  " << column.name << "  " << column.type << "\n";
  }
  return 0;
}

CommandRegistration registration(75, [](CLI::App& app) {
  auto path = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  CLI::App* source = app.add_subcommand("source", "Look into a source file");
  source->require_subcommand(1);
  CLI::App* cmd = source->add_subcommand(
      "inspect", "List the tables, columns and row counts of a SQLite or Access source file");
  cmd->add_option("FILE", *path, "Source file")->required();
  cmd->add_flag("--json", *json, "Print JSON");
  cmd->callback(
      [path, json] { runCommand("source inspect", [&] { return runInspect(*path, *json); }); });
});

}  // namespace
}  // namespace lf::cli
