// The legacy Format() patterns for dates and numbers.
#include "base/legacy_format.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <vector>

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"

namespace lf {
namespace {

bool sameText(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

bool startsWithNoCase(std::string_view text, size_t at, std::string_view word) {
  return text.size() - at >= word.size() && sameText(text.substr(at, word.size()), word);
}

char lowerChar(char c) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

std::string twoDigits(int v) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02d", v);
  return buf;
}

// ---- dates ----

constexpr std::string_view kShortDate = "m/d/yyyy";
constexpr std::string_view kLongDate = "dddd, mmmm d, yyyy";
constexpr std::string_view kMediumDate = "dd-mmm-yy";
constexpr std::string_view kLongTime = "h:nn:ss AM/PM";
constexpr std::string_view kMediumTime = "hh:nn AM/PM";
constexpr std::string_view kShortTime = "hh:nn";

// The general form: the time alone on day 0, the date alone at midnight, else both.
std::string generalDate(const Date& date) {
  bool hasTime = date.timePart() != 0.0;
  bool hasDate = date.datePart().serial != 0.0;
  if (!hasDate) return formatDate(date, kLongTime);
  if (!hasTime) return formatDate(date, kShortDate);
  return formatDate(date, kShortDate) + " " + formatDate(date, kLongTime);
}

// The 12-hour markers at `at`, longest first; answers their length, 0 when none.
size_t meridiemAt(std::string_view pattern, size_t at) {
  if (startsWithNoCase(pattern, at, "am/pm")) return 5;
  if (startsWithNoCase(pattern, at, "ampm")) return 4;
  if (startsWithNoCase(pattern, at, "a/p")) return 3;
  return 0;
}

int dayOfYear(const Date& date) {
  return static_cast<int>(date.datePart().serial - Date::fromParts(date.year(), 1, 1).serial) + 1;
}

std::string meridiemText(const Date& date, std::string_view marker) {
  bool pm = date.hour() >= 12;
  if (marker.size() == 4) return pm ? "PM" : "AM";  // AMPM: the locale's designators
  bool upper = std::isupper(static_cast<unsigned char>(marker[0])) != 0;
  std::string text = marker.size() == 5 ? (pm ? "pm" : "am") : (pm ? "p" : "a");
  if (upper)
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// ---- numbers ----

// Splits a pattern into its ";" sections, keeping quoted text and escapes whole.
std::vector<std::string> splitSections(std::string_view pattern) {
  std::vector<std::string> sections(1);
  for (size_t i = 0; i < pattern.size(); ++i) {
    char c = pattern[i];
    if (c == '"') {
      size_t end = pattern.find('"', i + 1);
      if (end == std::string_view::npos) end = pattern.size() - 1;
      sections.back() += pattern.substr(i, end - i + 1);
      i = end;
    } else if (c == '\\' && i + 1 < pattern.size()) {
      sections.back() += pattern.substr(i, 2);
      ++i;
    } else if (c == ';') {
      sections.emplace_back();
    } else {
      sections.back() += c;
    }
  }
  return sections;
}

// The decimal digits of |value| rounded half away from zero to `decimals` places, taken from
// its 15-significant-digit form so that 2.675 rounds to 2.68 as the legacy formatter does.
// A value that is not finite reads as 0: callers test for it first.
void roundedDigits(double value, int decimals, std::string& whole, std::string& fraction) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.14e", std::isfinite(value) ? std::fabs(value) : 0.0);
  const char* e = std::strchr(buf, 'e');
  std::string mantissa;
  for (const char* p = buf; p != e; ++p)
    if (std::isdigit(static_cast<unsigned char>(*p))) mantissa += *p;
  int exponent = std::atoi(e + 1);
  // digits[k] has the place value 10^(exponent - k).
  std::string digits;
  int pointAt = exponent + 1;  // digits before the decimal point
  if (pointAt <= 0) {
    digits = std::string(static_cast<size_t>(-pointAt), '0') + mantissa;
    pointAt = 0;
  } else {
    digits = mantissa;
    if (static_cast<int>(digits.size()) < pointAt)
      digits.append(static_cast<size_t>(pointAt) - digits.size(), '0');
  }
  size_t keep = static_cast<size_t>(pointAt + decimals);
  if (digits.size() < keep) digits.append(keep - digits.size(), '0');
  bool roundUp = digits.size() > keep && digits[keep] >= '5';
  digits.resize(keep);
  if (roundUp) {
    int k = static_cast<int>(keep) - 1;
    while (k >= 0 && digits[static_cast<size_t>(k)] == '9') digits[static_cast<size_t>(k--)] = '0';
    if (k >= 0) {
      ++digits[static_cast<size_t>(k)];
    } else {
      digits.insert(digits.begin(), '1');
      ++pointAt;
    }
  }
  whole = digits.substr(0, static_cast<size_t>(pointAt));
  fraction = digits.substr(static_cast<size_t>(pointAt));
  size_t firstSignificant = whole.find_first_not_of('0');
  whole = firstSignificant == std::string::npos ? "" : whole.substr(firstSignificant);
}

struct NumberToken {
  enum Kind { Literal, IntDigit, Point, FracDigit } kind;
  std::string text;  // the literal, or the placeholder character
};

// The value by one section; nothing when the section's scaling takes it out of the range of
// a double ("0%" of 1e308), where the legacy formatter fails.
std::optional<std::string> formatSection(double value, std::string_view section) {
  std::vector<NumberToken> tokens;
  bool afterPoint = false, grouping = false, percent = false;
  int scaleCommas = 0;
  std::vector<size_t> commaAt;  // commas among the integer digit places
  for (size_t i = 0; i < section.size(); ++i) {
    char c = section[i];
    if (c == '"') {
      size_t end = section.find('"', i + 1);
      if (end == std::string_view::npos) end = section.size();
      tokens.push_back({NumberToken::Literal, std::string(section.substr(i + 1, end - i - 1))});
      i = end;
    } else if (c == '\\' && i + 1 < section.size()) {
      tokens.push_back({NumberToken::Literal, std::string(1, section[++i])});
    } else if (c == '0' || c == '#') {
      tokens.push_back({afterPoint ? NumberToken::FracDigit : NumberToken::IntDigit, {c}});
    } else if (c == '.' && !afterPoint) {
      afterPoint = true;
      tokens.push_back({NumberToken::Point, "."});
    } else if (c == ',' && !afterPoint) {
      commaAt.push_back(tokens.size());
    } else {
      if (c == '%') percent = true;
      tokens.push_back({NumberToken::Literal, std::string(1, c)});
    }
  }
  // A comma with an integer digit place after it groups; one without divides by 1000.
  for (size_t at : commaAt) {
    bool digitAfter = false, digitBefore = false;
    for (size_t k = at; k < tokens.size() && tokens[k].kind != NumberToken::Point; ++k)
      if (tokens[k].kind == NumberToken::IntDigit) digitAfter = true;
    for (size_t k = 0; k < at; ++k)
      if (tokens[k].kind == NumberToken::IntDigit) digitBefore = true;
    if (digitAfter && digitBefore) grouping = true;
    if (!digitAfter && digitBefore) ++scaleCommas;
  }

  double v = std::fabs(value);
  if (percent) v *= 100.0;
  for (int k = 0; k < scaleCommas; ++k) v /= 1000.0;
  if (!std::isfinite(v)) return std::nullopt;

  std::vector<char> intPlaces, fracPlaces;
  for (const NumberToken& t : tokens) {
    if (t.kind == NumberToken::IntDigit) intPlaces.push_back(t.text[0]);
    if (t.kind == NumberToken::FracDigit) fracPlaces.push_back(t.text[0]);
  }
  std::string whole, fraction;
  roundedDigits(v, static_cast<int>(fracPlaces.size()), whole, fraction);
  while (!fraction.empty() && fracPlaces[fraction.size() - 1] == '#' && fraction.back() == '0')
    fraction.pop_back();

  size_t minWhole = 0;
  for (size_t k = 0; k < intPlaces.size(); ++k)
    if (intPlaces[k] == '0') {
      minWhole = intPlaces.size() - k;
      break;
    }
  if (whole.size() < minWhole) whole.insert(0, minWhole - whole.size(), '0');
  if (grouping) {
    std::string grouped;
    for (size_t k = 0; k < whole.size(); ++k) {
      if (k > 0 && (whole.size() - k) % 3 == 0) grouped += ',';
      grouped += whole[k];
    }
    whole = grouped;
  }

  // Integer places take their digits from the right; the leftmost place takes any surplus.
  // With grouping the whole integer goes to the first place.
  std::vector<std::string> placeText(intPlaces.size());
  if (grouping && !placeText.empty()) {
    placeText[0] = whole;
  } else if (!placeText.empty()) {
    size_t remaining = whole.size();
    for (size_t k = placeText.size(); k-- > 0;) {
      if (k == 0) {
        placeText[k] = whole.substr(0, remaining);
      } else if (remaining > 0) {
        placeText[k] = whole.substr(remaining - 1, 1);
        --remaining;
      }
    }
  }

  std::string out;
  size_t intIndex = 0, fracIndex = 0;
  for (const NumberToken& t : tokens) {
    switch (t.kind) {
      case NumberToken::Literal:
        out += t.text;
        break;
      case NumberToken::IntDigit:
        out += placeText[intIndex++];
        break;
      case NumberToken::Point:
        if (intPlaces.empty()) out += whole;
        out += '.';
        break;
      case NumberToken::FracDigit:
        if (fracIndex < fraction.size()) out += fraction[fracIndex];
        ++fracIndex;
        break;
    }
  }
  return out;
}

bool roundsToZero(double value, std::string_view section) {
  int decimals = 0;
  bool afterPoint = false;
  for (char c : section) {
    if (c == '.') afterPoint = true;
    if (afterPoint && (c == '0' || c == '#')) ++decimals;
  }
  std::string whole, fraction;
  roundedDigits(value, decimals, whole, fraction);
  return whole.empty() && fraction.find_first_not_of('0') == std::string::npos;
}

std::string generalNumber(double value) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.15g", value);
  std::string text = buf;
  if (text == "-0") text = "0";
  return text;
}

}  // namespace

