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
  // Names of the host's client list, for the summaries' family lines and category paths, and
  // the main address-book category; empty or -1 when the host cannot tell.
  virtual std::string getContactName(long /*contactID*/) { return {}; }
  virtual std::string getCompanyName(long /*companyID*/) { return {}; }
  virtual std::string getCategoryName(long /*categoryID*/) { return {}; }
  virtual long getMainAddressBookCategoryID() { return -1; }
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
  // The merge engine's questions: the client-data row of a company and the "John & Jane
  // Smith" form of a contact. -1 or empty when the host cannot tell; the merge engine then
  // works it out from the database itself.
  virtual long getClientDataIDFromCompanyID(long /*companyID*/) { return -1; }
  virtual std::string getContactAndSpouseName(long /*contactID*/) { return {}; }
};

}  // namespace lf
