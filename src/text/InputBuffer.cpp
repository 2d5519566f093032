#include "text/InputBuffer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace consolidator {

namespace {

constexpr std::size_t blockSize = std::size_t{256} * 1024;

int openForReading(const char* fileName) {
  const int descriptor = open(fileName, O_RDONLY | O_CLOEXEC);

  struct stat status {};

  if (descriptor >= 0 && (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode))) {
    close(descriptor);
    errno = EISDIR;
    return -1;
  }
  return descriptor;
}

}  // namespace

InputBuffer::InputBuffer(const char* fileName)
    : descriptor_(openForReading(fileName)),
      openError_(descriptor_ < 0 ? errno : 0),
      isOpen_(descriptor_ >= 0),
      atEnd_(!isOpen_) {}

InputBuffer::InputBuffer(std::string_view text) : isOpen_(true), atEnd_(true) {
  // The get area is never written to; std::streambuf has no other type for it.
  char* const start = const_cast<char*>(text.data());  // NOLINT(*-const-cast)
  setg(start, start, start + text.size());
}

InputBuffer::~InputBuffer() {
  if (descriptor_ >= 0) close(descriptor_);
}

// Reads on where the word goes beyond the bytes that are available.
std::string_view InputBuffer::readLongWord(std::size_t length) {
  while (length == available() && readMore()) length += wordLength(buffered().substr(length));
  return take(length);
}

void InputBuffer::skipLine() {
  do {
    const std::size_t length = lengthUpTo('\n', 0);
    if (length < available()) return skip(length + 1);
    skip(length);
  } while (readMore());
}

std::optional<BoundedLine> InputBuffer::readLine(std::size_t bound) {
  if (available() == 0 && !readMore()) return std::nullopt;
  std::size_t length = 0;
  do {
    length = lengthUpTo('\n', length);
    if (length > bound) return BoundedLine{{}, true};
  } while (length == available() && readMore());
  const char* const start = gptr();
  skip(std::min(length + 1, available()));
  return BoundedLine{{start, strnlen(start, length)}, false};
}

void InputBuffer::becomeEmpty() {
  isOpen_ = true;
  atEnd_ = true;
  setg(nullptr, nullptr, nullptr);
}

std::uint64_t InputBuffer::lineOf(const char* byte) {
  if (counted_ == nullptr) counted_ = eback();
  if (byte != counted_) {
    // Faster than a look at every byte where lines are as long as they usually are.
    const auto nextEnd = [byte](const char* from) {
      return traits_type::find(from, static_cast<std::size_t>(byte - from), '\n');
    };
    for (const char* end = nextEnd(counted_); end != nullptr; end = nextEnd(end + 1)) ++lineEnds_;
    endsInsideLine_ = byte[-1] != '\n';
    counted_ = byte;
  }
  return lineEnds_ + 1;
}

InputExtent InputBuffer::extent() {
  const std::uint64_t next = line();
  return {bytesRead_ - available(), next - (endsInsideLine_ ? 0 : 1)};
}

// Number of available bytes before the first `c`, at least `from` of which are known not to be it.
std::size_t InputBuffer::lengthUpTo(char c, std::size_t from) const {
  const char* const found = traits_type::find(gptr() + from, available() - from, c);
  return found == nullptr ? available() : static_cast<std::size_t>(found - gptr());
}

InputBuffer::int_type InputBuffer::underflow() {
  if (available() == 0 && !readMore()) return traits_type::eof();
  return traits_type::to_int_type(*gptr());
}

// Appends a block of bytes to those that are available. Returns false at the end.
bool InputBuffer::readMore() {
  hasMetEnd_ = atEnd_ || !readBlock();
  return !hasMetEnd_;
}

bool InputBuffer::readBlock() {
  makeRoom();
  const std::size_t kept = available();
  ssize_t got = 0;
  do {
    got = read(descriptor_, block_.get() + kept, capacity_ - kept);
  } while (got < 0 && errno == EINTR);
  atEnd_ = got <= 0;
  if (!atEnd_) setg(block_.get(), block_.get(), block_.get() + kept + got);
  if (observer_ != nullptr && !atEnd_) {
    bytesRead_ += static_cast<std::uint64_t>(got);
    observer_->onProgress(bytesRead_);
  }
  return !atEnd_;
}

// Moves the available bytes to the start of the block, which grows when they fill it.
void InputBuffer::makeRoom() {
  const std::size_t kept = available();
  std::unique_ptr<char[]> outgrown;
  if (kept == capacity_) {
    capacity_ = std::max(blockSize, 2 * capacity_);
    outgrown = std::exchange(block_, std::make_unique_for_overwrite<char[]>(capacity_));
  }
  if (observer_ != nullptr) line();
  if (kept > 0) std::memmove(block_.get(), gptr(), kept);
  setg(block_.get(), block_.get(), block_.get() + kept);
  counted_ = block_.get();
}

}  // namespace consolidator
