// The grid of a delimited text import: what the wizard shows and the import reads, as plain
// data with no screen behind it.
//
// Row 0 holds the column captions ("Column 1", ... or the file's first line), row 1 each
// column's assigned field ("Not Assigned" until the user picks one), and the file's data
// follows from row 2, one line a row. Column 0 is the row's mark: "þ" for a selected row.
// Data columns are 1 up to cols() - 1.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lf {

inline constexpr std::string_view kSelectedRowMark = "þ";
inline constexpr std::string_view kNotAssigned = "Not Assigned";
inline constexpr int kCaptionRow = 0;
inline constexpr int kAssignmentRow = 1;
inline constexpr int kFirstDataRow = 2;

class ImportGrid {
 public:
  int rows() const { return rows_; }
  int cols() const { return cols_; }

  // Empties the grid: no rows, no columns.
  void clear();
  // Sets the size; cells that stay keep their text, new cells are empty.
  void resize(int rows, int cols);
  // Adds one empty row at the end.
  void addRow();
  // Makes room for the rows, so that adding them moves no cell.
  void reserveRows(int rows);

  // The text of a cell; a cell outside the grid reads as empty.
  const std::string& textMatrix(int row, int col) const;
  // REQUIRES: row < rows(). A column beyond the last widens the grid.
  void setTextMatrix(int row, int col, std::string text);

  bool isRowSelected(int row) const { return textMatrix(row, 0) == kSelectedRowMark; }
  void setRowSelected(int row, bool selected);
  // Marks or clears every data row.
  void selectAllRows(bool selected);
  int dataRowCount() const { return rows_ > kFirstDataRow ? rows_ - kFirstDataRow : 0; }

 private:
  int rows_ = 0;
  int cols_ = 0;
  std::vector<std::string> cells_;  // row by row
};

}  // namespace lf
