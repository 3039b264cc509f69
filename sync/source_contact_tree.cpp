// Fill and initial classification of a source's client tree.
#include "sync/source_contact_tree.hpp"

#include <cstdint>

#include "base/module_state.hpp"
#include "base/procedure.hpp"
#include "db/database_service.hpp"
#include "sync/word_pattern.hpp"

namespace lf {
namespace {

constexpr int kTreeIndentation = 79;

}  // namespace

SourceContactTree::SourceContactTree(const SourceDescription& description)
    : description_(description) {}

std::string SourceContactTree::label(std::string_view procedureName) const {
  return SourceDescription::label(description_.treeClass, procedureName);
}

void SourceContactTree::setAllowOnlyOneCheckedItem(bool value) {
  allowOnlyOneCheckedItem_ = value;
  if (tree_ != nullptr) tree_->allowOnlyOneCheckedItem = value;
}

void SourceContactTree::populateTree() {
  const std::string& word = description_.word;
  procedure(label("populate" + word + "Tree"), [&] {
    const auto& makeDialog = moduleState().makeProgressDialog;
    if (!showProgress_ || !makeDialog) {
      dialog_StartProgress();
      return;
    }
    dialog_ = makeDialog();
    dialog_->setCaption("Getting " + word + " information, please wait ...");
    dialog_->setMinimum(0);
    dialog_->showDialog([this] { dialog_StartProgress(); });
    dialog_.reset();
  });
  dialog_.reset();
}

void SourceContactTree::dialog_StartProgress() {
  const std::string& word = description_.word;
  procedure(label(word + "Dialog_StartProgress"), [&] {
    if (dialog_) {
      dialog_->setCaption("Getting " + word + " contacts, please wait ...");
      dialog_->setMaximum(1);  // until the count is known
    }
    fillTree();
    if (dialog_) dialog_->closeDialog();
  });
}

void SourceContactTree::fillTree() {
  if (tree_ == nullptr) return;
  tree_->clear();
  tree_->allowOnlyOneCheckedItem = allowOnlyOneCheckedItem_;
  tree_->indentation = kTreeIndentation;
  const int root = tree_->add(-1, std::string(ClientTree::kRootKey), description_.treeRootText);
  tree_->node(root).bold = true;
  tree_->node(root).expanded = true;
  tree_->selected = root;
  if (source_ == nullptr) return;

  std::int32_t rs = 0;
  procedure(label("fillTree"), [&] {
    rs = source_->openRecordset(description_.treeClientsStatement, kCursorKeyset, kLockReadOnly);
    if (!source_->hasRecord(rs)) return;
    if (dialog_) dialog_->setMaximum(source_->recordCount(rs));
    const std::vector<std::string>& keyColumns = description_.clientKey.columns;
    long counter = 0;
    for (; !source_->isEOF(rs); source_->moveNext(rs)) {
      resumeNext([&] {
        std::vector<std::string> parts;
        for (const std::string& column : keyColumns)
          parts.push_back(source_->getField(rs, column).toString());
        const std::string name = source_->getField(rs, description_.treeNameColumn).toString();
        const bool inActive = !description_.treeInactiveColumn.empty() &&
                              source_->getField(rs, description_.treeInactiveColumn).toBool();
        tree_->add(root, ClientTree::clientKey(ClientKeyShape::join(parts)),
                   ClientTree::clientText(name, inActive));
        ++counter;
        if (dialog_) dialog_->setValue(dialog_->getValue() + 1);
        if (incProgressBarForPopulatingList) incProgressBarForPopulatingList(counter);
      });
    }
  });
  if (rs != 0)
    ignoreErrors([&] {
      if (source_->isRecordsetOpen(rs)) source_->closeRecordset(rs);
    });
}

void SourceContactTree::selectionProgress(bool business, long& counter) {
  const auto& event = business ? incProgressBarForInitialBusinessClientsSelection
                               : incProgressBarForInitialPersonalClientsSelection;
  if (event) event(counter);
}

void SourceContactTree::populateInitialClientsCheckedItems(bool business, bool& result) {
  procedure(label("populateInitial" + description_.word + "ClientsCheckedItems"), [&] {
    if (tree_ == nullptr) return;
    result = populateInitialCheckedItemsByWordPattern(
        *tree_, business, [&](long& counter) { selectionProgress(business, counter); });
  });
}

void SourceContactTree::checkAllChildNodes(bool state, int node) {
  procedure(label("checkAllChildNodes"), [&] {
    if (tree_ != nullptr) tree_->checkAllChildNodes(state, node);
  });
}

}  // namespace lf