std::string formatDate(const Date& date, std::string_view pattern) {
  if (!date.isValid()) return "";  // no date: the neutral text
  if (pattern.empty() || sameText(pattern, "General Date")) return generalDate(date);
  if (sameText(pattern, "Long Date")) return formatDate(date, kLongDate);
  if (sameText(pattern, "Medium Date")) return formatDate(date, kMediumDate);
  // "Date" is not one of the run-time's names; callers mean the short date by it.
  if (sameText(pattern, "Short Date") || sameText(pattern, "Date"))
    return formatDate(date, kShortDate);
  if (sameText(pattern, "Long Time")) return formatDate(date, kLongTime);
  if (sameText(pattern, "Medium Time")) return formatDate(date, kMediumTime);
  if (sameText(pattern, "Short Time")) return formatDate(date, kShortTime);

  bool twelveHour = false;
  for (size_t i = 0; i < pattern.size(); ++i)
    if (meridiemAt(pattern, i) != 0) twelveHour = true;

  std::string out;
  bool lastWasHour = false;
  size_t i = 0;
  while (i < pattern.size()) {
    char c = lowerChar(pattern[i]);
    size_t run = 1;
    while (i + run < pattern.size() && lowerChar(pattern[i + run]) == c) ++run;
    if (size_t marker = meridiemAt(pattern, i); marker != 0) {
      out += meridiemText(date, pattern.substr(i, marker));
      i += marker;
      continue;
    }
    bool isHour = false;
    switch (c) {
      case '"': {
        size_t end = pattern.find('"', i + 1);
        if (end == std::string_view::npos) end = pattern.size();
        out += pattern.substr(i + 1, end - i - 1);
        i = end + 1;
        continue;
      }
      case '\\':
        if (i + 1 < pattern.size()) out += pattern[i + 1];
        i += 2;
        continue;
      case 'd':
        if (run == 1)
          out += std::to_string(date.day());
        else if (run == 2)
          out += twoDigits(date.day());
        else if (run == 3)
          out += DateUtilities::weekdayName(date.weekday(), true);
        else if (run == 4)
          out += DateUtilities::weekdayName(date.weekday());
        else if (run == 5)
          out += formatDate(date, kShortDate);
        else
          out += formatDate(date, kLongDate);
        break;
      case 'm':
        if (run <= 2 && lastWasHour)
          out += run == 1 ? std::to_string(date.minute()) : twoDigits(date.minute());
        else if (run == 1)
          out += std::to_string(date.month());
        else if (run == 2)
          out += twoDigits(date.month());
        else
          out += DateUtilities::monthName(date.month(), run == 3);
        break;
      case 'n':
        out += run == 1 ? std::to_string(date.minute()) : twoDigits(date.minute());
        run = std::min<size_t>(run, 2);
        break;
      case 's':
        out += run == 1 ? std::to_string(date.second()) : twoDigits(date.second());
        run = std::min<size_t>(run, 2);
        break;
      case 'h': {
        int hour = date.hour();
        if (twelveHour) hour = hour % 12 == 0 ? 12 : hour % 12;
        out += run == 1 ? std::to_string(hour) : twoDigits(hour);
        run = std::min<size_t>(run, 2);
        isHour = true;
        break;
      }
      case 'y':
        if (run == 1) {
          out += std::to_string(dayOfYear(date));
        } else if (run <= 3) {
          out += twoDigits(date.year() % 100);
          run = 2;  // "yyy" is "yy" and then the day of the year
        } else {
          out += std::to_string(date.year());
          run = 4;
        }
        break;
      case 'q':
        out += std::to_string((date.month() - 1) / 3 + 1);
        run = 1;
        break;
      case 'w':
        if (run == 1) {
          out += std::to_string(date.weekday());
        } else {
          int jan1 = Date::fromParts(date.year(), 1, 1).weekday();
          out += std::to_string((dayOfYear(date) + jan1 - 2) / 7 + 1);
          run = 2;
        }
        break;
      case 'c':
        out += generalDate(date);
        run = 1;
        break;
      case 't':
        if (run >= 5) {
          out += formatDate(date, kLongTime);
          run = 5;
        } else {
          out += pattern.substr(i, run);
        }
        break;
      default:
        out += pattern.substr(i, run);
        break;
    }
    // Literals between tokens do not break the hour-minute link ("h:mm").
    if (c == 'd' || c == 'm' || c == 'n' || c == 's' || c == 'y' || c == 'q' || c == 'w' ||
        c == 'c' || c == 't' || isHour)
      lastWasHour = isHour;
    i += run;
  }
  return out;
}

