// Column assignments over the merge field catalogue.
#include "text/column_mapping.hpp"

#include <cctype>

#include "base/general_utilities.hpp"
#include "merge/cls_insert_fields_in_rtb.hpp"

namespace lf {

namespace {

// Letters and digits only, upper-cased: the form in which captions meet field names.
std::string comparableName(std::string_view text) {
  std::string out;
  for (char c : text) {
    const auto u = static_cast<unsigned char>(c);
    if (std::isalnum(u) || u >= 0x80) out += static_cast<char>(std::toupper(u));
  }
  return out;
}

}  // namespace

void ColumnMapping::createFieldList(std::int32_t listType) {
  clsInsertFieldsInRTB engine;
  engine.ListType = listType;
  engine.setMergeFieldListUse(kUseColumnChooser);
  bool noListBox = true;
  bool clearListBox = true;
  engine.createDefaultFieldListStructure(noListBox, clearListBox);
  fields_ = engine.FieldList();
  engine.Terminate();
  assigned_.clear();
}

std::vector<std::string> ColumnMapping::dropDownEntries() const {
  std::vector<std::string> entries{std::string(kNotAssigned)};
  for (const FieldItem& item : fields_) entries.push_back(item.displayName);
  return entries;
}

bool ColumnMapping::assign(ImportGrid& grid, int column, std::int32_t itemKey) {
  if (column < 1 || column >= grid.cols()) return false;
  const FieldItem* item = fields_.itemByKey(itemKey);
  if (item == nullptr) {
    assigned_.erase(column);
    grid.setTextMatrix(kAssignmentRow, column, std::string(kNotAssigned));
  } else {
    assigned_[column] = itemKey;
    grid.setTextMatrix(kAssignmentRow, column, item->displayName);
  }
  return true;
}

void ColumnMapping::clearAssignments(ImportGrid& grid) {
  assigned_.clear();
  for (int column = 1; column < grid.cols(); ++column)
    grid.setTextMatrix(kAssignmentRow, column, std::string(kNotAssigned));
}

const FieldItem* ColumnMapping::columnItem(int column) const {
  const auto it = assigned_.find(column);
  return it == assigned_.end() ? nullptr : fields_.itemByKey(it->second);
}

std::string ColumnMapping::columnKey(int column) const {
  const FieldItem* item = columnItem(column);
  return item == nullptr ? std::string(kNotAssignedKey)
                         : GeneralUtilities::upperCase(item->databaseField);
}

bool ColumnMapping::anyColumnIs(std::initializer_list<std::string_view> keys,
                                int columnCount) const {
  for (int column = 1; column < columnCount; ++column) {
    const std::string key = columnKey(column);
    for (std::string_view wanted : keys)
      if (key == wanted) return true;
  }
  return false;
}

std::int32_t ColumnMapping::findFieldForCaption(std::string_view caption) const {
  const std::string wanted = comparableName(caption);
  if (wanted.empty()) return -1;
  for (const FieldItem& item : fields_)
    if (comparableName(item.displayName) == wanted) return item.key;
  for (const FieldItem& item : fields_)
    if (comparableName(item.databaseField) == wanted) return item.key;
  // "First Name" for "Contact First Name": spreadsheets leave the record's word out.
  constexpr std::string_view kContactWord = "Contact ";
  for (const FieldItem& item : fields_)
    if (item.displayName.starts_with(kContactWord) &&
        comparableName(std::string_view(item.displayName).substr(kContactWord.size())) == wanted)
      return item.key;
  return -1;
}

}  // namespace lf
