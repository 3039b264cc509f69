// The preset file dialog.
#include "host/file_dialog.hpp"

#include <filesystem>

namespace lf {

FileDialogResult PresetFileDialog::showOpen() {
  if (path_.empty()) return {};
  if ((flags_ & 4096) != 0 && !std::filesystem::exists(path_)) return {};
  return {path_, true};
}

}  // namespace lf
