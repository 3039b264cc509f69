// Date names, permissive date reading and whole-second date arithmetic.
#include "base/date_utilities.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace lf {
namespace {

constexpr std::array<const char*, 12> kMonths = {"January",   "February", "March",    "April",
                                                 "May",       "June",     "July",     "August",
                                                 "September", "October",  "November", "December"};
constexpr std::array<const char*, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};

std::string lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

// A full or three-letter name, compared without regard to case.
bool isNameOrAbbreviation(std::string_view word, std::string_view name) {
  if (word.size() != 3 && word.size() != name.size()) return false;
  for (size_t i = 0; i < word.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(word[i])) !=
        std::tolower(static_cast<unsigned char>(name[i])))
      return false;
  return true;
}

bool isWeekdayWord(std::string_view word) {
  for (const char* name : kWeekdays)
    if (isNameOrAbbreviation(word, name)) return true;
  return false;
}

int daysInMonth(int year, int month) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month == 2 && ((year % 4 == 0 && year % 100 != 0) || year % 400 == 0)) return 29;
  return kDays[month - 1];
}

// Seconds since 30 December 1899 of a date, 0 for a serial outside the date range. Within it
// the count stays below 2^39, so sums of two such counts cannot overflow.
long long toSeconds(const Date& date) {
  if (!date.isValid()) return 0;
  return std::llround(date.serial * 86400.0);
}
Date fromSeconds(long long seconds) {
  return Date{static_cast<double>(seconds) / 86400.0};
}

// Seconds of the whole date range: a step longer than this leaves it from anywhere.
constexpr long long kRangeSeconds =
    static_cast<long long>(Date::kEndSerial - Date::kFirstSerial) * 86400;

// One piece of a date text: a run of digits, a run of letters, a colon, or a separator.
struct Token {
  enum Kind { Number, Word, Colon, Separator } kind;
  std::string text;
  int value = 0;
};

std::optional<std::vector<Token>> tokenize(const std::string& s) {
  std::vector<Token> out;
  size_t i = 0;
  while (i < s.size()) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    if (std::isdigit(c)) {
      size_t j = i;
      while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) ++j;
      if (j - i > 4) return std::nullopt;
      Token t{Token::Number, s.substr(i, j - i)};
      t.value = std::stoi(t.text);
      out.push_back(t);
      i = j;
    } else if (std::isalpha(c)) {
      size_t j = i;
      while (j < s.size() && std::isalpha(static_cast<unsigned char>(s[j]))) ++j;
      out.push_back({Token::Word, s.substr(i, j - i)});
      i = j;
    } else if (c == ':') {
      out.push_back({Token::Colon, ":"});
      ++i;
    } else if (c == ' ' || c == ',' || c == '/' || c == '-' || c == '.' || c == '\t') {
      out.push_back({Token::Separator, std::string(1, static_cast<char>(c))});
      ++i;
    } else {
      return std::nullopt;
    }
  }
  return out;
}

// Takes the one time of day out of the tokens ("9:30", "9:30:15", "9:30 pm", "9:30am").
// Answers false for a malformed time; `seconds` stays -1 when there is none.
bool extractTime(std::vector<Token>& tokens, long& seconds) {
  seconds = -1;
  for (size_t i = 0; i + 2 < tokens.size(); ++i) {
    if (tokens[i].kind != Token::Number || tokens[i + 1].kind != Token::Colon) continue;
    if (tokens[i + 2].kind != Token::Number) return false;
    int hour = tokens[i].value, minute = tokens[i + 2].value, second = 0;
    size_t end = i + 3;
    if (end + 1 < tokens.size() && tokens[end].kind == Token::Colon &&
        tokens[end + 1].kind == Token::Number) {
      second = tokens[end + 1].value;
      end += 2;
    }
    size_t k = end;
    while (k < tokens.size() && tokens[k].kind == Token::Separator && tokens[k].text == " ") ++k;
    int meridiem = 0;  // 1 am, 2 pm
    if (k < tokens.size() && tokens[k].kind == Token::Word) {
      const std::string& w = tokens[k].text;
      if (w == "am" || w == "a") meridiem = 1;
      if (w == "pm" || w == "p") meridiem = 2;
      if (meridiem != 0) end = k + 1;
    }
    if (minute > 59 || second > 59) return false;
    if (meridiem != 0) {
      if (hour > 12) return false;
      hour %= 12;
      if (meridiem == 2) hour += 12;
    } else if (hour > 23) {
      return false;
    }
    seconds = hour * 3600L + minute * 60L + second;
    tokens.erase(tokens.begin() + static_cast<long>(i), tokens.begin() + static_cast<long>(end));
    break;
  }
  // A second time, or a stray colon, is no date.
  for (const Token& t : tokens)
    if (t.kind == Token::Colon) return false;
  return true;
}

int windowYear(const Token& t) {
  return t.text.size() <= 2 ? (t.value < 30 ? 2000 : 1900) + t.value : t.value;
}

}  // namespace

std::string DateUtilities::monthName(int month, bool abbreviate) {
  if (month < 1 || month > 12) return "";
  std::string name = kMonths[static_cast<size_t>(month - 1)];
  return abbreviate ? name.substr(0, 3) : name;
}

