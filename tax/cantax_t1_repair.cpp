// The CANTAX T1 export repair: rows, the rejoined street address and the element rules.
#include "tax/cantax_t1_repair.hpp"

#include "base/date_utilities.hpp"
#include "base/general_utilities.hpp"
#include "tax/cantax_text_cleanup.hpp"

namespace lf {

namespace {
using GU = GeneralUtilities;
}  // namespace

const std::string& cantaxT1ModifiedHeading() {
  static const std::string heading = [] {
    std::string text =
        "\"CLIENT_SIN\",\"BIRTH_DATE\",\"CLIENT_FIRST_NAME\",\"CLIENT_MIDDLE_NAME\","
        "\"CLIENT_LAST_NAME\",\"CLIENT_FULL_NAME\",\"CLIENT_ADDRESS1\",\"CLIENT_CITY\","
        "\"CLIENT_PROVINCE\",\"CLIENT_POSTAL_CODE\",\"CLIENT_PHONE\",\"CELL_PHONE\",\"FAX_PHONE\","
        "\"PAGE_PHONE\",\"EMAIL_ADDRESS\",\"CLIENT_WORK_PHONE\",\"MARITAL_STATUS\","
        "\"SPOUSE_FIRST_NAME\",\"SPOUSE_MIDDLE_NAME\",\"SPOUSE_LAST_NAME\",\"SPOUSE_BIRTH_DATE\"";
    for (const char* line :
         {"101", "102", "104", "113", "114", "115", "119", "120", "126", "128", "129",
          "130", "135", "139", "144", "152", "156", "160", "162", "166", "208", "212",
          "214", "215", "230", "323", "324", "326", "330", "340", "342", "349", "409"})
      text += std::string(",\"LINE_") + line + "\"";
    return text;
  }();
  return heading;
}

bool CANTAXT1ElementRules::checkIfNeedToModifyElement(int counter, std::string& value) {
  switch (counter) {
    case 2:  // @BIRTH_DATE,
      value = dateInWords(value, '/');
      return true;
    case 3:   // @CLIENT_FIRST_NAME,
    case 18:  // @SPOUSE_FIRST_NAME,
      value = splitNameColumns(value);
      return true;
    case 7: {  // @CLIENT_ADDRESS2, holds the city and more
      // Intended: a city of two words keeps only its first word.
      const size_t blank = value.find(' ');
      if (blank != std::string::npos) value.resize(blank);
      return true;
    }
    case 15:  // @CLIENT_WORK_PHONE,
      heldWorkPhone_ = value;
      return false;
    case 16:  // @EXTN_WORK,
      // Intended: without an extension the work phone is dropped, as the product does.
      if (!GU::isBlank(value)) value = heldWorkPhone_ + " ext. " + value;
      return true;
    case 20:  // @SPOUSE_BIRTH_MONTH,
      if (!GU::isNumeric(value)) return true;
      {
        double month = 0;
        GU::parseNumber(value, month);
        heldSpouseBirth_ =
            month >= 1 && month < 13 ? DateUtilities::monthName(static_cast<int>(month)) : "";
      }
      return false;
    case 21:  // @SPOUSE_BIRTH_DAY,
      if (!GU::isNumeric(value)) return true;
      heldSpouseBirth_ += " " + value;
      return false;
    case 22:  // @SPOUSE_BIRTH_YEAR,
      if (GU::isNumeric(value)) value = heldSpouseBirth_ + ", " + value;
      return true;
    default:
      return true;
  }
}

bool repairCANTAXT1Text(std::string text, std::string& modified, long& rows) {
  modified.clear();
  rows = 0;
  removeCANTAXErrorMarks(text);
  const std::vector<std::string> lines = splitExportRows(text);
  if (splitExportText(lines.front(), ",").size() < kCANTAXT1Values) return false;

  modified = cantaxT1ModifiedHeading();
  for (const std::string& line : lines) {
    if (GU::isBlank(line)) continue;
    const std::vector<std::string> values = splitExportText(line, ",");
    modified += "\r\n";
    ++rows;
    CANTAXT1ElementRules rules;
    int counter = 0;
    auto take = [&](std::string_view raw) {
      std::string value = cleanExportValue(raw);
      ++counter;
      if (rules.checkIfNeedToModifyElement(counter, value)) appendQuotedValue(modified, value);
    };
    if (values.size() < kCANTAXT1Values) {
      for (const std::string& value : values) take(value);
    } else {
      // The street address (index 5) held commas: indexes 5 to M are one value again.
      const size_t last = values.size() - 1;
      const size_t m = last - 49;
      std::string street;
      for (size_t i = 0; i <= last; ++i) {
        if (i >= 5 && i <= m) {
          street += GU::trim(values[i]) + ", ";
          continue;
        }
        if (i == m + 1) take(street);
        take(values[i]);
      }
    }
    endModifiedRow(modified);
  }
  return true;
}

}  // namespace lf
