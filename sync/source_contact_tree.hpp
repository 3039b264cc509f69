// The contact tree of a sync source: lists the source's clients in the wizard's check tree and
// pre-checks each as business or personal, so that the user only corrects the guess.
//
// The statement, the key and name columns and the words come from the source's description.
// The guess is by the word pattern of looksLikeBusinessName unless the source's tree knows
// better (TPS guesses from tax numbers). The tree reads the source through the engine's
// source connection.
#pragma once

#include <functional>
#include <memory>

#include "host/progress_dialog.hpp"
#include "sync/client_tree.hpp"
#include "sync/source_description.hpp"

namespace lf {

class DatabaseService;

class SourceContactTree {
 public:
  // REQUIRES: description outlives the tree.
  explicit SourceContactTree(const SourceDescription& description);
  virtual ~SourceContactTree() = default;
  SourceContactTree(const SourceContactTree&) = delete;
  SourceContactTree& operator=(const SourceContactTree&) = delete;

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

  // Clears the tree and fills it: root "Main" (the source's root text, bold, expanded,
  // selected) and one "Company:" + client key node per source client. With showProgress and
  // a progress dialog maker in the module state, the fill runs as the dialog's StartProgress.
  void populateTree();
  void dialog_StartProgress();

  // Checks each client node when its guess agrees with the list being filled (business list
  // when business is true); clears every other node. result takes the negation of business.
  virtual void populateInitialClientsCheckedItems(bool business, bool& result);

  void checkAllChildNodes(bool state, int node = -1);

  // Events raised to the wizard with the running count.
  std::function<void(long&)> incProgressBarForPopulatingList;
  std::function<void(long&)> incProgressBarForInitialBusinessClientsSelection;
  std::function<void(long&)> incProgressBarForInitialPersonalClientsSelection;

 protected:
  const SourceDescription& description() const { return description_; }
  std::string label(std::string_view procedureName) const;
  // Raises the business or personal selection event with the running count.
  void selectionProgress(bool business, long& counter);

  ClientTree* tree_ = nullptr;
  DatabaseService* source_ = nullptr;

 private:
  void fillTree();

  const SourceDescription& description_;
  std::unique_ptr<ProgressDialog> dialog_;
  bool showTreeViewCheckBoxes_ = false;
  bool allowOnlyOneCheckedItem_ = false;
  bool showProgress_ = true;
};

}  // namespace lf
