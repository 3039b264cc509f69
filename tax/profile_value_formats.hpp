// The words Ledgerfolio stores for raw Profile field values: formatProfileString by the format
// column of the field lists, and isValueTrue for the option rows' amounts.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// The value in the words of its format ("None", "Same", "Language", "Sex", "YesNo",
// "MaritialStatus", "Date"); compared exactly, so any other format (the field list's
// "None '" among them) gives blank. The corporate import's date also refuses "12:00:00 AM".
std::string formatProfileString(std::string_view format, std::string_view value,
                                bool corporate = false);

// Blank is false; a number is true only above zero; any other text is true.
bool isValueTrue(std::string_view value);

}  // namespace lf
