// The key list: an ordered list of rows of values with a cursor, column 1 being the key.
// companyCollection and contactsCollection of the sync engines are key lists of source
// client IDs; a scan is hasItems, then { isAtEnd; currentValue; moveNext }.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "base/variant.hpp"

namespace lf {

class KeyList {
 public:
  // Remembers the column description ("Key|Path|Text"); called once after creation.
  void initializeList(std::string_view columnDescription);
  const std::string& columnDescription() const { return columns_; }

  long count() const { return static_cast<long>(rows_.size()); }
  bool isEmptyList() const { return rows_.empty(); }
  // Places the cursor on the first row and answers whether there is one.
  bool hasItems();
  // True past the last row (and on an empty list).
  bool isAtEnd() const { return cursor_ >= rows_.size(); }
  // Value of column `column` (1 is the key) of the current row; a null past the end or
  // beyond the row's columns.
  Variant currentValue(int column) const;
  void moveNext();
  void addRow(std::vector<Variant> values);
  void addRow(std::initializer_list<Variant> values) { addRow(std::vector<Variant>(values)); }
  void clearList();

  // Places the cursor on the first row whose key has the same text as `key` (any case) and
  // answers whether there is one; otherwise the cursor goes past the end.
  bool findKey(std::string_view key);

 private:
  std::string columns_;
  std::vector<std::vector<Variant>> rows_;
  size_t cursor_ = 0;
};

}  // namespace lf
