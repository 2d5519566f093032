#pragma once

#include <cstdint>
#include <string_view>

namespace consolidated {

/// A text of a consolidated file: a view of bytes that may be anything, UTF-8 or not. The stored
/// bytes may hold zero bytes, at the first of which `consolidator` ends the text when it reads it.
class Text {
 public:
  Text() = default;

  Text(std::string_view stored, std::uint64_t offset) noexcept : stored_(stored), offset_(offset) {}

  /// The text as `consolidator` reads it: up to its first zero byte. Looks for that byte each time.
  std::string_view view() const noexcept { return stored_.substr(0, stored_.find('\0')); }

  /// All stored bytes.
  std::string_view stored() const noexcept { return stored_; }

  /// Where the stored bytes begin, in bytes from the start of the file. The length of a text in a
  /// kernel record is the u32 in front of them.
  std::uint64_t offset() const noexcept { return offset_; }

 private:
  std::string_view stored_;
  std::uint64_t offset_ = 0;
};

}  // namespace consolidated
