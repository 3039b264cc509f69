// The grid of a delimited text import: what the wizard shows and the import reads, as plain
// data with no screen behind it.
//
// Row 0 holds the column captions ("Column 1", ... or the file's first line), row 1 each
// column's assigned field ("Not Assigned" until the user picks one), and the file's data
// follows from row 2, one line a row. Column 0 is the row's mark: "þ" for a selected row.
// Data columns are 1 up to cols() - 1.
//
// The grid holds the file's text once (holdText) and most cells as a place in it; only the
// cells that are set from other text (quoted fields, captions, marks, edits) own a copy, in a
// second buffer. A cell is eight bytes, so a large file costs little more than its own size.
#pragma once

#include <cstdint>
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
  ImportGrid();

  int rows() const { return rows_; }
  int cols() const { return cols_; }

  // Empties the grid: no rows, no columns, no held text.
  void clear();
  // Sets the size; cells that stay keep their text, new cells are empty.
  void resize(int rows, int cols);
  // Adds one empty row at the end.
  void addRow();
  // Makes room for the rows, so that adding them moves no cell.
  void reserveRows(int rows);

  // The text of a cell; a cell outside the grid reads as empty. The view stays valid until
  // the grid is next changed.
  std::string_view textMatrix(int row, int col) const;
  // REQUIRES: row < rows(). A column beyond the last widens the grid. The text is copied.
  void setTextMatrix(int row, int col, std::string_view text);

  // Takes the text that setTextView cells point into and returns it as the grid holds it.
  // Cells that pointed into a text held before keep their text.
  std::string_view holdText(std::string text);
  // As setTextMatrix, without a copy. REQUIRES: `text` lies within the view holdText returned.
  void setTextView(int row, int col, std::string_view text);

  bool isRowSelected(int row) const { return textMatrix(row, 0) == kSelectedRowMark; }
  void setRowSelected(int row, bool selected);
  // Marks or clears every data row.
  void selectAllRows(bool selected);
  int dataRowCount() const { return rows_ > kFirstDataRow ? rows_ - kFirstDataRow : 0; }

 private:
  // A cell's text: `size` bytes from `offset` of the held text when kHeld is set in `size`,
  // of owned_ otherwise.
  struct Cell {
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
  };
  static constexpr std::uint32_t kHeld = 0x80000000u;

  Cell* cellAt(int row, int col);  // widens the grid as setTextMatrix does; null outside
  Cell ownedCell(std::string_view text);
  // Copies the live owned texts into a fresh buffer, dropping those no cell uses any more.
  void compactOwned();

  int rows_ = 0;
  int cols_ = 0;
  std::vector<Cell> cells_;  // row by row
  std::string held_;         // the file's text
  std::string owned_;        // texts set by copy, one after another; the mark first
};

}  // namespace lf
