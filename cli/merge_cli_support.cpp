// Host and template reading of the merge commands.
#include "cli/merge_cli_support.hpp"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "base/module_state.hpp"

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
  if (textGiven) return text;
  if (file.empty()) throw std::runtime_error("give the template with --text or --file");
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read the template file '" + file + "'");
  std::ostringstream contents;
  contents << in.rdbuf();
  if (in.bad()) throw std::runtime_error("cannot read the template file '" + file + "'");
  return contents.str();
}

}  // namespace lf::cli
