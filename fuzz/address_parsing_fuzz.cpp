// Address lines of any bytes through the address parser, with and without commas.
#include <cstddef>
#include <cstdint>
#include <string>

#include "summaries/address_parsing.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::string line = text;
  lf::parseAddressString(line);
  lf::AddressFields fields;
  bool city = false, province = false, postal = false;
  lf::parseAddressStringWithSpaces(text, fields, city, province, postal);
  return 0;
}
