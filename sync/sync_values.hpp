// Value rules the sync sources share: money as the exports keep it, telephone triples,
// the order of three e-mail addresses, and the date-range clause of the filtered queries.
#pragma once

#include <string>
#include <string_view>

#include "base/variant.hpp"

namespace lf {

class DatabaseService;

// Money from the source: "$" removed; parentheses mean negative; a text that is then no
// number gives 0. "($12.50)" gives -12.5. Kept in single precision, as the source's.
float parseSourceMoney(std::string_view text);
// The same rules in double precision, for the amounts of a prepared table, which no source's
// single precision applies to.
double parseMoneyText(std::string_view text);

// A telephone from area code, number and extension. The number must be there; area, number
// and extension are formatted together, number and extension alone become
// number + " ext. " + extension without formatting.
std::string composeTelephone(std::string_view area, std::string_view number,
                             std::string_view extension);

// Fills the first two of three addresses from the three (see the rules in the source);
// the third is never cleared.
void sortEmailAddresses(std::string& first, std::string& second, std::string& third);

// " WHERE (column = #d#)" and its three companions for range types 0 to 3, dates through
// formatDateForSql of the database; empty for any other type.
std::string dateRangeClause(DatabaseService& db, std::string_view column, long rangeType,
                            const Date& start, const Date& end);

// The present texts joined by one blank.
std::string joinPresent(std::initializer_list<std::string_view> parts);

}  // namespace lf
