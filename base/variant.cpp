// Date serial arithmetic and variant conversions.
#include "base/variant.hpp"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "base/general_utilities.hpp"

namespace lf {
namespace {

// Days from 1970-01-01 of a proleptic Gregorian date (Howard Hinnant's algorithm).
long daysFromCivil(long y, unsigned m, unsigned d) {
  y -= m <= 2;
  const long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long>(doe) - 719468;
}

void civilFromDays(long z, int& y, int& m, int& d) {
  z += 719468;
  const long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long yy = static_cast<long>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(yy + (m <= 2));
}

constexpr long kSerialEpochFromUnix = -25569;  // 1899-12-30 is 25569 days before 1970-01-01

// Whole days of a serial, 0 for a serial outside the date range (NaN included).
long wholeDays(double serial) {
  if (!Date{serial}.isValid()) return 0;
  return static_cast<long>(std::floor(serial + 1e-9));
}

// Seconds into the day, rounded to the nearest second; 0 outside the date range.
int secondsOfDay(double serial) {
  if (!Date{serial}.isValid()) return 0;
  double frac = serial - std::floor(serial + 1e-9);
  if (frac < 0) frac = 0;
  int s = static_cast<int>(std::lround(frac * 86400.0));
  return s >= 86400 ? 86399 : s;
}

// A double rounded half away from zero to a 64-bit integer; 0 when it is no number or
// does not fit, as a failed conversion gives its neutral value.
std::int64_t wholeNumber(double v) {
  if (!(v > -9.2e18 && v < 9.2e18)) return 0;
  return static_cast<std::int64_t>(std::llround(v));
}

}  // namespace

Date Date::fromParts(int year, int month, int day, int hour, int minute, int second) {
  // Month overflow rolls into the year, as DateSerial does. Worked in 64 bits: any int
  // arguments stay far from overflow there.
  long long y = static_cast<long long>(year) + (static_cast<long long>(month) - 1) / 12;
  long long m = (static_cast<long long>(month) - 1) % 12;
  if (m < 0) {
    m += 12;
    --y;
  }
  long long days = daysFromCivil(static_cast<long>(y), static_cast<unsigned>(m + 1), 1) +
                   (static_cast<long long>(day) - 1) - kSerialEpochFromUnix;
  return Date{static_cast<double>(days) + (hour * 3600.0 + minute * 60.0 + second) / 86400.0};
}

Date Date::now() {
  std::time_t t = std::time(nullptr);
  std::tm tm{};
  localtime_r(&t, &tm);
  return fromParts(tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec);
}

Date Date::today() {
  return now().datePart();
}

int Date::year() const {
  if (!isValid()) return 0;
  int y, m, d;
  civilFromDays(wholeDays(serial) + kSerialEpochFromUnix, y, m, d);
  return y;
}
int Date::month() const {
  if (!isValid()) return 0;
  int y, m, d;
  civilFromDays(wholeDays(serial) + kSerialEpochFromUnix, y, m, d);
  return m;
}
int Date::day() const {
  if (!isValid()) return 0;
  int y, m, d;
  civilFromDays(wholeDays(serial) + kSerialEpochFromUnix, y, m, d);
  return d;
}
int Date::hour() const {
  return secondsOfDay(serial) / 3600;
}
int Date::minute() const {
  return secondsOfDay(serial) / 60 % 60;
}
int Date::second() const {
  return secondsOfDay(serial) % 60;
}
int Date::weekday() const {
  if (!isValid()) return 0;
  // 1899-12-30 was a Saturday (7).
  long w = (wholeDays(serial) + 6) % 7;
  if (w < 0) w += 7;
  return static_cast<int>(w) + 1;
}
Date Date::datePart() const {
  return Date{static_cast<double>(wholeDays(serial))};
}
double Date::timePart() const {
  return secondsOfDay(serial) / 86400.0;
}

std::string Date::toIso() const {
  if (!isValid()) return "";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%04d-%02d-%02d %02d:%02d:%02d", year(), month(), day(), hour(),
                minute(), second());
  return buf;
}

namespace {
// Digits at [pos, pos+n) as a number, or -1.
int digitsAt(std::string_view t, size_t pos, size_t n) {
  int v = 0;
  for (size_t i = pos; i < pos + n; ++i) {
    if (t[i] < '0' || t[i] > '9') return -1;
    v = v * 10 + (t[i] - '0');
  }
  return v;
}
}  // namespace

