// Reading a Profile field key into its shape, and writing it back.
#include "tax/profile_field_key.hpp"

namespace lf {
namespace {

constexpr int kMaxIndex = 99999;

bool isLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Reads digits at pos into value (at most kMaxIndex); false when there are none or too many.
// An index has no leading zero, so that a key reads back as it was written.
bool readNumber(std::string_view text, size_t& pos, int& value, bool leadingZero = false) {
  size_t start = pos;
  if (!leadingZero && pos + 1 < text.size() && text[pos] == '0' && isDigit(text[pos + 1]))
    return false;
  long long n = 0;
  while (pos < text.size() && isDigit(text[pos])) {
    n = n * 10 + (text[pos] - '0');
    if (n > kMaxIndex) return false;
    ++pos;
  }
  value = static_cast<int>(n);
  return pos > start;
}

bool startsWithNoCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (size_t i = 0; i < prefix.size(); ++i)
    if ((text[i] | 0x20) != (prefix[i] | 0x20)) return false;
  return true;
}

}  // namespace

std::optional<ProfileFieldKey> parseProfileFieldKey(std::string_view text) {
  ProfileFieldKey key;
  size_t pos = 0;
  if (text.empty() || !isLetter(text[0])) return std::nullopt;
  while (pos < text.size() && (isLetter(text[pos]) || isDigit(text[pos]))) ++pos;
  key.name = std::string(text.substr(0, pos));

  if (pos == text.size()) {
    // "Line101" and "line166" are line numbers; any other plain name is a bare name.
    size_t digits = 4;
    int number = 0;
    if (startsWithNoCase(key.name, "line") && key.name.size() > 4 &&
        readNumber(key.name, digits, number, true) && digits == key.name.size()) {
      key.shape = ProfileKeyShape::LineNumber;
      key.lineNumber = number;
    } else {
      key.shape = ProfileKeyShape::BareName;
    }
    return key;
  }

  if (text[pos] == '.') {
    if (pos + 1 >= text.size() || (text[pos + 1] != 'S' && text[pos + 1] != 'B'))
      return std::nullopt;
    key.cellKind = text[pos + 1];
    pos += 2;
  }
  if (pos >= text.size() || text[pos] != '[') return std::nullopt;
  ++pos;
  for (;;) {
    int value = 0;
    if (!readNumber(text, pos, value)) return std::nullopt;
    key.index.push_back(value);
    if (pos >= text.size()) return std::nullopt;
    if (text[pos] == ']') break;
    if (text[pos] != ',' || key.index.size() == 3) return std::nullopt;
    ++pos;
  }
  if (pos + 1 != text.size()) return std::nullopt;

  switch (key.index.size()) {
    case 1:
      if (key.cellKind == 'S')
        key.shape = ProfileKeyShape::TextCell;
      else if (key.cellKind == 'B')
        key.shape = ProfileKeyShape::ChoiceCell;
      else if (startsWithNoCase(key.name, "schedule"))
        key.shape = ProfileKeyShape::ScheduleCell;
      else
        key.shape = ProfileKeyShape::FormCell;
      break;
    case 2:
      key.shape = ProfileKeyShape::RepeatingFormCell;
      break;
    default:
      key.shape = ProfileKeyShape::RepeatingTableCell;
      break;
  }
  return key;
}

std::string ProfileFieldKey::toText() const {
  std::string text = name;
  if (index.empty()) return text;
  if (cellKind != 0) {
    text += '.';
    text += cellKind;
  }
  text += '[';
  for (size_t i = 0; i < index.size(); ++i) {
    if (i > 0) text += ',';
    text += std::to_string(index[i]);
  }
  text += ']';
  return text;
}

}  // namespace lf
