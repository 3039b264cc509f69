// The one formatter of dates, times and numbers by the legacy Format() patterns that the system's
// texts are written in: merge-field date formats ("mmmm d, yyyy", "dd/mmm/yy"), calendar times
// ("h:Nn am/pm"), money ("$#,##0.00;$-#,##0.00") and the named formats ("Short Date", "Fixed").
//
// Date tokens are case-insensitive: d dd ddd dddd ddddd dddddd, w ww, m mm mmm mmmm, q, y yy
// yyyy, h hh, n nn, s ss, ttttt, c, and the markers AM/PM am/pm A/P a/p AMPM (which make the
// hours 12-hour and print in the case they are written in). "m" or "mm" right after "h" or "hh"
// means minutes. Quoted text and characters after a backslash are literal; so is any character
// that is no token (blanks, commas, "/", ":", "-").
//
// Number patterns have up to four sections "positive;negative;zero;null". "0" is a digit that
// is always shown, "#" a digit shown when significant, "." the decimal point, "," between digit
// places the thousands grouping (a "," with no digit place after it divides by 1000), "%"
// multiplies by 100; everything else is literal. A negative value in a one-section pattern gets
// a leading "-"; a negative section prints its own sign. Values are rounded half away from zero
// on their decimal form.
#pragma once

#include <string>
#include <string_view>

#include "base/variant.hpp"

namespace lf {

// Named date formats: "General Date" (and the empty pattern), "Long Date", "Medium Date",
// "Short Date", "Date" (as "Short Date"), "Long Time", "Medium Time", "Short Time".
std::string formatDate(const Date& date, std::string_view pattern);

// Named number formats: "General Number" (and the empty pattern), "Currency", "Fixed",
// "Standard", "Percent", "Scientific", "Yes/No", "True/False", "On/Off".
std::string formatNumber(double value, std::string_view pattern);

// Format() of a variant: a date or a text that reads as a date by the date pattern, a number or
// a numeric text by the number pattern, a boolean as the number -1/0, other text unchanged,
// null as the empty text.
std::string formatValue(const Variant& value, std::string_view pattern);

}  // namespace lf
