#include "inspect/files/TemporaryFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

namespace consolidator::inspect {

namespace {

constexpr std::size_t copyBlock = std::size_t{64} * 1024;

std::string temporaryTemplate() {
  std::error_code ignored;
  return std::filesystem::temp_directory_path(ignored) / "consolidator-XXXXXX";
}

}  // namespace

TemporaryFile::TemporaryFile()
    : path_(temporaryTemplate()), descriptor_(::mkostemp(path_.data(), O_CLOEXEC)) {
  note(descriptor_ >= 0);
}

TemporaryFile::~TemporaryFile() {
  if (descriptor_ < 0) return;
  ::close(descriptor_);
  ::unlink(path_.c_str());
}

void TemporaryFile::copyTo(OutputSink& sink) {
  std::vector<char> block(copyBlock);
  off_t position = 0;
  while (error_ == 0 && sink.error() == 0) {
    const ssize_t count = ::pread(descriptor_, block.data(), block.size(), position);
    note(count >= 0 || errno == EINTR);
    if (count == 0) return;
    if (count < 0) continue;
    sink.write({block.data(), static_cast<std::size_t>(count)});
    position += count;
  }
}

void TemporaryFile::note(bool isDone) {
  if (!isDone && error_ == 0) error_ = errno;
}

}  // namespace consolidator::inspect
