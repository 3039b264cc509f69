// Checks of option values that lfimport's commands share. They run on the text before CLI11
// converts it, so that a bad value gets one line naming the option and the value rather than
// the parser's bare conversion message, and exit code 2.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace lf::cli {

// A whole number from low to high; `what` names it in the message
// ("--year: '99999999999' is not a year from 1900 to 9999").
CLI::Validator wholeNumber(long long low, long long high, const std::string& what);

// The ID of a record: a whole number above 0 that fits the 32-bit ID columns.
CLI::Validator recordID();

// A province index of the locale service, 0 to 12.
CLI::Validator provinceIndex();

// Text given on the command line is outside text: made clean by the one rule of
// host/text_encoding.hpp. Paths are left as they are.
CLI::Validator outsideText();

}  // namespace lf::cli
