// The import grid as a row-major table of texts.
#include "text/import_grid.hpp"

#include <algorithm>
#include <utility>

namespace lf {

namespace {
const std::string kEmpty;
}

void ImportGrid::clear() {
  rows_ = 0;
  cols_ = 0;
  cells_.clear();
}

void ImportGrid::resize(int rows, int cols) {
  if (rows < 0) rows = 0;
  if (cols < 0) cols = 0;
  if (cols != cols_) {
    std::vector<std::string> cells(static_cast<size_t>(rows) * cols);
    for (int r = 0; r < std::min(rows, rows_); ++r)
      for (int c = 0; c < std::min(cols, cols_); ++c)
        cells[static_cast<size_t>(r) * cols + c] =
            std::move(cells_[static_cast<size_t>(r) * cols_ + c]);
    cells_ = std::move(cells);
  } else {
    cells_.resize(static_cast<size_t>(rows) * cols);
  }
  rows_ = rows;
  cols_ = cols;
}

void ImportGrid::reserveRows(int rows) {
  if (rows > 0) cells_.reserve(static_cast<size_t>(rows) * cols_);
}

void ImportGrid::addRow() {
  cells_.resize(cells_.size() + cols_);
  ++rows_;
}

const std::string& ImportGrid::textMatrix(int row, int col) const {
  if (row < 0 || row >= rows_ || col < 0 || col >= cols_) return kEmpty;
  return cells_[static_cast<size_t>(row) * cols_ + col];
}

void ImportGrid::setTextMatrix(int row, int col, std::string text) {
  if (row < 0 || row >= rows_ || col < 0) return;
  if (col >= cols_) resize(rows_, col + 1);
  cells_[static_cast<size_t>(row) * cols_ + col] = std::move(text);
}

void ImportGrid::setRowSelected(int row, bool selected) {
  if (cols_ == 0) resize(rows_, 1);
  setTextMatrix(row, 0, selected ? std::string(kSelectedRowMark) : std::string());
}

void ImportGrid::selectAllRows(bool selected) {
  for (int row = kFirstDataRow; row < rows_; ++row) setRowSelected(row, selected);
}

}  // namespace lf
