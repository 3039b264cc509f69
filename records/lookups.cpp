// The look-ups of modDatabaseFunctions: main client selections, ID conversions and tests, and
// the per-year and per-user rows that the imports keep current.
#include "records/lookups.hpp"

#include <cmath>
#include <string>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "base/variant.hpp"
#include "db/recordset_scope.hpp"
#include "host/client_drop_down.hpp"
#include "host/locale_service.hpp"

namespace lf {
namespace {

// Reaching a service the host has not set is the legacy "Object variable not set" failure.
[[noreturn]] void serviceNotSet() {
  throw Failure("Object variable or With block variable not set", 91);
}

LocaleService& locale() {
  LocaleService* service = moduleState().LocaleReference;
  if (service == nullptr) serviceNotSet();
  return *service;
}

ClientDropDownService& dropDown() {
  ClientDropDownService* service = moduleState().clientDropDownCtrlReference;
  if (service == nullptr) serviceNotSet();
  return *service;
}

bool blank(const Variant& value) {
  return GeneralUtilities::isBlank(value);
}

long toLong(const Variant& value) {
  return static_cast<long>(value.toLong());
}

std::string text(long value) {
  return std::to_string(value);
}

bool validID(std::string_view id) {
  if (GeneralUtilities::isBlank(id)) return false;
  double value = 0;
  if (!GeneralUtilities::parseNumber(id, value)) return false;
  return value > 0;
}

// The joins of the main business selection, Access style: each join but the last in its own
// pair of parentheses.
constexpr const char* kBusinessFromCanada =
    "FROM ((((((((Companies INNER JOIN ClientData ON Companies.CompanyID = "
    "ClientData.CompanyIDNum) INNER JOIN AccountingServices ON ClientData.ClientDataID = "
    "AccountingServices.AccountingServiceID) INNER JOIN ClientOptions ON ClientData.ClientDataID "
    "= ClientOptions.ClientOptionID) INNER JOIN CorpTaxInfo ON ClientData.ClientDataID = "
    "CorpTaxInfo.CorpTaxInfoID) INNER JOIN LawInfo ON ClientData.ClientDataID = "
    "LawInfo.LawInfoID) INNER JOIN OtherInfo ON ClientData.ClientDataID = OtherInfo.OtherInfoID) "
    "INNER JOIN WSIB_EHTInfo ON ClientData.ClientDataID = WSIB_EHTInfo.WSIB_EHTInfoID) INNER "
    "JOIN CompaniesNotes ON Companies.CompanyID = CompaniesNotes.CompanyNum) INNER JOIN Clients "
    "ON Companies.CompanyID = Clients.CompanyIDNum ";

constexpr const char* kBusinessFromUnitedStates =
    "FROM (((((Companies INNER JOIN ClientData ON Companies.CompanyID = ClientData.CompanyIDNum) "
    "INNER JOIN AccountingServices ON ClientData.ClientDataID = "
    "AccountingServices.AccountingServiceID) INNER JOIN ClientOptions ON ClientData.ClientDataID "
    "= ClientOptions.ClientOptionID) INNER JOIN ClientUSInfo ON ClientData.ClientDataID = "
    "ClientUSInfo.ClientUSInfoID) INNER JOIN CompaniesNotes ON Companies.CompanyID = "
    "CompaniesNotes.CompanyNum) INNER JOIN Clients ON Companies.CompanyID = Clients.CompanyIDNum ";

// The WHERE clause of the main business selection by status; empty for all clients.
std::string businessWhere(bool showOnly, short statusKind) {
  if (showOnly) {
    if (statusKind == 1)
      return "WHERE ClientData.ShowThisClient = True AND ClientData.ActiveStatus=1";
    if (statusKind == 2)
      return "WHERE ClientData.ShowThisClient = True AND NOT ClientData.ActiveStatus=1";
    if (statusKind == 3) return "WHERE ClientData.ShowThisClient = True ";
    return "";
  }
  if (statusKind == 1) return "WHERE ClientData.ActiveStatus=1";
  if (statusKind == 2) return "WHERE NOT ClientData.ActiveStatus=1";
  return "";
}

std::string businessOrder(long sortOrder) {
  if (sortOrder == 1) return "ORDER BY Companies.CompanyName;";
  if (sortOrder == 2) return "ORDER BY Companies.CorporateName;";
  if (sortOrder == 3 || sortOrder == 4)
    return "ORDER BY Companies.ClientID, Companies.CompanyName;";
  return ";";
}

std::string personalOrder(long sortOrder) {
  if (sortOrder == 2) return "ORDER BY Contacts.FirstName, Contacts.LastName;";
  if (sortOrder == 3) return "ORDER BY Contacts.LastName, Contacts.FirstName;";
  return "ORDER BY Contacts.DisplayName;";
}

}  // namespace

std::string getMainBusinessSQLString(bool showOnly, short statusKind, long clientDataID) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getMainBusinessSQLString", [&] {
    std::string sql;
    if (locale().getCountryMode() == 1) {
      sql =
          "SELECT Clients.ClientID, AccountingServices.*, ClientData.*, ClientOptions.*, "
          "Companies.*, CorpTaxInfo.*, LawInfo.*, OtherInfo.*, WSIB_EHTInfo.*, "
          "CompaniesNotes.BusinessNotes, CompaniesNotes.ContactNotes ";
      sql += kBusinessFromCanada;
    } else {
      sql =
          "SELECT Clients.ClientID, AccountingServices.*, ClientData.*, ClientOptions.*, "
          "Companies.*, ClientUSInfo.*, CompaniesNotes.BusinessNotes, "
          "CompaniesNotes.ContactNotes ";
      sql += kBusinessFromUnitedStates;
    }

