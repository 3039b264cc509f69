// The words of the enumerated client columns: each operation turns the small integer stored
// in a column into the text that summaries, merges and lists show.
#pragma once

#include <string>

namespace lf {

// 1 "Corporation" .. 10 "Fiduciary"; 3 reads "Partnership" in Canada and
// "General Partnership" in the United States. Anything else is "Unknown".
std::string getCompanyTypeStringFromCompanyTypeNum(long companyType);

// 2 to 5; anything else "Not Specified".
std::string getFinancialStatementsStringFromFinancialStatementsNum(long financialStatements);

// 1 to 3; anything else "Not Filed".
std::string getRC59FormStatusStringFromRC59FormStatusNum(long status);

// 1 "Full", 2 "Limited"; anything else "None".
std::string getRC59PermissionStringFromRC59PermissionNum(long permission);

// 1 to 3; anything else "Not Specified".
std::string getGSTFilingMethodStringFromGSTFilingMethodNum(long method);

// 1 "Regular Corporation"; anything else "CCPC".
std::string getCorporationTypeStringFromCorporationTypeNum(long corporationType);

// 2 "Provincial Corporation"; anything else "Federal Corporation".
std::string getCorporationLevelStringFromCorporationLevelNum(long corporationLevel);

}  // namespace lf
