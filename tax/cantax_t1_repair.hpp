// The repair of a raw CANTAX T1 export into the clean delimited text of "CANTAX_Modified.txt"
// (modifyCANTAXFile without its file steps): the error marks removed, each row's street
// address rejoined when commas inside it made the row longer, each value cleaned and passed
// through checkIfNeedToModifyElement, every value in double quotes, one client a line under a
// line of column names, no line end at the end.
#pragma once

#include <string>
#include <string_view>

namespace lf {

// The values a complete T1 export row holds: one per variable of the template.
inline constexpr size_t kCANTAXT1Values = 55;

// The modified file's first line: the 54 column names in double quotes.
const std::string& cantaxT1ModifiedHeading();

// The element rules of one raw row. The spouse's birth parts and the work phone are held from
// one element to the next, so a fresh object serves each row.
class CANTAXT1ElementRules {
 public:
  // Rewrites the value at the raw row's position `counter` (from 1) and answers whether it is
  // kept in the modified row.
  bool checkIfNeedToModifyElement(int counter, std::string& value);

 private:
  std::string heldWorkPhone_;
  std::string heldSpouseBirth_;
};

// Repairs the raw export text. False, with `modified` empty, when the first row has fewer than
// 55 values: the file is no T1 export of the template. `rows` receives the client lines
// written (blank lines of the export are left out).
bool repairCANTAXT1Text(std::string text, std::string& modified, long& rows);

}  // namespace lf
