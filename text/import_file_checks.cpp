// Checks of a client file before a text import.
#include "text/import_file_checks.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"
#include "text/delimited_file_reader.hpp"

namespace lf {

namespace {

// A control character that no text file holds: all below blank except NUL (dropped when
// read, as in a UTF-16 export), tab, the line ends, form feed, end-of-file and escape.
bool isBinaryByte(unsigned char c) {
  return c < 0x20 && c != 0 && c != '\t' && c != '\n' && c != '\v' && c != '\f' && c != '\r' &&
         c != 0x1A && c != 0x1B;
}

}  // namespace

void checkImportFile(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (path.empty()) throw Failure("no client file given (--file)");
  const fs::file_status status = fs::status(path, error);
  if (!fs::exists(status)) throw Failure("the client file " + path + " does not exist");
  if (fs::is_directory(status)) throw Failure(path + " is a folder, not a client file");
  FILE* file = std::fopen(path.c_str(), "rb");
  if (file == nullptr)
    throw Failure("cannot read the client file " + path + ": " + std::strerror(errno));
  unsigned char start[kSniffedBytes];
  const size_t n = std::fread(start, 1, sizeof start, file);
  std::fclose(file);
  const auto size = fs::file_size(path, error);
  if (!error && size > DelimitedFileReader::kMaxFileBytes)
    throw Failure(DelimitedFileReader::tooLargeMessage(path));
  for (size_t i = 0; i < n; ++i) {
    if (!isBinaryByte(start[i])) continue;
    char what[64];
    std::snprintf(what, sizeof what, " (byte 0x%02X at offset %zu)", start[i], i);
    throw Failure("the client file " + path + " holds binary data" + what + ", not delimited text");
  }
}

void checkImportGridHasData(const ImportGrid& grid, const std::string& path) {
  for (int row = kFirstDataRow; row < grid.rows(); ++row)
    for (int col = 1; col < grid.cols(); ++col)
      if (!GeneralUtilities::isBlank(grid.textMatrix(row, col))) return;
  throw Failure("the client file " + path + " holds no data rows");
}

}  // namespace lf
