// A new stand-alone practice database: seed rows and host settings.
#include "db/practice_database.hpp"

#include <gtest/gtest.h>

#include "tests/test_support.hpp"

namespace lf {
namespace {

class PracticeSeedTest : public testing::PracticeDatabaseTest {};

TEST_F(PracticeSeedTest, SeedHoldsFirmFirstAdminUserAndOneRowTables) {
  EXPECT_EQ(value("SELECT * FROM AccountantFirmInfo;", "CompanyName").toString(),
            "Maple Ridge Accounting");
  EXPECT_EQ(value("SELECT * FROM AccountantEmployeeInfo;", "UserLevel").toLong(), 1);
  EXPECT_EQ(count("SELECT * FROM UserGeneralSettings WHERE UserIDNum = 1;"), 1);
  EXPECT_EQ(count("SELECT * FROM CustomFields;"), 1);
  EXPECT_EQ(count("SELECT * FROM CustomAddressFields;"), 1);
  EXPECT_EQ(count("SELECT * FROM GlobalGeneralSettings;"), 1);
}

TEST_F(PracticeSeedTest, PersonalTaxCategoriesCarryTheirYear) {
  EXPECT_EQ(count("SELECT * FROM Categories WHERE CategorySpecialCode Like 'TaxYear:*';"), 4);
  long year = 2024;
  long category = dropDown->getCategoryForYear(year, "");
  EXPECT_GT(category, 0);
  EXPECT_EQ(dropDown->getCategoryInfo(category).kind, 3);
  EXPECT_TRUE(dropDown->getCategoryInfo(category).needsRecord);
  EXPECT_FALSE(dropDown->getCategoryInfo(dropDown->getCurrentContactCategoryID()).needsRecord);
  EXPECT_TRUE(dropDown->getCategoryInfo(dropDown->getCurrentCategoryID()).needsRecord);
  long missing = 1990;
  EXPECT_EQ(dropDown->getCategoryForYear(missing, ""), 0);
}

TEST_F(PracticeSeedTest, LocaleReadsTheHostSettingsWithOverrides) {
  EXPECT_EQ(locale->getApplicationName(), "Ledgerfolio");
  EXPECT_EQ(locale->getCountryMode(), 1);
  EXPECT_EQ(locale->getProvinceIndex(), 3);
  EXPECT_EQ(locale->getCurrentPersonalYear(), 2024);
  HostOverrides overrides;
  overrides.countryMode = 2;
  overrides.provinceIndex = 0;
  PracticeLocale us(*db, overrides);
  EXPECT_EQ(us.getCountryMode(), 2);
  EXPECT_EQ(us.getProvinceIndex(), 0);
  EXPECT_EQ(dropDown->getFirmID(), 1);
}

}  // namespace
}  // namespace lf
