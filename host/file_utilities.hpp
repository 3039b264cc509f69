// The file utilities (fileUtilities): the existence test before a source database is opened,
// the folder of a path for a file dialog, and the initial folder when none is known.
#pragma once

#include <string>
#include <string_view>

namespace lf {

class FileUtilities {
 public:
  // True for an existing regular file (a folder is no file).
  static bool fileExists(std::string_view path);
  // The folder part of a path, "/" or "\" alike: "/data/tps.mdb" gives "/data", "C:\x\y.mdb"
  // gives "C:\x", "/tps.mdb" gives "/"; a bare file name gives the empty text.
  static std::string folderOfPath(std::string_view path);
  // The given default when it names an existing folder, otherwise the root "/" (callers pass
  // the root of drive C, which a Linux machine does not have).
  static std::string getSystemDrive(std::string_view defaultFolder);
};

}  // namespace lf
