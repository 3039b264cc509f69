// FieldList: the keyed list of merge fields that the merge engine builds.
//
// One item per placeholder a template may use: the column that feeds it, the name between
// the guillemets, the record it belongs to, its type, its test-mode sample and its maximum
// length. Keys run 1, 2, 3 ... in list order and are valid until the next build. The text
// imports use the same list as their column catalogue.
//
// Like the closed list class it stands in for, the list has a current item: moveTo and the
// find operations position it, column and currentKey read it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lf {

// Field types of column 4.
enum MergeFieldType : std::int16_t {
  kFieldText = 1,
  kFieldDate = 2,
  kFieldTime = 3,
  kFieldMoney = 4,
  kFieldYesNo = 5,
  kFieldDuration = 6,
};

// Column numbers of an item.
enum FieldListColumn : int {
  kColumnDatabaseField = 1,
  kColumnDisplayName = 2,
  kColumnTableTag = 3,
  kColumnFieldType = 4,
  kColumnSampleValue = 5,
  kColumnMaxLength = 6,
};

struct FieldItem {
  std::int32_t key = 0;
  std::string databaseField;  // column 1
  std::string displayName;    // column 2
  std::string tableTag;       // column 3
  std::int16_t fieldType = kFieldText;
  std::string sampleValue;
  std::int16_t maxLength = -1;  // -1 for dates, times and long text
};

class FieldList {
 public:
  std::int32_t count() const { return static_cast<std::int32_t>(items_.size()); }
  bool empty() const { return items_.empty(); }
  void clear();
  void add(FieldItem item);

  // Positions the list on the item with the key; false (and no current item) when absent.
  bool moveTo(std::int32_t key);
  // Positions the list on the first item whose column equals the value exactly.
  bool findByColumn(int column, std::string_view value);

  // The current item, or nullptr.
  const FieldItem* current() const;
  std::int32_t currentKey() const;  // -1 without a current item
  // Text of a column of the current item; empty without one.
  std::string column(int column) const;

  // Look-ups that leave the current item alone.
  const FieldItem* itemByKey(std::int32_t key) const;
  const FieldItem* findByDisplayName(std::string_view name) const;
  const FieldItem* findByDatabaseField(std::string_view field) const;

  const std::vector<FieldItem>& items() const { return items_; }
  std::vector<FieldItem>::const_iterator begin() const { return items_.begin(); }
  std::vector<FieldItem>::const_iterator end() const { return items_.end(); }

  static std::string columnText(const FieldItem& item, int column);

 private:
  std::vector<FieldItem> items_;
  std::ptrdiff_t current_ = -1;
};

}  // namespace lf
