// Host and template reading of the merge commands.
#include "cli/merge_cli_support.hpp"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/failure.hpp"
#include "base/module_state.hpp"
#include "base/text_encoding.hpp"
#include "cli/command_registry.hpp"

namespace lf::cli {

MergeHost::MergeHost(const HostOptions& options) {
  if (!options.practicePath.empty()) {
    session_ = std::make_unique<HostSession>(options);
    return;
  }
  locale_ = std::make_unique<FixedLocale>(options.country.value_or(kCountryCanada),
                                          options.province.value_or(kOntario));
  moduleState().LocaleReference = locale_.get();
}

MergeHost::~MergeHost() {
  if (locale_) moduleState().LocaleReference = nullptr;
}

std::string readTemplate(const std::string& text, const std::string& file, bool textGiven) {
  if (textGiven) return textFromOutside(text);
  if (file.empty()) throw UsageError("give the template with --text or --file");
  if (std::filesystem::is_directory(file))
    throw Failure("'" + file + "' is a folder, not a template file");
  std::ifstream in(file, std::ios::binary);
  if (!in) throw Failure("cannot read the template file '" + file + "'");
  std::ostringstream contents;
  contents << in.rdbuf();
  if (in.bad()) throw Failure("cannot read the template file '" + file + "'");
  std::string templateText = contents.str();
  makeCleanText(templateText);
  return templateText;
}

}  // namespace lf::cli
