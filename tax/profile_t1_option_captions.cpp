// The option captions of the personal Profile wizard.
#include "tax/profile_t1_option_captions.hpp"

#include <cctype>
#include <map>

#include "base/general_utilities.hpp"
#include "tax/profile_t1_field_list.hpp"

namespace lf {
namespace {

using GU = GeneralUtilities;

// The mark of the personal-tax sheet that a column holds, as the sheet names it.
std::string markName(const std::string& column) {
  static const std::map<std::string, std::string> names = {
      {"EmploymentIncome", "Employment Income"},
      {"CommissionIncome", "Commission Income"},
      {"OtherIncome", "Other Income"},
      {"OldAgeSecurity", "Old Age Security"},
      {"PensionIncome", "Pension Income"},
      {"DisabilityBenefits", "Disability Benefits"},
      {"EmploymentInsurance", "Employment Insurance"},
      {"Dividends", "Dividends"},
      {"RentalIncome", "Rental Income"},
      {"AlimonyReceived", "Alimony Received"},
      {"RRSP", "RRSP"},
      {"SelfEmplomentIncome", "Self Employment Income"},
      {"SelfEmploymentCommission", "Self Employment Commission"},
      {"WorkersCompensation", "Workers Compensation"},
      {"UnionDues", "Union Dues"},
      {"ChildCareExpenses", "Child Care Expenses"},
      {"AttendantCare", "Attendant Care"},
      {"AlimonyPaid", "Alimony Paid"},
      {"TuitionFeesSelf", "Tuition Fees Self"},
      {"TuitionFeesOther", "Tuition Fees Other"},
      {"MedicalExpenses", "Medical Expenses"},
      {"CharitableDonations", "Charitable Donations"},
      {"PoliticalDonations", "Political Donations"},
      {"IncomeForeign", "Income Foreign"},
      {"SafetyDepositBoxes", "Safety Deposit Boxes"},
      {"AccountingInvestmentManagementFees", "Accounting Investment Management Fees"},
      {"InvestmentManagementFees", "Investment Management Fees"},
  };
  const auto it = names.find(column);
  return it == names.end() ? column : it->second;
}

// "line166" is shown "Line166", as the other lines.
std::string shownKey(std::string key) {
  if (!key.empty()) key[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(key[0])));
  return key;
}

std::string caption(const std::string& key, const std::string& label, const std::string& mark) {
  return "If " + shownKey(key) + " - '" + label + "' in Profile then check '" + mark + "'";
}

struct OptionNames {
  std::array<std::string, kProfileT1OptionCount> captions;
  std::array<std::string, kProfileT1OptionCount> keys;
};

OptionNames buildNames() {
  OptionNames names;
  const ProfileFieldLists& lists = createFieldList();
  for (const ProfileFieldRow& row : lists.client)
    if (row.option >= 0) {
      names.keys[static_cast<size_t>(row.option)] = row.key;
      names.captions[static_cast<size_t>(row.option)] =
          caption(row.key, row.label, markName(row.column5));
    }
  // The spouse rows speak of boxes 33 to 36, though they consult boxes 0 to 3.
  for (const ProfileFieldRow& row : lists.spouse)
    if (row.option >= 0) {
      const size_t box = static_cast<size_t>(33 + row.option);
      // The T1Info.B[2] row keeps its column in column 4.
      const std::string& column = row.column5 == "0" ? row.column4 : row.column5;
      names.keys[box] = row.key;
      names.captions[box] = caption(row.key, row.label, markName(column));
    }
  names.keys[37] = "Line342";
  names.captions[37] =
      caption("Line342", "Cultural And Ecological Gifts", markName("CharitableDonations"));
  names.keys[38] = "Line340";
  names.captions[38] =
      caption("Line340", "Allowable Charitable Donations", markName("CharitableDonations"));
  return names;
}

const OptionNames& optionNames() {
  static const OptionNames names = buildNames();
  return names;
}

}  // namespace

const std::array<std::string, kProfileT1OptionCount>& profileT1OptionCaptions() {
  return optionNames().captions;
}

int profileT1OptionOfName(std::string_view name) {
  const OptionNames& names = optionNames();
  for (int i = 0; i < kProfileT1OptionCount; ++i)
    if (names.captions[static_cast<size_t>(i)] == name) return i;
  const std::string upper = GU::upperCase(GU::trim(std::string(name)));
  for (int i = 0; i < kProfileT1OptionCount; ++i)
    if (GU::upperCase(names.keys[static_cast<size_t>(i)]) == upper) return i;
  return -1;
}

const std::array<std::string, 3>& profileT1CouplesCaptions() {
  static const std::array<std::string, 3> captions = {
      "Import the husband and wife into Ledgerfolio as two separate entries.",
      "Import only the primary individual into Ledgerfolio.",
      // Intended: the doubled ampersand and blank stand as the option reads.
      "Import both the husband and wife in as one entry  i.e. John && Mary Smith."};
  return captions;
}

}  // namespace lf
