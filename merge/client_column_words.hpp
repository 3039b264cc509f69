// The six client columns that merges show as words (RC59 permission and status, sales-tax
// filing method, financial statements, corporation type and level): the look-up of each, its
// default, and the way back from a word to the number for writing.
#pragma once

#include <string>
#include <string_view>

namespace lf::merge {

// The word of one of the six columns by its upper-cased name; false when the column is not
// one of them.
bool clientColumnWord(std::string_view upperField, long num, std::string& word);
// The number whose word is the value (compared in upper case; a number is taken as it is);
// false when the column is not one of the six or nothing matches.
bool clientColumnNumber(std::string_view upperField, std::string_view value, long& num);
// The number a merge shows when the column is blank.
long clientColumnDefault(std::string_view upperField);

}  // namespace lf::merge
