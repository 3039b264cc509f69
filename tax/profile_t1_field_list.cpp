// createFieldList: the client and spouse lists as the personal Profile import reads them.
#include "tax/profile_t1_field_list.hpp"

namespace lf {
namespace {

ProfileFieldRow contactRow(const char* key, const char* label, const char* format,
                           const char* column) {
  return ProfileFieldRow{key, label, format, "", column, -1};
}

ProfileFieldRow optionRow(int option, const char* key, const char* label, const char* format,
                          const char* column) {
  return ProfileFieldRow{key, label, format, "", column, option};
}

ProfileFieldLists buildLists() {
  ProfileFieldLists lists;
  lists.client = {
      contactRow("ClientTitle", "Title", "None", "NamePrefix"),
      contactRow("ClientFirstName", "First Name", "None", "FirstName"),
      contactRow("ClientLastName", "Last Name", "None", "LastName"),
      contactRow("ClientAddress", "Address", "None", "HomeAddress"),
      contactRow("ClientBirthDate", "Birthdate", "Date", "Birthday"),
      contactRow("ClientCity", "City", "None", "HomeCity"),
      contactRow("ClientHomePhone", "Home Phone", "None", "HomePhone_Main"),
      contactRow("ClientPostalCode", "Postal Code", "None", "HomePostalCode"),
      contactRow("ClientProvince", "Province", "None", "HomeProvince"),
      contactRow("ClientSIN", "SIN Number", "None", "SocialInsuranceNumber"),
      contactRow("ClientWorkPhone", "Work Phone Number", "None", "BusinessPhone_Main"),
      contactRow("T1Info.S[23]", "Email Address", "None", "BusinessEmail"),
      contactRow("SpouseAddress", "Spouse's Address", "None", "SpouseAddress"),
      contactRow("SpouseBirthDate", "Spouses Birthdate", "Date", "SpouseBirthday"),
      contactRow("SpouseCity", "Spouse's City", "None", "SpouseCity"),
      // Intended: the small n; the first-name skip asks for "SpouseFirstName", so this row is
      // written on the client's contact.
      contactRow("SpouseFirstname", "Spouse First Name", "None", "SpouseFirstName"),
      contactRow("SpouseLastName", "Spouse's Last Name", "None", "SpouseLastName"),
      contactRow("SpouseHomePhone", "Spouse Home Phone", "None", "SpousePhone_Main"),
      contactRow("SpousePostalCode", "Spouse Postal Code", "None", "SpousePostalCode"),
      contactRow("SpouseProvince", "Spouse Province", "None", "SpouseProvince"),
      contactRow("SpouseSIN", "Spouse's SIN", "None", "SpouseSIN"),
      contactRow("SpouseTitle", "Spouse's Title", "None", "SpouseNamePrefix"),
      contactRow("T1Info.S[37]", "Email Address", "None", "SpouseEmail"),
      contactRow("ClientMaritalStatus", "Marital Status", "MaritialStatus", "MaritialStatus"),
      contactRow("ClientGender", "Gender", "Sex", "Gender"),
      contactRow("T1Info.B[24]", "Language", "Language", "SpokenLanguage"),
      optionRow(0, "Line101", "Line 101", "None", "EmploymentIncome"),
      optionRow(1, "Line102", "Commission", "None", "CommissionIncome"),
      optionRow(2, "Line104", "Other Emp Income", "None", "OtherIncome"),
      optionRow(3, "Line113", "T4(OAS), Box 14", "None", "OldAgeSecurity"),
      optionRow(4, "Line114", "Pension Benefits", "None", "PensionIncome"),
      optionRow(5, "Line152", "Disability Benefits", "None", "DisabilityBenefits"),
      optionRow(6, "Line119", "EI Benefits", "None", "EmploymentInsurance"),
      optionRow(7, "Line120", "Taxable Dividends", "None", "Dividends"),
      optionRow(8, "Line160", "Rental Income, Gross", "None", "RentalIncome"),
      optionRow(9, "Line126", "Rental Income, Net", "None", "RentalIncome"),
      optionRow(10, "Line156", "Support Received", "None", "AlimonyReceived"),
      optionRow(11, "Line128", "Support Received (Taxable)", "None", "AlimonyReceived"),
      optionRow(12, "Line129", "RRSP Income", "None", "RRSP"),
      optionRow(13, "Line130", "Other Income", "None", "OtherIncome"),
      optionRow(14, "Line162", "Businsess Income, Gross", "None", "SelfEmplomentIncome"),
      optionRow(15, "Line135", "Business Income, Net", "None", "SelfEmplomentIncome"),
      optionRow(16, "line166", "Commission income", "None", "SelfEmploymentCommission"),
      // Intended: the stray apostrophe makes this row format to blank, so it sets no mark.
      optionRow(17, "line139", "Commission Income, Net", "None '", "SelfEmploymentCommission"),
      optionRow(18, "line144", "WCB (Box 10 T5007)", "None", "WorkersCompensation"),
      optionRow(19, "Line212", "Union/Professional Dues", "None", "UnionDues"),
      optionRow(20, "Line214", "Child Care Expenses", "None", "ChildCareExpenses"),
      optionRow(21, "Line215", "Attendant Care Expence", "None", "AttendantCare"),
      optionRow(22, "Line230", "Support Payments", "None", "AlimonyPaid"),
      optionRow(23, "Line323", "Tuition And Education", "None", "TuitionFeesSelf"),
      optionRow(24, "Line324", "Tuition Transferred From Child", "None", "TuitionFeesOther"),
      optionRow(25, "Line326", "Amount Transferred From Spouse", "None", "TuitionFeesOther"),
      optionRow(26, "Line330", "Medical Expense", "None", "MedicalExpenses"),
      optionRow(27, "Line349", "Donations And Gifts", "None", "CharitableDonations"),
      optionRow(28, "Line409", "Total Federal Political Contribution", "None",
                "PoliticalDonations"),
      optionRow(29, "Schedule1[21]", "Net Foreign Income", "None", "IncomeForeign"),
      optionRow(30, "Schedule4[30]", "Safety Deposit Box Charges", "None", "SafetyDepositBoxes"),
      optionRow(31, "Schedule4[31]", "Accounting Fees", "None",
                "AccountingInvestmentManagementFees"),
      optionRow(32, "Schedule4[33]", "Investment Council Fees", "None", "InvestmentManagementFees"),
  };
  lists.spouse = {
      contactRow("ClientTitle", "", "None", "SpouseNamePrefix"),
      contactRow("ClientFirstName", "", "None", "SpouseFirstName"),
      contactRow("ClientLastName", "", "None", "SpouseLastName"),
      contactRow("ClientAddress", "", "None", "SpouseAddress"),
      contactRow("ClientBirthDate", "", "Date", "SpouseBirthday"),
      contactRow("ClientCity", "", "None", "SpouseCity"),
      contactRow("ClientHomePhone", "", "None", "SpousePhone_Main"),
      contactRow("ClientPostalCode", "", "None", "SpousePostalCode"),
      contactRow("ClientProvince", "", "None", "SpouseProvince"),
      contactRow("ClientSIN", "", "None", "SpouseSIN"),
      contactRow("SpouseAddress", "", "None", "HomeAddress"),
      contactRow("SpouseBirthDate", "", "Date", "Birthday"),
      contactRow("SpouseCity", "", "None", "HomeCity"),
      contactRow("SpouseFirstname", "", "None", "FirstName"),
      contactRow("SpouseLastName", "", "None", "LastName"),
      contactRow("SpouseHomePhone", "", "None", "HomePhone_Main"),
      contactRow("SpousePostalCode", "", "None", "HomePostalCode"),
      contactRow("SpouseProvince", "", "None", "HomeProvince"),
      contactRow("SpouseSIN", "", "None", "SocialInsuranceNumber"),
      contactRow("SpouseTitle", "", "None", "NamePrefix"),
      contactRow("ClientMaritalStatus", "", "MaritialStatus", "MaritialStatus"),
      contactRow("T1Info.B[24]", "", "Language", "SpokenLanguage"),
      optionRow(0, "T1Info.B[7]", "Self Employed Spouse", "YesNo", "SelfEmplomentIncome"),
      // Intended: this row's values sit one column to the left, so it writes a column "0".
      ProfileFieldRow{"T1Info.B[2]", "Spouse's Net Income", "None", "EmploymentIncome", "0", 1},
      optionRow(2, "Schedule2[32]", "Spousal Disability Amount", "None", "DisabilityBenefits"),
      optionRow(3, "Schedule2[34]", "Spousal Pension Income Amount", "None", "PensionIncome"),
  };
  return lists;
}

}  // namespace

const ProfileFieldLists& createFieldList() {
  static const ProfileFieldLists lists = buildLists();
  return lists;
}

}  // namespace lf
