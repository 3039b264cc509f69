// clsClientAddrBkCatTxt: the indented path of a business client in the address book, from the
// top category down to the company, one name a line, each four blanks further in than the one
// above. The names and the main address-book category come from the client drop-down service.
#pragma once

#include <string>

#include "host/key_list.hpp"

namespace lf {

class clsClientAddrBkCatTxt {
 public:
  // Kinds of a path node (column 1 of the node list; column 2 is the id).
  enum NodeKind : long { kContactNode = 1, kCompanyNode = 2, kCategoryNode = 3 };

  clsClientAddrBkCatTxt();

  void setClientType(long clientType) { clientType_ = clientType; }
  long companyIDNum() const { return companyIDNum_; }
  void setCompanyIDNum(long id) { companyIDNum_ = id; }
  long contactIDNum() const { return contactIDNum_; }
  void setContactIDNum(long id) { contactIDNum_ = id; }
  bool ShowMainAddressBookCategory() const { return showMainAddressBookCategory_; }
  void setShowMainAddressBookCategory(bool show) { showMainAddressBookCategory_ = show; }
  const std::string& CategoryText() const { return categoryText_; }
  void setCategoryText(std::string text) { categoryText_ = std::move(text); }

  // Fills CategoryText for a business client (clientType 2); any other type leaves it as it
  // is. A cycle in the categories' parents stops after 100 rounds.
  void generateCategoryText();

  // The category of the company, after a chain of parent companies; appends a node for each
  // company and category passed. -1 when there is none.
  long getParentCategoryIDFromCompanyID(long companyID);
  // The parent of a category, appending its node; -1 when there is none.
  long getParentCategoryIDFromCategoryNum(long categoryID);

  // The path nodes collected so far, bottom first.
  const KeyList& nodes() const { return nodes_; }

 private:
  long clientType_ = 0;
  long companyIDNum_ = -1;
  long contactIDNum_ = -1;
  bool showMainAddressBookCategory_ = false;
  std::string categoryText_;
  KeyList nodes_;
};

}  // namespace lf
