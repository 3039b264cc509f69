// FileLoadClass: the folder scanner of the utilities library. Given the extensions to look for
// and a folder, it lists the folder's files with one of them (any letter case) in a keyed
// table of three columns (key, full path, display text) and tells its owner how the scan goes
// through four events: the scan starts, the count is known (the progress bar's range), the
// bar moves, and a status text.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace lf {

// One row of the scan's file list.
struct FileLoadRow {
  std::string key;      // 1: "1", "2", ... in the order listed
  std::string path;     // 2: full path
  std::string display;  // 3: the file name
};

class FileLoadClass {
 public:
  // The file list property: the last scan's result.
  const std::vector<FileLoadRow>& fileList() const { return fileList_; }
  // The extensions without their point ("16T"); compared without letter case.
  void setExtensions(std::vector<std::string> extensions) { extensions_ = std::move(extensions); }

  // Scans the folder's own files (not its subfolders), sorted by name. The four flags are the
  // callers' (the wizards pass true, false, false, true); this scanner needs none. Raises
  // startFileScan, statusLabel with the folder, initializeProgressBar with the count of files
  // found, then setProgressBarValue 1 to count as each is listed.
  void scan(const std::string& folder, bool flag1, bool flag2, bool flag3, bool flag4);

  std::function<void()> startFileScan;
  std::function<void(long count)> initializeProgressBar;
  std::function<void(long value)> setProgressBarValue;
  std::function<void(const std::string& text)> statusLabel;

 private:
  std::vector<std::string> extensions_;
  std::vector<FileLoadRow> fileList_;
};

}  // namespace lf
