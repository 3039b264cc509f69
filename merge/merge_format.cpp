// The legacy Format patterns that the merge engine uses.
#include "merge/merge_format.hpp"

#include <cctype>
#include <cmath>
#include <cstdio>

namespace lf::merge {
namespace {

const char* const kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};
const char* const kDays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                             "Thursday", "Friday", "Saturday"};

size_t runOf(std::string_view p, size_t i) {
  char c = static_cast<char>(std::tolower(static_cast<unsigned char>(p[i])));
  size_t n = 0;
  while (i + n < p.size() && std::tolower(static_cast<unsigned char>(p[i + n])) == c) ++n;
  return n;
}

std::string two(int v) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02d", v);
  return buf;
}

bool startsNoCase(std::string_view p, size_t i, std::string_view what) {
  if (p.size() - i < what.size()) return false;
  for (size_t k = 0; k < what.size(); ++k)
    if (std::tolower(static_cast<unsigned char>(p[i + k])) != what[k]) return false;
  return true;
}

}  // namespace

std::string formatDate(const Date& date, std::string_view pattern) {
  const bool twelveHour =
                          (pattern.find("am/pm") != std::string_view::npos ||
                           pattern.find("AM/PM") != std::string_view::npos ||
                           pattern.find("a/p") != std::string_view::npos ||
                           pattern.find("A/P") != std::string_view::npos);
  std::string out;
  bool afterHour = false;
  for (size_t i = 0; i < pattern.size();) {
    char c = static_cast<char>(std::tolower(static_cast<unsigned char>(pattern[i])));
    if (c == 'a' && startsNoCase(pattern, i, "am/pm")) {
      bool pm = date.hour() >= 12;
      bool capital = pattern[i] == 'A';
      out += pm ? (capital ? "PM" : "pm") : (capital ? "AM" : "am");
      i += 5;
      continue;
    }
    if (c == 'a' && startsNoCase(pattern, i, "a/p")) {
      bool pm = date.hour() >= 12;
      out += pattern[i] == 'A' ? (pm ? "P" : "A") : (pm ? "p" : "a");
      i += 3;
      continue;
    }
    size_t n = (c == 'd' || c == 'm' || c == 'y' || c == 'h' || c == 'n' || c == 's')
                   ? runOf(pattern, i)
                   : 1;
    switch (c) {
      case 'd':
        if (n == 1) out += std::to_string(date.day());
        else if (n == 2) out += two(date.day());
        else if (n == 3) out += std::string(kDays[date.weekday() - 1]).substr(0, 3);
        else out += kDays[date.weekday() - 1];
        break;
      case 'm':
        if (afterHour && n <= 2) {
          out += n == 1 ? std::to_string(date.minute()) : two(date.minute());
        } else if (n == 1) {
          out += std::to_string(date.month());
        } else if (n == 2) {
          out += two(date.month());
        } else if (n == 3) {
          out += std::string(kMonths[date.month() - 1]).substr(0, 3);
        } else {
          out += kMonths[date.month() - 1];
        }
        break;
      case 'y':
        if (n >= 3) out += std::to_string(date.year());
        else out += two(date.year() % 100);
        break;
      case 'h': {
        int h = date.hour();
        if (twelveHour) {
          h %= 12;
          if (h == 0) h = 12;
        }
        out += n == 1 ? std::to_string(h) : two(h);
        break;
      }
      case 'n': out += n == 1 ? std::to_string(date.minute()) : two(date.minute()); break;
      case 's': out += n == 1 ? std::to_string(date.second()) : two(date.second()); break;
      default: out += pattern[i]; break;
    }
    if (c == 'h') afterHour = true;
    else if (c != ':' && c != ' ') afterHour = false;
    i += n;
  }
  return out;
}

std::string formatMoney(double value) {
  double rounded = std::round(std::fabs(value) * 100.0) / 100.0;
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.2f", rounded);
  std::string digits(buf);
  size_t dot = digits.find('.');
  std::string whole = digits.substr(0, dot);
  std::string grouped;
  for (size_t i = 0; i < whole.size(); ++i) {
    if (i > 0 && (whole.size() - i) % 3 == 0) grouped += ',';
    grouped += whole[i];
  }
  bool negative = value < 0 && rounded > 0;
  return std::string(negative ? "$-" : "$") + grouped + digits.substr(dot);
}

std::string minutesToText(long minutes) {
  if (minutes < 0) minutes = -minutes;
  long hours = minutes / 60;
  long rest = minutes % 60;
  if (hours == 0) return std::to_string(rest) + " min";
  std::string text = std::to_string(hours) + " hr";
  if (rest > 0) text += " " + std::to_string(rest) + " min";
  return text;
}

}  // namespace lf::merge
