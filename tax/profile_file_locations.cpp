// The Profile file locations and the save-to folder of new returns.
#include "tax/profile_file_locations.hpp"

#include "base/procedure.hpp"
#include "base/variant.hpp"
#include "db/database_service.hpp"
#include "db/recordset_scope.hpp"

namespace lf {
namespace {

constexpr const char* kLabel = "Ledgerfolio.exe-modProfileUpdate-";

std::string profileInfoSQL(long contactID, long taxYear) {
  return "SELECT PersonalTaxProfileInfo.* FROM PersonalTaxProfileInfo WHERE ContactNum=" +
         std::to_string(contactID) + " AND TaxYear=" + std::to_string(taxYear) + ";";
}

}  // namespace

std::string getProfileFileLocationFromContactID(long contactID, long taxYear) {
  std::string path;
  procedure(std::string(kLabel) + "getProfileFileLocationFromContactID", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db, profileInfoSQL(contactID, taxYear), kLockReadOnly);
    if (db->hasRecord(rs)) path = db->getField(rs, "ProfileFileLocation").toString();
  });
  return path;
}

void putProfileFileLocationFromContactID(long contactID, long taxYear, const std::string& path) {
  procedure(std::string(kLabel) + "putProfileFileLocationFromContactID", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db, profileInfoSQL(contactID, taxYear), kLockOptimistic);
    if (db->hasRecord(rs)) db->setField(rs, "ProfileFileLocation", path);
  });
}

void storeProfileFileLocation(long contactID, long taxYear, const std::string& path) {
  procedure(std::string(kLabel) + "storeProfileFileLocation", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db, profileInfoSQL(contactID, taxYear), kLockOptimistic);
    if (db->hasRecord(rs)) {
      db->setField(rs, "ProfileFileLocation", path);
      return;
    }
    db->addNewRecord(rs);
    db->setNewField(rs, "ContactNum", std::to_string(contactID));
    db->setNewField(rs, "TaxYear", std::to_string(taxYear));
    db->setNewField(rs, "ProfileFileLocation", path);
    db->setNewField(rs, "DateLastSynched", Date::now().toIso());
    db->updateRecord(rs);
  });
}

std::string getProfileT1SaveToFolder(long taxYear) {
  std::string folder;
  procedure(std::string(kLabel) + "getProfileT1SaveToFolder", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    const std::string sql = "SELECT PersonalTaxDataImportInfo.* FROM PersonalTaxDataImportInfo;";
    const std::string year = std::to_string(taxYear);
    RecordsetScope rs(*db, sql, kLockOptimistic);
    if (!db->findRecord(rs, "TaxYear", year)) {
      db->addNewRecord(rs);
      db->setNewField(rs, "TaxYear", year);
      db->updateRecord(rs);
      rs.close();
      RecordsetScope again(*db, sql, kLockReadOnly);
      if (db->findRecord(again, "TaxYear", year))
        folder = db->getField(again, "DefaultProfileT1Folder").toString();
      return;
    }
    folder = db->getField(rs, "DefaultProfileT1Folder").toString();
  });
  return folder;
}

void putProfileT1SaveToFolder(const std::string& folder, long taxYear) {
  procedure(std::string(kLabel) + "putProfileT1SaveToFolder", [&] {
    DatabaseService* db = usablePracticeDatabase();
    if (db == nullptr) return;
    RecordsetScope rs(*db, "SELECT PersonalTaxDataImportInfo.* FROM PersonalTaxDataImportInfo;",
                      kLockOptimistic);
    const std::string year = std::to_string(taxYear);
    if (db->findRecord(rs, "TaxYear", year)) {
      db->setField(rs, "DefaultProfileT1Folder", folder);
      return;
    }
    db->addNewRecord(rs);
    db->setNewField(rs, "TaxYear", year);
    db->setNewField(rs, "DefaultProfileT1Folder", folder);
    db->updateRecord(rs);
  });
}

}  // namespace lf