    std::string where = businessWhere(showOnly, statusKind);
    if (clientDataID >= 0) {
      where += where.empty() ? "WHERE ClientData.ClientDataID=" + text(clientDataID)
                             : " AND ClientData.ClientDataID=" + text(clientDataID);
    }
    if (!where.empty()) sql += where + " ";
    sql += businessOrder(dropDown().getSortOrderBusiness());
    result = sql;
  });
  return result;
}

std::string getMainPersonalSQLString(short statusKind, long taxYear) {
  std::string result;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getMainPersonalSQLString", [&] {
    if (taxYear < 1951 || taxYear >= 4000) taxYear = locale().getCurrentTaxYear();
    const std::string year = text(taxYear);
    std::string sql =
        "SELECT Contacts.ContactID, Contacts.SocialInsuranceNumber, Contacts.ClientID, "
        "PersonalTaxInfo.TaxYear, Contacts.DisplayName, Contacts.BusinessEmail, "
        "Contacts.PersonalEmail, PersonalTaxStatus.*, PersonalTaxInfo.ContactNum, "
        "PersonalTaxInfo.TaxYear, PersonalTaxInfo.PersonalCustom1, "
        "PersonalTaxInfo.PersonalCustom2, PersonalTaxInfo.PersonalCustom3, "
        "PersonalTaxInfo.PersonalCustom4, PersonalTaxInfo.PersonalCustom5 "
        "FROM (Contacts INNER JOIN PersonalTaxInfo ON Contacts.ContactID = "
        "PersonalTaxInfo.ContactNum) INNER JOIN PersonalTaxStatus ON Contacts.ContactID = "
        "PersonalTaxStatus.ContactNum ";
    sql += "WHERE PersonalTaxInfo.TaxYear=" + year + " AND PersonalTaxStatus.TaxYear=" + year + " ";
    if (statusKind == 1) sql += "AND PersonalTaxStatus.ActiveStatus=1 ";
    if (statusKind == 2) sql += "AND NOT PersonalTaxStatus.ActiveStatus=1 ";
    sql += personalOrder(dropDown().getSortOrderPersonal());
    result = sql;
  });
  return result;
}

