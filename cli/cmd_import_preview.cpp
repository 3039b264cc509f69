// lfimport import preview: what the text import would read from a delimited file (the guessed
// delimiter, the column count and the first rows of the grid) without touching a database.
//
//   lfimport import preview --file clients.csv [--delimiter tab] [--qualifier none]
//                           [--first-row-names] [--rows 10] [--json]
#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "cli/command_registry.hpp"
#include "cli/import_command.hpp"
#include "cli/json_output.hpp"
#include "cli/option_checks.hpp"
#include "text/delimited_file_reader.hpp"
#include "text/delimiter_words.hpp"
#include "text/grid_table.hpp"
#include "text/import_file_checks.hpp"

namespace lf::cli {
namespace {

struct PreviewOptions {
  std::string file;
  std::optional<std::string> delimiter;
  std::string qualifier = "\"";
  bool firstRowNames = false;
  int rows = 10;
  bool json = false;
};

int runPreview(const PreviewOptions& o) {
  checkImportFile(o.file);
  DelimitedFileReader reader("clsImportPersonalTextFile");
  reader.fileLocation = o.file;
  const bool guessed = !o.delimiter;
  if (guessed) {
    std::string found;
    reader.determineDelimiter(found);
  } else {
    reader.strDelimiter = delimiterFromWord(*o.delimiter);
    if (!isOneCharacter(reader.strDelimiter))
      throw UsageError("--delimiter: '" + *o.delimiter + "' is not one character");
  }
  reader.strTextQualifier = qualifierFromWord(o.qualifier);
  if (!reader.strTextQualifier.empty() && !isOneCharacter(reader.strTextQualifier))
    throw UsageError("--qualifier: '" + o.qualifier + "' is not one character or none");
  reader.firstRowFieldNames = o.firstRowNames;
  ImportGrid grid;
  reader.gridControl = &grid;
  reader.loadGrid();
  checkImportGridHasData(grid, o.file);

  const std::string delimiter = delimiterWord(reader.strDelimiter);
  if (!o.json) {
    std::cout << "delimiter: " << delimiter << (guessed ? " (guessed)" : "")
              << "; columns: " << grid.cols() - 1 << "; data rows: " << grid.dataRowCount() << "\n";
    std::cout << gridTable(grid, o.rows, false);
    return 0;
  }
  nlohmann::ordered_json out;
  out["file"] = o.file;
  out["delimiter"] = delimiter;
  out["delimiterGuessed"] = guessed;
  out["qualifier"] = reader.strTextQualifier.empty() ? "none" : reader.strTextQualifier;
  out["firstRowNames"] = o.firstRowNames;
  out["columns"] = grid.cols() - 1;
  out["dataRows"] = grid.dataRowCount();
  auto rowJson = [&](int row) {
    nlohmann::ordered_json cells = nlohmann::ordered_json::array();
    for (int col = 1; col < grid.cols(); ++col)
      cells.push_back(std::string(grid.textMatrix(row, col)));
    return cells;
  };
  out["captions"] = rowJson(kCaptionRow);
  out["rows"] = nlohmann::ordered_json::array();
  for (int row = kFirstDataRow; row < std::min(grid.rows(), kFirstDataRow + o.rows); ++row)
    out["rows"].push_back(rowJson(row));
  std::cout << jsonText(out) << "\n";
  return 0;
}

const CommandRegistration registration(90, [](CLI::App& app) {
  auto options = std::make_shared<PreviewOptions>();
  CLI::App* cmd = importCommand(app)->add_subcommand(
      "preview", "Show how a delimited file reads, without touching a database");
  cmd->add_option("--file", options->file, "The delimited file")->required();
  cmd->add_option("--delimiter", options->delimiter,
                  "tab, semicolon, comma, space or another character (default: guessed)")
      ->transform(outsideText());
  cmd->add_option("--qualifier", options->qualifier, "The quote character, or none")
      ->transform(outsideText());
  cmd->add_flag("--first-row-names", options->firstRowNames, "The first line holds captions");
  cmd->add_option("--rows", options->rows, "How many data rows to show (default 10)")
      ->check(wholeNumber(0, 1000000, "a row count from 0 to 1000000"));
  cmd->add_flag("--json", options->json, "Print JSON instead of a table");
  cmd->callback([options] { runCommand("import preview", [&] { return runPreview(*options); }); });
});

}  // namespace
}  // namespace lf::cli
