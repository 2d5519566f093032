#pragma once

#include "TemporaryFolder.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

namespace consolidator {

/// A file that has a name to open it by as often as wanted, but no disk below it: for tests that
/// write thousands of files.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("MemoryFile", MFD_CLOEXEC)) {
    if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "MemoryFile");
  }

  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  ~MemoryFile() { close(descriptor_); }

  /// Stays the file's; what is written to it follows what was written to it before.
  int descriptor() const { return descriptor_; }

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  /// Replaces what the file holds.
  void write(std::string_view bytes) const { writeFile(path(), bytes); }

  /// All bytes of the file.
  std::string read() const { return readFile(path()); }

 private:
  int descriptor_;
};

}  // namespace consolidator
