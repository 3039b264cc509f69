// The CANTAX T2Plus export repair.
#include "tax/cantax_t2plus_repair.hpp"

#include <vector>

#include "base/general_utilities.hpp"
#include "tax/cantax_text_cleanup.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;

// Raw positions (from 1) in the order of the modified heading after "Corporation Type"; 0
// stands for the provincial account number chosen from positions 4 to 7.
constexpr int kHeadingOrder[] = {1,  2,  3,  0,  8,  10, 11, 12, 13, 14,
                                 15, 16, 18, 20, 19, 21, 22, 23, 24};

}  // namespace

const std::string& cantaxT2PlusModifiedHeading() {
  static const std::string heading =
      "\"Corporation Type\",\"CORP_NAME\",\"YEAR_END_DATE\",\"CORP_ACCOUNT_NO\","
      "\"PROV_ACCOUNT_NO\",\"CORP_ADDRESS1\",\"CORP_CITY\",\"CORP_PROVINCE\","
      "\"CORP_POSTAL_CODE\",\"CORP_COUNTRY\",\"CORP_PHONE\",\"CORP_FAX\",\"CORP_MAIL_ADDRESS1\","
      "\"CORP_MAIL_CITY\",\"CORP_MAIL_POSTALCODE\",\"CORP_MAIL_PROV\",\"CORP_MAIL_COUNTRY\","
      "\"CORP_CONTACT_NAME\",\"CORP_CONTACT_PHONE\",\"CORP_CONTACT_FAX\"";
  return heading;
}

std::string checkIfNeedToModifyT2PlusElement(int counter, const std::string& value,
                                             long currentYear) {
  if (counter == 2 && !GU::isBlank(value))  // @YEAR_END_DATE,
    return value + " " + std::to_string(currentYear);
  return value;
}

bool repairCANTAXT2PlusText(std::string text, long currentYear, std::string& modified, long& rows) {
  modified.clear();
  rows = 0;
  removeCANTAXErrorMarks(text);
  const std::vector<std::string> lines = splitExportRows(text);
  if (splitExportText(lines.front(), ",").size() < kCANTAXT2PlusValues) return false;

  modified = cantaxT2PlusModifiedHeading();
  for (const std::string& line : lines) {
    const std::vector<std::string> raw = splitExportText(line, ",");
    if (raw.size() < kCANTAXT2PlusValues) continue;
    std::vector<std::string> values(25);
    for (size_t i = 0; i < raw.size() && i < 24; ++i) {
      const int counter = static_cast<int>(i) + 1;
      values[counter] =
          checkIfNeedToModifyT2PlusElement(counter, cleanExportValue(raw[i]), currentYear);
    }
    std::string provincial;
    for (int counter = 4; counter <= 7 && GU::isBlank(provincial); ++counter)
      provincial = GU::trim(values[counter]);

    modified += "\r\n";
    ++rows;
    appendQuotedValue(modified, "Corporation");
    for (int position : kHeadingOrder)
      appendQuotedValue(modified, position == 0 ? provincial : values[position]);
    endModifiedRow(modified);
  }
  return true;
}

}  // namespace lf
