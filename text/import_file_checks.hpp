// Checks of a client file before a text import reads it, for the unattended front ends: each
// failure is one Failure naming the file, thrown before anything is written.
#pragma once

#include <cstddef>
#include <string>

#include "text/import_grid.hpp"

namespace lf {

// The file exists, is no folder, can be opened for reading, is no larger than the reader
// takes (DelimitedFileReader::kMaxFileBytes), and its first kSniffedBytes hold no control
// character that text never holds (binary data).
void checkImportFile(const std::string& path);
inline constexpr size_t kSniffedBytes = 64 * 1024;
// The loaded grid has at least one column with text in it: an empty file, or one of blank
// lines only, holds no clients.
void checkImportGridHasData(const ImportGrid& grid, const std::string& path);

}  // namespace lf
