// Conversions between the text callers write, the kinds of columns and search keys.
#include "db/column_values.hpp"

#include <cmath>
#include <cstdio>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "db/access_sql.hpp"

namespace lf {
namespace {

using Kind = Variant::Kind;

std::string upper(std::string_view s) {
  return GeneralUtilities::upperCase(s);
}

// Money text as the legacy conversion accepts it: "$1,234.50", "(12.50)", "-5".
bool parseNumberText(std::string_view text, double& out) {
  std::string t = GeneralUtilities::trim(text);
  bool negative = false;
  if (t.size() >= 2 && t.front() == '(' && t.back() == ')') {
    negative = true;
    t = t.substr(1, t.size() - 2);
  }
  std::string cleaned;
  for (char c : t)
    if (c != '$') cleaned += c;
  if (!GeneralUtilities::parseNumber(cleaned, out)) return false;
  if (negative) out = -out;
  return true;
}

// A plain decimal integer of up to 15 digits (keys, counts, flags): the common case, read
// without copies; anything else takes the general route.
bool plainInteger(std::string_view t, std::int64_t& out) {
  size_t i = !t.empty() && t[0] == '-' ? 1 : 0;
  if (t.size() == i || t.size() - i > 15) return false;
  std::int64_t value = 0;
  for (size_t k = i; k < t.size(); ++k) {
    if (t[k] < '0' || t[k] > '9') return false;
    value = value * 10 + (t[k] - '0');
  }
  out = i ? -value : value;
  return true;
}

}  // namespace

// Column type from the declared type of a table column.
Kind kindOfDeclaredType(std::string_view declared, bool expression) {
  if (expression) return Kind::Null;  // by storage class
  std::string d = upper(declared);
  if (d.find("BOOL") != std::string::npos || d.find("BIT") != std::string::npos ||
      d.find("YESNO") != std::string::npos)
    return Kind::Boolean;
  if (d.find("INT") != std::string::npos || d.find("COUNTER") != std::string::npos)
    return Kind::Integer;
  if (d.find("DATE") != std::string::npos || d.find("TIME") != std::string::npos) return Kind::Date;
  if (d.find("CURRENCY") != std::string::npos || d.find("MONEY") != std::string::npos ||
      d.find("DOUB") != std::string::npos || d.find("REAL") != std::string::npos ||
      d.find("FLOA") != std::string::npos || d.find("NUMERIC") != std::string::npos ||
      d.find("DECIMAL") != std::string::npos || d.find("SINGLE") != std::string::npos)
    return Kind::Double;
  return Kind::Text;
}

// Converts the text written by a caller to the value stored in a column of that kind.
Variant convertForColumn(Kind kind, std::string_view text, std::string_view column) {
  if (kind == Kind::Text || kind == Kind::Null) return Variant::text(std::string(text));
  if (std::int64_t plain = 0;
      (kind == Kind::Integer || kind == Kind::Double || kind == Kind::Boolean) &&
      plainInteger(text, plain)) {
    if (kind == Kind::Integer) return Variant::integer(plain);
    if (kind == Kind::Double) return Variant::real(static_cast<double>(plain));
    return Variant::boolean(plain != 0);
  }
  if (GeneralUtilities::isBlank(text)) return Variant::null();
  std::string t = GeneralUtilities::trim(text);
  std::string u = upper(t);
  double number = 0;
  switch (kind) {
    case Kind::Boolean:
      if (u == "TRUE" || u == "YES" || u == "ON") return Variant::boolean(true);
      if (u == "FALSE" || u == "NO" || u == "OFF") return Variant::boolean(false);
      if (parseNumberText(t, number)) return Variant::boolean(number != 0);
      break;
    case Kind::Integer:
      if (u == "TRUE") return Variant::integer(-1);
      if (u == "FALSE") return Variant::integer(0);
      if (parseNumberText(t, number)) return Variant::integer(std::llround(number));
      break;
    case Kind::Double:
      if (parseNumberText(t, number)) return Variant::real(number);
      break;
    case Kind::Date: {
      std::string iso;
      if (parseSqlDateText(t, iso)) return Variant::date(*Date::fromIso(iso));
      if (parseNumberText(t, number)) return Variant::date(Date{number});
      break;
    }
    default:
      break;
  }
  throw DatabaseFailure("Data type mismatch: '" + std::string(text) + "' cannot be stored in " +
                        std::string(column) + ".");
}

// The text a value is compared by in a search: numbers canonical, text case-folded.
std::string compareKey(const Variant& v) {
  char buf[64];
  switch (v.kind()) {
    case Kind::Null:
      return std::string("\x01null", 5);
    case Kind::Integer:
      return "n" + std::to_string(v.toLong());
    case Kind::Double: {
      double d = v.toDouble();
      if (d == std::floor(d) && std::fabs(d) < 9.0e15)
        return "n" + std::to_string(static_cast<std::int64_t>(d));
      std::snprintf(buf, sizeof buf, "n%.15g", d);
      return buf;
    }
    case Kind::Boolean:
      return v.toBool() ? "n-1" : "n0";
    case Kind::Date:
      return "d" + v.toDate()->toIso();
    case Kind::Text:
      return "t" + upper(v.toString());
  }
  return "";
}

// The key of a criterion value written as text against a column of that kind.
std::string criterionKey(Kind kind, std::string_view text) {
  try {
    if (kind == Kind::Null) kind = Kind::Text;
    Variant v = convertForColumn(kind, text, "");
    if (v.isNull()) return std::string("\x02none", 5);  // blank never equals a value
    return compareKey(v);
  } catch (const DatabaseFailure&) {
    return std::string("\x02none", 5);
  }
}

}  // namespace lf
