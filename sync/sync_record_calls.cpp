// The client-record and summary operations of the sync stages.
//
// Each creator tests before it adds, so a re-run of a sync, or a record interrupted half way
// and written again, finds the rows already there and completes what is missing.
#include "sync/sync_record_calls.hpp"

#include <string>

#include "db/database_service.hpp"
#include "frame/module_state.hpp"
#include "frame/procedure.hpp"
#include "host/client_drop_down.hpp"
#include "host/general_utilities.hpp"
#include "host/locale_service.hpp"
#include "records/lookups.hpp"
#include "records/name_parsing.hpp"
#include "records/recordset_scope.hpp"

namespace lf::syncrecords {
namespace {

std::string text(long value) {
  return std::to_string(value);
}

// Adds a row with the one key column unless the statement already finds it.
void ensureKeyRow(DatabaseService& db, const std::string& table, const std::string& keyColumn,
                  long key) {
  RecordsetScope rs(db,
                    "SELECT " + table + ".* FROM " + table + " WHERE " + keyColumn + "=" +
                        text(key) + ";",
                    kLockOptimistic);
  if (db.hasRecord(rs)) return;
  db.addNewRecord(rs);
  db.setNewField(rs, keyColumn, text(key));
  db.updateRecord(rs);
}

long clientDataFamily(DatabaseService& db, long companyID) {
  long clientDataID = -1;
  {
    RecordsetScope rs(db,
                      "SELECT ClientData.* FROM ClientData WHERE CompanyIDNum=" + text(companyID) +
                          ";",
                      kLockOptimistic);
    if (db.hasRecord(rs)) {
      clientDataID = static_cast<long>(db.getField(rs, "ClientDataID").toLong());
    } else {
      db.addNewRecord(rs);
      db.setNewField(rs, "CompanyIDNum", text(companyID));
      db.setNewField(rs, "ActiveStatus", "1");
      db.setNewField(rs, "ShowThisClient", "True");
      clientDataID = static_cast<long>(db.getField(rs, "ClientDataID").toLong());
      db.updateRecord(rs);
    }
  }
  {
    RecordsetScope rs(
        db, "SELECT Clients.* FROM Clients WHERE Clients.CompanyIDNum=" + text(companyID) + ";",
        kLockOptimistic);
    if (db.hasRecord(rs)) {
      db.setField(rs, "ContactIDNum", "-1");
    } else {
      db.addNewRecord(rs);
      db.setNewField(rs, "CompanyIDNum", text(companyID));
      db.setNewField(rs, "ContactIDNum", "-1");
      db.updateRecord(rs);
    }
  }
  ensureKeyRow(db, "AccountingServices", "AccountingServiceID", clientDataID);
  ensureKeyRow(db, "ClientOptions", "ClientOptionID", clientDataID);
  ensureKeyRow(db, "ClientNotes", "ClientNoteID", clientDataID);
  ensureKeyRow(db, "CorpTaxInfo", "CorpTaxInfoID", clientDataID);
  ensureKeyRow(db, "LawInfo", "LawInfoID", clientDataID);
  ensureKeyRow(db, "OtherInfo", "OtherInfoID", clientDataID);
  ensureKeyRow(db, "WSIB_EHTInfo", "WSIB_EHTInfoID", clientDataID);
  ensureKeyRow(db, "ClientUSInfo", "ClientUSInfoID", clientDataID);
  return clientDataID;
}

void writeNameParts(DatabaseService& db, std::int32_t rs, const PersonNameParts& parts,
                    bool newRow) {
  auto put = [&](std::string_view column, const std::string& value) {
    if (GeneralUtilities::isBlank(value)) return;
    if (newRow)
      db.setNewField(rs, column, GeneralUtilities::trim(value));
    else
      db.setField(rs, column, GeneralUtilities::trim(value));
  };
  put("NamePrefix", parts.NamePrefix);
  put("FirstName", parts.FirstName);
  put("MiddleName", parts.MiddleName);
  put("LastName", parts.LastName);
  put("DisplayName", parts.DisplayName);
}

}  // namespace

long addNewClientDataEntry() {
  long result = -1;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-addNewClientDataEntry", [&] {
    DatabaseService* db = openPracticeDatabase();
    if (db == nullptr) return;
    long companyID = -1;
    {
      RecordsetScope rs(*db, "SELECT Companies.* FROM Companies WHERE CompanyID=-1;",
                        kLockOptimistic);
      db->addNewRecord(rs);
      db->setNewField(rs, "CompanyName", "");
      ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
      if (dropDown != nullptr)
        db->setNewField(rs, "CategoryNum", text(dropDown->getCurrentCategoryID()));
      companyID = static_cast<long>(db->getField(rs, "CompanyID").toLong());
      db->updateRecord(rs);
    }
    ensureKeyRow(*db, "CompaniesNotes", "CompanyNum", companyID);
    result = clientDataFamily(*db, companyID);
  });
  return result;
}

