// The keyed merge-field list. Keys are assigned in list order from 1, so a key is found by
// its position when the list was built that way, and by a walk otherwise.
#include "merge/field_list.hpp"

#include <string>

namespace lf {

void FieldList::clear() {
  items_.clear();
  current_ = -1;
}

void FieldList::add(FieldItem item) {
  items_.push_back(std::move(item));
}

const FieldItem* FieldList::itemByKey(std::int32_t key) const {
  if (key >= 1 && key <= count() && items_[key - 1].key == key) return &items_[key - 1];
  for (const FieldItem& item : items_)
    if (item.key == key) return &item;
  return nullptr;
}

bool FieldList::moveTo(std::int32_t key) {
  const FieldItem* item = itemByKey(key);
  current_ = item ? item - items_.data() : -1;
  return item != nullptr;
}

std::string FieldList::columnText(const FieldItem& item, int column) {
  switch (column) {
    case kColumnDatabaseField:
      return item.databaseField;
    case kColumnDisplayName:
      return item.displayName;
    case kColumnTableTag:
      return item.tableTag;
    case kColumnFieldType:
      return std::to_string(item.fieldType);
    case kColumnSampleValue:
      return item.sampleValue;
    case kColumnMaxLength:
      return std::to_string(item.maxLength);
    default:
      return {};
  }
}

bool FieldList::findByColumn(int column, std::string_view value) {
  current_ = -1;
  for (size_t i = 0; i < items_.size(); ++i) {
    const FieldItem& item = items_[i];
    bool match = false;
    switch (column) {
      case kColumnDatabaseField:
        match = item.databaseField == value;
        break;
      case kColumnDisplayName:
        match = item.displayName == value;
        break;
      case kColumnTableTag:
        match = item.tableTag == value;
        break;
      default:
        match = columnText(item, column) == value;
        break;
    }
    if (match) {
      current_ = static_cast<std::ptrdiff_t>(i);
      return true;
    }
  }
  return false;
}

const FieldItem* FieldList::current() const {
  return current_ >= 0 && current_ < static_cast<std::ptrdiff_t>(items_.size()) ? &items_[current_]
                                                                                : nullptr;
}

std::int32_t FieldList::currentKey() const {
  const FieldItem* item = current();
  return item ? item->key : -1;
}

std::string FieldList::column(int column) const {
  const FieldItem* item = current();
  return item ? columnText(*item, column) : std::string();
}

const FieldItem* FieldList::findByDisplayName(std::string_view name) const {
  for (const FieldItem& item : items_)
    if (item.displayName == name) return &item;
  return nullptr;
}

const FieldItem* FieldList::findByDatabaseField(std::string_view field) const {
  for (const FieldItem& item : items_)
    if (item.databaseField == field) return &item;
  return nullptr;
}

}  // namespace lf
