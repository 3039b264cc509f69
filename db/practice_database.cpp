// Schema creation and seed rows of a stand-alone practice database.
#include "db/practice_database.hpp"

#include <string>
#include <unordered_set>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "base/variant.hpp"
#include "db/database_factory.hpp"
#include "db/practice_schema.hpp"

namespace lf {
namespace {

// Adds one row to a table through a recordset and answers its auto-number key (or 0).
class NewRow {
 public:
  NewRow(DatabaseService& db, const std::string& table) : db_(db) {
    handle_ = db_.openRecordset("SELECT " + table + ".* FROM " + table + ";", kCursorKeyset,
                                kLockOptimistic);
    db_.addNewRecord(handle_);
  }
  ~NewRow() { db_.closeRecordset(handle_); }
  NewRow& set(std::string_view field, std::string_view value) {
    db_.setNewField(handle_, field, value);
    return *this;
  }
  long key(std::string_view keyField) {
    return static_cast<long>(db_.getField(handle_, keyField).toLong());
  }
  void store() { db_.updateRecord(handle_); }

 private:
  DatabaseService& db_;
  std::int32_t handle_;
};

long addCategory(DatabaseService& db, std::string_view name, long parent, std::string_view code) {
  NewRow row(db, "Categories");
  long id = row.key("CategoryID");
  row.set("CategoryName", name).set("CategoryNum", std::to_string(parent));
  if (!code.empty()) row.set("CategorySpecialCode", code);
  row.store();
  return id;
}

}  // namespace

void createPracticeTables(Database& db) {
  for (const std::string& statement : practiceSchemaStatements()) db.executeStatement(statement);
  db.executeStatement(
      "CREATE TABLE HostSettings (SettingName TEXT COLLATE NOCASE PRIMARY KEY, SettingValue TEXT)");
}

void checkPracticeTables(Database& db) {
  std::vector<std::pair<std::string, std::vector<std::string>>> tables = practiceTableColumns();
  tables.emplace_back("HostSettings", std::vector<std::string>{"SettingName", "SettingValue"});
  for (const auto& [table, columns] : tables) {
    // Names compare without letter case, as the database compares them.
    std::unordered_set<std::string> present;
    for (const std::string& column : db.tableColumnNames(table))
      present.insert(GeneralUtilities::upperCase(column));
    if (present.empty()) throw Failure("it has no table " + table);
    for (const std::string& column : columns)
      if (!present.count(GeneralUtilities::upperCase(column)))
        throw Failure("its table " + table + " has no column " + column);
  }
}

std::string readHostSetting(DatabaseService& db, std::string_view name, std::string_view fallback) {
  std::int32_t h =
      db.openRecordset("SELECT HostSettings.* FROM HostSettings;", kCursorKeyset, kLockReadOnly);
  std::string value(fallback);
  if (db.findRecord(h, "SettingName", name)) value = db.getField(h, "SettingValue").toString();
  db.closeRecordset(h);
  return value;
}

void writeHostSetting(DatabaseService& db, std::string_view name, std::string_view value) {
  std::int32_t h =
      db.openRecordset("SELECT HostSettings.* FROM HostSettings;", kCursorKeyset, kLockOptimistic);
  if (db.findRecord(h, "SettingName", name)) {
    db.setField(h, "SettingValue", value);
  } else {
    db.addNewRecord(h);
    db.setNewField(h, "SettingName", name);
    db.setNewField(h, "SettingValue", value);
    db.updateRecord(h);
  }
  db.closeRecordset(h);
}

void seedPracticeDatabase(DatabaseService& db, const PracticeSeed& seed) {
  long year = seed.currentYear > 0 ? seed.currentYear : Date::today().year();

  NewRow firm(db, "AccountantFirmInfo");
  long firmID = firm.key("CompanyID");
  firm.set("CompanyName", seed.firmName).set("Province", seed.countryMode == 1 ? "Ontario" : "");
  firm.store();

  NewRow user(db, "AccountantEmployeeInfo");
  long userID = user.key("ContactID");
  user.set("UserName", seed.userName)
      .set("FirstName", "Practice")
      .set("LastName", "Administrator")
      .set("DisplayName", "Practice Administrator")
      .set("CompanyNum", std::to_string(firmID))
      .set("UserLevel", "1")
      .set("ActiveStatus", "1")
      .set("ShowUserInAppointments", "True")
      .set("ShowUserInTasks", "True")
      .set("ShowUserInPersonalTax", "True");
  user.store();

  NewRow settings(db, "UserGeneralSettings");
  settings.set("UserIDNum", std::to_string(userID));
  settings.store();
  NewRow(db, "CustomFields").store();
  NewRow(db, "CustomAddressFields").store();
  NewRow(db, "GlobalGeneralSettings").store();

  long clients = addCategory(db, "Clients", 0, "");
  long addressBook = addCategory(db, "Address Book", 0, kAddressBookCode);
  long personalTax = addCategory(db, "Personal Tax", 0, "");
  long yearCategory = 0;
  for (long y = year - 3; y <= year; ++y) {
    long id = addCategory(db, std::to_string(y), personalTax, "TaxYear:" + std::to_string(y));
    if (y == year - 1) yearCategory = id;
  }

  writeHostSetting(db, "CountryMode", std::to_string(seed.countryMode));
  writeHostSetting(db, "ProvinceIndex", std::to_string(seed.provinceIndex));
  writeHostSetting(db, "CurrentUserID", std::to_string(userID));
  // Personal tax work of a year is done in the year after it.
  writeHostSetting(db, "CurrentPersonalYear", std::to_string(year - 1));
  writeHostSetting(db, "CurrentTaxYear", std::to_string(year - 1));
  writeHostSetting(db, "FirmID", std::to_string(firmID));
  writeHostSetting(db, "CurrentCategoryID", std::to_string(clients));
  writeHostSetting(db, "CurrentContactCategoryID", std::to_string(addressBook));
  writeHostSetting(db, "PersonalTaxCategoryID", std::to_string(yearCategory));
  writeHostSetting(db, "SortOrderBusiness", "1");
  writeHostSetting(db, "SortOrderPersonal", "1");
}

std::unique_ptr<Database> createPracticeDatabase(std::string_view path, const PracticeSeed& seed) {
  auto db = createDatabase(path);
  createPracticeTables(*db);
  seedPracticeDatabase(*db, seed);
  return db;
}

}  // namespace lf
