#include "lmx60/FileSource.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace lmx {

namespace {

bool is_directory(int descriptor) {
  struct stat status {};

  return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

// Unlike the open, reads wait for a writer that is still there.
bool make_blocking(int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  return flags >= 0 && fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) == 0;
}

int open_at_once(const char* file_name) {
  const int descriptor = open(file_name, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor >= 0 && (is_directory(descriptor) || !make_blocking(descriptor))) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

}  // namespace

c_file_source::c_file_source(const char* file_name) : descriptor_(open_at_once(file_name)) {}

c_file_source::~c_file_source() {
  if (descriptor_ >= 0) close(descriptor_);
}

std::size_t c_file_source::read(char* bytes, std::size_t size) {
  std::size_t count = 0;
  while (count < size) {
    const ssize_t got = ::read(descriptor_, bytes + count, size - count);
    if (got > 0) {
      count += static_cast<std::size_t>(got);
    } else if (got == 0 || errno != EINTR) {
      break;
    }
  }
  return count;
}

}  // namespace lmx
