// Blank test, numeric tests and case helpers.
#include "host/general_utilities.hpp"

#include <cctype>
#include <cstdlib>

namespace lf {

bool GeneralUtilities::isBlank(const Variant& value) {
  if (value.isNull()) return true;
  if (!value.isText()) return false;
  return isBlank(value.toString());
}

bool GeneralUtilities::isBlank(std::string_view text) {
  for (char c : text)
    if (c != ' ') return false;
  return true;
}

bool GeneralUtilities::parseNumber(std::string_view text, double& out) {
  std::string cleaned;
  cleaned.reserve(text.size());
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  size_t end = text.size();
  while (end > i && (text[end - 1] == ' ' || text[end - 1] == '\t')) --end;
  if (i == end) return false;
  bool digit = false;
  for (size_t k = i; k < end; ++k) {
    char c = text[k];
    if (c == ',') {
      if (!digit) return false;
      continue;
    }
    if (std::isdigit(static_cast<unsigned char>(c))) digit = true;
    cleaned.push_back(c);
  }
  if (!digit) return false;
  char* stop = nullptr;
  out = std::strtod(cleaned.c_str(), &stop);
  if (stop == nullptr || *stop != '\0') return false;
  // strtod accepts hexadecimal, "inf" and "nan"; the legacy test does not.
  for (char c : cleaned)
    if (c == 'x' || c == 'X' || c == 'n' || c == 'N' || c == 'i' || c == 'I') return false;
  return true;
}

bool GeneralUtilities::isNumeric(std::string_view text) {
  double v = 0;
  return parseNumber(text, v);
}

std::string GeneralUtilities::trim(std::string_view text) {
  size_t b = 0, e = text.size();
  while (b < e && text[b] == ' ') ++b;
  while (e > b && text[e - 1] == ' ') --e;
  return std::string(text.substr(b, e - b));
}

std::string GeneralUtilities::upperCase(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

std::string GeneralUtilities::lowerCase(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

}  // namespace lf
