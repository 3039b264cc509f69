// Texts of the enumerated client columns and the main business selection, as the merge
// engine reads them.
#include "merge/client_lookups.hpp"

#include "db/database_service.hpp"
#include "frame/module_state.hpp"
#include "host/client_drop_down.hpp"
#include "host/general_utilities.hpp"
#include "merge/catalogue_words.hpp"
#include "merge/text_search.hpp"

namespace lf::merge {

std::string getCompanyTypeStringFromCompanyTypeNum(long num) {
  switch (num) {
    case 1: return "Corporation";
    case 2: return "Sole Proprietorship";
    case 3: {
      int mode = localeCountryMode();
      if (mode == 1) return "Partnership";
      if (mode == 2) return "General Partnership";
      return "Unknown";
    }
    case 4: return "Non Profit";
    case 5: return "Trust";
    case 6: return "Joint Venture";
    case 7: return "S Corporation";
    case 8: return "LLP";
    case 9: return "LLC";
    case 10: return "Fiduciary";
    default: return "Unknown";
  }
}

std::string getFinancialStatementsStringFromFinancialStatementsNum(long num) {
  switch (num) {
    case 2: return "Compilation (NTR)";
    case 3: return "Review Engagement";
    case 4: return "Review Engagement with Differential Reporting";
    case 5: return "Audit";
    default: return "Not Specified";
  }
}

std::string getRC59FormStatusStringFromRC59FormStatusNum(long num) {
  switch (num) {
    case 1: return "Awaiting Signature";
    case 2: return "CRA Processing";
    case 3: return "Completed";
    default: return "Not Filed";
  }
}

std::string getRC59PermissionStringFromRC59PermissionNum(long num) {
  switch (num) {
    case 1: return "Full";
    case 2: return "Limited";
    default: return "None";
  }
}

std::string getGSTFilingMethodStringFromGSTFilingMethodNum(long num) {
  switch (num) {
    case 1: return "Traditional";
    case 2: return "Simple Method";
    case 3: return "Quick Method";
    default: return "Not Specified";
  }
}

std::string getCorporationTypeStringFromCorporationTypeNum(long num) {
  return num == 1 ? "Regular Corporation" : "CCPC";
}

std::string getCorporationLevelStringFromCorporationLevelNum(long num) {
  return num == 2 ? "Provincial Corporation" : "Federal Corporation";
}

namespace {
using WordOf = std::string (*)(long);
struct ClientColumn {
  std::string_view upperName;
  WordOf word;
  long defaultNum;
  long first;  // numbers tried when writing a word back
  long last;
};
const ClientColumn kClientColumns[] = {
    {"RC59PERMISSION", getRC59PermissionStringFromRC59PermissionNum, 0, 0, 2},
    {"RC59STATUS", getRC59FormStatusStringFromRC59FormStatusNum, 0, 0, 3},
    {"GSTFILINGMETHOD", getGSTFilingMethodStringFromGSTFilingMethodNum, 0, 0, 3},
    {"FINANCIALSTATEMENTS", getFinancialStatementsStringFromFinancialStatementsNum, 1, 1, 5},
    {"CORPORATIONTYPE", getCorporationTypeStringFromCorporationTypeNum, 0, 0, 1},
    {"CORPORATIONLEVEL", getCorporationLevelStringFromCorporationLevelNum, 1, 1, 2},
};
const ClientColumn* clientColumn(std::string_view upperField) {
  for (const ClientColumn& c : kClientColumns)
    if (c.upperName == upperField) return &c;
  return nullptr;
}
}  // namespace

bool clientColumnWord(std::string_view upperField, long num, std::string& word) {
  const ClientColumn* c = clientColumn(upperField);
  if (c == nullptr) return false;
  word = c->word(num);
  return true;
}

bool clientColumnNumber(std::string_view upperField, std::string_view value, long& num) {
  const ClientColumn* c = clientColumn(upperField);
  if (c == nullptr) return false;
  const std::string wanted = upper(GeneralUtilities::trim(value));
  for (long n = c->first; n <= c->last; ++n) {
    if (upper(c->word(n)) == wanted) {
      num = n;
      return true;
    }
  }
  double numeric = 0;
  if (GeneralUtilities::parseNumber(value, numeric)) {
    num = static_cast<long>(numeric);
    return true;
  }
  return false;
}

long clientColumnDefault(std::string_view upperField) {
  const ClientColumn* c = clientColumn(upperField);
  return c ? c->defaultNum : 0;
}

std::string getMainBusinessSQLString(bool showOnly, int statusKind, long clientDataID) {
  std::string sql;
  if (localeCountryMode() == 1) {
    sql =
        "SELECT Clients.ClientID, AccountingServices.*, ClientData.*, ClientOptions.*, "
        "Companies.*, CorpTaxInfo.*, LawInfo.*, OtherInfo.*, WSIB_EHTInfo.*, "
        "CompaniesNotes.BusinessNotes, CompaniesNotes.ContactNotes "
        "FROM ((((((((Companies INNER JOIN ClientData ON Companies.CompanyID = "
        "ClientData.CompanyIDNum) INNER JOIN AccountingServices ON ClientData.ClientDataID = "
        "AccountingServices.AccountingServiceID) INNER JOIN ClientOptions ON "
        "ClientData.ClientDataID = ClientOptions.ClientOptionID) INNER JOIN CorpTaxInfo ON "
        "ClientData.ClientDataID = CorpTaxInfo.CorpTaxInfoID) INNER JOIN LawInfo ON "
        "ClientData.ClientDataID = LawInfo.LawInfoID) INNER JOIN OtherInfo ON "
        "ClientData.ClientDataID = OtherInfo.OtherInfoID) INNER JOIN WSIB_EHTInfo ON "
        "ClientData.ClientDataID = WSIB_EHTInfo.WSIB_EHTInfoID) INNER JOIN CompaniesNotes ON "
        "Companies.CompanyID = CompaniesNotes.CompanyNum) INNER JOIN Clients ON "
        "Companies.CompanyID = Clients.CompanyIDNum ";
  } else {
    sql =
        "SELECT Clients.ClientID, AccountingServices.*, ClientData.*, ClientOptions.*, "
        "Companies.*, ClientUSInfo.*, CompaniesNotes.BusinessNotes, CompaniesNotes.ContactNotes "
        "FROM (((((Companies INNER JOIN ClientData ON Companies.CompanyID = "
        "ClientData.CompanyIDNum) INNER JOIN AccountingServices ON ClientData.ClientDataID = "
        "AccountingServices.AccountingServiceID) INNER JOIN ClientOptions ON "
        "ClientData.ClientDataID = ClientOptions.ClientOptionID) INNER JOIN ClientUSInfo ON "
        "ClientData.ClientDataID = ClientUSInfo.ClientUSInfoID) INNER JOIN CompaniesNotes ON "
        "Companies.CompanyID = CompaniesNotes.CompanyNum) INNER JOIN Clients ON "
        "Companies.CompanyID = Clients.CompanyIDNum ";
  }
  std::string where;
  if (showOnly) {
    if (statusKind == 1) where = "WHERE ClientData.ShowThisClient = True AND ClientData.ActiveStatus=1";
    else if (statusKind == 2)
      where = "WHERE ClientData.ShowThisClient = True AND NOT ClientData.ActiveStatus=1";
    else if (statusKind == 3) where = "WHERE ClientData.ShowThisClient = True ";
  } else {
    if (statusKind == 1) where = "WHERE ClientData.ActiveStatus=1";
    else if (statusKind == 2) where = "WHERE NOT ClientData.ActiveStatus=1";
  }
  if (clientDataID >= 0) {
    if (where.empty()) where = "WHERE ClientData.ClientDataID=" + std::to_string(clientDataID);
    else where += " AND ClientData.ClientDataID=" + std::to_string(clientDataID);
  }
  sql += where;
  if (!where.empty() && where.back() != ' ') sql += ' ';
  ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
  long order = dropDown ? dropDown->getSortOrderBusiness() : 0;
  if (order == 1) sql += "ORDER BY Companies.CompanyName;";
  else if (order == 2) sql += "ORDER BY Companies.CorporateName;";
  else if (order == 3 || order == 4) sql += "ORDER BY Companies.ClientID, Companies.CompanyName;";
  else sql += ";";
  return sql;
}

long getClientDataIDFromCompanyID(long companyID) {
  DatabaseService* db = moduleState().DatabaseReference;
  if (db == nullptr || !db->isOpen()) return 0;
  std::int32_t rs = db->openRecordset(
      "SELECT ClientData.ClientDataID, ClientData.CompanyIDNum FROM ClientData WHERE "
      "CompanyIDNum=" + std::to_string(companyID) + ";",
      kCursorKeyset, kLockReadOnly);
  long id = 0;
  if (db->hasRecord(rs)) id = static_cast<long>(db->getField(rs, "ClientDataID").toLong());
  db->closeRecordset(rs);
  return id;
}

}  // namespace lf::merge
