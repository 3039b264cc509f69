// The import grid as a text table for a terminal: the captions, optionally the assignment
// row, and the first data rows with their numbers and marks. Cells are cut to a width, line
// breaks inside a cell shown as "¶".
#pragma once

#include <string>

#include "text/import_grid.hpp"

namespace lf {

std::string gridTable(const ImportGrid& grid, int dataRows, bool withAssignments);

}  // namespace lf
