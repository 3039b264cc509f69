// Values that cross the database service: a date on the legacy serial scale and the
// variant that getField returns.
//
// Dates are kept as the legacy serial number (days since 30 December 1899, the time as the
// fraction of a day) because the calendar arithmetic of the system (working window
// 0.375 to 0.7083 of a day, times stored on 30 December 1899) is written on that scale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lf {

struct Date {
  double serial = 0.0;  // days since 1899-12-30; fraction is the time of day

  // The legacy date range: 1 January 100 to 31 December 9999.
  static constexpr double kFirstSerial = -657434.0;
  static constexpr double kEndSerial = 2958466.0;  // the day after the last one

  // True when the serial is a number within the date range. Any other serial stands for no
  // date: its calendar parts are 0, datePart() and timePart() are 0, toIso() is empty.
  bool isValid() const { return serial >= kFirstSerial && serial < kEndSerial; }

  static Date fromParts(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  // Today at midnight, and now, from the system clock in local time.
  static Date today();
  static Date now();

  int year() const;
  int month() const;
  int day() const;
  int hour() const;
  int minute() const;
  int second() const;
  int weekday() const;  // 1 Sunday .. 7 Saturday, as the legacy Weekday()
  Date datePart() const;
  double timePart() const;

  // "YYYY-MM-DD HH:MM:SS": the form dates are stored in and the form SQL literals take.
  std::string toIso() const;
  // Accepts "YYYY-MM-DD", "YYYY-MM-DD HH:MM[:SS]" and "YYYY-MM-DDTHH:MM:SS".
  static std::optional<Date> fromIso(std::string_view text);

  friend bool operator==(const Date& a, const Date& b) = default;
  friend auto operator<=>(const Date& a, const Date& b) = default;
};

// Result of a field read. A database null is Kind::Null.
class Variant {
 public:
  enum class Kind { Null, Integer, Double, Boolean, Date, Text };

  Variant() = default;
  static Variant null() { return Variant(); }
  static Variant integer(std::int64_t v);
  static Variant real(double v);
  static Variant boolean(bool v);
  static Variant date(Date v);
  static Variant text(std::string v);

  Kind kind() const { return kind_; }
  bool isNull() const { return kind_ == Kind::Null; }
  bool isText() const { return kind_ == Kind::Text; }

  // Conversions as the legacy run-time does them: text that holds a number converts,
  // null converts to 0 / "" / false. A text that holds no number converts to 0.
  std::int64_t toLong() const;
  double toDouble() const;
  bool toBool() const;
  std::optional<Date> toDate() const;
  // Text form: integers in decimal, booleans "True"/"False", dates in their ISO form
  // (date only when there is no time), doubles without trailing zeros.
  std::string toString() const;

  friend bool operator==(const Variant& a, const Variant& b);

 private:
  Kind kind_ = Kind::Null;
  std::int64_t int_ = 0;
  double real_ = 0.0;
  std::string text_;
};

}  // namespace lf