std::string DateUtilities::weekdayName(int weekday, bool abbreviate) {
  if (weekday < 1 || weekday > 7) return "";
  std::string name = kWeekdays[static_cast<size_t>(weekday - 1)];
  return abbreviate ? name.substr(0, 3) : name;
}

int DateUtilities::monthFromName(std::string_view name) {
  if (lower(name) == "sept") return 9;
  for (int m = 1; m <= 12; ++m)
    if (isNameOrAbbreviation(name, kMonths[static_cast<size_t>(m - 1)])) return m;
  return 0;
}

std::optional<Date> DateUtilities::parseDateText(std::string_view text) {
  std::string s = lower(text);
  // The ISO joiner "2010-12-31T14:05:00".
  for (size_t i = 1; i + 1 < s.size(); ++i)
    if (s[i] == 't' && std::isdigit(static_cast<unsigned char>(s[i - 1])) &&
        std::isdigit(static_cast<unsigned char>(s[i + 1])))
      s[i] = ' ';
  auto tokens = tokenize(s);
  if (!tokens) return std::nullopt;
  long seconds = -1;
  if (!extractTime(*tokens, seconds)) return std::nullopt;

  std::vector<Token> numbers;
  int month = 0;
  for (const Token& t : *tokens) {
    if (t.kind == Token::Number) {
      numbers.push_back(t);
    } else if (t.kind == Token::Word) {
      int m = monthFromName(t.text);
      if (m != 0 && month == 0) {
        month = m;
      } else if (m != 0 || !isWeekdayWord(t.text)) {
        return std::nullopt;
      }
    }
  }

  int year = 0, day = 0;
  if (month != 0) {
    if (numbers.size() == 2) {
      bool yearFirst = numbers[0].text.size() >= 3;
      day = numbers[yearFirst ? 1 : 0].value;
      year = windowYear(numbers[yearFirst ? 0 : 1]);
    } else if (numbers.size() == 1) {
      if (numbers[0].text.size() >= 3 || numbers[0].value > 31) {
        year = windowYear(numbers[0]);
        day = 1;
      } else {
        day = numbers[0].value;
        year = Date::today().year();
      }
    } else {
      return std::nullopt;
    }
  } else if (numbers.size() == 3) {
    if (numbers[0].text.size() >= 3) {
      year = numbers[0].value;
      month = numbers[1].value;
      day = numbers[2].value;
    } else {
      month = numbers[0].value;
      day = numbers[1].value;
      year = windowYear(numbers[2]);
      if (month > 12 && day <= 12) std::swap(month, day);
    }
  } else if (numbers.empty() && seconds >= 0) {
    return Date{seconds / 86400.0};  // a time alone
  } else {
    return std::nullopt;
  }

  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 ||
      day > daysInMonth(year, month))
    return std::nullopt;
  Date date = Date::fromParts(year, month, day);
  if (seconds > 0) date = addSeconds(date, seconds);
  return date;
}

// Arithmetic on a date outside the range, or that would leave it, gives the neutral date
// (serial 0) rather than a number that no calendar part can be taken from.
Date DateUtilities::addSeconds(const Date& date, long long seconds) {
  if (!date.isValid() || seconds > kRangeSeconds || seconds < -kRangeSeconds) return Date{};
  Date moved = fromSeconds(toSeconds(date) + seconds);
  return moved.isValid() ? moved : Date{};
}

Date DateUtilities::addMinutes(const Date& date, long long minutes) {
  if (minutes > kRangeSeconds / 60 || minutes < -kRangeSeconds / 60) return Date{};
  return addSeconds(date, minutes * 60);
}

Date DateUtilities::addHours(const Date& date, double hours) {
  if (!(hours * 3600.0 > -static_cast<double>(kRangeSeconds) &&
        hours * 3600.0 < static_cast<double>(kRangeSeconds)))
    return Date{};
  return addSeconds(date, std::llround(hours * 3600.0));
}

Date DateUtilities::addDays(const Date& date, long days) {
  if (days > kRangeSeconds / 86400 || days < -kRangeSeconds / 86400) return Date{};
  return addSeconds(date, static_cast<long long>(days) * 86400);
}

Date DateUtilities::addMonths(const Date& date, long months) {
  constexpr long kRangeMonths = 10000L * 12;
  if (!date.isValid() || months > kRangeMonths || months < -kRangeMonths) return Date{};
  long index = date.year() * 12L + (date.month() - 1) + months;
  if (index < 100 * 12L || index >= 10000 * 12L) return Date{};
  int year = static_cast<int>(index / 12);
  int month = static_cast<int>(index % 12) + 1;
  int day = std::min(date.day(), daysInMonth(year, month));
  Date moved = Date::fromParts(year, month, day);
  return addSeconds(moved, toSeconds(date) - toSeconds(date.datePart()));
}

long long DateUtilities::minutesBetween(const Date& from, const Date& to) {
  auto minuteOf = [](const Date& d) {
    long long s = toSeconds(d);
    return s >= 0 ? s / 60 : -((-s + 59) / 60);
  };
  return minuteOf(to) - minuteOf(from);
}

bool DateUtilities::datesAreEqual(const Date& a, const Date& b) {
  return std::fabs(a.serial - b.serial) < kTolerance;
}

}  // namespace lf
