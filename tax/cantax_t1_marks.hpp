// The CANTAX T1 line amounts and the check marks they set on the personal-tax sheet.
//
// After the modified file is loaded, each client's 33 line amounts are read from the grid's
// columns 22 on (element n of the 35-slot array is grid column n + 21, so element 1 is
// "LINE_101"), keyed by the client's normalised SIN. After a client has been written, every
// ticked option whose line amount is above 0 sets its column of the client's main personal
// row to True. Several options can set one column; an unticked option never clears one.
#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

namespace lf {

class ImportGrid;

struct CANTAXT1Option {
  int option;             // the chkOption box on the advanced page
  const char* line;       // "LINE_101"
  int element;            // its element of the line amounts
  const char* column;     // the personal-tax column it marks
  const char* lineName;   // the line's name in CANTAX, "Other Income"
  const char* checkName;  // the mark's name on the personal-tax sheet, "Other Income"
};

// The options in the order they are walked.
const std::vector<CANTAXT1Option>& cantaxT1Options();
inline constexpr int kCANTAXT1OptionCount = 31;
// The option's caption on the advanced page:
// "If Line130 - 'Other Income' in CANTAX then check 'Other Income'".
std::string cantaxT1OptionCaption(const CANTAXT1Option& option);

using CANTAXLineAmounts = std::array<long, 35>;

class CANTAXT1LineAmounts {
 public:
  // populateTheRestOfTheInformation: fills the amounts of every data row when the grid has at
  // least 55 columns; a blank or non-numeric cell leaves 0.
  void populateTheRestOfTheInformation(const ImportGrid& grid);
  // The amounts of the client with the SIN (any form), or nullptr.
  const CANTAXLineAmounts* find(const std::string& sin) const;
  size_t size() const { return amounts_.size(); }
  void clear() { amounts_.clear(); }

 private:
  std::unordered_map<std::string, CANTAXLineAmounts> amounts_;
};

// importCSV_finishImportingClient: sets the marks of the contact in its main personal row of
// the year. `ticked` holds the chkOption boxes by option number. Answers the columns set.
std::vector<std::string> setCANTAXT1Marks(long contactID, const std::string& sin, long taxYear,
                                          const std::array<bool, kCANTAXT1OptionCount>& ticked,
                                          const CANTAXT1LineAmounts& amounts);

}  // namespace lf
