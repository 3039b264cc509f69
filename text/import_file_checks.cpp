// Checks of a client file before a text import.
#include "text/import_file_checks.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "base/failure.hpp"
#include "base/general_utilities.hpp"

namespace lf {

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
  std::fclose(file);
}

void checkImportGridHasData(const ImportGrid& grid, const std::string& path) {
  for (int row = kFirstDataRow; row < grid.rows(); ++row)
    for (int col = 1; col < grid.cols(); ++col)
      if (!GeneralUtilities::isBlank(grid.textMatrix(row, col))) return;
  throw Failure("the client file " + path + " holds no data rows");
}

}  // namespace lf
