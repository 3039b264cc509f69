// clsTPSContactTree: the contact tree of the TPS source (SourceContactTree on the TPS
// description), with the TPS guess of a client's kind.
//
// The export has no column saying which a client is, so the tree guesses from its tax
// numbers, social insurance number and first name (isTPSBusinessClient) instead of the word
// pattern the other sources' trees use.
#pragma once

#include <functional>
#include <memory>

#include "base/variant.hpp"
#include "host/progress_dialog.hpp"
#include "sync/client_tree.hpp"
#include "sync/source_contact_tree.hpp"

namespace lf {

// The columns of a source Clients row that decide its kind.
struct TPSClientNumbers {
  Variant BusinessNum;
  Variant ProvTaxNum;
  Variant CorporationNum;
  Variant SIN;
  Variant FirstName;
};

// Business when any of BusinessNum, ProvTaxNum, CorporationNum is present. With none of them:
// a SIN means a person; without a SIN, a client without a first name is a business.
bool isTPSBusinessClient(const TPSClientNumbers& client);

class clsTPSContactTree : public SourceContactTree {
 public:
  clsTPSContactTree();

  // The operations under their TPS names.
  void populateTPSTree() { populateTree(); }
  void TPSDialog_StartProgress() { dialog_StartProgress(); }
  void populateInitialTPSClientsCheckedItems(bool business, bool& result) {
    populateInitialClientsCheckedItems(business, result);
  }

  // The guess by the client's numbers (isTPSBusinessClient), read from the export's Clients.
  void populateInitialClientsCheckedItems(bool business, bool& result) override;
};

}  // namespace lf
