// The key list's rows and cursor.
#include "host/key_list.hpp"

#include <cctype>

namespace lf {

void KeyList::initializeList(std::string_view columnDescription) {
  columns_ = std::string(columnDescription);
}

bool KeyList::hasItems() {
  cursor_ = 0;
  return !rows_.empty();
}

Variant KeyList::currentValue(int column) const {
  if (isAtEnd() || column < 1) return Variant::null();
  const std::vector<Variant>& row = rows_[cursor_];
  return static_cast<size_t>(column) <= row.size() ? row[static_cast<size_t>(column) - 1]
                                                   : Variant::null();
}

void KeyList::moveNext() {
  if (cursor_ < rows_.size()) ++cursor_;
}

void KeyList::addRow(std::vector<Variant> values) {
  rows_.push_back(std::move(values));
}

void KeyList::clearList() {
  rows_.clear();
  cursor_ = 0;
}

bool KeyList::findKey(std::string_view key) {
  for (cursor_ = 0; cursor_ < rows_.size(); ++cursor_) {
    if (rows_[cursor_].empty()) continue;
    std::string text = rows_[cursor_][0].toString();
    if (text.size() != key.size()) continue;
    bool same = true;
    for (size_t i = 0; i < key.size() && same; ++i)
      same = std::tolower(static_cast<unsigned char>(text[i])) ==
             std::tolower(static_cast<unsigned char>(key[i]));
    if (same) return true;
  }
  return false;
}

}  // namespace lf
