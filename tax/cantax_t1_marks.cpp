// The CANTAX T1 line amounts and marks.
#include "tax/cantax_t1_marks.hpp"

#include <cmath>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"
#include "records/lookups.hpp"
#include "text/import_grid.hpp"

namespace lf {

namespace {

using GU = GeneralUtilities;

constexpr int kFirstLineColumn = 21;  // element n is in grid column n + 21

long wholeAmount(std::string_view cell) {
  double value = 0;
  if (GU::isBlank(cell) || !GU::isNumeric(cell) || !GU::parseNumber(GU::trim(cell), value))
    return 0;
  if (!std::isfinite(value) || std::fabs(value) > 2e9) return 0;
  return std::lround(value);
}

}  // namespace

const std::vector<CANTAXT1Option>& cantaxT1Options() {
  static const std::vector<CANTAXT1Option> options = {
      {0, "LINE_101", 1, "EmploymentIncome", "Employment Income", "Employment Income"},
      {1, "LINE_102", 2, "CommissionIncome", "Commissions", "Commission Income"},
      {2, "LINE_104", 3, "OtherIncome", "Other Employment Income", "Other Income"},
      {3, "LINE_113", 4, "OldAgeSecurity", "Old Age Security Pension", "Old Age Security"},
      {4, "LINE_114", 5, "PensionIncome", "CPP Or QPP Benefits", "Pension Income"},
      {6, "LINE_119", 7, "EmploymentInsurance", "Employment Insurance Benefits",
       "Employment Insurance"},
      {7, "LINE_120", 8, "Dividends", "Taxable Dividends", "Dividends"},
      {9, "LINE_126", 9, "RentalIncome", "Net Rental Income", "Rental Income"},
      {11, "LINE_128", 10, "AlimonyReceived", "Support Payments Received, Taxable",
       "Alimony Received"},
      {12, "LINE_129", 11, "RRSP", "RRSP Income", "RRSP"},
      {13, "LINE_130", 12, "OtherIncome", "Other Income", "Other Income"},
      {15, "LINE_135", 13, "SelfEmplomentIncome", "Net Business Income", "Self Employment Income"},
      {17, "LINE_139", 14, "SelfEmploymentCommission", "Net Commission Income",
       "Self Employment Commission"},
      {18, "LINE_144", 15, "WorkersCompensation", "Workers' Compensation Benefits",
       "Workers Compensation"},
      {5, "LINE_152", 16, "DisabilityBenefits", "Disability Benefits", "Disability Benefits"},
      {10, "LINE_156", 17, "AlimonyReceived", "Support Payments Received", "Alimony Received"},
      {8, "LINE_160", 18, "RentalIncome", "Gross Rental Income", "Rental Income"},
      {14, "LINE_162", 19, "SelfEmplomentIncome", "Gross Business Income",
       "Self Employment Income"},
      {16, "LINE_166", 20, "SelfEmploymentCommission", "Gross Commission Income",
       "Self Employment Commission"},
      {19, "LINE_212", 22, "UnionDues", "Union Or Professional Dues", "Union Dues"},
      {20, "LINE_214", 23, "ChildCareExpenses", "Child Care Expenses", "Child Care Expenses"},
      {21, "LINE_215", 24, "AttendantCare", "Attendant Care Expenses", "Attendant Care"},
      {22, "LINE_230", 25, "AlimonyPaid", "Support Payments Made", "Alimony Paid"},
      {23, "LINE_323", 26, "TuitionFeesSelf", "Tuition And Education Amounts", "Tuition Fees Self"},
      {24, "LINE_324", 27, "TuitionFeesOther", "Tuition Transferred From A Child",
       "Tuition Fees Other"},
      {25, "LINE_326", 28, "TuitionFeesOther", "Amounts Transferred From Spouse",
       "Tuition Fees Other"},
      {26, "LINE_330", 29, "MedicalExpenses", "Medical Expenses", "Medical Expenses"},
      // Intended: option 30 is read for LINE_340 and option 29 for LINE_342.
      {30, "LINE_340", 30, "CharitableDonations", "Allowable Charitable Donations",
       "Charitable Donations"},
      {29, "LINE_342", 31, "PoliticalDonations", "Cultural And Ecological Gifts",
       "Political Donations"},
      {27, "LINE_349", 32, "CharitableDonations", "Donations And Gifts", "Charitable Donations"},
      {28, "LINE_409", 33, "PoliticalDonations", "Federal Political Contributions",
       "Political Donations"},
  };
  return options;
}

std::string cantaxT1OptionCaption(const CANTAXT1Option& option) {
  const std::string line = std::string(option.line).substr(5);  // "LINE_130" gives "130"
  return "If Line" + line + " - '" + option.lineName + "' in CANTAX then check '" +
         option.checkName + "'";
}

void CANTAXT1LineAmounts::populateTheRestOfTheInformation(const ImportGrid& grid) {
  amounts_.clear();
  if (grid.cols() < 55) return;
  for (int row = kFirstDataRow; row < grid.rows(); ++row) {
    CANTAXLineAmounts amounts{};
    for (int element = 1; element < static_cast<int>(amounts.size()); ++element)
      amounts[element] = wholeAmount(grid.textMatrix(row, element + kFirstLineColumn));
    amounts_[GU::formatSIN(grid.textMatrix(row, 1))] = amounts;
  }
}

const CANTAXLineAmounts* CANTAXT1LineAmounts::find(const std::string& sin) const {
  const auto it = amounts_.find(GU::formatSIN(sin));
  return it == amounts_.end() ? nullptr : &it->second;
}

std::vector<std::string> setCANTAXT1Marks(long contactID, const std::string& sin, long taxYear,
                                          const std::array<bool, kCANTAXT1OptionCount>& ticked,
                                          const CANTAXT1LineAmounts& amounts) {
  std::vector<std::string> marked;
  procedure("nvImportlf6.dll-frmImportCANTAXT1-importCSV_finishImportingClient", [&] {
    const CANTAXLineAmounts* lines = amounts.find(sin);
    DatabaseService* db = usablePracticeDatabase();
    if (lines == nullptr || db == nullptr) return;
    std::vector<const char*> columns;
    for (const CANTAXT1Option& option : cantaxT1Options())
      if (ticked[static_cast<size_t>(option.option)] && (*lines)[option.element] > 0)
        columns.push_back(option.column);
    if (columns.empty()) return;
    // The main personal selection of the year, narrowed to the one client: the whole year's
    // list for every client would make an import quadratic.
    std::string sql = getMainPersonalSQLString(3, taxYear);
    const size_t where = sql.find("WHERE ");
    if (where == std::string::npos) return;
    sql.insert(where + 6, "Contacts.ContactID=" + std::to_string(contactID) + " AND ");
    RecordsetScope personal(*db, sql, kLockOptimistic);
    if (!db->findRecord(personal, "ContactID", std::to_string(contactID))) return;
    for (const char* column : columns) {
      db->setField(personal, column, "True");
      marked.emplace_back(column);
    }
    db->updateRecord(personal);
  });
  return marked;
}

}  // namespace lf
