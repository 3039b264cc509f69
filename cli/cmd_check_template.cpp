// lfimport check-template: checks a merge template as the template editor does and prints
// {"fault": ..., "messages": [...]} with the editor's exact messages. A fault in the template
// is a result, not an error: the exit code is 0 either way.
//
//   lfimport check-template --text "Dear «Contact Display Name»,"
//   lfimport check-template --file letter.rtf --rtf --practice practice.db
#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/command_registry.hpp"
#include "cli/json_output.hpp"
#include "cli/merge_cli_support.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace lf::cli {
namespace {

struct CheckOptions {
  HostOptions host;
  std::string text;
  std::string file;
  bool rtf = false;
  bool skipNames = false;
  int listType = 1;
  CLI::Option* textOption = nullptr;
};

int runCheck(const CheckOptions& options) {
  std::string templateText =
      readTemplate(options.text, options.file, options.textOption->count() > 0);
  MergeHost host(options.host);
  clsInsertFieldsInRTB rtb;
  rtb.ListType = options.listType;
  bool noListBox = true;
  bool clearListBox = true;
  rtb.createDefaultFieldListStructure(noListBox, clearListBox);
  nlohmann::ordered_json messages = nlohmann::ordered_json::array();
  rtb.testErrorComment = [&messages](const std::string& m) { messages.push_back(m); };
  bool fault = rtb.testRTBComment(templateText, options.rtf, true, options.skipNames);
  rtb.Terminate();
  std::cout << jsonText(nlohmann::ordered_json{{"fault", fault}, {"messages", messages}}) << "\n";
  return 0;
}

CommandRegistration registration(41, [](CLI::App& app) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* cmd = app.add_subcommand("check-template", "Check a merge template");
  options->textOption = cmd->add_option("--text", options->text, "The template text");
  CLI::Option* file = cmd->add_option("--file", options->file, "A file holding the template");
  options->textOption->excludes(file);
  cmd->add_flag("--rtf", options->rtf, "The template is RTF source (\\'ab and \\'bb)");
  cmd->add_flag("--skip-names", options->skipNames, "Do not check the field names");
  cmd->add_option("--list-type", options->listType, "List type whose field names are known");
  cmd->add_option("--practice", options->host.practicePath,
                  "Practice database (custom field names come from it)");
  options->host.readOnly = true;
  addHostOptions(*cmd, options->host);
  cmd->callback([options] { runCommand("check-template", [&] { return runCheck(*options); }); });
});

}  // namespace
}  // namespace lf::cli
