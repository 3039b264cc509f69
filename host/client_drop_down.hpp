// The client drop-down service (clientDropDownCtrlReference): the host's client categories
// and the state of its client lists.
#pragma once

#include <string>

namespace lf {

struct CategoryInfo {
  long kind = 0;
  bool needsRecord = false;  // a client placed here also needs its client-data or tax row
};

class ClientDropDownService {
 public:
  virtual ~ClientDropDownService() = default;
  virtual long getCurrentCategoryID() = 0;
  virtual long getCurrentContactCategoryID() = 0;
  virtual long getCategoryForYear(long& year, const std::string& unused) = 0;
  virtual CategoryInfo getCategoryInfo(long categoryID) = 0;
  // The host reloads its client lists after a creator added a client; the personal-tax list
  // after a personal-tax client was added. Nothing to do for a host without lists.
  virtual void refreshClientList() {}
  virtual void refreshPersonalList() {}
  virtual long getFirmID() = 0;
  virtual void setLoadingPaused(bool& paused) = 0;
  virtual void setRefreshPaused(bool& paused) = 0;
  virtual long getSortOrderBusiness() = 0;
  virtual long getSortOrderPersonal() = 0;
};

}  // namespace lf
