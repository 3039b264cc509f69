// The address parser of modFormatAddresses: one line of address, as a tax file writes it,
// split into street, city, province and postal code.
//
// It knows nothing of places beyond a list of Canadian province names; the rest is commas,
// token lengths and counting from the right. Its mistakes are part of the behaviour (importing
// twice must give the same columns): a province name is found inside other words, and a line
// with a blank that names no province loses all its blanks and is upper-cased.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "summaries/address_fields.hpp"

namespace lf {

// The 42 province names and abbreviations in search order; the last entry is empty.
const std::array<std::string_view, 42>& provinceSearchNames();

// Empties all thirteen strings.
void clearAddressFields(AddressFields& fields);

// Parses the line into Street, City, Province and PostalCode; the other nine fields stay
// empty. The line is rewritten during the parse (callers pass a working copy). A run-time
// failure ends the parse with what was set so far.
AddressFields parseAddressString(std::string& line);

// For text without usable commas: takes postal code, province and city off the right end,
// filling only the fields whose flag is still false, and leaves the rest in Street.
void parseAddressStringWithSpaces(const std::string& text, AddressFields& fields, bool& cityFound,
                                  bool& provinceFound, bool& postalFound);

}  // namespace lf
