#include "inspect/OutputSink.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace consolidator::inspect {

namespace {

constexpr std::size_t blockSize = 64 * 1024;

}  // namespace

OutputSink::OutputSink(int descriptor) : descriptor_(descriptor), block_(blockSize) {}

void OutputSink::write(std::string_view text) {
  if (text.size() > block_.size() - size_) {
    writeBlock();
    if (text.size() >= block_.size()) return writeThrough(text);
  }
  std::copy(text.begin(), text.end(), block_.data() + size_);
  size_ += text.size();
}

bool OutputSink::flush() {
  writeBlock();
  return error_ == 0;
}

bool OutputSink::isTerminal() const { return ::isatty(descriptor_) == 1; }

void OutputSink::writeBlock() {
  writeThrough({block_.data(), size_});
  size_ = 0;
}

void OutputSink::writeThrough(std::string_view bytes) {
  while (error_ == 0 && !bytes.empty()) {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      error_ = errno;
    }
  }
}

}  // namespace consolidator::inspect
