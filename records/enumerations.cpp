// The enumerations of client columns, number to word. The country mode of the locale service
// chooses the word for a partnership.
#include "records/enumerations.hpp"

#include <initializer_list>

#include "base/failure.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "host/locale_service.hpp"

namespace lf {
namespace {

// Reaching an unset service is the legacy "Object variable not set" failure.
LocaleService& locale() {
  LocaleService* service = moduleState().LocaleReference;
  if (service == nullptr) throw Failure("Object variable or With block variable not set", 91);
  return *service;
}

// The word of a number, or the default word when the number has none.
struct Word {
  long number;
  const char* text;
};

std::string wordOf(long number, std::initializer_list<Word> words, const char* otherwise) {
  for (const Word& w : words)
    if (w.number == number) return w.text;
  return otherwise;
}

}  // namespace

std::string getCompanyTypeStringFromCompanyTypeNum(long companyType) {
  std::string result = "Unknown";
  procedure("nvImportlf6.dll-modDatabaseFunctions-getCompanyTypeStringFromCompanyTypeNum", [&] {
    if (companyType == 3) {
      // A mode other than 1 or 2 leaves "Unknown".
      const int mode = locale().getCountryMode();
      if (mode == 1) result = "Partnership";
      if (mode == 2) result = "General Partnership";
      return;
    }
    result = wordOf(companyType,
                    {{1, "Corporation"},
                     {2, "Sole Proprietorship"},
                     {4, "Non Profit"},
                     {5, "Trust"},
                     {6, "Joint Venture"},
                     {7, "S Corporation"},
                     {8, "LLP"},
                     {9, "LLC"},
                     {10, "Fiduciary"}},
                    "Unknown");
  });
  return result;
}

std::string getFinancialStatementsStringFromFinancialStatementsNum(long financialStatements) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getFinancialStatementsStringFromFinancialStatementsNum",
      [&] {
        result = wordOf(financialStatements,
                        {{2, "Compilation (NTR)"},
                         {3, "Review Engagement"},
                         {4, "Review Engagement with Differential Reporting"},
                         {5, "Audit"}},
                        "Not Specified");
      });
  return result;
}

std::string getRC59FormStatusStringFromRC59FormStatusNum(long status) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getRC59FormStatusStringFromRC59FormStatusNum", [&] {
        result =
            wordOf(status, {{1, "Awaiting Signature"}, {2, "CRA Processing"}, {3, "Completed"}},
                   "Not Filed");
      });
  return result;
}

std::string getRC59PermissionStringFromRC59PermissionNum(long permission) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getRC59PermissionStringFromRC59PermissionNum",
            [&] {
              result = wordOf(permission, {{1, "Full"}, {2, "Limited"}}, "None");
            });
  return result;
}

std::string getGSTFilingMethodStringFromGSTFilingMethodNum(long method) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getGSTFilingMethodStringFromGSTFilingMethodNum", [&] {
        result = wordOf(method, {{1, "Traditional"}, {2, "Simple Method"}, {3, "Quick Method"}},
                        "Not Specified");
      });
  return result;
}

std::string getCorporationTypeStringFromCorporationTypeNum(long corporationType) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getCorporationTypeStringFromCorporationTypeNum",
            [&] {
              result = wordOf(corporationType, {{1, "Regular Corporation"}}, "CCPC");
            });
  return result;
}

std::string getCorporationLevelStringFromCorporationLevelNum(long corporationLevel) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getCorporationLevelStringFromCorporationLevelNum", [&] {
        result = wordOf(corporationLevel, {{2, "Provincial Corporation"}}, "Federal Corporation");
      });
  return result;
}

}  // namespace lf
