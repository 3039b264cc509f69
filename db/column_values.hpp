// Values of the database service: the column kind a declared type stands for, the conversion
// of the text callers write into a column's kind, and the keys values are searched by.
//
// Callers write every value as text (an ID as its digits, a date in the default text form, a
// boolean as "True"); the service converts it to the kind of the column it lands in, as the
// Access providers do, so that a search or a read back answers the typed value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/variant.hpp"

namespace lf {

// Column kind from the declared type of a table column ("INTEGER", "CURRENCY", "BOOLEAN",
// "DATETIME", "TEXT" ...). Null for an expression, whose values keep their storage class.
Variant::Kind kindOfDeclaredType(std::string_view declared, bool expression = false);

// The text written by a caller as the value stored in a column of that kind. A blank text
// stores null in a non-text column. Throws DatabaseFailure ("Data type mismatch") naming
// the column when the text is no value of that kind.
Variant convertForColumn(Variant::Kind kind, std::string_view text, std::string_view column);

// The text a value is compared by in a search: numbers canonical, text case-folded.
std::string compareKey(const Variant& value);

// The key of a search value written as text against a column of that kind; a blank value or
// one of another kind matches nothing.
std::string criterionKey(Variant::Kind kind, std::string_view text);

// Names compared with letter case ignored, as the engines compare table and column names.
char upperAscii(char c);
bool sameName(std::string_view a, std::string_view b);
struct NameHash {
  using is_transparent = void;
  size_t operator()(std::string_view s) const {
    size_t h = 1469598103934665603ull;
    for (char c : s) h = (h ^ static_cast<unsigned char>(upperAscii(c))) * 1099511628211ull;
    return h;
  }
};
struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return sameName(a, b); }
};
template <class T>
using NameMap = std::unordered_map<std::string, T, NameHash, NameEqual>;
template <class T>
using NameViewMap = std::unordered_map<std::string_view, T, NameHash, NameEqual>;

inline char upperAscii(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

inline bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  if (a == b) return true;  // most names are written as declared
  for (size_t i = 0; i < a.size(); ++i)
    if (upperAscii(a[i]) != upperAscii(b[i])) return false;
  return true;
}

}  // namespace lf
