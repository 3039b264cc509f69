// The "in use" lock of stand-in return files: an advisory lock (flock) on the file itself.
//
// The stand-in product holds the exclusive lock while a file is loaded for writing; a
// read-only load only checks that nobody holds it. `lfimport profile-file lock` and the tests
// take the same lock to make a file "in use by another user". The lock belongs to the open
// file, so two holders in one process exclude each other as two processes do.
#pragma once

#include <string>

namespace lf {

class ProfileFileLock {
 public:
  ProfileFileLock() = default;
  ~ProfileFileLock() { release(); }
  ProfileFileLock(const ProfileFileLock&) = delete;
  ProfileFileLock& operator=(const ProfileFileLock&) = delete;

  // Takes the exclusive lock without waiting; false when another holder has the file, or the
  // file cannot be opened.
  bool acquire(const std::string& path);
  void release();
  bool held() const { return fd_ >= 0; }

  // True when another holder has the exclusive lock of the file (a missing file is not in use).
  static bool isInUse(const std::string& path);

 private:
  int fd_ = -1;
};

}  // namespace lf
