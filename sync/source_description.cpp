// The client-ID record and the operation labels of a source.
#include "sync/source_description.hpp"

#include "base/general_utilities.hpp"

namespace lf {

std::vector<std::string> ClientKeyShape::parse(std::string_view key) const {
  std::vector<std::string> parts(columns.size());
  if (parts.size() == 1) parts[0] = std::string(key);
  if (parts.size() < 2 || GeneralUtilities::isBlank(key) || key.find(',') == std::string_view::npos)
    return parts;
  size_t start = 0;
  for (std::string& part : parts) {
    const size_t comma = key.find(',', start);
    part = GeneralUtilities::trim(key.substr(start, comma - start));
    if (comma == std::string_view::npos) break;
    start = comma + 1;
  }
  return parts;
}

std::string ClientKeyShape::join(const std::vector<std::string>& parts) {
  std::string key;
  for (size_t i = 0; i < parts.size(); ++i) key += (i > 0 ? "," : "") + parts[i];
  return key;
}

std::string SourceDescription::label(std::string_view className, std::string_view procedureName) {
  return label("Ledgerfolio.exe", className, procedureName);
}

std::string SourceDescription::label(std::string_view file, std::string_view className,
                                     std::string_view procedureName) {
  return std::string(file) + "-" + std::string(className) + "-" + std::string(procedureName);
}

}  // namespace lf
