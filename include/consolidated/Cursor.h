#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace consolidated::detail {

/// The little-endian number at a place that has at least 4 bytes.
inline std::uint32_t u32At(const char* place) noexcept {
  const auto byte = [&](int i) { return std::uint32_t{static_cast<unsigned char>(place[i])}; };
  return byte(0) | byte(1) << 8U | byte(2) << 16U | byte(3) << 24U;
}

/// Reads numbers and runs of bytes one after another, never beyond the end. The views of this
/// library are made with it; programs have no use for it.
///
/// After a failed read, the cursor knows the count or length that asked for too much; further reads
/// mean nothing.
class Cursor {
 public:
  /// Greatest length of a text and number of locations; a greater one in a file stands for it.
  static constexpr std::uint32_t largestSize = 0xFFFFFFFEU;

  Cursor() = default;

  /// A position beyond the end is the end.
  Cursor(std::string_view bytes, std::uint64_t position) noexcept
      : bytes_(bytes), position_(std::min<std::uint64_t>(position, bytes.size())) {}

  std::string_view bytes() const noexcept { return bytes_; }

  std::uint64_t position() const noexcept { return position_; }

  std::uint64_t remaining() const noexcept { return bytes_.size() - position_; }

  /// Reads a number. Returns false, and leaves it unchanged, if fewer than 4 bytes are left.
  bool readU32(std::uint32_t& value) noexcept {
    if (remaining() < sizeof value) return false;
    value = u32At(bytes_.data() + position_);
    position_ += sizeof value;
    return true;
  }

  /// Reads a number and that many elements of `width` bytes, which are not looked at.
  bool readRun(std::uint32_t& count, std::string_view& run, std::uint32_t width) noexcept {
    const std::uint64_t start = position_;
    if (!readU32(count)) return false;
    count = std::min(count, largestSize);
    const std::uint64_t size = std::uint64_t{count} * width;
    if (remaining() < size) return failAt(start);
    run = {bytes_.data() + position_, static_cast<std::size_t>(size)};
    position_ += size;
    return true;
  }

  /// Notes the place of the number that asks for too much, unless an inner one is known. Returns
  /// false.
  bool failAt(std::uint64_t place) noexcept {
    if (failure_ == nowhere) failure_ = place;
    return false;
  }

  std::uint64_t failure() const noexcept { return failure_; }

 private:
  static constexpr std::uint64_t nowhere = ~std::uint64_t{0};

  std::string_view bytes_;
  std::uint64_t position_ = 0;
  std::uint64_t failure_ = nowhere;
};

}  // namespace consolidated::detail
