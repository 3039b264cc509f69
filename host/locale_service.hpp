// The locale service (LocaleReference): host name, country mode, user and years.
#pragma once

#include <string>

namespace lf {

// Country codes of getCountryMode.
enum CountryMode : int { kCountryCanada = 1, kCountryUnitedStates = 2 };

// Province indexes of getProvinceIndex.
enum ProvinceIndex : int {
  kAlberta = 0,
  kBritishColumbia = 1,
  kManitoba = 2,
  kOntario = 3,
  kSaskatchewan = 4,
  kQuebec = 8,
  kNovaScotia = 9,
  kNewBrunswick = 10,
  kNewfoundland = 11,
  kPrinceEdwardIsland = 12,
};

class LocaleService {
 public:
  virtual ~LocaleService() = default;
  virtual std::string getApplicationName() = 0;
  virtual int getCountryMode() = 0;
  virtual int getProvinceIndex() = 0;
  virtual long getCurrentUserID() = 0;
  virtual long getCurrentPersonalYear() = 0;
  virtual long getCurrentTaxYear() = 0;
  virtual std::string getDefaultFileFolder() = 0;
};

}  // namespace lf
