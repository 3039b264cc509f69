// clsCCHPracticeContactTree: the contact tree of the CCH Practice source. The export's clients
// are listed by ClientID and Engagement (the node key holds the pair joined by ",") with their
// Name1, and classified by the word pattern of their names.
#pragma once

#include "sync/source_contact_tree.hpp"

namespace lf {

class clsCCHPracticeContactTree : public SourceContactTree {
 public:
  clsCCHPracticeContactTree();

  // The operations under their CCH Practice names.
  void populateCCHPracticeTree() { populateTree(); }
  void CCHPracticeDialog_StartProgress() { dialog_StartProgress(); }
  void populateInitialCCHPracticeClientsCheckedItems(bool business, bool& result) {
    populateInitialClientsCheckedItems(business, result);
  }
};

}  // namespace lf