long getClientDataIDFromCompanyID(long companyID) {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getClientDataIDFromCompanyID", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT ClientData.ClientDataID, ClientData.CompanyIDNum FROM ClientData "
                      "WHERE CompanyIDNum=" +
                          text(companyID) + ";",
                      kLockReadOnly);
    if (db->hasRecord(rs) && !blank(db->getField(rs, "ClientDataID")))
      result = toLong(db->getField(rs, "ClientDataID"));
  });
  return result;
}

long getCompanyIDFromClientDataID(long clientDataID) {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getCompanyIDFromClientDataID", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT ClientData.ClientDataID, ClientData.CompanyIDNum FROM ClientData "
                      "WHERE ClientDataID=" +
                          text(clientDataID) + ";",
                      kLockReadOnly);
    if (db->hasRecord(rs) && !blank(db->getField(rs, "CompanyIDNum")))
      result = toLong(db->getField(rs, "CompanyIDNum"));
  });
  return result;
}

bool validInvoiceID(std::string_view id) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-validInvoiceID", [&] { result = validID(id); });
  return result;
}

bool validClientID(std::string_view id) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-validClientID", [&] { result = validID(id); });
  return result;
}

bool validCompanyID(std::string_view id) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-validCompanyID", [&] { result = validID(id); });
  return result;
}

bool validContactID(std::string_view id) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-validContactID", [&] { result = validID(id); });
  return result;
}

bool validCategoryID(std::string_view id) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-validCategoryID", [&] { result = validID(id); });
  return result;
}

bool validFirmID(std::string_view id) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-validFirmID", [&] { result = validID(id); });
  return result;
}

bool validEmployeeID(std::string_view id) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-validEmployeeID", [&] { result = validID(id); });
  return result;
}

void putPersonalTaxClientSummaryNotes(long contactID, long taxYear, const std::string& notes) {
  procedure("nvImportlf6.dll-modDatabaseFunctions-putPersonalTaxClientSummaryNotes", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT PersonalTaxClientSummary.* FROM PersonalTaxClientSummary WHERE "
                      "PersonalTaxClientSummary.ContactNum=" +
                          text(contactID) +
                          " AND PersonalTaxClientSummary.TaxYear=" + text(taxYear) + ";",
                      kLockOptimistic);
    if (db->hasRecord(rs)) {
      db->setField(rs, "PersonalTaxNotes", notes);
    } else {
      db->addNewRecord(rs);
      db->setNewField(rs, "ContactNum", text(contactID));
      db->setNewField(rs, "TaxYear", text(taxYear));
      db->setNewField(rs, "PersonalTaxNotes", notes);
      db->updateRecord(rs);
    }
  });
}

bool getShowProfileT1InfoInSummary(long taxYear) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getShowProfileT1InfoInSummary", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT PersonalTaxDataImportInfo.* FROM PersonalTaxDataImportInfo WHERE "
                      "TaxYear = " +
                          text(taxYear) + ";",
                      kLockOptimistic);
    if (!db->hasRecord(rs)) {
      db->addNewRecord(rs);
      db->setNewField(rs, "TaxYear", text(taxYear));
      db->updateRecord(rs);
      if (!db->findRecord(rs, "TaxYear", text(taxYear))) return;
    }
    const Variant show = db->getField(rs, "ShowProfileT1InfoInSummary");
    if (!blank(show)) result = show.toBool();
  });
  return result;
}

long forceFirstUserToBeAnAdminUser() {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-forceFirstUserToBeAnAdminUser", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    // Intended as it stands: the statement finds a user who already has level 1, so the
    // write below changes nothing and a firm without an administrator keeps none.
    RecordsetScope rs(*db,
                      "SELECT AccountantEmployeeInfo.ContactID, AccountantEmployeeInfo.UserLevel "
                      "From AccountantEmployeeInfo "
                      "WHERE AccountantEmployeeInfo.UserLevel=1;",
                      kLockOptimistic);
    if (db->hasRecord(rs)) {
      db->setField(rs, "UserLevel", "1");
      result = toLong(db->getField(rs, "ContactID"));
    }
  });
  return result;
}

