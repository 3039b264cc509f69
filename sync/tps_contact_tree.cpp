// The TPS guess of a client's kind.
#include "sync/tps_contact_tree.hpp"

#include <cstdint>

#include "base/general_utilities.hpp"
#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "records/node_keys.hpp"
#include "sync/sources/tps_source.hpp"

namespace lf {

bool isTPSBusinessClient(const TPSClientNumbers& client) {
  using GU = GeneralUtilities;
  if (!GU::isBlank(client.BusinessNum)) return true;
  if (!GU::isBlank(client.ProvTaxNum)) return true;
  if (!GU::isBlank(client.CorporationNum)) return true;
  if (GU::isBlank(client.SIN)) return GU::isBlank(client.FirstName);
  return false;
}

clsTPSContactTree::clsTPSContactTree() : SourceContactTree(tpsSourceDescription()) {}

void clsTPSContactTree::populateInitialClientsCheckedItems(bool business, bool& result) {
  result = !business;
  if (tree_ == nullptr) return;
  std::int32_t rs = 0;
  procedure(label("populateInitialTPSClientsCheckedItems"), [&] {
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
        selectionProgress(business, counter);
      });
    }
  });
  if (rs != 0)
    ignoreErrors([&] {
      if (source_->isRecordsetOpen(rs)) source_->closeRecordset(rs);
    });
}

}  // namespace lf
