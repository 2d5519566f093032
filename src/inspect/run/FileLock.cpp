#include "inspect/run/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace consolidator::inspect {

// Whoever had the lock removed its file: the lock that was waited for is then nobody's.
FileLock::FileLock(std::string path) : path_(std::move(path)) {
  while (true) {
    descriptor_ = ::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (descriptor_ < 0) break;
    int result = -1;
    do {
      result = ::flock(descriptor_, LOCK_EX);
    } while (result != 0 && errno == EINTR);
    if (result == 0 && isNamed()) return;
    error_ = errno;
    ::close(descriptor_);
    descriptor_ = -1;
    if (result != 0) return;
  }
  error_ = errno;
}

FileLock::~FileLock() {
  if (descriptor_ < 0) return;
  ::unlink(path_.c_str());
  ::close(descriptor_);
}

bool FileLock::isNamed() const {
  struct stat held {};

  struct stat named {};

  return ::fstat(descriptor_, &held) == 0 && ::lstat(path_.c_str(), &named) == 0 &&
         held.st_ino == named.st_ino && held.st_dev == named.st_dev;
}

}  // namespace consolidator::inspect
