// The import grid as a text table.
#include "text/grid_table.hpp"

#include <algorithm>
#include <vector>

namespace lf {

namespace {

constexpr size_t kMaxWidth = 24;

size_t displayWidth(std::string_view text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

// A cell padded or cut to `width` characters.
std::string tableCell(std::string_view text, size_t width) {
  std::string flat;
  for (char c : text) {
    if (c == '\r') continue;
    if (c == '\n')
      flat += "¶";
    else
      flat += c;
  }
  if (displayWidth(flat) <= width) return flat + std::string(width - displayWidth(flat), ' ');
  std::string cut;
  size_t n = 0;
  for (char c : flat) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80 && ++n > width - 1) break;
    cut += c;
  }
  return cut + "…";
}

}  // namespace

std::string gridTable(const ImportGrid& grid, int dataRows, bool withAssignments) {
  const int lastRow = std::min(grid.rows(), kFirstDataRow + std::max(dataRows, 0));
  std::vector<size_t> widths(static_cast<size_t>(std::max(grid.cols(), 1)), 0);
  for (int col = 1; col < grid.cols(); ++col) {
    size_t& w = widths[col];
    w = displayWidth(grid.textMatrix(kCaptionRow, col));
    if (withAssignments) w = std::max(w, displayWidth(grid.textMatrix(kAssignmentRow, col)));
    for (int row = kFirstDataRow; row < lastRow; ++row)
      w = std::max(w, displayWidth(grid.textMatrix(row, col)));
    w = std::clamp<size_t>(w, 1, kMaxWidth);
  }
  std::string out;
  auto line = [&](std::string head, int row) {
    out += tableCell(head, 7);
    for (int col = 1; col < grid.cols(); ++col)
      out += " | " + tableCell(grid.textMatrix(row, col), widths[col]);
    out += "\n";
  };
  line("", kCaptionRow);
  if (withAssignments) line("field", kAssignmentRow);
  for (int row = kFirstDataRow; row < lastRow; ++row)
    line((grid.isRowSelected(row) ? "x " : "  ") + std::to_string(row - kFirstDataRow + 1), row);
  return out;
}

}  // namespace lf
