// Country and province words of the merge catalogue, and the locale values the engine reads.
#include "merge/catalogue_words.hpp"

#include "base/module_state.hpp"
#include "host/locale_service.hpp"

namespace lf::merge {

std::string salesTaxWord(int province, const Date& today) {
  if (province == 9 || province == 10 || province == 11) return "HST";
  if (province == 1 || province == 3)
    return today.datePart() >= Date::fromParts(2010, 7, 1) ? "HST" : "GST";
  return "GST";
}

std::string provincialTaxWord(int province) {
  return province == 8 ? "QST" : "PST";
}

std::string boardWord(int province) {
  switch (province) {
    case 0:
    case 1:
    case 2:
    case 4:
    case 9:
    case 12:
      return "WCB";
    case 8:
      return "CSST";
    case 10:
    case 11:
      return "WHSCC";
    default:
      return "WSIB";
  }
}

std::string provinceWord(int province) {
  switch (province) {
    case 0:
      return "Alberta";
    case 1:
      return "BC";
    case 2:
      return "Manitoba";
    case 4:
      return "Sask.";
    case 8:
      return "Que.";
    case 9:
      return "N.S.";
    case 10:
      return "N.B.";
    case 11:
      return "Nfld.";
    case 12:
      return "P.E.I.";
    default:
      return "ON";
  }
}

int localeCountryMode() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale ? locale->getCountryMode() : kCountryCanada;
}

int localeProvinceIndex() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale ? locale->getProvinceIndex() : kOntario;
}

std::string localeApplicationName() {
  LocaleService* locale = moduleState().LocaleReference;
  return locale ? locale->getApplicationName() : std::string("Ledgerfolio");
}

}  // namespace lf::merge
