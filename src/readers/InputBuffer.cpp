#include "readers/InputBuffer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

namespace consolidator {

namespace {

constexpr std::size_t blockSize = std::size_t{256} * 1024;

bool isWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Returns the first white space in a range, or its end. Looks at eight bytes at a time, since
// paths are long: all white space is below '!', and little else in a text is.
const char* findWhiteSpace(const char* start, const char* end) {
  constexpr std::uint64_t each = 0x0101'0101'0101'0101U;
  constexpr std::uint64_t highBits = 0x80 * each;
  for (; end - start >= 8; start += 8) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, start, sizeof bytes);
    const std::uint64_t below = (bytes - '!' * each) & ~bytes & highBits;
    if (below != 0) {
      const char* const found = std::find_if(start, start + 8, isWhiteSpace);
      if (found != start + 8) return found;
    }
  }
  return std::find_if(start, end, isWhiteSpace);
}

int openForReading(const char* fileName) {
  const int descriptor = open(fileName, O_RDONLY | O_CLOEXEC);

  struct stat status {};

  if (descriptor >= 0 && (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode))) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

}  // namespace

InputBuffer::InputBuffer(const char* fileName)
    : descriptor_(openForReading(fileName)), isOpen_(descriptor_ >= 0), atEnd_(!isOpen_) {}

InputBuffer::InputBuffer(std::string_view text) : isOpen_(true), atEnd_(true) {
  // The get area is never written to; std::streambuf has no other type for it.
  char* const start = const_cast<char*>(text.data());  // NOLINT(*-const-cast)
  setg(start, start, start + text.size());
}

InputBuffer::~InputBuffer() {
  if (descriptor_ >= 0) close(descriptor_);
}

bool InputBuffer::skipWhiteSpace() {
  do {
    const char* const next = std::find_if_not(gptr(), egptr(), isWhiteSpace);
    consume(static_cast<std::size_t>(next - gptr()));
    if (available() > 0) return true;
  } while (readMore());
  return false;
}

std::string_view InputBuffer::readWord() {
  if (!skipWhiteSpace()) return {};
  std::size_t length = 0;
  do {
    const char* const wordEnd = findWhiteSpace(gptr() + length, egptr());
    length = static_cast<std::size_t>(wordEnd - gptr());
  } while (length == available() && readMore());
  const std::string_view word{gptr(), length};
  consume(length);
  return word;
}

void InputBuffer::skipLine() {
  do {
    const std::size_t length = lengthUpTo('\n', 0);
    if (length < available()) return consume(length + 1);
    consume(length);
  } while (readMore());
}

std::optional<BoundedLine> InputBuffer::readLine(std::size_t bound) {
  if (available() == 0 && !readMore()) return std::nullopt;
  std::size_t length = 0;
  do {
    length = lengthUpTo('\n', length);
    if (length > bound) {
      skipLine();
      return BoundedLine{{}, true};
    }
  } while (length == available() && readMore());
  const char* const start = gptr();
  consume(std::min(length + 1, available()));
  return BoundedLine{{start, strnlen(start, length)}, false};
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

// Adds a block's worth of bytes behind those that are available. Returns false at the end.
bool InputBuffer::readMore() {
  if (atEnd_) return false;
  makeRoom();
  const std::size_t kept = available();
  ssize_t got = 0;
  do {
    got = read(descriptor_, block_.get() + kept, capacity_ - kept);
  } while (got < 0 && errno == EINTR);
  atEnd_ = got <= 0;
  if (atEnd_) return false;
  setg(block_.get(), block_.get(), block_.get() + kept + got);
  return true;
}

// Moves the available bytes to the start of the block, which grows when they fill it.
void InputBuffer::makeRoom() {
  const std::size_t kept = available();
  std::unique_ptr<char[]> outgrown;
  if (kept == capacity_) {
    capacity_ = std::max(blockSize, 2 * capacity_);
    outgrown = std::exchange(block_, std::make_unique_for_overwrite<char[]>(capacity_));
  }
  if (kept > 0) std::memmove(block_.get(), gptr(), kept);
  setg(block_.get(), block_.get(), block_.get() + kept);
}

}  // namespace consolidator
