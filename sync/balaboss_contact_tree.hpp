// clsBalabossContactTree: the contact tree of the Balaboss source: the export's clients listed by
// their ID with their name, and classified by the word pattern of their names.
#pragma once

#include "sync/source_contact_tree.hpp"

namespace lf {

class clsBalabossContactTree : public SourceContactTree {
 public:
  clsBalabossContactTree();

  // The operations under their Balaboss names.
  void populateBalabossTree() { populateTree(); }
  void BalabossDialog_StartProgress() { dialog_StartProgress(); }
  void populateInitialBalabossClientsCheckedItems(bool business, bool& result) {
    populateInitialClientsCheckedItems(business, result);
  }
};

}  // namespace lf
