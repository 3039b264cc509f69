// AddressFields: the working record of the address formatters, thirteen strings from the first
// line of an address block down to the web site. The address parser fills four of them.
#pragma once

#include <string>

namespace lf {

struct AddressFields {
  std::string Name;         // first line: contact, company or business name
  std::string ContactName;  // second line: contact below a business name
  std::string Street;
  std::string City;
  std::string Province;  // province or state
  std::string PostalCode;
  std::string Country;
  std::string Phone;
  std::string Fax;
  std::string Cell;
  std::string Home;  // home telephone
  std::string Email;
  std::string WebSite;

  friend bool operator==(const AddressFields&, const AddressFields&) = default;
};

}  // namespace lf
