// The file dialog: set up in the legacy order, then showOpen gives the chosen path and whether
// the user confirmed. lfimport has no windows: the path comes from the command line or the
// answers file, and a missing path counts as a cancelled dialog.
#pragma once

#include <string>
#include <string_view>

namespace lf {

struct FileDialogResult {
  std::string path;
  bool confirmed = false;
};

class FileDialog {
 public:
  virtual ~FileDialog() = default;
  virtual void setDefaultExtension(std::string_view extension) = 0;
  virtual void setDialogTitle(std::string_view title) = 0;
  virtual void setFilter(std::string_view filter) = 0;
  virtual void setFilterIndex(int index) = 0;
  virtual void setFlags(long flags) = 0;  // 4096: the file must exist
  virtual void setInitialFolder(std::string_view folder) = 0;
  virtual void setOwnerHandle(void* owner) = 0;
  virtual FileDialogResult showOpen() = 0;
};

// Answers with a path given in advance. With flag 4096 a path that does not exist is refused
// (as the dialog would not let the user pick it).
class PresetFileDialog : public FileDialog {
 public:
  explicit PresetFileDialog(std::string path) : path_(std::move(path)) {}
  void setDefaultExtension(std::string_view) override {}
  void setDialogTitle(std::string_view title) override { title_ = std::string(title); }
  void setFilter(std::string_view) override {}
  void setFilterIndex(int) override {}
  void setFlags(long flags) override { flags_ = flags; }
  void setInitialFolder(std::string_view folder) override { folder_ = std::string(folder); }
  void setOwnerHandle(void*) override {}
  FileDialogResult showOpen() override;

  const std::string& title() const { return title_; }

 private:
  std::string path_;
  std::string title_;
  std::string folder_;
  long flags_ = 0;
};

}  // namespace lf
