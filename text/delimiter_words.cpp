// Delimiter and qualifier words.
#include "text/delimiter_words.hpp"

#include "base/general_utilities.hpp"

namespace lf {

namespace {
struct DelimiterName {
  std::string_view word;
  std::string_view delimiter;
};
constexpr DelimiterName kDelimiterNames[] = {
    {"tab", "\t"}, {"semicolon", ";"}, {"comma", ","}, {"space", " "}};
}  // namespace

std::string delimiterFromWord(std::string_view word) {
  const std::string lower = GeneralUtilities::lowerCase(word);
  for (const DelimiterName& name : kDelimiterNames)
    if (lower == name.word) return std::string(name.delimiter);
  return std::string(word);
}

std::string delimiterWord(std::string_view delimiter) {
  for (const DelimiterName& name : kDelimiterNames)
    if (delimiter == name.delimiter) return std::string(name.word);
  return std::string(delimiter);
}

std::string qualifierFromWord(std::string_view word) {
  const std::string lower = GeneralUtilities::lowerCase(word);
  if (lower == "none" || lower == "(none)") return {};
  return std::string(word);
}

bool isOneCharacter(std::string_view text) {
  if (text.empty()) return false;
  const auto lead = static_cast<unsigned char>(text[0]);
  const size_t n = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  return text.size() == n;
}

}  // namespace lf
