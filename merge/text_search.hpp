// Text searching and replacing as the merge language does it: delimiters, tokens and
// rewrites compare without regard to case (ASCII letters), positions are byte offsets.
#pragma once

#include <string>
#include <string_view>

namespace lf::merge {

constexpr std::string_view npos_text = {};

// Position of needle in text from `from`, ignoring case; std::string_view::npos if absent.
size_t findNoCase(std::string_view text, std::string_view needle, size_t from = 0);
bool containsNoCase(std::string_view text, std::string_view needle);
bool equalsNoCase(std::string_view a, std::string_view b);
// Replaces occurrences left to right, ignoring case; count -1 means all. Returns how many.
// Occurrences that begin before `from` are left alone (a caller that has found the first
// one passes its place). Works in place. REQUIRES: find and with do not point into text.
int replaceNoCase(std::string& text, std::string_view find, std::string_view with, int count = -1,
                  size_t from = 0);
// Exact replacement of all occurrences.
int replaceExact(std::string& text, std::string_view find, std::string_view with);
std::string upper(std::string_view text);
// The byte as the searches compare it: ASCII letters in upper case.
inline unsigned char foldByte(char c) {
  const auto u = static_cast<unsigned char>(c);
  return u >= 'a' && u <= 'z' ? static_cast<unsigned char>(u - 32) : u;
}

}  // namespace lf::merge
