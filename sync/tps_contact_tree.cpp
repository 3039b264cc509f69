// Fill and initial classification of the TPS client tree.
#include "sync/tps_contact_tree.hpp"

#include <cstdint>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "records/node_keys.hpp"

namespace lf {
namespace {

constexpr int kTreeIndentation = 79;

void closeQuietly(DatabaseService* db, std::int32_t handle) {
  if (db == nullptr || handle == 0) return;
  ignoreErrors([&] {
    if (db->isRecordsetOpen(handle)) db->closeRecordset(handle);
  });
}

}  // namespace

bool isTPSBusinessClient(const TPSClientNumbers& client) {
  using GU = GeneralUtilities;
  if (!GU::isBlank(client.BusinessNum)) return true;
  if (!GU::isBlank(client.ProvTaxNum)) return true;
  if (!GU::isBlank(client.CorporationNum)) return true;
  if (GU::isBlank(client.SIN)) return GU::isBlank(client.FirstName);
  return false;
}

clsTPSContactTree::clsTPSContactTree() = default;

void clsTPSContactTree::setAllowOnlyOneCheckedItem(bool value) {
  allowOnlyOneCheckedItem_ = value;
  if (tree_ != nullptr) tree_->allowOnlyOneCheckedItem = value;
}

void clsTPSContactTree::populateTPSTree() {
  procedure("Ledgerfolio.exe-clsTPSContactTree-populateTPSTree", [&] {
    const auto& makeDialog = moduleState().makeProgressDialog;
    if (!showProgress_ || !makeDialog) {
      TPSDialog_StartProgress();
      return;
    }
    TPSDialog = makeDialog();
    TPSDialog->setCaption("Getting TPS information, please wait ...");
    TPSDialog->setMinimum(0);
    TPSDialog->showDialog([this] { TPSDialog_StartProgress(); });
    TPSDialog.reset();
  });
  TPSDialog.reset();
}

void clsTPSContactTree::TPSDialog_StartProgress() {
  procedure("Ledgerfolio.exe-clsTPSContactTree-TPSDialog_StartProgress", [&] {
    if (TPSDialog) {
      TPSDialog->setCaption("Getting TPS contacts, please wait ...");
      TPSDialog->setMaximum(1);  // until the count is known
    }
    fillTree();
    if (TPSDialog) TPSDialog->closeDialog();
  });
}

void clsTPSContactTree::fillTree() {
  if (tree_ == nullptr) return;
  tree_->clear();
  tree_->allowOnlyOneCheckedItem = allowOnlyOneCheckedItem_;
  tree_->indentation = kTreeIndentation;
  const int root = tree_->add(-1, std::string(ClientTree::kRootKey), "TPS Contacts");
  tree_->node(root).bold = true;
  tree_->node(root).expanded = true;
  tree_->selected = root;
  if (source_ == nullptr) return;

  std::int32_t rs = 0;
  procedure("Ledgerfolio.exe-clsTPSContactTree-fillTree", [&] {
    rs = source_->openRecordset(
        "SELECT Clients.ClientID, Clients.Name, Clients.InActive FROM Clients;", kCursorKeyset,
        kLockReadOnly);
    if (!source_->hasRecord(rs)) return;
    if (TPSDialog) TPSDialog->setMaximum(source_->recordCount(rs));
    long counter = 0;
    while (!source_->isEOF(rs)) {
      resumeNext([&] {
        const std::string id = source_->getField(rs, "ClientID").toString();
        const std::string name = source_->getField(rs, "Name").toString();
        const bool inActive = source_->getField(rs, "InActive").toBool();
        tree_->add(root, ClientTree::clientKey(id), ClientTree::clientText(name, inActive));
        ++counter;
        if (TPSDialog) TPSDialog->setValue(TPSDialog->getValue() + 1);
        if (incProgressBarForPopulatingList) incProgressBarForPopulatingList(counter);
      });
      source_->moveNext(rs);
    }
  });
  closeQuietly(source_, rs);
}

void clsTPSContactTree::populateInitialTPSClientsCheckedItems(bool business, bool& result) {
  result = !business;
  if (tree_ == nullptr) return;
  std::int32_t rs = 0;
  procedure("Ledgerfolio.exe-clsTPSContactTree-populateInitialTPSClientsCheckedItems", [&] {
    if (source_ != nullptr)
      rs = source_->openRecordset("SELECT Clients.* FROM Clients;", kCursorKeyset, kLockReadOnly);
    long counter = 0;
    for (int i = 0; i < tree_->count(); ++i) {
      resumeNext([&] {
        ClientTreeNode& node = tree_->node(i);
        if (getSelectedMajorNodeTypeFromString(node.key) != 2 || rs == 0) {
          node.checked = false;
          return;
        }
        const std::string id = getSelectedNodeIDStringFromString(node.key);
        if (!source_->findRecord(rs, "ClientID", id)) {
          node.checked = false;
          return;
        }
        const TPSClientNumbers numbers{
            source_->getField(rs, "BusinessNum"), source_->getField(rs, "ProvTaxNum"),
            source_->getField(rs, "CorporationNum"), source_->getField(rs, "SIN"),
            source_->getField(rs, "FirstName")};
        const bool isBusiness = isTPSBusinessClient(numbers);
        node.checked = business ? isBusiness : !isBusiness;
        ++counter;
        if (business && incProgressBarForInitialBusinessClientsSelection)
          incProgressBarForInitialBusinessClientsSelection(counter);
        if (!business && incProgressBarForInitialPersonalClientsSelection)
          incProgressBarForInitialPersonalClientsSelection(counter);
      });
    }
  });
  closeQuietly(source_, rs);
}

void clsTPSContactTree::checkAllChildNodes(bool state, int node) {
  procedure("Ledgerfolio.exe-clsTPSContactTree-checkAllChildNodes", [&] {
    if (tree_ != nullptr) tree_->checkAllChildNodes(state, node);
  });
}

}  // namespace lf
