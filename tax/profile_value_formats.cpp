// formatProfileString and isValueTrue.
#include "tax/profile_value_formats.hpp"

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"

namespace lf {

std::string formatProfileString(std::string_view format, std::string_view value, bool corporate) {
  std::string text(value);
  if (format == "None") return text;
  if (format == "Same") return " " + text + " ";
  if (format == "Language") return text == "0" ? "English" : text == "1" ? "French" : "";
  if (format == "Sex") return text == "1" ? "Male" : text == "2" ? "Female" : "";
  if (format == "YesNo") return text == "0" ? "No" : "Yes";
  if (format == "MaritialStatus") {
    static const char* const kStatus[] = {"Married",  "Common Law", "Widowed",
                                          "Divorced", "Separated",  "Single"};
    if (text.size() == 1 && text[0] >= '1' && text[0] <= '6') return kStatus[text[0] - '1'];
    return "";
  }
  if (format == "Date") {
    if (GeneralUtilities::isBlank(text)) return "";
    if (corporate && text == "12:00:00 AM") return "";
    std::optional<Date> date = DateUtilities::parseDateText(GeneralUtilities::trim(text));
    if (!date) return "";
    return date->datePart().toIso().substr(0, 10);
  }
  return "";
}

bool isValueTrue(std::string_view value) {
  if (GeneralUtilities::isBlank(value)) return false;
  double number = 0;
  if (GeneralUtilities::isNumeric(value) && GeneralUtilities::parseNumber(value, number))
    return number > 0;
  return true;
}

}  // namespace lf
