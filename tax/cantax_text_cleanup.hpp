// The clean-up that the CANTAX and Dr. Tax export repairs share: the removal of CANTAX's
// error marks, the clean-up of one exported value, the splitting of rows and values, and the
// two value rules both products need (a numeric date in words, a name split at its first
// blank). Everything here works on text only; the files are read and written by the callers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lf {

// Removes, in this order and everywhere: CR LF + "*ERROR* ", CR + "*ERROR* ",
// LF + "*ERROR* ", "*ERROR* ", "*ERROR*"; replaces "<- Unknown variable name" with ","; and
// removes "YYYY/MM/DD", CANTAX's word for an empty date.
void removeCANTAXErrorMarks(std::string& text);

// Splits on every occurrence of the separator; an empty text gives one empty value.
std::vector<std::string> splitExportText(std::string_view text, std::string_view separator);

// The rows of an export: split at CR LF, LF or CR alike. A line end at the very end of the
// text makes no empty last row.
std::vector<std::string> splitExportRows(std::string_view text);

// One exported value as it goes into a modified file: double quotes removed, then one
// trailing ", " or else one trailing "," removed.
std::string cleanExportValue(std::string_view value);

// A date of three numeric parts Y, M, D separated by `separator` as the month's name, a blank,
// D, a comma and Y ("1970/05/17" gives "May 17,1970"); any other value stays as it is.
std::string dateInWords(std::string_view value, char separator);

// A name of two words or more as two modified-file columns: the text before the first blank,
// a closing quote, a comma, an opening quote and the rest ("Mary Ann" gives Mary","Ann); a name
// without a blank gets an empty second column (John","). The caller adds the outer quotes.
std::string splitNameColumns(std::string_view name);

// Appends `"value",` to the output.
void appendQuotedValue(std::string& out, std::string_view value);

// Ends a modified row: its last comma is dropped.
void endModifiedRow(std::string& out);

}  // namespace lf
