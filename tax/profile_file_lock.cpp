// The advisory lock of stand-in return files.
#include "tax/profile_file_lock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace lf {

bool ProfileFileLock::acquire(const std::string& path) {
  release();
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    ::close(fd);
    return false;
  }
  fd_ = fd;
  return true;
}

void ProfileFileLock::release() {
  if (fd_ < 0) return;
  ::flock(fd_, LOCK_UN);
  ::close(fd_);
  fd_ = -1;
}

bool ProfileFileLock::isInUse(const std::string& path) {
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  bool inUse = ::flock(fd, LOCK_SH | LOCK_NB) != 0;
  ::close(fd);  // closing drops the shared lock, if taken
  return inUse;
}

}  // namespace lf
