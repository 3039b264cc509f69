// The Dr. Tax T1 and T2 export repair and their element rules.
#include "tax/drtax_repair.hpp"

#include <vector>

#include "base/general_utilities.hpp"
#include "tax/cantax_text_cleanup.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;

std::string removeAll(std::string value, const std::string& form) {
  for (size_t at = value.find(form); at != std::string::npos; at = value.find(form, at))
    value.erase(at, form.size());
  return value;
}

// T1: the prefix ("H: ") removed, or its form without the blank ("H:") when it is not there.
std::string withoutPrefix(const std::string& value, const std::string& prefix) {
  if (value.find(prefix) != std::string::npos) return removeAll(value, prefix);
  return removeAll(value, prefix.substr(0, prefix.size() - 1));
}

// T2: both forms removed in turn.
std::string withoutBothPrefixes(const std::string& value, const std::string& prefix) {
  return removeAll(removeAll(value, prefix), prefix.substr(0, prefix.size() - 1));
}

}  // namespace

const std::string& drTaxModifiedHeading(DrTaxProduct product) {
  static const std::string t1 =
      "\"Client #\",\"Last Name\",\"First Name\",\"SIN\",\"Birth Date\",\"Language\","
      "\"Street\",\"City\",\"Postal Code\",\"Province\",\"Country\",\"Home Phone Number\","
      "\"Work Phone Number\",\"Cell Phone Number\",\"Email Address\"";
  static const std::string t2 =
      "\"Corporation Type\",\"Client #\",\"Corporation Name\",\"Business Number\","
      "\"Quebec NEQ Number\",\"Year End Date\",\"Contact Name\",\"Street\",\"City\","
      "\"Postal Code\",\"Province\",\"Phone Number\",\"Phone Number (night)\",\"Fax Number\","
      "\"Email Address\"";
  return product == DrTaxProduct::T1 ? t1 : t2;
}

std::string checkIfNeedToModifyDrTaxElement(DrTaxProduct product, int counter,
                                            const std::string& value, long currentYear) {
  if (product == DrTaxProduct::T1) {
    switch (counter) {
      case 5:  // Birth Date
        return dateInWords(value, '-');
      case 6: {  // Language
        const std::string code = GU::upperCase(GU::trim(value));
        return code == "ENG" ? "English" : code == "FR" ? "Francais" : "";
      }
      case 12:
        return withoutPrefix(value, "H: ");
      case 13:
        return withoutPrefix(value, "W: ");
      case 14:
        return withoutPrefix(value, "C: ");
      default:
        return value;
    }
  }
  switch (counter) {
    case 5:  // Year End Date: "Dec31" gives "Dec 31 2024"
      if (GU::isBlank(value)) return value;
      {
        // Three characters, not bytes: a letter outside ASCII is not cut in two.
        size_t cut = 0;
        for (int n = 0; n < 3 && cut < value.size(); ++n) {
          ++cut;
          while (cut < value.size() && (static_cast<unsigned char>(value[cut]) & 0xC0) == 0x80)
            ++cut;
        }
        return value.substr(0, cut) + " " + value.substr(cut) + " " + std::to_string(currentYear);
      }
    case 11:
      return withoutBothPrefixes(value, "W: ");
    case 12:
      return withoutBothPrefixes(value, "N: ");
    case 13:
      return withoutBothPrefixes(value, "F: ");
    default:
      return value;
  }
}

bool repairDrTaxText(DrTaxProduct product, const std::string& text, long currentYear,
                     std::string& modified, long& rows, long& dropped) {
  modified.clear();
  rows = 0;
  dropped = 0;
  if (text.empty()) return false;
  const std::vector<std::string> lines = splitExportRows(text);
  if (lines.empty() || splitExportText(lines.front(), ",").size() < kDrTaxValues) return false;

  modified = drTaxModifiedHeading(product);
  for (const std::string& line : lines) {
    const std::vector<std::string> values = splitExportText(line, ",");
    if (values.size() < kDrTaxValues) {
      if (!GU::isBlank(line)) ++dropped;
      continue;
    }
    modified += "\r\n";
    ++rows;
    if (product == DrTaxProduct::T2) appendQuotedValue(modified, "Corporation");
    int counter = 0;
    for (const std::string& raw : values)
      appendQuotedValue(modified, checkIfNeedToModifyDrTaxElement(
                                      product, ++counter, cleanExportValue(raw), currentYear));
    endModifiedRow(modified);
  }
  return true;
}

}  // namespace lf