void addNewUserIDToSearchesUserSpecificTable(long userID) {
  procedure("nvImportlf6.dll-modDatabaseFunctions-addNewUserIDToSearchesUserSpecificTable", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const std::string user = text(userID);
    RecordsetScope userSearches(*db,
                                "SELECT SearchesUserSpecific.* FROM SearchesUserSpecific WHERE "
                                "SearchesUserSpecific.UserIDNum=" +
                                    user + ";",
                                kLockOptimistic);
    RecordsetScope searches(*db, "SELECT Searches.* FROM Searches;", kLockReadOnly);
    if (!db->hasRecord(searches)) return;
    while (!db->isEOF(searches)) {
      resumeNext([&] {
        const Variant searchID = db->getField(searches, "SearchID");
        if (blank(searchID)) return;
        const std::string search = searchID.toString();
        if (db->findRecord(userSearches, "SearchIDNum", search)) return;
        db->addNewRecord(userSearches);
        db->setNewField(userSearches, "UserIDNum", user);
        db->setNewField(userSearches, "SearchIDNum", search);
        const Variant searchType = db->getField(searches, "SearchType");
        if (!blank(searchType)) db->setNewField(userSearches, "SearchType", searchType.toString());
        db->updateRecord(userSearches);
      });
      db->moveNext(searches);
    }
  });
}

bool checkIfPersonalTaxTaskOverdue(long contactID) {
  bool result = false;
  procedure("nvImportlf6.dll-modDatabaseFunctions-checkIfPersonalTaxTaskOverdue", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT PersonalTaxStatus.* FROM PersonalTaxStatus WHERE "
                      "PersonalTaxStatus.ContactNum=" +
                          text(contactID) + ";",
                      kLockOptimistic);
    if (!db->hasRecord(rs)) return;
    const Date today = Date::today();
    while (!db->isEOF(rs)) {
      resumeNext([&] {
        Variant due = db->getField(rs, "InHouseDueDate");
        const Variant returned = db->getField(rs, "ReturnDate");
        if (blank(due) && blank(returned)) return;
        if (blank(due) && returned.toDate()) {
          db->setField(rs, "InHouseDueDate", returned.toDate()->toIso());
          due = db->getField(rs, "InHouseDueDate");
        }
        const Variant status = db->getField(rs, "ReturnStatus");
        const long returnStatus = blank(status) ? 0 : toLong(status);
        const auto dueDate = blank(due) ? std::nullopt : due.toDate();
        const bool overdue = dueDate && *dueDate < today && returnStatus != 5;
        db->setField(rs, "OverdueFlag", overdue ? "True" : "False");
        if (overdue) result = true;
      });
      db->moveNext(rs);
    }
  });
  return result;
}

long getPersonalTaxYearFromCategoryID(long categoryID) {
  long result = 0;
  procedure("nvImportlf6.dll-modDatabaseFunctions-getPersonalTaxYearFromCategoryID", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    std::string yearText;
    // Up the parents, at most 100 levels, so that a loop in the data ends. Each level reads
    // its one row by its key: every new personal-tax client asks this.
    long id = categoryID;
    for (int level = 0; level <= 100; ++level) {
      RecordsetScope rs(
          *db,
          "SELECT Categories.* FROM Categories WHERE Categories.CategoryID = " + text(id) + ";",
          kLockReadOnly);
      if (!db->hasRecord(rs)) break;
      const Variant code = db->getField(rs, "CategorySpecialCode");
      if (!blank(code)) {
        const std::string special = code.toString();
        if (special.find("TaxYear:") != std::string::npos) {
          yearText = special.size() > 4 ? special.substr(special.size() - 4) : special;
          break;
        }
      }
      const Variant parent = db->getField(rs, "CategoryNum");
      double next = 0;
      if (blank(parent) || !GeneralUtilities::parseNumber(parent.toString(), next) ||
          next != std::floor(next))
        break;
      id = static_cast<long>(next);
    }
    double year = 0;
    if (GeneralUtilities::parseNumber(yearText, year) && year >= 1900 && year <= 2200)
      result = static_cast<long>(std::llround(year));
  });
  return result;
}

}  // namespace lf
