// Words of the catalogue's display names that depend on the country and province.
#pragma once

#include <string>

#include "base/variant.hpp"

namespace lf::merge {

// "HST" or "GST": HST in 9, 10, 11, and in 1 and 3 from 1 July 2010 on.
std::string salesTaxWord(int province, const Date& today);
// "QST" in Quebec, "PST" otherwise.
std::string provincialTaxWord(int province);
// "WCB", "CSST", "WHSCC" or "WSIB".
std::string boardWord(int province);
// The short province name of the corporate tax number row ("ON" for Ontario and unknowns).
std::string provinceWord(int province);

// The locale's country mode and province index; Canada and Ontario without a locale service.
int localeCountryMode();
int localeProvinceIndex();
std::string localeApplicationName();

}  // namespace lf::merge
