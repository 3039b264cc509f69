// The date utilities (dateUtilities): the permissive reading of date texts that the wizards and
// imports rely on, the month and weekday names, and the date arithmetic of the calendar helpers.
//
// Dates are lf::Date values on the legacy serial scale. Arithmetic works in whole seconds so
// that adding and comparing never drifts by the binary fraction of a day.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/variant.hpp"

namespace lf {

class ErrorService;

class DateUtilities {
 public:
  // Two date-times closer than this many days count as the same moment (one second).
  static constexpr double kTolerance = 1.0 / 86400.0;

  void setErrorService(ErrorService* errorClass) { errorClass_ = errorClass; }

  // 1 January .. 12 December; an empty text outside 1..12.
  static std::string monthName(int month, bool abbreviate = false);
  // 1 Sunday .. 7 Saturday; an empty text outside 1..7.
  static std::string weekdayName(int weekday, bool abbreviate = false);
  // The month of a full or three-letter English name (any case, "Sept" too); 0 when none.
  static int monthFromName(std::string_view name);

  // Reads the forms "Dec 31, 2010", "December 31, 2010", "Friday, December 31, 2010",
  // "31-Dec-2010", "31 Dec 2010", "Dec, 31 2010", "2010-12-31", "2010/12/31", "12/31/2010",
  // "31/12/2010" (day first only when the first number cannot be a month), "12/31/10", each
  // with an optional time "9:30 AM", "9:30:15 pm" or "14:05"; a time alone is a time on
  // 30 December 1899. Two-digit years 00-29 are 2000-2029, 30-99 are 1930-1999.
  // Anything else, and days that do not exist ("2010-02-30"), give nothing.
  static std::optional<Date> parseDateText(std::string_view text);
  static bool isValidDateText(std::string_view text) { return parseDateText(text).has_value(); }

  // Arithmetic. Adding months keeps the day, clamped to the last day of the new month.
  static Date addSeconds(const Date& date, long long seconds);
  static Date addMinutes(const Date& date, long long minutes);
  static Date addHours(const Date& date, double hours);
  static Date addDays(const Date& date, long days);
  static Date addMonths(const Date& date, long months);
  static Date addYears(const Date& date, long years) { return addMonths(date, years * 12); }

  // Minute boundaries crossed from `from` to `to` (negative when `to` is earlier).
  static long long minutesBetween(const Date& from, const Date& to);
  // True when the two are within kTolerance of each other.
  static bool datesAreEqual(const Date& a, const Date& b);

 private:
  ErrorService* errorClass_ = nullptr;
};

}  // namespace lf