std::string formatNumber(double value, std::string_view pattern) {
  if (!std::isfinite(value)) return "";  // no legacy number: the neutral text
  if (pattern.empty() || sameText(pattern, "General Number")) return generalNumber(value);
  if (sameText(pattern, "Currency")) return formatNumber(value, "$#,##0.00;($#,##0.00)");
  if (sameText(pattern, "Fixed")) return formatNumber(value, "0.00");
  if (sameText(pattern, "Standard")) return formatNumber(value, "#,##0.00");
  if (sameText(pattern, "Percent")) return formatNumber(value, "0.00%");
  if (sameText(pattern, "Yes/No")) return value != 0 ? "Yes" : "No";
  if (sameText(pattern, "True/False")) return value != 0 ? "True" : "False";
  if (sameText(pattern, "On/Off")) return value != 0 ? "On" : "Off";
  if (sameText(pattern, "Scientific")) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.2E", value);
    return buf;
  }

  // A value the pattern cannot show gives the neutral text, as a failed Format() does.
  std::vector<std::string> sections = splitSections(pattern);
  if (value == 0.0 && sections.size() >= 3 && !sections[2].empty())
    return formatSection(0.0, sections[2]).value_or("");
  if (value < 0.0 && sections.size() >= 2 && !sections[1].empty())
    return formatSection(value, sections[1]).value_or("");
  const std::string& section = sections[0];
  std::optional<std::string> text = formatSection(value, section);
  if (!text) return "";
  if (value < 0.0 && !roundsToZero(value, section)) text->insert(0, "-");
  return *text;
}

std::string formatValue(const Variant& value, std::string_view pattern) {
  switch (value.kind()) {
    case Variant::Kind::Null:
      return "";
    case Variant::Kind::Date:
      return formatDate(*value.toDate(), pattern);
    case Variant::Kind::Text: {
      std::string text = value.toString();
      if (auto date = DateUtilities::parseDateText(text)) return formatDate(*date, pattern);
      double number = 0;
      if (GeneralUtilities::parseNumber(text, number)) return formatNumber(number, pattern);
      return text;
    }
    default:
      return formatNumber(value.toDouble(), pattern);
  }
}

}  // namespace lf
