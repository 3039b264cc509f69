// The default-contact procedures: checkForDefaultContact, setContactAsDefault,
// setNoContactAsDefault, updateDefaultContactInfo, getDefaultContactIDFromCompanyID and
// isContactDefaultContact.
//
// checkForDefaultContact and getDefaultContactIDFromCompanyID call each other through
// setContactAsDefault and updateDefaultContactInfo; the recursion ends because the
// auto-pick writes the default before it asks again.
#include "records/default_contacts.hpp"

#include <string>
#include <string_view>

#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"
#include "records/client_record_hooks.hpp"
#include "records/lookups.hpp"
#include "records/record_support.hpp"

namespace lf {
namespace {

using records::blank;
using records::text;
using records::toLong;

constexpr std::string_view kLabel = "Ledgerfolio.exe-modDatabaseClientFunctions-";

std::string label(std::string_view procedureName) {
  return std::string(kLabel) + std::string(procedureName);
}

}  // namespace

long checkForDefaultContact(long companyID, bool autoPick) {
  long result = 0;
  procedure(label("checkForDefaultContact"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT ContactLinks.ContactIDNum, ContactLinks.CompanyNum, "
                      "ContactLinks.DefaultContact FROM ContactLinks WHERE "
                      "ContactLinks.CompanyNum = " +
                          text(companyID) + ";",
                      kLockReadOnly);
    if (!db->hasRecord(rs)) {
      rs.close();
      setNoContactAsDefault(companyID, true);
      return;
    }
    while (!db->isEOF(rs)) {
      if (db->getField(rs, "DefaultContact").toBool()) {
        result = toLong(db->getField(rs, "ContactIDNum"));
        return;
      }
      db->moveNext(rs);
    }
    if (!autoPick) return;
    db->hasRecord(rs);  // back to the first row
    const long first = toLong(db->getField(rs, "ContactIDNum"));
    rs.close();
    // A link without a valid contact cannot be the default; picking it would ask again forever.
    if (!validContactID(first)) return;
    result = first;
    setContactAsDefault(first, companyID, false);
  });
  return result;
}

void setContactAsDefault(long contactID, long companyID, bool noSummaries) {
  procedure(label("setContactAsDefault"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    {
      RecordsetScope rs(*db,
                        "SELECT ContactLinks.* FROM ContactLinks WHERE ContactLinks.CompanyNum = " +
                            text(companyID) + ";",
                        kLockOptimistic);
      if (db->hasRecord(rs)) {
        while (!db->isEOF(rs)) {
          resumeNext([&] {
            const long rowContact = toLong(db->getField(rs, "ContactIDNum"));
            db->setField(rs, "DefaultContact", records::boolText(rowContact == contactID));
            if (!noSummaries) {
              const std::int32_t position = db->getPosition(rs);
              const ClientRecordHooks& hooks = clientRecordHooks();
              callRecordHook(hooks.saveContactBusinessRTF, rowContact, -1L, companyID, false);
              callRecordHook(hooks.saveCompanyContactRTF, companyID, contactID);
              db->setPosition(rs, position);
            }
          });
          db->moveNext(rs);
        }
      }
    }
    updateDefaultContactInfo(companyID);
  });
}

void setNoContactAsDefault(long companyID, bool noSummaries) {
  procedure(label("setNoContactAsDefault"), [&] {
    updateDefaultContactInfo(companyID);
    if (!noSummaries) callRecordHook(clientRecordHooks().saveCompanyContactRTF, companyID, -1L);
  });
}

void updateDefaultContactInfo(long companyID) {
  procedure(label("updateDefaultContactInfo"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const long contactID = getDefaultContactIDFromCompanyID(companyID);
    RecordsetScope company(
        *db,
        "SELECT Companies.CompanyID, Companies.DefaultContactName, "
        "Companies.DefaultContactPhoneNumber, Companies.DefaultContactFaxNumber, "
        "Companies.DefaultContactEmail FROM Companies WHERE CompanyID = " +
            text(companyID) + ";",
        kLockOptimistic);
    if (validContactID(contactID)) {
      RecordsetScope contact(*db,
                             "SELECT Contacts.ContactID, Contacts.DisplayName, "
                             "Contacts.BusinessPhone_Main, Contacts.BusinessPhone_Fax, "
                             "Contacts.BusinessEmail FROM Contacts WHERE ContactID = " +
                                 text(contactID) + ";",
                             kLockReadOnly);
      if (db->hasRecord(company) && db->hasRecord(contact)) {
        auto copy = [&](std::string_view to, std::string_view from) {
          db->setField(company, to, db->getField(contact, from).toString());
        };
        copy("DefaultContactName", "DisplayName");
        copy("DefaultContactPhoneNumber", "BusinessPhone_Main");
        copy("DefaultContactFaxNumber", "BusinessPhone_Fax");
        copy("DefaultContactEmail", "BusinessEmail");
      }
    } else if (db->hasRecord(company)) {
      for (std::string_view column : {"DefaultContactName", "DefaultContactPhoneNumber",
                                      "DefaultContactFaxNumber", "DefaultContactEmail"})
        db->setField(company, column, "");
    }
  });
}

long getDefaultContactIDFromCompanyID(long companyID) {
  long result = 0;
  procedure(label("getDefaultContactIDFromCompanyID"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    bool hadRows = false;
    {
      RecordsetScope rs(*db,
                        "SELECT ContactLinks.CompanyNum, ContactLinks.ContactIDNum, "
                        "ContactLinks.DefaultContact FROM ContactLinks WHERE "
                        "ContactLinks.CompanyNum = " +
                            text(companyID) + ";",
                        kLockReadOnly);
      if (db->hasRecord(rs)) {
        hadRows = true;
        while (!db->isEOF(rs)) {
          const Variant contact = db->getField(rs, "ContactIDNum");
          if (!blank(contact) && db->getField(rs, "DefaultContact").toBool()) {
            result = toLong(contact);
            break;
          }
          db->moveNext(rs);
        }
      }
    }
    if (hadRows && !validContactID(result)) result = checkForDefaultContact(companyID, true);
  });
  return result;
}

bool isContactDefaultContact(long companyID, long contactID) {
  bool result = false;
  procedure(label("isContactDefaultContact"), [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db,
                      "SELECT ContactLinks.ContactIDNum, ContactLinks.CompanyNum, "
                      "ContactLinks.DefaultContact FROM ContactLinks WHERE "
                      "ContactLinks.CompanyNum = " +
                          text(companyID) + " AND ContactLinks.ContactIDNum = " + text(contactID) +
                          ";",
                      kLockReadOnly);
    if (!db->hasRecord(rs)) return;
    while (!db->isEOF(rs) && !result) {
      result = db->getField(rs, "DefaultContact").toBool();
      db->moveNext(rs);
    }
  });
  return result;
}

}  // namespace lf
