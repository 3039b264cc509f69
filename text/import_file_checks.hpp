// Checks of a client file before a text import reads it, for the unattended front ends: each
// failure is one Failure naming the file, thrown before anything is written.
#pragma once

#include <string>

#include "text/import_grid.hpp"

namespace lf {

// The file exists, is no folder and can be opened for reading.
void checkImportFile(const std::string& path);
// The loaded grid has at least one column with text in it: an empty file, or one of blank
// lines only, holds no clients.
void checkImportGridHasData(const ImportGrid& grid, const std::string& path);

}  // namespace lf
