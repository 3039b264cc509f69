// lfimport fields: the merge field catalogue of a list type and use, in list order, as JSON.
//
//   lfimport fields --list-type 1 --country ca --province 8
//   lfimport fields --list-type 2 --use 3 --practice practice.db
#include <CLI/CLI.hpp>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/command_registry.hpp"
#include "cli/json_output.hpp"
#include "cli/merge_cli_support.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace lf::cli {
namespace {

struct FieldsOptions {
  HostOptions host;
  int listType = 1;
  int use = 1;
};

int runFields(const FieldsOptions& options) {
  MergeHost host(options.host);
  clsInsertFieldsInRTB rtb;
  rtb.ListType = options.listType;
  rtb.setMergeFieldListUse(options.use);
  bool noListBox = true;
  bool clearListBox = true;
  rtb.createDefaultFieldListStructure(noListBox, clearListBox);
  nlohmann::ordered_json out = nlohmann::ordered_json::array();
  for (const FieldItem& item : rtb.FieldList())
    out.push_back({{"key", item.key},
                   {"field", item.databaseField},
                   {"display", item.displayName},
                   {"tag", item.tableTag},
                   {"type", item.fieldType},
                   {"sample", item.sampleValue},
                   {"length", item.maxLength}});
  rtb.Terminate();
  std::cout << jsonText(out) << "\n";
  return 0;
}

CommandRegistration registration(40, [](CLI::App& app) {
  auto options = std::make_shared<FieldsOptions>();
  CLI::App* cmd = app.add_subcommand("fields", "List the merge field catalogue as JSON");
  cmd->add_option(
      "--list-type", options->listType,
      "1 company, 2 company or contact, 3 contact, 5 appointment, 6 time entry, 8 task");
  cmd->add_option("--use", options->use,
                  "1 one document, 2 many records, 3 column chooser, 4 by program, 5 write");
  cmd->add_option("--practice", options->host.practicePath,
                  "Practice database (custom field names come from it)");
  options->host.readOnly = true;
  addHostOptions(*cmd, options->host);
  cmd->callback([options] { runCommand("fields", [&] { return runFields(*options); }); });
});

}  // namespace
}  // namespace lf::cli
