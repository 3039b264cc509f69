// Record access shared by the address blocks and the summaries; see summary_records.hpp.
#include "summaries/summary_records.hpp"

#include "base/general_utilities.hpp"
#include "records/lookups.hpp"

namespace lf {

std::string employeeStatement(long employeeID) {
  return "SELECT AccountantEmployeeInfo.* FROM AccountantEmployeeInfo WHERE "
         "AccountantEmployeeInfo.ContactID=" +
         std::to_string(employeeID) + ";";
}

std::string contactStatement(long contactID) {
  return "SELECT Contacts.* FROM Contacts WHERE Contacts.ContactID=" + std::to_string(contactID) +
         ";";
}

std::string firmStatement(long firmID) {
  return "SELECT AccountantFirmInfo.* FROM AccountantFirmInfo WHERE "
         "AccountantFirmInfo.CompanyID=" +
         std::to_string(firmID) + ";";
}

std::string companyStatement(long companyID) {
  return "SELECT Companies.* FROM Companies WHERE Companies.CompanyID=" +
         std::to_string(companyID) + ";";
}

std::string fieldText(DatabaseService& db, std::int32_t handle, std::string_view field) {
  return db.getField(handle, field).toString();
}

bool anyNotBlank(DatabaseService& db, std::int32_t handle,
                 std::initializer_list<std::string_view> fields) {
  for (std::string_view field : fields)
    if (!GeneralUtilities::isBlank(db.getField(handle, field))) return true;
  return false;
}

PersonSource openPersonSource(DatabaseService& db, long contactID, long employeeID, int lockType) {
  PersonSource source;
  if (validEmployeeID(employeeID)) {
    source.id = employeeID;
    source.isEmployee = true;
    source.record = std::make_unique<RecordsetScope>(db, employeeStatement(employeeID), lockType);
  } else if (validContactID(contactID)) {
    source.id = contactID;
    source.record = std::make_unique<RecordsetScope>(db, contactStatement(contactID), lockType);
  }
  return source;
}

void storeOnNotesRow(DatabaseService& db, std::int32_t notesHandle, std::string_view keyColumn,
                     long id, std::string_view column, const std::string& text) {
  if (db.hasRecord(notesHandle)) {
    db.setField(notesHandle, column, text);
    return;
  }
  db.addNewRecord(notesHandle);
  db.setNewField(notesHandle, keyColumn, std::to_string(id));
  db.setNewField(notesHandle, column, text);
  db.updateRecord(notesHandle);
}

long defaultContactOfCompany(long companyID) {
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) return 0;
  RecordsetScope links(*db,
                       "SELECT ContactLinks.ContactIDNum, ContactLinks.CompanyNum, "
                       "ContactLinks.DefaultContact FROM ContactLinks WHERE "
                       "ContactLinks.CompanyNum = " +
                           std::to_string(companyID) + ";",
                       kLockReadOnly);
  for (bool more = db->hasRecord(links); more && !db->isEOF(links); db->moveNext(links))
    if (db->getField(links, "DefaultContact").toBool())
      return static_cast<long>(db->getField(links, "ContactIDNum").toLong());
  return 0;
}

bool contactIsDefaultOfCompany(long companyID, long contactID) {
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) return false;
  RecordsetScope links(*db,
                       "SELECT ContactLinks.ContactIDNum, ContactLinks.CompanyNum, "
                       "ContactLinks.DefaultContact FROM ContactLinks WHERE "
                       "ContactLinks.CompanyNum = " +
                           std::to_string(companyID) +
                           " AND ContactLinks.ContactIDNum = " + std::to_string(contactID) + ";",
                       kLockReadOnly);
  for (bool more = db->hasRecord(links); more && !db->isEOF(links); db->moveNext(links))
    if (db->getField(links, "DefaultContact").toBool()) return true;
  return false;
}

}  // namespace lf
