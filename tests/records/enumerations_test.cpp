// The words of the enumerated client columns.
#include "records/enumerations.hpp"

#include "host/practice_host_services.hpp"
#include "tests/test_support.hpp"

namespace lf {
namespace {

class EnumerationsTest : public testing::PracticeDatabaseTest {
 protected:
  void countryMode(int mode) {
    HostOverrides overrides;
    overrides.countryMode = mode;
    locale = std::make_unique<PracticeLocale>(*db, overrides);
    moduleState().LocaleReference = locale.get();
  }
};

TEST_F(EnumerationsTest, PartnershipWordDependsOnTheCountryMode) {
  EXPECT_EQ(getCompanyTypeStringFromCompanyTypeNum(3), "Partnership");
  countryMode(2);
  EXPECT_EQ(getCompanyTypeStringFromCompanyTypeNum(3), "General Partnership");
  countryMode(5);
  EXPECT_EQ(getCompanyTypeStringFromCompanyTypeNum(3), "Unknown");
  EXPECT_EQ(getCompanyTypeStringFromCompanyTypeNum(1), "Corporation");
  EXPECT_EQ(getCompanyTypeStringFromCompanyTypeNum(10), "Fiduciary");
  EXPECT_EQ(getCompanyTypeStringFromCompanyTypeNum(0), "Unknown");
}

TEST_F(EnumerationsTest, UnknownNumbersGiveTheDefaultWord) {
  EXPECT_EQ(getFinancialStatementsStringFromFinancialStatementsNum(4),
            "Review Engagement with Differential Reporting");
  EXPECT_EQ(getFinancialStatementsStringFromFinancialStatementsNum(1), "Not Specified");
  EXPECT_EQ(getRC59FormStatusStringFromRC59FormStatusNum(2), "CRA Processing");
  EXPECT_EQ(getRC59FormStatusStringFromRC59FormStatusNum(0), "Not Filed");
  EXPECT_EQ(getRC59PermissionStringFromRC59PermissionNum(2), "Limited");
  EXPECT_EQ(getRC59PermissionStringFromRC59PermissionNum(7), "None");
  EXPECT_EQ(getGSTFilingMethodStringFromGSTFilingMethodNum(3), "Quick Method");
  EXPECT_EQ(getGSTFilingMethodStringFromGSTFilingMethodNum(0), "Not Specified");
  EXPECT_EQ(getCorporationTypeStringFromCorporationTypeNum(1), "Regular Corporation");
  EXPECT_EQ(getCorporationTypeStringFromCorporationTypeNum(0), "CCPC");
  EXPECT_EQ(getCorporationLevelStringFromCorporationLevelNum(2), "Provincial Corporation");
  EXPECT_EQ(getCorporationLevelStringFromCorporationLevelNum(1), "Federal Corporation");
}

}  // namespace
}  // namespace lf
