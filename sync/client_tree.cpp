// Node storage, walks and check operations of the wizards' check tree.
#include "sync/client_tree.hpp"

#include <unordered_set>

#include "base/failure.hpp"
#include "records/node_keys.hpp"

namespace lf {

void ClientTree::clear() {
  nodes_.clear();
  byKey_.clear();
  selected = -1;
}

int ClientTree::add(int parent, std::string key, std::string text) {
  if (byKey_.count(key) != 0) throw Failure("Key is not unique in collection", 35602);
  const int index = count();
  ClientTreeNode node;
  node.key = std::move(key);
  node.text = std::move(text);
  node.parent = parent;
  if (parent >= 0) {
    int* link = &nodes_.at(parent).firstChild;
    while (*link >= 0) link = &nodes_[*link].nextSibling;
    *link = index;
  }
  byKey_.emplace(node.key, index);
  nodes_.push_back(std::move(node));
  return index;
}

int ClientTree::findKey(std::string_view key) const {
  auto it = byKey_.find(std::string(key));
  return it == byKey_.end() ? -1 : it->second;
}

std::vector<int> ClientTree::children(int index) const {
  std::vector<int> out;
  for (int c = nodes_.at(index).firstChild; c >= 0; c = nodes_[c].nextSibling) out.push_back(c);
  return out;
}

void ClientTree::checkAllChildNodes(bool state, int node) {
  if (node < 0) node = findKey(kRootKey);
  if (node < 0) return;
  if (allowOnlyOneCheckedItem) {
    if (state) unSelectAllNodes();
    nodes_[node].checked = state;
    return;
  }
  checkAllChildNode(node, state);
}

void ClientTree::checkAllChildNode(int node, bool state) {
  for (int c = nodes_[node].firstChild; c >= 0; c = nodes_[c].nextSibling) {
    nodes_[c].checked = state;
    if (nodes_[c].firstChild >= 0) checkAllChildNode(c, state);
  }
}

void ClientTree::unSelectAllNodes() {
  for (auto& n : nodes_) n.checked = false;
}

std::string ClientTree::clientKey(std::string_view clientID) {
  return "Company:" + std::string(clientID);
}

std::string ClientTree::categoryKey(std::string_view categoryID) {
  return "Category:" + std::string(categoryID);
}

std::string ClientTree::clientText(std::string_view name, bool inActive) {
  std::string text(name);
  if (inActive) text += " -(InActive)";
  return text;
}

std::vector<std::string> ClientTree::checkedIDs(int type) const {
  std::vector<std::string> out;
  for (const auto& n : nodes_)
    if (n.checked && getSelectedMajorNodeTypeFromString(n.key) == type)
      out.push_back(getSelectedNodeIDStringFromString(n.key));
  return out;
}

void ClientTree::checkOnly(const std::vector<std::string>& ids, int type) {
  std::unordered_set<std::string> wanted(ids.begin(), ids.end());
  for (auto& n : nodes_)
    if (getSelectedMajorNodeTypeFromString(n.key) == type)
      n.checked = wanted.count(getSelectedNodeIDStringFromString(n.key)) != 0;
}

}  // namespace lf
