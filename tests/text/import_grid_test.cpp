// The import grid's cells: places in the held file text and copied texts, kept apart from one
// another through resizing, editing and a new held text.
#include "text/import_grid.hpp"

#include <gtest/gtest.h>

#include <string>

namespace lf {
namespace {

TEST(ImportGridTest, HeldTextCellsSurviveResizeAndANewHeldText) {
  ImportGrid grid;
  grid.resize(3, 3);
  const std::string_view text = grid.holdText("Ann,Lee");
  grid.setTextView(2, 1, text.substr(0, 3));
  grid.setTextView(2, 2, text.substr(4, 3));
  grid.setTextMatrix(kCaptionRow, 1, "Column 1");
  grid.resize(4, 5);  // wider: every cell moves
  EXPECT_EQ(grid.textMatrix(2, 1), "Ann");
  EXPECT_EQ(grid.textMatrix(2, 2), "Lee");
  EXPECT_EQ(grid.textMatrix(kCaptionRow, 1), "Column 1");
  EXPECT_EQ(grid.textMatrix(3, 4), "");
  // A cell of the text held before keeps its text when another text is held.
  const std::string_view next = grid.holdText("Bob");
  grid.setTextView(3, 1, next);
  EXPECT_EQ(grid.textMatrix(2, 1), "Ann");
  EXPECT_EQ(grid.textMatrix(2, 2), "Lee");
  EXPECT_EQ(grid.textMatrix(3, 1), "Bob");
  EXPECT_EQ(grid.textMatrix(9, 1), "");  // outside the grid
}

TEST(ImportGridTest, EditedCellsAndMarksReadBackAsSet) {
  ImportGrid grid;
  grid.resize(4, 2);
  const std::string_view text = grid.holdText("SMITH");
  grid.setTextView(2, 1, text);
  // A cell set from another cell's text, a copied text in the same buffer.
  grid.setTextMatrix(3, 1, "Jones");
  grid.setTextMatrix(2, 1, grid.textMatrix(3, 1));
  grid.setTextMatrix(3, 1, grid.textMatrix(3, 1));
  EXPECT_EQ(grid.textMatrix(2, 1), "Jones");
  EXPECT_EQ(grid.textMatrix(3, 1), "Jones");
  grid.setTextMatrix(2, 3, "wide");  // a column beyond the last widens the grid
  EXPECT_EQ(grid.cols(), 4);
  EXPECT_EQ(grid.textMatrix(2, 1), "Jones");
  EXPECT_EQ(grid.textMatrix(2, 3), "wide");
  grid.selectAllRows(true);
  EXPECT_TRUE(grid.isRowSelected(2));
  EXPECT_TRUE(grid.isRowSelected(3));
  EXPECT_FALSE(grid.isRowSelected(kAssignmentRow));
  grid.setRowSelected(3, false);
  EXPECT_FALSE(grid.isRowSelected(3));
  EXPECT_EQ(grid.textMatrix(2, 0), kSelectedRowMark);
  grid.clear();
  EXPECT_EQ(grid.rows(), 0);
  EXPECT_EQ(grid.textMatrix(2, 1), "");
}

}  // namespace
}  // namespace lf
