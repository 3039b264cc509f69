// clsTPSContactTree: lists the clients of a TPS export in the wizard's check tree and
// pre-checks each as business or personal.
//
// The export has no column saying which a client is, so the tree guesses from its tax
// numbers, social insurance number and first name (isTPSBusinessClient), and the user only
// corrects the guess. The tree reads the source through the engine's source connection.
#pragma once

#include <functional>
#include <memory>

#include "base/variant.hpp"
#include "host/progress_dialog.hpp"
#include "sync/client_tree.hpp"

namespace lf {

class DatabaseService;

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

class clsTPSContactTree {
 public:
  clsTPSContactTree();

  // The tree the wizard shows; lent, not owned.
  void setTreeViewControl(ClientTree* tree) { tree_ = tree; }
  // The engine's open export database; nothing leaves the tree empty below its root.
  void setSourceDatabase(DatabaseService* source) { source_ = source; }

  bool showTreeViewCheckBoxes() const { return showTreeViewCheckBoxes_; }
  void setShowTreeViewCheckBoxes(bool value) { showTreeViewCheckBoxes_ = value; }
  bool allowOnlyOneCheckedItem() const { return allowOnlyOneCheckedItem_; }
  void setAllowOnlyOneCheckedItem(bool value);
  bool showProgress() const { return showProgress_; }
  void setShowProgress(bool value) { showProgress_ = value; }

  // Clears the tree and fills it: root "Main" ("TPS Contacts", bold, expanded, selected) and
  // one "Company:" + ClientID node per source client. With showProgress and a progress dialog
  // maker in the module state, the fill runs as the dialog's StartProgress.
  void populateTPSTree();
  void TPSDialog_StartProgress();

  // Checks each client node when its guess agrees with the list being filled (business list
  // when business is true); clears every other node. result takes the negation of business.
  void populateInitialTPSClientsCheckedItems(bool business, bool& result);

  void checkAllChildNodes(bool state, int node = -1);

  // Events raised to the wizard with the running count.
  std::function<void(long&)> incProgressBarForPopulatingList;
  std::function<void(long&)> incProgressBarForInitialBusinessClientsSelection;
  std::function<void(long&)> incProgressBarForInitialPersonalClientsSelection;

 private:
  void fillTree();

  std::unique_ptr<ProgressDialog> TPSDialog;
  ClientTree* tree_ = nullptr;
  DatabaseService* source_ = nullptr;
  bool showTreeViewCheckBoxes_ = false;
  bool allowOnlyOneCheckedItem_ = false;
  bool showProgress_ = true;
};

}  // namespace lf
