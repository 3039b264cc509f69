// The client look-ups that the merge engine needs from the shared helpers: the texts of the
// enumerated client columns, the main business selection and the client-data id of a
// company. Kept here, in lf::merge, until the shared record helpers are on main.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lf::merge {

std::string getCompanyTypeStringFromCompanyTypeNum(long num);
std::string getFinancialStatementsStringFromFinancialStatementsNum(long num);
std::string getRC59FormStatusStringFromRC59FormStatusNum(long num);
std::string getRC59PermissionStringFromRC59PermissionNum(long num);
std::string getGSTFilingMethodStringFromGSTFilingMethodNum(long num);
std::string getCorporationTypeStringFromCorporationTypeNum(long num);
std::string getCorporationLevelStringFromCorporationLevelNum(long num);

// The look-up of one of the six word-valued client columns by its upper-cased name; false
// when the column is not one of them.
bool clientColumnWord(std::string_view upperField, long num, std::string& word);
// The reverse, for writing: the number whose word is the value (compared in upper case);
// false when the column is not one of the six or no word matches.
bool clientColumnNumber(std::string_view upperField, std::string_view value, long& num);
// The default number of one of the six columns.
long clientColumnDefault(std::string_view upperField);

std::string getMainBusinessSQLString(bool showOnly, int statusKind, long clientDataID);
// 0 when there is none or the database is closed.
long getClientDataIDFromCompanyID(long companyID);

}  // namespace lf::merge
