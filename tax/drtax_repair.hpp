// The repair of a Dr. Tax client export (comma-separated, at least 15 values a row) into the
// clean delimited text of "DrTax_Modified.txt" (modifyDrTaxFile without its file steps): a
// line of column names, then each row of 15 values or more with every value cleaned, passed
// through checkIfNeedToModifyElement and put in double quotes. There is no rejoining here: a
// comma inside a value shifts the rest of its row. Shorter rows are left out.
#pragma once

#include <string>

namespace lf {

enum class DrTaxProduct { T1, T2 };

inline constexpr size_t kDrTaxValues = 15;

// The modified file's first line, each column name in double quotes.
const std::string& drTaxModifiedHeading(DrTaxProduct product);

// The value at raw position `counter` (from 1) as it goes into the modified row. `currentYear`
// completes the T2 year end.
std::string checkIfNeedToModifyDrTaxElement(DrTaxProduct product, int counter,
                                            const std::string& value, long currentYear);

// Repairs the export text. False, with `modified` empty, when the text has no rows or its first
// row has fewer than 15 values. `rows` receives the client lines written and `dropped` the
// rows left out for having fewer than 15 values.
bool repairDrTaxText(DrTaxProduct product, const std::string& text, long currentYear,
                     std::string& modified, long& rows, long& dropped);

}  // namespace lf
