// Value rules the sync sources share.
#include "sync/sync_values.hpp"

#include <initializer_list>

#include "base/general_utilities.hpp"
#include "base/legacy_text.hpp"
#include "db/database_service.hpp"

namespace lf {

float parseSourceMoney(std::string_view text) {
  return static_cast<float>(parseMoneyText(text));
}

double parseMoneyText(std::string_view text) {
  std::string value = replaceAll(std::string(text), "$", "");
  bool negative = false;
  if (value.find('(') != std::string::npos) {
    value = replaceAll(replaceAll(value, "(", ""), ")", "");
    negative = true;
  }
  double number = 0;
  if (!GeneralUtilities::isNumeric(value) || !GeneralUtilities::parseNumber(value, number))
    return 0.0;
  return negative ? -number : number;
}

std::string composeTelephone(std::string_view area, std::string_view number,
                             std::string_view extension) {
  using G = GeneralUtilities;
  if (G::isBlank(number)) return {};
  const std::string a = G::trim(area), n = G::trim(number), e = G::trim(extension);
  const bool hasArea = !G::isBlank(area), hasExt = !G::isBlank(extension);
  if (hasArea && hasExt) return G::formatPhoneNumber(a + " " + n + " " + e);
  if (hasArea) return G::formatPhoneNumber(a + " " + n);
  if (hasExt) return n + " ext. " + e;
  return G::formatPhoneNumber(n);
}

void sortEmailAddresses(std::string& first, std::string& second, std::string& third) {
  using G = GeneralUtilities;
  if (G::isBlank(first) && !G::isBlank(second)) first = second;
  if (G::isBlank(first) && G::isBlank(second) && !G::isBlank(third)) first = third;
  if (G::isBlank(second) && !G::isBlank(third)) second = third;
  if (!G::isBlank(first) && G::isBlank(second) && G::isBlank(third)) second = first;
}

std::string dateRangeClause(DatabaseService& db, std::string_view column, long rangeType,
                            const Date& start, const Date& end) {
  const std::string c(column);
  switch (rangeType) {
    case 0:
      return " WHERE (" + c + " = #" + db.formatDateForSql(start) + "#)";
    case 1:
      return " WHERE (" + c + " >= #" + db.formatDateForSql(start) + "#)";
    case 2:
      return " WHERE (" + c + " <= #" + db.formatDateForSql(start) + "#)";
    case 3:
      return " WHERE (" + c + " >= #" + db.formatDateForSql(start) + "# And " + c + " <= #" +
             db.formatDateForSql(end) + "#)";
    default:
      return {};
  }
}

std::string joinPresent(std::initializer_list<std::string_view> parts) {
  std::string out;
  for (std::string_view p : parts) {
    if (GeneralUtilities::isBlank(p)) continue;
    if (!out.empty()) out += ' ';
    out += GeneralUtilities::trim(p);
  }
  return out;
}

}  // namespace lf
