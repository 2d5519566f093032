#pragma once

#include "text/ScanBytes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace consolidator {

/// Bounds-checked, forward-only reader of little-endian data on a stdio stream, from the stream's
/// position at construction to its end. It reads ahead in large blocks, so the stream's own
/// position means nothing until the caller seeks again.
///
/// A read delivers all of its bytes or fails; after a failure all further reads fail. Lengths are
/// checked against the rest of the stream before memory is asked for. A null stream, or one that
/// cannot seek, has no bytes.
class ByteReader {
 public:
  explicit ByteReader(std::FILE* stream);

  /// Whether there is a stream at all.
  bool hasStream() const { return stream_ != nullptr; }

  /// Number of bytes that are left.
  std::uint64_t remaining() const { return unread_ + (end_ - position_); }

  /// Reads exactly `size` bytes.
  bool readBytes(char* bytes, std::size_t size);

  bool readU32(std::uint32_t& value) {
    if (end_ - position_ < sizeof value && !fill(sizeof value)) return false;
    std::memcpy(&value, block_.get() + position_, sizeof value);
    position_ += sizeof value;
    return true;
  }

  /// Reads a length or count in which 0xFFFFFFFF stands for 0xFFFFFFFE.
  bool readClampedU32(std::uint32_t& value) {
    constexpr std::uint32_t largest = 0xFFFFFFFEU;
    if (!readU32(value)) return false;
    value = std::min(value, largest);
    return true;
  }

  /// Reads a text: a clamped u32 length and that many bytes, all of which are consumed. The text
  /// ends at its first zero byte.
  bool readText(std::string& text) {
    std::uint32_t size = 0;
    if (!readClampedU32(size)) return false;
    if (size > end_ - position_) return readTextBeyondBlock(text, size);
    const std::string_view stored(block_.get() + position_, size);
    text.assign(stored.data(), lengthBeforeCodeBelow<1>(stored));
    position_ += size;
    return true;
  }

  /// Skips exactly `size` bytes, however many they are, at the cost of a few.
  bool skip(std::uint64_t size) {
    if (size > end_ - position_) return skipBeyondBlock(size);
    position_ += size;
    return true;
  }

  /// Skips a text as readText() reads it.
  bool skipText() {
    std::uint32_t size = 0;
    return readClampedU32(size) && skip(size);
  }

  /// How many elements to reserve for a list that claims `count` elements of `elementSize` bytes
  /// in memory: never more memory than bytes are left.
  std::size_t plausibleCount(std::uint32_t count, std::size_t elementSize) const;

 private:
  bool readTextBeyondBlock(std::string& text, std::uint32_t size);
  bool skipBeyondBlock(std::uint64_t size);
  bool fill(std::size_t size);
  std::size_t readAhead(char* bytes, std::size_t size);
  bool fail();

  std::FILE* stream_;
  std::uint64_t unread_ = 0;       // bytes of the stream that are not in the block yet
  std::unique_ptr<char[]> block_;  // holds the bytes from position_ to end_
  std::size_t position_ = 0;
  std::size_t end_ = 0;
};

}  // namespace consolidator
