// The fourteen date formats of the merge language, in the order every operation tries them.
#pragma once

#include <array>
#include <string_view>

namespace lf::merge {

struct DateFormatRow {
  std::string_view token;         // as written in «(Name, format)»
  std::string_view fieldPattern;  // pattern used for a date field
  std::string_view todayPattern;  // pattern used for Todays Date
};

// Row 6 renders a date field with the three-letter month but keeps today's date numeric:
// a fixed asymmetry of the language.
inline constexpr std::array<DateFormatRow, 14> kDateFormats = {{
    {"dddd, mmmm d yyyy", "dddd, mmmm d yyyy", "dddd, mmmm d yyyy"},
    {"dddd mmmm d yyyy", "dddd mmmm d yyyy", "dddd mmmm d yyyy"},
    {"mmmm d, yyyy", "mmmm d, yyyy", "mmmm d, yyyy"},
    {"mmmm d yyyy", "mmmm d yyyy", "mmmm d yyyy"},
    {"mmm d yyyy", "mmm d yyyy", "mmm d yyyy"},
    {"dd/mm/yy", "dd/mmm/yy", "dd/mm/yy"},
    {"mm/dd/yy", "mm/dd/yy", "mm/dd/yy"},
    {"d", "d", "d"},
    {"dddd", "dddd", "dddd"},
    {"mmmm", "mmmm", "mmmm"},
    {"mmm", "mmm", "mmm"},
    {"yyyy", "yyyy", "yyyy"},
    {"mmmm yyyy", "mmmm yyyy", "mmmm yyyy"},
    {"mmmm d", "mmmm d", "mmmm d"},
}};

}  // namespace lf::merge
