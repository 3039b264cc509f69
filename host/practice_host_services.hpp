// The locale and client drop-down services of the stand-alone host, backed by the practice
// database (the HostSettings table, the categories and the firm) with command-line overrides.
#pragma once

#include <optional>
#include <string>

#include "host/client_drop_down.hpp"
#include "host/folder_services.hpp"
#include "host/locale_service.hpp"

namespace lf {

class DatabaseService;

struct HostOverrides {
  std::optional<int> countryMode;
  std::optional<int> provinceIndex;
  std::optional<long> currentUserID;
  std::optional<long> personalYear;
  std::optional<long> categoryID;
};

class PracticeLocale : public LocaleService {
 public:
  PracticeLocale(DatabaseService& db, const HostOverrides& overrides = {});

  std::string getApplicationName() override { return "Ledgerfolio"; }
  int getCountryMode() override { return countryMode_; }
  int getProvinceIndex() override { return provinceIndex_; }
  long getCurrentUserID() override { return currentUserID_; }
  long getCurrentPersonalYear() override { return personalYear_; }
  long getCurrentTaxYear() override { return taxYear_; }
  std::string getDefaultFileFolder() override { return defaultFolder_; }

 private:
  int countryMode_ = 1;
  int provinceIndex_ = 3;
  long currentUserID_ = 1;
  long personalYear_ = 0;
  long taxYear_ = 0;
  std::string defaultFolder_;
};

class PracticeClientDropDown : public ClientDropDownService {
 public:
  PracticeClientDropDown(DatabaseService& db, const HostOverrides& overrides = {});

  long getCurrentCategoryID() override { return categoryID_; }
  long getCurrentContactCategoryID() override { return contactCategoryID_; }
  long getCategoryForYear(long& year, const std::string& unused) override;
  CategoryInfo getCategoryInfo(long categoryID) override;
  long getFirmID() override;
  std::string getContactName(long contactID) override;
  std::string getCompanyName(long companyID) override;
  std::string getCategoryName(long categoryID) override;
  long getMainAddressBookCategoryID() override;
  void setLoadingPaused(bool& paused) override { loadingPaused_ = paused; }
  void setRefreshPaused(bool& paused) override { refreshPaused_ = paused; }
  long getSortOrderBusiness() override { return sortBusiness_; }
  long getSortOrderPersonal() override { return sortPersonal_; }

  bool loadingPaused() const { return loadingPaused_; }
  bool refreshPaused() const { return refreshPaused_; }

 private:
  std::string nameOf(const std::string& sql, const char* column);

  DatabaseService& db_;
  long categoryID_ = 0;
  long contactCategoryID_ = 0;
  long sortBusiness_ = 1;
  long sortPersonal_ = 1;
  bool loadingPaused_ = false;
  bool refreshPaused_ = false;
};

// The working folder of the stand-alone host: the folder named in the host settings, or the
// current folder.
class PracticeWorkingFolder : public WorkingFolderService {
 public:
  explicit PracticeWorkingFolder(DatabaseService& db);
  std::string getImportFolder() override { return folder_; }

 private:
  std::string folder_;
};

}  // namespace lf
