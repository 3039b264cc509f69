// File existence, folder of a path, system drive.
#include "host/file_utilities.hpp"

#include <filesystem>
#include <system_error>

namespace lf {

bool FileUtilities::fileExists(std::string_view path) {
  if (path.empty()) return false;
  std::error_code ec;
  return std::filesystem::is_regular_file(std::filesystem::path(path), ec);
}

std::string FileUtilities::folderOfPath(std::string_view path) {
  size_t at = path.find_last_of("/\\");
  if (at == std::string_view::npos) return "";
  if (at == 0 || path[at - 1] == ':') return std::string(path.substr(0, at + 1));  // a root
  return std::string(path.substr(0, at));
}

std::string FileUtilities::getSystemDrive(std::string_view defaultFolder) {
  std::error_code ec;
  if (!defaultFolder.empty() &&
      std::filesystem::is_directory(std::filesystem::path(defaultFolder), ec))
    return std::string(defaultFolder);
  return "/";
}

}  // namespace lf
