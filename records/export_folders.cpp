// The settings of modSettings: one column of the signed-in user's UserGeneralSettings row per
// remembered path. The row is added with only UserIDNum set the first time it is needed.
#include "records/export_folders.hpp"

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/recordset_scope.hpp"
#include "host/locale_service.hpp"

namespace lf {
namespace {

long currentUserID() {
  LocaleService* locale = moduleState().LocaleReference;
  if (locale == nullptr) throw Failure("Object variable or With block variable not set", 91);
  return locale->getCurrentUserID();
}

// Adds the user's row when it is missing; answers the statement that selects it.
std::string ensureUserRow(DatabaseService& db) {
  const std::string user = std::to_string(currentUserID());
  const std::string sql =
      "SELECT UserGeneralSettings.* FROM UserGeneralSettings WHERE UserIDNum=" + user + ";";
  RecordsetScope rs(db, sql, kLockOptimistic);
  if (!db.hasRecord(rs)) {
    db.addNewRecord(rs);
    db.setNewField(rs, "UserIDNum", user);
    db.updateRecord(rs);
  }
  return sql;
}

std::string readSetting(const char* column) {
  std::string result;
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) return result;
  RecordsetScope rs(*db, ensureUserRow(*db), kLockOptimistic);
  if (db->hasRecord(rs)) {
    const Variant value = db->getField(rs, column);
    if (!GeneralUtilities::isBlank(value)) result = value.toString();
  }
  return result;
}

void writeSetting(const char* column, const std::string& path) {
  DatabaseService* db = usablePracticeDatabase();
  if (db == nullptr) return;
  RecordsetScope rs(*db, ensureUserRow(*db), kLockOptimistic);
  if (db->hasRecord(rs)) db->setField(rs, column, path);
}

}  // namespace

std::string getCANTAXT1Folder() {
  std::string result;
  procedure("nvImportlf6.dll-modSettings-getCANTAXT1Folder",
            [&] { result = readSetting("CANTAXT1ExportFile"); });
  return result;
}

std::string getCANTAXT2Folder() {
  std::string result;
  procedure("nvImportlf6.dll-modSettings-getCANTAXT2Folder",
            [&] { result = readSetting("CANTAXT2ExportFile"); });
  return result;
}

void putCANTAXT1Folder(const std::string& path) {
  procedure("nvImportlf6.dll-modSettings-putCANTAXT1Folder",
            [&] { writeSetting("CANTAXT1ExportFile", path); });
}

void putCANTAXT2Folder(const std::string& path) {
  procedure("nvImportlf6.dll-modSettings-putCANTAXT2Folder",
            [&] { writeSetting("CANTAXT2ExportFile", path); });
}

std::string getProfileT1Folder() {
  std::string result;
  procedure("nvImportlf6.dll-modSettings-getProfileT1Folder",
            [&] { result = readSetting("ProfileT1Folder"); });
  return result;
}

std::string getProfileT2Folder() {
  std::string result;
  procedure("nvImportlf6.dll-modSettings-getProfileT2Folder",
            [&] { result = readSetting("ProfileT2Folder"); });
  return result;
}

void putProfileT1Folder(const std::string& folder) {
  procedure("nvImportlf6.dll-modSettings-putProfileT1Folder",
            [&] { writeSetting("ProfileT1Folder", folder); });
}

void putProfileT2Folder(const std::string& folder) {
  procedure("nvImportlf6.dll-modSettings-putProfileT2Folder",
            [&] { writeSetting("ProfileT2Folder", folder); });
}

}  // namespace lf
