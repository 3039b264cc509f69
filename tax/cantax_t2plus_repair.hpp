// The repair of a raw CANTAX T2Plus export into "CANTAX_Modified.txt" for the business text
// import. The rows are cleaned as in the T1 repair; each row then becomes one company line in
// the order of the modified heading: the literal "Corporation" first, the year end with the
// current year behind it, one provincial account number out of the four exported (the first
// that is not blank), and without the second address lines.
#pragma once

#include <string>

namespace lf {

// The values a T2Plus row needs at least (the template exports 24).
inline constexpr size_t kCANTAXT2PlusValues = 23;

// The modified file's first line: the 20 column names in double quotes.
const std::string& cantaxT2PlusModifiedHeading();

// The T2Plus element rule: the value at raw position `counter` (from 1) as it goes into the
// modified row; the year end gets a blank and `currentYear` behind it.
std::string checkIfNeedToModifyT2PlusElement(int counter, const std::string& value,
                                             long currentYear);

// Repairs the raw export text. False, with `modified` empty, when the first row has fewer than
// 23 values. Shorter rows after it are left out; `rows` receives the company lines written.
bool repairCANTAXT2PlusText(std::string text, long currentYear, std::string& modified, long& rows);

}  // namespace lf
