// The check tree that the sync wizards show: a root and one node per source client (or per
// category, on the category step), each with a key, a text and a check state.
//
// It stands in for the tree view of the dialog, so that the contact trees and the wizard
// logic run without a window system. Nodes are kept in insertion order; a node's children
// are walked first child, then next sibling, as the tree view walks them. Keys are unique.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lf {

struct ClientTreeNode {
  std::string key;
  std::string text;
  bool checked = false;
  bool bold = false;
  bool expanded = false;
  int parent = -1;
  int firstChild = -1;
  int nextSibling = -1;
};

class ClientTree {
 public:
  static constexpr std::string_view kRootKey = "Main";

  // Removes every node; the selection goes with them.
  void clear();

  // Adds a node under parent (-1 for a top-level node) and returns its index.
  // REQUIRES: key not in the tree yet (a repeated key throws Failure, as the tree view does).
  int add(int parent, std::string key, std::string text);

  int count() const { return static_cast<int>(nodes_.size()); }
  const ClientTreeNode& node(int index) const { return nodes_.at(index); }
  ClientTreeNode& node(int index) { return nodes_.at(index); }
  // Index of the node with the key, or -1.
  int findKey(std::string_view key) const;
  std::vector<int> children(int index) const;

  int selected = -1;
  int indentation = 0;
  bool allowOnlyOneCheckedItem = false;

  // Gives every node below node (the "Main" node when node is -1) the state. With
  // allowOnlyOneCheckedItem, checking first clears every node and then checks node alone.
  void checkAllChildNodes(bool state, int node = -1);
  void unSelectAllNodes();

  // Client and category nodes: keys "Company:" + ID and "Category:" + ID. A client node's
  // text is the client's name, with " -(InActive)" after an inactive one.
  static std::string clientKey(std::string_view clientID);
  static std::string categoryKey(std::string_view categoryID);
  static std::string clientText(std::string_view name, bool inActive);
  // IDs of the checked nodes of the type (getSelectedMajorNodeTypeFromString: 2 client,
  // 3 category), in tree order.
  std::vector<std::string> checkedIDs(int type = 2) const;
  // Checks exactly the nodes of the type whose ID is listed; clears the others of the type.
  void checkOnly(const std::vector<std::string>& ids, int type = 2);

 private:
  void checkAllChildNode(int node, bool state);

  std::vector<ClientTreeNode> nodes_;
  std::unordered_map<std::string, int> byKey_;
};

}  // namespace lf
