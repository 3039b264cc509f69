// Blank test, numeric tests, case helpers, and the host's telephone, business-number, identity
// and duration forms.
#include "base/general_utilities.hpp"

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

// ---- the host's number and text forms ----

namespace lf {
namespace {

std::string digitsOf(std::string_view text) {
  std::string out;
  for (char c : text)
    if (std::isdigit(static_cast<unsigned char>(c))) out += c;
  return out;
}

bool onlyDigitsAnd(std::string_view text, std::string_view allowed) {
  for (char c : text)
    if (!std::isdigit(static_cast<unsigned char>(c)) && allowed.find(c) == std::string_view::npos)
      return false;
  return true;
}

// Upper case without blanks, dashes and dots: "12345 6789 rt-0001" is "123456789RT0001".
std::string compactUpper(std::string_view text) {
  std::string out;
  for (char c : text)
    if (c != ' ' && c != '-' && c != '.' && c != '\t')
      out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

// Splits "123456789RT0001" into root, program letters and reference; false when it is no
// business number.
bool splitBusinessNumber(const std::string& compact, std::string& root, std::string& program,
                         std::string& reference) {
  if (compact.size() < 9 || !onlyDigitsAnd(compact.substr(0, 9), "")) return false;
  root = compact.substr(0, 5) + " " + compact.substr(5, 4);
  std::string rest = compact.substr(9);
  program.clear();
  reference.clear();
  if (rest.empty()) return true;
  if (rest.size() == 6 && std::isalpha(static_cast<unsigned char>(rest[0])) &&
      std::isalpha(static_cast<unsigned char>(rest[1])) && onlyDigitsAnd(rest.substr(2), "")) {
    program = rest.substr(0, 2);
    reference = rest.substr(2);
    return true;
  }
  return false;
}

}  // namespace

std::string GeneralUtilities::formatPhoneNumber(std::string_view text) {
  std::string trimmed = trim(text);
  std::string lower = lowerCase(trimmed);
  std::string main = trimmed, extension;
  bool marked = false;
  for (std::string_view marker : {"extension", "ext.", "ext", "x"}) {
    size_t at = lower.find(marker);
    if (at == std::string::npos) continue;
    std::string_view rest = std::string_view(trimmed).substr(at + marker.size());
    while (!rest.empty() && (rest.front() == ' ' || rest.front() == ':' || rest.front() == '.'))
      rest.remove_prefix(1);
    if (rest.empty() || !onlyDigitsAnd(rest, "")) return trimmed;
    main = trimmed.substr(0, at);
    extension = std::string(rest);
    marked = true;
    break;
  }
  if (!onlyDigitsAnd(main, " ()-./+")) return trimmed;
  std::string digits = digitsOf(main);
  if (digits.size() == 11 && digits[0] == '1') digits.erase(0, 1);
  if (!marked && digits.size() > 10) {
    // An extension given as the last blank-separated group after a complete number
    // ("416 5551234 22").
    std::string body = trim(main);
    size_t blank = body.find_last_of(' ');
    if (blank == std::string::npos) return trimmed;
    extension = digitsOf(body.substr(blank + 1));
    digits = digitsOf(body.substr(0, blank));
    if (digits.size() == 11 && digits[0] == '1') digits.erase(0, 1);
    if (digits.size() != 10) return trimmed;
  }
  std::string formatted;
  if (digits.size() == 10)
    formatted = "(" + digits.substr(0, 3) + ") " + digits.substr(3, 3) + "-" + digits.substr(6);
  else if (digits.size() == 7)
    formatted = digits.substr(0, 3) + "-" + digits.substr(3);
  else
    return trimmed;
  if (!extension.empty()) formatted += " x" + extension;
  return formatted;
}

std::string GeneralUtilities::parseBusinessNumber(std::string_view text, std::string& suffix,
                                                  bool& valid) {
  std::string root, program, reference;
  valid = splitBusinessNumber(compactUpper(text), root, program, reference);
  suffix = reference.empty() ? "0001" : reference;
  return valid ? root : trim(text);
}

std::string GeneralUtilities::parseCorporationNumber(std::string_view text) {
  std::string root, program, reference;
  if (!splitBusinessNumber(compactUpper(text), root, program, reference)) return trim(text);
  return program.empty() ? root : root + " " + program + reference;
}

namespace {

// The text as code points; the text is valid UTF-8 (outside text is made so where it enters).
std::u32string codePoints(std::string_view text) {
  std::u32string out;
  for (size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const size_t n = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t c = n == 1 ? lead : lead & (0x7F >> n);
    for (size_t k = 1; k < n && i + k < text.size(); ++k)
      c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
    out.push_back(c);
    i += n;
  }
  return out;
}

std::string utf8(const std::u32string& text) {
  std::string out;
  for (char32_t c : text) {
    if (c < 0x80) {
      out += static_cast<char>(c);
    } else if (c < 0x800) {
      out += static_cast<char>(0xC0 | (c >> 6));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return out;
}

// Letters of ASCII and of the Latin-1 range (accented capitals U+00C0 to U+00DE and their
// small forms 0x20 above, without the multiplication and division signs).
bool isLatinLetter(char32_t c) {
  return (c < 0x80 && std::isalpha(static_cast<int>(c))) ||
         (c >= 0xC0 && c <= 0xFF && c != 0xD7 && c != 0xF7);
}
char32_t latinLower(char32_t c) {
  if (c < 0x80) return static_cast<char32_t>(std::tolower(static_cast<int>(c)));
  return c >= 0xC0 && c <= 0xDE && c != 0xD7 ? c + 0x20 : c;
}
char32_t latinUpper(char32_t c) {
  if (c < 0x80) return static_cast<char32_t>(std::toupper(static_cast<int>(c)));
  return c >= 0xE0 && c <= 0xFE && c != 0xF7 ? c - 0x20 : c;
}

}  // namespace

std::string GeneralUtilities::mixedCase(std::string_view text) {
  std::u32string out = codePoints(text);
  for (char32_t& c : out) c = latinLower(c);
  auto isDigit = [](char32_t c) { return c < 0x80 && std::isdigit(static_cast<int>(c)); };
  for (size_t i = 0; i < out.size(); ++i) {
    if (!isLatinLetter(out[i])) continue;
    bool startsWord =
        i == 0 || (!isLatinLetter(out[i - 1]) && !isDigit(out[i - 1]) && out[i - 1] != U'\'');
    // O'Brien, D'Arcy: a single letter before the apostrophe and a word after it.
    bool afterPrefix = i >= 2 && out[i - 1] == U'\'' && isLatinLetter(out[i - 2]) &&
                       (i == 2 || !isLatinLetter(out[i - 3])) && i + 1 < out.size() &&
                       isLatinLetter(out[i + 1]);
    if (startsWord || afterPrefix) out[i] = latinUpper(out[i]);
  }
  return utf8(out);
}

std::string GeneralUtilities::formatSIN(std::string_view text) {
  std::string digits = digitsOf(text);
  if (digits.size() != 9 || !onlyDigitsAnd(text, " -")) return trim(text);
  return digits.substr(0, 3) + " " + digits.substr(3, 3) + " " + digits.substr(6);
}

std::string GeneralUtilities::formatSSN(std::string_view text) {
  std::string digits = digitsOf(text);
  if (digits.size() != 9 || !onlyDigitsAnd(text, " -")) return trim(text);
  return digits.substr(0, 3) + "-" + digits.substr(3, 2) + "-" + digits.substr(5);
}

std::string GeneralUtilities::formatPostalCode(std::string_view text) {
  std::string c = compactUpper(text);
  auto alpha = [&](size_t k) { return std::isalpha(static_cast<unsigned char>(c[k])) != 0; };
  auto digit = [&](size_t k) { return std::isdigit(static_cast<unsigned char>(c[k])) != 0; };
  if (c.size() == 6 && alpha(0) && digit(1) && alpha(2) && digit(3) && alpha(4) && digit(5))
    return c.substr(0, 3) + " " + c.substr(3);
  return formatZipCode(text);
}

std::string GeneralUtilities::formatZipCode(std::string_view text) {
  std::string digits = digitsOf(text);
  if (!onlyDigitsAnd(text, " -")) return trim(text);
  if (digits.size() == 5) return digits;
  if (digits.size() == 9) return digits.substr(0, 5) + "-" + digits.substr(5);
  return trim(text);
}

std::string GeneralUtilities::minutesToText(long long minutes) {
  if (minutes < 0) return "-" + minutesToText(-minutes);
  long long hours = minutes / 60, rest = minutes % 60;
  if (hours == 0) return std::to_string(rest) + " min";
  std::string text = std::to_string(hours) + (hours == 1 ? " hr" : " hrs");
  if (rest != 0) text += " " + std::to_string(rest) + " min";
  return text;
}

}  // namespace lf
