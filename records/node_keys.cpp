// Node keys of the trees. Prefixes are found without regard to case, and the ID is the text
// that follows the first occurrence of the prefix.
#include "records/node_keys.hpp"

#include <cmath>
#include <initializer_list>
#include <optional>

#include "base/general_utilities.hpp"
#include "base/procedure.hpp"

namespace lf {
namespace {

std::size_t findNoCase(std::string_view text, std::string_view what) {
  return GeneralUtilities::upperCase(text).find(GeneralUtilities::upperCase(what));
}

// The text after the first occurrence of prefix, or nothing when the key does not hold it.
std::optional<std::string> after(std::string_view key, std::string_view prefix) {
  const std::size_t at = findNoCase(key, prefix);
  if (at == std::string_view::npos) return std::nullopt;
  return std::string(key.substr(at + prefix.size()));
}

long toID(const std::string& text) {
  double value = 0;
  if (!GeneralUtilities::parseNumber(text, value)) return 0;
  return static_cast<long>(std::llround(value));
}

std::string categoryRest(std::string_view key) {
  if (findNoCase(key, "FirmCategory") != std::string_view::npos)
    return after(key, "FirmCategory:").value_or("");
  if (auto rest = after(key, "TaxCategory:")) return *rest;
  return after(key, "Category:").value_or("");
}

// The first contact prefix that the key holds, or empty.
std::string_view contactPrefix(std::string_view key) {
  for (std::string_view prefix : {"FirmTaxContact:", "FirmContact:", "TaxContact:", "Contact:"})
    if (findNoCase(key, prefix) != std::string_view::npos) return prefix;
  return {};
}

}  // namespace

long getCategoryIDFromCategoryNodeKey(std::string_view key) {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getCategoryIDFromCategoryNodeKey",
            [&] { result = toID(categoryRest(key)); });
  return result;
}

std::string getCategoryIDStringFromCategoryNodeKey(std::string_view key) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getCategoryIDStringFromCategoryNodeKey",
            [&] { result = categoryRest(key); });
  return result;
}

long getContactIDFromContactNodeKey(std::string_view key) {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getContactIDFromContactNodeKey", [&] {
    const std::string_view prefix = contactPrefix(key);
    if (prefix.empty()) return;
    std::string rest = after(key, prefix).value_or("");
    for (int pass = 0; pass < 3 && !GeneralUtilities::isNumeric(rest); ++pass) {
      auto again = after(rest, prefix);
      if (!again) break;
      rest = *again;
    }
    result = toID(rest);
  });
  return result;
}

std::string getContactIDStringFromContactNodeKey(std::string_view key) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getContactIDStringFromContactNodeKey", [&] {
    const std::string_view prefix = contactPrefix(key);
    if (!prefix.empty()) result = after(key, prefix).value_or("");
  });
  return result;
}

long getSelectedMajorNodeTypeFromString(std::string_view key) {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getSelectedMajorNodeTypeFromString", [&] {
    if (findNoCase(key, "Contact:") != std::string_view::npos) {
      result = 1;
    } else if (findNoCase(key, "Company:") != std::string_view::npos) {
      result = 2;
    } else if (findNoCase(key, "Category:") != std::string_view::npos) {
      result = 3;
    }
  });
  return result;
}

long getSelectedNodeIDFromString(std::string_view key) {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getSelectedNodeIDFromString", [&] {
    switch (getSelectedMajorNodeTypeFromString(key)) {
      case 1:
        result = getContactIDFromContactNodeKey(key);
        break;
      case 2:
        result = toID(after(key, "Company:").value_or(""));
        break;
      case 3:
        result = getCategoryIDFromCategoryNodeKey(key);
        break;
      default:
        break;
    }
  });
  return result;
}

std::string getSelectedNodeIDStringFromString(std::string_view key) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getSelectedNodeIDStringFromString", [&] {
    switch (getSelectedMajorNodeTypeFromString(key)) {
      case 1:
        result = getContactIDStringFromContactNodeKey(key);
        break;
      case 2:
        result = after(key, "Company:").value_or("");
        break;
      case 3:
        result = getCategoryIDStringFromCategoryNodeKey(key);
        break;
      default:
        break;
    }
  });
  return result;
}

}  // namespace lf
