// The import grid as a row-major table of cells over the held file text and a buffer of
// copied texts.
#include "text/import_grid.hpp"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace lf {

namespace {
// The owned buffer is compacted before its offsets could overflow a cell's fields.
constexpr size_t kOwnedLimit = size_t{1} << 31;
}  // namespace

ImportGrid::ImportGrid() : owned_(kSelectedRowMark) {}

void ImportGrid::clear() {
  rows_ = 0;
  cols_ = 0;
  cells_ = {};
  held_ = {};
  owned_ = std::string(kSelectedRowMark);
}

void ImportGrid::resize(int rows, int cols) {
  if (rows < 0) rows = 0;
  if (cols < 0) cols = 0;
  if (cols != cols_) {
    std::vector<Cell> cells(static_cast<size_t>(rows) * cols);
    for (int r = 0; r < std::min(rows, rows_); ++r)
      for (int c = 0; c < std::min(cols, cols_); ++c)
        cells[static_cast<size_t>(r) * cols + c] = cells_[static_cast<size_t>(r) * cols_ + c];
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

std::string_view ImportGrid::textMatrix(int row, int col) const {
  if (row < 0 || row >= rows_ || col < 0 || col >= cols_) return {};
  const Cell cell = cells_[static_cast<size_t>(row) * cols_ + col];
  if (cell.size & kHeld) return std::string_view(held_).substr(cell.offset, cell.size & ~kHeld);
  return std::string_view(owned_).substr(cell.offset, cell.size);
}

ImportGrid::Cell* ImportGrid::cellAt(int row, int col) {
  if (row < 0 || row >= rows_ || col < 0) return nullptr;
  if (col >= cols_) resize(rows_, col + 1);
  return &cells_[static_cast<size_t>(row) * cols_ + col];
}

ImportGrid::Cell ImportGrid::ownedCell(std::string_view text) {
  if (text.empty()) return {};
  if (text == kSelectedRowMark) return Cell{0, static_cast<std::uint32_t>(text.size())};
  if (text.size() >= kOwnedLimit) throw std::length_error("a grid cell of 2 GB or more");
  // The text may be a cell of this grid: take its place before the buffer can move.
  const bool inside = !owned_.empty() && text.data() >= owned_.data() &&
                      text.data() < owned_.data() + owned_.size();
  const size_t from = inside ? static_cast<size_t>(text.data() - owned_.data()) : 0;
  if (owned_.size() + text.size() > kOwnedLimit) {
    if (inside) {
      std::string copy(text);
      compactOwned();
      return ownedCell(copy);
    }
    compactOwned();
  }
  const Cell cell{static_cast<std::uint32_t>(owned_.size()),
                  static_cast<std::uint32_t>(text.size())};
  if (inside)
    owned_.append(owned_, from, text.size());
  else
    owned_.append(text);
  return cell;
}

void ImportGrid::compactOwned() {
  std::string fresh(kSelectedRowMark);
  for (Cell& cell : cells_) {
    if ((cell.size & kHeld) || cell.offset == 0) continue;  // held text, empty or the mark
    const std::string_view text = std::string_view(owned_).substr(cell.offset, cell.size);
    cell.offset = static_cast<std::uint32_t>(fresh.size());
    fresh.append(text);
  }
  owned_ = std::move(fresh);
}

void ImportGrid::setTextMatrix(int row, int col, std::string_view text) {
  if (row < 0 || row >= rows_ || col < 0) return;
  const Cell cell = ownedCell(text);
  *cellAt(row, col) = cell;
}

std::string_view ImportGrid::holdText(std::string text) {
  if (text.size() >= kHeld) throw std::length_error("a grid text of 2 GB or more");
  // Cells into the text held so far are copied before it goes.
  for (Cell& cell : cells_)
    if (cell.size & kHeld)
      cell = ownedCell(std::string_view(held_).substr(cell.offset, cell.size & ~kHeld));
  held_ = std::move(text);
  return held_;
}

void ImportGrid::setTextView(int row, int col, std::string_view text) {
  if (row < 0 || row >= rows_ || col < 0) return;
  Cell* cell = cellAt(row, col);
  if (text.empty()) {
    *cell = {};
    return;
  }
  *cell = Cell{static_cast<std::uint32_t>(text.data() - held_.data()),
               static_cast<std::uint32_t>(text.size()) | kHeld};
}

void ImportGrid::setRowSelected(int row, bool selected) {
  if (cols_ == 0) resize(rows_, 1);
  setTextMatrix(row, 0, selected ? kSelectedRowMark : std::string_view());
}

void ImportGrid::selectAllRows(bool selected) {
  for (int row = kFirstDataRow; row < rows_; ++row) setRowSelected(row, selected);
}

}  // namespace lf
