// clsBill4TimeContactTree: the contact tree of the Bill4Time source: the export's clients listed by
// their ID with their name, and classified by the word pattern of their names.
#pragma once

#include "sync/source_contact_tree.hpp"

namespace lf {

class clsBill4TimeContactTree : public SourceContactTree {
 public:
  clsBill4TimeContactTree();

  // The operations under their Bill4Time names.
  void populateBill4TimeTree() { populateTree(); }
  void Bill4TimeDialog_StartProgress() { dialog_StartProgress(); }
  void populateInitialBill4TimeClientsCheckedItems(bool business, bool& result) {
    populateInitialClientsCheckedItems(business, result);
  }
};

}  // namespace lf