std::optional<Date> Date::fromIso(std::string_view text) {
  // The stored forms "YYYY-MM-DD" and "YYYY-MM-DD HH:MM:SS", read without scanf.
  if ((text.size() == 10 ||
       (text.size() == 19 && text[10] == ' ' && text[13] == ':' && text[16] == ':')) &&
      text[4] == '-' && text[7] == '-') {
    int y = digitsAt(text, 0, 4), mo = digitsAt(text, 5, 2), d = digitsAt(text, 8, 2);
    int h = 0, mi = 0, s = 0;
    if (text.size() == 19)
      h = digitsAt(text, 11, 2), mi = digitsAt(text, 14, 2), s = digitsAt(text, 17, 2);
    if (y >= 0 && mo >= 1 && mo <= 12 && d >= 1 && d <= 31 && h >= 0 && h < 24 && mi >= 0 &&
        mi < 60 && s >= 0 && s < 60) {
      Date out = fromParts(y, mo, d, h, mi, s);
      if (out.day() == d) return out;
    }
    return std::nullopt;
  }
  int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
  std::string t(text);
  int n = std::sscanf(t.c_str(), "%4d-%2d-%2d%*1[ T]%2d:%2d:%2d", &y, &mo, &d, &h, &mi, &s);
  if (n < 3) return std::nullopt;
  if (mo < 1 || mo > 12 || d < 1 || d > 31 || h > 23 || mi > 59 || s > 59) return std::nullopt;
  Date out = fromParts(y, mo, d, h, mi, s);
  if (out.month() != mo) return std::nullopt;  // 2010-02-31 and the like
  return out;
}

Variant Variant::integer(std::int64_t v) {
  Variant r;
  r.kind_ = Kind::Integer;
  r.int_ = v;
  return r;
}
Variant Variant::real(double v) {
  Variant r;
  r.kind_ = Kind::Double;
  r.real_ = v;
  return r;
}
Variant Variant::boolean(bool v) {
  Variant r;
  r.kind_ = Kind::Boolean;
  r.int_ = v ? 1 : 0;
  return r;
}
Variant Variant::date(Date v) {
  Variant r;
  r.kind_ = Kind::Date;
  r.real_ = v.serial;
  return r;
}
Variant Variant::text(std::string v) {
  Variant r;
  r.kind_ = Kind::Text;
  r.text_ = std::move(v);
  return r;
}

std::int64_t Variant::toLong() const {
  switch (kind_) {
    case Kind::Integer:
      return int_;
    case Kind::Boolean:
      return int_ ? -1 : 0;  // the legacy True is -1
    case Kind::Double:
    case Kind::Date:
      return wholeNumber(real_);
    case Kind::Text: {
      double v = 0;
      return GeneralUtilities::parseNumber(text_, v) ? wholeNumber(v) : 0;
    }
    case Kind::Null:
      break;
  }
  return 0;
}

double Variant::toDouble() const {
  switch (kind_) {
    case Kind::Integer:
      return static_cast<double>(int_);
    case Kind::Boolean:
      return int_ ? -1.0 : 0.0;
    case Kind::Double:
    case Kind::Date:
      return real_;
    case Kind::Text: {
      double v = 0;
      return GeneralUtilities::parseNumber(text_, v) ? v : 0.0;
    }
    case Kind::Null:
      break;
  }
  return 0.0;
}

bool Variant::toBool() const {
  switch (kind_) {
    case Kind::Boolean:
    case Kind::Integer:
      return int_ != 0;
    case Kind::Double:
    case Kind::Date:
      return real_ != 0.0;
    case Kind::Text: {
      std::string u = GeneralUtilities::upperCase(GeneralUtilities::trim(text_));
      if (u == "TRUE" || u == "YES") return true;
      double v = 0;
      return GeneralUtilities::parseNumber(text_, v) && v != 0.0;
    }
    case Kind::Null:
      break;
  }
  return false;
}

std::optional<Date> Variant::toDate() const {
  switch (kind_) {
    case Kind::Date:
    case Kind::Double:
      return Date{real_};
    case Kind::Integer:
      return Date{static_cast<double>(int_)};
    case Kind::Text:
      return Date::fromIso(text_);
    default:
      return std::nullopt;
  }
}

std::string Variant::toString() const {
  switch (kind_) {
    case Kind::Null:
      return "";
    case Kind::Integer:
      return std::to_string(int_);
    case Kind::Boolean:
      return int_ ? "True" : "False";
    case Kind::Double: {
      char buf[64];
      std::snprintf(buf, sizeof buf, "%.15g", real_);
      return buf;
    }
    case Kind::Date: {
      Date d{real_};
      std::string iso = d.toIso();
      return d.timePart() == 0.0 ? iso.substr(0, 10) : iso;
    }
    case Kind::Text:
      return text_;
  }
  return "";
}

bool operator==(const Variant& a, const Variant& b) {
  if (a.kind_ != b.kind_) return false;
  switch (a.kind_) {
    case Variant::Kind::Null:
      return true;
    case Variant::Kind::Integer:
    case Variant::Kind::Boolean:
      return a.int_ == b.int_;
    case Variant::Kind::Double:
    case Variant::Kind::Date:
      return a.real_ == b.real_;
    case Variant::Kind::Text:
      return a.text_ == b.text_;
  }
  return false;
}

}  // namespace lf
