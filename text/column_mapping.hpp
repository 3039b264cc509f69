// The column assignments of a text import: which catalogue field each grid column is for.
//
// The choices are "Not Assigned" and the rows of the merge field catalogue in its column
// chooser use (list type 3 for a personal import, 2 for a business one). A column's key is
// its item's database field upper-cased ("BusinessNumber" gives "BUSINESSNUMBER"), or
// "NOT ASSIGNED" when the user made no choice; the item's table tag says whether it is
// company ("CompanyInfo") or contact ("ContactInfo") information, and its maximum length cuts
// the value written.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "merge/field_list.hpp"
#include "text/import_grid.hpp"

namespace lf {

inline constexpr std::string_view kNotAssignedKey = "NOT ASSIGNED";

class ColumnMapping {
 public:
  // Builds the field list from the catalogue of the practice database in use
  // (DatabaseReference): list type 3 or 2, use 3. Forgets every assignment.
  void createFieldList(std::int32_t listType);
  const FieldList& fieldList() const { return fields_; }

  // The drop-down's entries: "Not Assigned", then each item's display name in list order.
  std::vector<std::string> dropDownEntries() const;

  // Assigns the item with the key to a data column (a key of -1 or one not in the list makes
  // the column "Not Assigned") and writes the entry's text into the grid's assignment row.
  // False, with nothing changed, for a column outside the grid.
  bool assign(ImportGrid& grid, int column, std::int32_t itemKey);
  // Every column back to "Not Assigned", in the map and in the grid.
  void clearAssignments(ImportGrid& grid);

  // The item assigned to a column, or nullptr.
  const FieldItem* columnItem(int column) const;
  // The column's key: the item's database field upper-cased, or "NOT ASSIGNED".
  std::string columnKey(int column) const;
  // True when some column's key is one of the keys.
  bool anyColumnIs(std::initializer_list<std::string_view> keys, int columnCount) const;

  // The item whose display name or database field equals the caption when case, blanks and
  // punctuation are ignored ("E-mail", "Postal Code"), else whose display name does without
  // its leading "Contact " ("First Name"); -1 when none does.
  std::int32_t findFieldForCaption(std::string_view caption) const;

 private:
  FieldList fields_;
  std::map<int, std::int32_t> assigned_;  // data column to item key
};

}  // namespace lf
