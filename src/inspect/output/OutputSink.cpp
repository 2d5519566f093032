#include "inspect/output/OutputSink.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace consolidator::inspect {

namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;

// Whether a write that failed is to be tried again, once there is room.
bool isWorthAnotherTry(int descriptor) {
  if (errno == EINTR) return true;
  if (errno != EAGAIN) return false;
  pollfd waiting{descriptor, POLLOUT, 0};
  return ::poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

OutputSink::OutputSink(int descriptor) : descriptor_(descriptor), block_(blockSize) {}

// Whatever is written goes through the block: the system would refuse the bytes of a mapped file
// that was cut meanwhile, while a program that touches them itself has them guarded.
void OutputSink::write(std::string_view text) {
  while (!text.empty()) {
    if (size_ == block_.size()) writeBlock();
    const std::size_t count = std::min(text.size(), block_.size() - size_);
    std::copy_n(text.data(), count, block_.data() + size_);
    size_ += count;
    text.remove_prefix(count);
  }
}

bool OutputSink::flush() {
  writeBlock();
  return error_ == 0;
}

void OutputSink::writeBlock() {
  std::string_view left(block_.data(), size_);
  while (error_ == 0 && !left.empty()) {
    const ssize_t written = ::write(descriptor_, left.data(), left.size());
    if (written > 0) {
      left.remove_prefix(static_cast<std::size_t>(written));
    } else if (written == 0) {
      error_ = EIO;
    } else if (!isWorthAnotherTry(descriptor_)) {
      error_ = errno;
    }
  }
  size_ = 0;
}

}  // namespace consolidator::inspect
