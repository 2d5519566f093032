#include "bytes/ByteReader.h"

#include <algorithm>
#include <cstring>

namespace consolidator {

namespace {

constexpr std::size_t readBlockSize = std::size_t{256} * 1024;

// A file may have very many sections of a few bytes each, which must not cost a block each. Further
// reads take whole blocks.
constexpr std::size_t firstReadSize = std::size_t{4} * 1024;

std::uint64_t bytesUpToEnd(std::FILE* stream) {
  const off_t start = ftello(stream);
  if (start < 0 || fseeko(stream, 0, SEEK_END) != 0) return 0;
  const off_t end = ftello(stream);
  if (fseeko(stream, start, SEEK_SET) != 0 || end < start) return 0;
  return static_cast<std::uint64_t>(end - start);
}

}  // namespace

ByteReader::ByteReader(std::FILE* stream)
    : stream_(stream), unread_(stream == nullptr ? 0 : bytesUpToEnd(stream)) {}

bool ByteReader::readBytes(char* bytes, std::size_t size) {
  if (remaining() < size) return fail();
  const std::size_t held = std::min(size, end_ - position_);
  std::copy_n(block_.get() + position_, held, bytes);
  position_ += held;
  return readAhead(bytes + held, size - held) == size - held || fail();
}

bool ByteReader::readTextBeyondBlock(std::string& text, std::uint32_t size) {
  if (remaining() < size) return fail();
  text.resize(size);
  if (!readBytes(text.data(), size)) return false;
  text.resize(lengthBeforeCodeBelow<1>(text));
  return true;
}

// Reads the last byte, since pseudo files may hold less than their size says.
bool ByteReader::skipBeyondBlock(std::uint64_t size) {
  if (remaining() < size) return fail();
  const std::uint64_t unseen = size - (end_ - position_) - 1;
  position_ = end_;
  if (fseeko(stream_, static_cast<off_t>(unseen), SEEK_CUR) != 0) return fail();
  unread_ -= unseen;
  char last = 0;
  return readAhead(&last, 1) == 1 || fail();
}

std::size_t ByteReader::plausibleCount(std::uint32_t count, std::size_t elementSize) const {
  return static_cast<std::size_t>(std::min<std::uint64_t>(count, remaining() / elementSize));
}

// Makes at least `size` bytes (at most a block) available in the block.
bool ByteReader::fill(std::size_t size) {
  if (remaining() < size) return fail();
  const std::size_t most = block_ ? readBlockSize : std::max(size, firstReadSize);
  if (!block_) block_ = std::make_unique_for_overwrite<char[]>(readBlockSize);
  const std::size_t kept = end_ - position_;
  std::memmove(block_.get(), block_.get() + position_, kept);
  position_ = 0;
  end_ = kept + readAhead(block_.get() + kept, most - kept);
  return end_ >= size || fail();
}

// Reads up to `size` bytes from the stream.
std::size_t ByteReader::readAhead(char* bytes, std::size_t size) {
  const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, unread_));
  const std::size_t got = std::fread(bytes, 1, wanted, stream_);
  // A read error, or a file that shrank since its size was taken, ends the data here.
  unread_ = got == wanted ? unread_ - got : 0;
  return got;
}

bool ByteReader::fail() {
  unread_ = 0;
  position_ = end_;
  return false;
}

}  // namespace consolidator