long addNewClientDataEntryForExistingCompany(long companyID) {
  long result = -1;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-addNewClientDataEntryForExistingCompany",
            [&] {
              DatabaseService* db = openPracticeDatabase();
              if (db == nullptr) return;
              result = clientDataFamily(*db, companyID);
            });
  return result;
}

long addNewContact(const std::string& fullName, long categoryID, long companyID) {
  long result = 0;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-addNewContact", [&] {
    DatabaseService* db = openPracticeDatabase();
    if (db == nullptr) return;
    if (GeneralUtilities::isBlank(fullName) && !validCategoryID(categoryID)) return;
    {
      RecordsetScope rs(*db, "SELECT Contacts.* FROM Contacts WHERE ContactID=-1;",
                        kLockOptimistic);
      db->addNewRecord(rs);
      if (!GeneralUtilities::isBlank(fullName)) {
        ContactNameFields name = parseNameForContactFields(fullName);
        if (name.hasResult) {
          writeNameParts(*db, rs, name.contact, true);
        } else {
          db->setNewField(rs, "DisplayName", GeneralUtilities::trim(fullName));
        }
      }
      result = static_cast<long>(db->getField(rs, "ContactID").toLong());
      db->updateRecord(rs);
    }
    ensureKeyRow(*db, "ContactsNotes", "ContactNum", result);
    if (validCompanyID(companyID)) addContactLink(result, -1, companyID);
    if (validCategoryID(categoryID)) addContactLink(result, categoryID, -1);
  });
  return result;
}

bool addContactLink(long contactID, long categoryID, long companyID) {
  bool result = false;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-addContactLink", [&] {
    DatabaseService* db = openPracticeDatabase();
    if (db == nullptr) return;
    std::string sql =
        "SELECT ContactLinks.* FROM ContactLinks WHERE ContactLinks.ContactIDNum = " +
        text(contactID);
    std::string column;
    long id = -1;
    if (categoryID >= 0) {
      column = "CategoryNum";
      id = categoryID;
    } else if (companyID >= 0) {
      column = "CompanyNum";
      id = companyID;
    } else {
      return;
    }
    sql += " AND ContactLinks." + column + " = " + text(id) + ";";
    RecordsetScope rs(*db, sql, kLockOptimistic);
    if (!db->hasRecord(rs)) {
      db->addNewRecord(rs);
      db->setNewField(rs, "ContactIDNum", text(contactID));
      db->setNewField(rs, column, text(id));
      if (column == "CategoryNum") {
        ClientDropDownService* dropDown = moduleState().clientDropDownCtrlReference;
        bool taxCategory = dropDown != nullptr && dropDown->getCategoryInfo(id).kind == 3;
        db->setNewField(rs, "IsPersonalTaxCategory", taxCategory ? "True" : "False");
      }
      db->updateRecord(rs);
    }
    result = true;
  });
  return result;
}

void addNewPersonalTaxClientForExistingContact(long contactID, long categoryID, long taxYear,
                                               long activeStatus) {
  procedure(
      "Ledgerfolio.exe-modDatabaseClientFunctions-addNewPersonalTaxClientForExistingContact",
      [&] {
        DatabaseService* db = openPracticeDatabase();
        if (db == nullptr) return;
        const std::string where =
            " WHERE ContactNum=" + text(contactID) + " AND TaxYear=" + text(taxYear) + ";";
        for (const char* table : {"PersonalTaxInfo", "PersonalTaxStatus"}) {
          RecordsetScope rs(*db, std::string("SELECT ") + table + ".* FROM " + table + where,
                            kLockOptimistic);
          if (db->hasRecord(rs)) {
            if (std::string_view(table) == "PersonalTaxStatus")
              db->setField(rs, "ActiveStatus", text(activeStatus));
            continue;
          }
          db->addNewRecord(rs);
          db->setNewField(rs, "ContactNum", text(contactID));
          db->setNewField(rs, "TaxYear", text(taxYear));
          if (std::string_view(table) == "PersonalTaxStatus")
            db->setNewField(rs, "ActiveStatus", text(activeStatus));
          db->updateRecord(rs);
        }
        if (validCategoryID(categoryID)) addContactLink(contactID, categoryID, -1);
      });
}

