// The folder scanner.
#include "host/file_load_class.hpp"

#include <algorithm>
#include <filesystem>

#include "base/general_utilities.hpp"

namespace lf {

void FileLoadClass::scan(const std::string& folder, bool /*flag1*/, bool /*flag2*/, bool /*flag3*/,
                         bool /*flag4*/) {
  fileList_.clear();
  if (startFileScan) startFileScan();
  if (statusLabel) statusLabel(folder);

  std::vector<std::filesystem::path> found;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (!entry.is_regular_file(error)) continue;
    std::string extension = entry.path().extension().string();
    if (extension.empty()) continue;
    extension = GeneralUtilities::upperCase(extension.substr(1));
    for (const std::string& wanted : extensions_)
      if (GeneralUtilities::upperCase(wanted) == extension) {
        found.push_back(entry.path());
        break;
      }
  }
  std::sort(found.begin(), found.end());

  const long count = static_cast<long>(found.size());
  if (initializeProgressBar) initializeProgressBar(count);
  for (long i = 0; i < count; ++i) {
    const std::filesystem::path& path = found[static_cast<size_t>(i)];
    fileList_.push_back({std::to_string(i + 1), path.string(), path.filename().string()});
    if (setProgressBarValue) setProgressBarValue(i + 1);
  }
}

}  // namespace lf
