// Val, Left, Mid, Right, InStr and Replace.
#include "base/legacy_text.hpp"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace lf {
namespace {

char fold(char c, bool ignoreCase) {
  return ignoreCase ? static_cast<char>(std::tolower(static_cast<unsigned char>(c))) : c;
}

// Position (0-based) of `find` in `text` from `from`, npos when absent.
size_t findFrom(std::string_view text, std::string_view find, size_t from, bool ignoreCase) {
  if (find.size() > text.size()) return std::string_view::npos;
  for (size_t i = from; i + find.size() <= text.size(); ++i) {
    size_t k = 0;
    while (k < find.size() && fold(text[i + k], ignoreCase) == fold(find[k], ignoreCase)) ++k;
    if (k == find.size()) return i;
  }
  return std::string_view::npos;
}

}  // namespace

double val(std::string_view text) {
  std::string cleaned;
  bool digits = false, point = false, exponent = false;
  for (char c : text) {
    if (c == ' ' || c == '\t' || c == '\n' || c == '\r') continue;
    if (std::isdigit(static_cast<unsigned char>(c))) {
      cleaned += c;
      digits = true;
    } else if ((c == '+' || c == '-') && (cleaned.empty() || cleaned.back() == 'e')) {
      cleaned += c;
    } else if (c == '.' && !point && !exponent) {
      cleaned += c;
      point = true;
    } else if ((c == 'e' || c == 'E' || c == 'd' || c == 'D') && digits && !exponent) {
      cleaned += 'e';
      exponent = true;
    } else {
      break;
    }
  }
  return std::strtod(cleaned.c_str(), nullptr);
}

std::string leftText(std::string_view text, long length) {
  if (length <= 0) return "";
  return std::string(text.substr(0, static_cast<size_t>(length)));
}

std::string rightText(std::string_view text, long length) {
  if (length <= 0) return "";
  size_t n = std::min(text.size(), static_cast<size_t>(length));
  return std::string(text.substr(text.size() - n));
}

std::string midText(std::string_view text, long start, long length) {
  if (start < 1 || static_cast<size_t>(start) > text.size() || length == 0) return "";
  std::string_view rest = text.substr(static_cast<size_t>(start - 1));
  return std::string(length < 0 ? rest : rest.substr(0, static_cast<size_t>(length)));
}

long inStr(std::string_view text, std::string_view find, long start, bool ignoreCase) {
  if (start < 1 || static_cast<size_t>(start) > text.size()) return 0;
  if (find.empty()) return start;
  size_t at = findFrom(text, find, static_cast<size_t>(start - 1), ignoreCase);
  return at == std::string_view::npos ? 0 : static_cast<long>(at) + 1;
}

std::string replaceAll(std::string_view text, std::string_view find, std::string_view with,
                       bool ignoreCase, long count) {
  if (find.empty()) return std::string(text);
  std::string out;
  size_t from = 0;
  long done = 0;
  while (count < 0 || done < count) {
    size_t at = findFrom(text, find, from, ignoreCase);
    if (at == std::string_view::npos) break;
    out += text.substr(from, at - from);
    out += with;
    from = at + find.size();
    ++done;
  }
  out += text.substr(from);
  return out;
}

}  // namespace lf
