// Locale and drop-down answers read from the practice database.
#include "host/practice_host_services.hpp"

#include <filesystem>

#include "base/general_utilities.hpp"
#include "db/database_service.hpp"
#include "db/practice_database.hpp"

namespace lf {
namespace {

long setting(DatabaseService& db, const char* name, long fallback) {
  std::string text = readHostSetting(db, name);
  double value = 0;
  return GeneralUtilities::parseNumber(text, value) ? static_cast<long>(value) : fallback;
}

}  // namespace

PracticeLocale::PracticeLocale(DatabaseService& db, const HostOverrides& overrides) {
  long thisYear = Date::today().year();
  countryMode_ = overrides.countryMode.value_or(static_cast<int>(setting(db, "CountryMode", 1)));
  provinceIndex_ =
      overrides.provinceIndex.value_or(static_cast<int>(setting(db, "ProvinceIndex", 3)));
  currentUserID_ = overrides.currentUserID.value_or(setting(db, "CurrentUserID", 1));
  personalYear_ = overrides.personalYear.value_or(setting(db, "CurrentPersonalYear", thisYear - 1));
  taxYear_ = setting(db, "CurrentTaxYear", personalYear_);
  defaultFolder_ =
      readHostSetting(db, "DefaultFileFolder", std::filesystem::current_path().string());
}

PracticeClientDropDown::PracticeClientDropDown(DatabaseService& db, const HostOverrides& overrides)
    : db_(db) {
  categoryID_ = overrides.categoryID.value_or(setting(db, "CurrentCategoryID", 0));
  contactCategoryID_ = setting(db, "CurrentContactCategoryID", 0);
  sortBusiness_ = setting(db, "SortOrderBusiness", 1);
  sortPersonal_ = setting(db, "SortOrderPersonal", 1);
}

long PracticeClientDropDown::getCategoryForYear(long& year, const std::string&) {
  std::int32_t h = db_.openRecordset(
      "SELECT Categories.CategoryID, Categories.CategorySpecialCode FROM Categories;",
      kCursorKeyset, kLockReadOnly);
  long id = 0;
  if (db_.findRecord(h, "CategorySpecialCode", "TaxYear:" + std::to_string(year)))
    id = static_cast<long>(db_.getField(h, "CategoryID").toLong());
  db_.closeRecordset(h);
  return id;
}

// Kinds: 1 client category, 2 address book, 3 personal tax. Only the address book needs no
// client-data or tax row for its members.
CategoryInfo PracticeClientDropDown::getCategoryInfo(long categoryID) {
  CategoryInfo info;
  long id = categoryID;
  // One row a level, read by its key: every new client asks this, and reading the whole table
  // each time would cost as much as the practice's categories.
  for (int level = 0; level < 100; ++level) {
    const std::int32_t h = db_.openRecordset(
        "SELECT Categories.CategoryID, Categories.CategoryNum, Categories.CategorySpecialCode FROM "
        "Categories WHERE Categories.CategoryID = " +
            std::to_string(id) + ";",
        kCursorKeyset, kLockReadOnly);
    if (!db_.hasRecord(h)) {
      db_.closeRecordset(h);
      break;
    }
    const std::string code = db_.getField(h, "CategorySpecialCode").toString();
    const long parent = static_cast<long>(db_.getField(h, "CategoryNum").toLong());
    db_.closeRecordset(h);
    if (code.rfind("TaxYear:", 0) == 0) {
      info = {3, true};
      break;
    }
    if (code == kAddressBookCode) {
      info = {2, false};
      break;
    }
    info = {1, true};
    if (parent <= 0) break;
    id = parent;
  }
  return info;
}

PracticeWorkingFolder::PracticeWorkingFolder(DatabaseService& db)
    : folder_(readHostSetting(db, "ImportFolder", std::filesystem::current_path().string())) {}

// The name column of one row, read by its key; empty when there is no such row.
std::string PracticeClientDropDown::nameOf(const std::string& sql, const char* column) {
  std::int32_t h = db_.openRecordset(sql, kCursorKeyset, kLockReadOnly);
  std::string name = db_.hasRecord(h) ? db_.getField(h, column).toString() : std::string();
  db_.closeRecordset(h);
  return name;
}

std::string PracticeClientDropDown::getContactName(long contactID) {
  return nameOf("SELECT Contacts.DisplayName FROM Contacts WHERE Contacts.ContactID=" +
                    std::to_string(contactID) + ";",
                "DisplayName");
}

std::string PracticeClientDropDown::getCompanyName(long companyID) {
  return nameOf("SELECT Companies.CompanyName FROM Companies WHERE Companies.CompanyID=" +
                    std::to_string(companyID) + ";",
                "CompanyName");
}

std::string PracticeClientDropDown::getCategoryName(long categoryID) {
  return nameOf("SELECT Categories.CategoryName FROM Categories WHERE Categories.CategoryID=" +
                    std::to_string(categoryID) + ";",
                "CategoryName");
}

// The stand-alone host knows its main address-book category by its special code.
long PracticeClientDropDown::getMainAddressBookCategoryID() {
  std::int32_t h = db_.openRecordset(
      "SELECT Categories.CategoryID FROM Categories WHERE Categories.CategorySpecialCode='" +
          std::string(kAddressBookCode) + "';",
      kCursorKeyset, kLockReadOnly);
  long id = db_.hasRecord(h) ? static_cast<long>(db_.getField(h, "CategoryID").toLong()) : -1;
  db_.closeRecordset(h);
  return id;
}

long PracticeClientDropDown::getFirmID() {
  return setting(db_, "FirmID", 1);
}

}  // namespace lf