void setContactAsDefault(long contactID, long companyID) {
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-setContactAsDefault", [&] {
    DatabaseService* db = openPracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT ContactLinks.* FROM ContactLinks WHERE ContactLinks.CompanyNum = " +
                          text(companyID) + ";",
                      kLockOptimistic);
    if (!db->hasRecord(rs)) return;
    while (!db->isEOF(rs)) {
      bool isDefault = db->getField(rs, "ContactIDNum").toLong() == contactID;
      db->setField(rs, "DefaultContact", isDefault ? "True" : "False");
      db->moveNext(rs);
    }
  });
}

long getDefaultContactIDFromCompanyID(long companyID) {
  long result = -1;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-getDefaultContactIDFromCompanyID", [&] {
    DatabaseService* db = openPracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT ContactLinks.CompanyNum, ContactLinks.ContactIDNum, "
                      "ContactLinks.DefaultContact FROM ContactLinks WHERE "
                      "ContactLinks.CompanyNum = " +
                          text(companyID) + ";",
                      kLockReadOnly);
    if (!db->hasRecord(rs)) return;
    long first = -1;
    while (!db->isEOF(rs)) {
      long id = static_cast<long>(db->getField(rs, "ContactIDNum").toLong());
      if (first < 0) first = id;
      if (db->getField(rs, "DefaultContact").toBool()) {
        result = id;
        return;
      }
      db->moveNext(rs);
    }
    result = first;
  });
  return result;
}

long addAccountantEmployee(const std::string& fullName, long firmCompanyID, long userLevel) {
  long result = 0;
  procedure("Ledgerfolio.exe-modDatabaseClientFunctions-addAccountantEmployee", [&] {
    DatabaseService* db = openPracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE "
                      "ContactID=-1;",
                      kLockOptimistic);
    db->addNewRecord(rs);
    if (!GeneralUtilities::isBlank(fullName))
      writeNameParts(*db, rs, parseSingleNameString(fullName), true);
    if (validCompanyID(firmCompanyID)) db->setNewField(rs, "CompanyNum", text(firmCompanyID));
    db->setNewField(rs, "UserLevel", text(userLevel));
    db->setNewField(rs, "ActiveStatus", "1");
    result = static_cast<long>(db->getField(rs, "ContactID").toLong());
    db->updateRecord(rs);
  });
  if (result > 0) addNewUserIDToSearchesUserSpecificTable(result);
  return result;
}

std::string createAddress(std::string_view street, std::string_view city,
                          std::string_view province, std::string_view postalCode,
                          std::string_view country) {
  std::string block;
  auto line = [&](const std::string& text) {
    if (text.empty()) return;
    if (!block.empty()) block += "\r\n";
    block += text;
  };
  line(GeneralUtilities::trim(street));
  std::string place = GeneralUtilities::trim(city);
  std::string region = GeneralUtilities::trim(province);
  if (!region.empty()) place += place.empty() ? region : ", " + region;
  std::string postal = GeneralUtilities::trim(postalCode);
  if (!postal.empty()) place += place.empty() ? postal : "  " + postal;
  line(place);
  line(GeneralUtilities::trim(country));
  return block;
}

std::string convertToRTF(std::string_view text) {
  std::string out;
  out.reserve(text.size() + 16);
  for (std::size_t i = 0; i < text.size(); ++i) {
    out += text[i];
    if (text[i] == '\n' && i > 0 && text[i - 1] == '\r') out += "\\par ";
  }
  return out;
}

// The stored summaries are written by the summary writers once they are part of the
// build; until then the sync leaves the summary columns as they are.
void saveCompanyRTF(long) {}
void saveCompanyContactRTF(long, long) {}
void saveContactBusinessRTF(long) {}
void saveContactPersonalRTF(long) {}
void saveContactPersonalTaxRTF(long, long) {}

}  // namespace lf::syncrecords
