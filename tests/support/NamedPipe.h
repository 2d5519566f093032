#pragma once

#include "TemporaryFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

namespace consolidator {

/// A named pipe with a reader and a writer at its ends. The reader takes nothing: it keeps what was
/// written after the writer has gone, as a program does that opened the pipe and has yet to read.
class NamedPipe {
 public:
  NamedPipe() {
    if (mkfifo(path_.c_str(), 0600) != 0) fail();
    reader_ = open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    writer_ = open(path_.c_str(), O_WRONLY | O_CLOEXEC);
    if (reader_ < 0 || writer_ < 0) fail();
  }

  NamedPipe(const NamedPipe&) = delete;
  NamedPipe& operator=(const NamedPipe&) = delete;

  ~NamedPipe() {
    closeWriter();
    close(reader_);
  }

  const std::string& path() const { return path_; }

  /// Waits for room in the pipe.
  void write(std::string_view bytes) const {
    if (::write(writer_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) fail();
  }

  void closeWriter() {
    if (writer_ >= 0) close(writer_);
    writer_ = -1;
  }

 private:
  [[noreturn]] static void fail() {
    throw std::system_error(errno, std::generic_category(), "named pipe");
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("pipe");
  int reader_ = -1;
  int writer_ = -1;
};

}  // namespace consolidator
