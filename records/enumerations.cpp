// The enumerations of client columns, number to word. The country mode of the locale service
// chooses the word for a partnership.
#include "records/enumerations.hpp"

#include "frame/failure.hpp"
#include "frame/module_state.hpp"
#include "frame/procedure.hpp"
#include "host/locale_service.hpp"

namespace lf {
namespace {

// Reaching an unset service is the legacy "Object variable not set" failure.
LocaleService& locale() {
  LocaleService* service = moduleState().LocaleReference;
  if (service == nullptr) throw Failure("Object variable or With block variable not set", 91);
  return *service;
}

}  // namespace

std::string getCompanyTypeStringFromCompanyTypeNum(long companyType) {
  std::string result = "Unknown";
  procedure("nvImportlf6.dll-modDatabaseFunctions-getCompanyTypeStringFromCompanyTypeNum", [&] {
    switch (companyType) {
      case 1: result = "Corporation"; break;
      case 2: result = "Sole Proprietorship"; break;
      case 3: {
        const int mode = locale().getCountryMode();
        if (mode == 1) {
          result = "Partnership";
        } else if (mode == 2) {
          result = "General Partnership";
        }
        break;
      }
      case 4: result = "Non Profit"; break;
      case 5: result = "Trust"; break;
      case 6: result = "Joint Venture"; break;
      case 7: result = "S Corporation"; break;
      case 8: result = "LLP"; break;
      case 9: result = "LLC"; break;
      case 10: result = "Fiduciary"; break;
      default: result = "Unknown"; break;
    }
  });
  return result;
}

std::string getFinancialStatementsStringFromFinancialStatementsNum(long financialStatements) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getFinancialStatementsStringFromFinancialStatementsNum",
      [&] {
        switch (financialStatements) {
          case 2: result = "Compilation (NTR)"; break;
          case 3: result = "Review Engagement"; break;
          case 4: result = "Review Engagement with Differential Reporting"; break;
          case 5: result = "Audit"; break;
          default: result = "Not Specified"; break;
        }
      });
  return result;
}

std::string getRC59FormStatusStringFromRC59FormStatusNum(long status) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getRC59FormStatusStringFromRC59FormStatusNum",
            [&] {
              switch (status) {
                case 1: result = "Awaiting Signature"; break;
                case 2: result = "CRA Processing"; break;
                case 3: result = "Completed"; break;
                default: result = "Not Filed"; break;
              }
            });
  return result;
}

std::string getRC59PermissionStringFromRC59PermissionNum(long permission) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getRC59PermissionStringFromRC59PermissionNum",
            [&] {
              switch (permission) {
                case 1: result = "Full"; break;
                case 2: result = "Limited"; break;
                default: result = "None"; break;
              }
            });
  return result;
}

std::string getGSTFilingMethodStringFromGSTFilingMethodNum(long method) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getGSTFilingMethodStringFromGSTFilingMethodNum", [&] {
        switch (method) {
          case 1: result = "Traditional"; break;
          case 2: result = "Simple Method"; break;
          case 3: result = "Quick Method"; break;
          default: result = "Not Specified"; break;
        }
      });
  return result;
}

std::string getCorporationTypeStringFromCorporationTypeNum(long corporationType) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getCorporationTypeStringFromCorporationTypeNum", [&] {
        result = corporationType == 1 ? "Regular Corporation" : "CCPC";
      });
  return result;
}

std::string getCorporationLevelStringFromCorporationLevelNum(long corporationLevel) {
  std::string result;
  procedure(
      "nvImportlf6.dll-modDatabaseFunctions-getCorporationLevelStringFromCorporationLevelNum",
      [&] {
        result = corporationLevel == 2 ? "Provincial Corporation" : "Federal Corporation";
      });
  return result;
}

}  // namespace lf
