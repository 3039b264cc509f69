// Raw CANTAX T1 export rows for the tests: 55 values in template order, any of them replaced.
#pragma once

#include <map>
#include <string>

namespace lf::testing {

// Position (from 1) to value; the others get a plain fictional client.
inline std::string cantaxT1Row(const std::map<int, std::string>& changed = {}) {
  std::map<int, std::string> values = {
      {1, "046454286"},   {2, "1970/05/17"}, {3, "John Albert"}, {4, "Smith"},  {5, "John Smith"},
      {6, "12 Elm St"},   {7, "Toronto ON"}, {8, "ON"},          {9, "M5V1A1"}, {10, "4165551234"},
      {15, "4165559999"}, {16, "22"},        {17, "Married"},    {18, "Mary"},  {19, "Smith"},
      {20, "3"},          {21, "9"},         {22, "1972"},       {23, "52000"},
  };
  for (const auto& [position, value] : changed) values[position] = value;
  std::string row;
  for (int position = 1; position <= 55; ++position) {
    if (position > 1) row += ",";
    row += values.count(position) ? values[position] : "";
  }
  return row;
}

}  // namespace lf::testing
