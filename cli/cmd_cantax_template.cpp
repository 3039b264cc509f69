// lfimport cantax template t1|t2plus --out FILE.tpl: writes the export template that tells
// CANTAX which variables to export, as the CANTAX wizards save it (".tpl" is appended when the
// name lacks it; an existing file is replaced).
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "cli/command_registry.hpp"
#include "tax/cantax_export_template.hpp"

namespace lf::cli {
namespace {

struct TemplateOptions {
  std::string product;
  std::string out;
};

const CommandRegistration registration(92, [](CLI::App& app) {
  auto options = std::make_shared<TemplateOptions>();
  CLI::App* cantax = app.add_subcommand("cantax", "CANTAX export templates");
  cantax->require_subcommand(1);
  CLI::App* cmd = cantax->add_subcommand("template", "Write the CANTAX export template");
  cmd->add_option("product", options->product, "t1 or t2plus")
      ->required()
      ->check(CLI::IsMember({"t1", "t2plus"}));
  cmd->add_option("--out", options->out, "The template file (.tpl)")->required();
  cmd->callback([options] {
    runCommand("cantax template", [&] {
      const std::string written = saveCANTAXTemplate(
          options->product == "t1" ? CANTAXProduct::T1 : CANTAXProduct::T2Plus, options->out);
      std::cout << written << "\n";
      return 0;
    });
  });
});

}  // namespace
}  // namespace lf::cli
