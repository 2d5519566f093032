#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace Devpack {

/// A text of any bytes that may be absent. Documents hold millions of them, nearly all short: one
/// takes 16 bytes and holds up to `inlineSize` bytes in itself.
class OptionalText {
 public:
  static constexpr std::size_t inlineSize = 15;

  OptionalText() = default;

  OptionalText(const OptionalText& other) {
    if (other.isPresent()) set(other.get());
  }

  OptionalText(OptionalText&& other) noexcept : bytes_(std::exchange(other.bytes_, {})) {}

  OptionalText& operator=(OptionalText other) noexcept {
    other.bytes_ = std::exchange(bytes_, other.bytes_);  // far faster than a swap byte by byte
    return *this;
  }

  ~OptionalText() { release(); }

  bool isPresent() const { return kind() != isAbsent; }

  /// The text, as long as the object is not changed; empty when it is absent.
  std::string_view get() const {
    if (kind() != isLong) return {bytes_.data(), kind() == isAbsent ? 0 : kind() - 1U};
    std::size_t size = 0;
    std::memcpy(&size, block(), sizeof size);
    return {block() + sizeof size, size};
  }

  /// The text may be one that get() has returned.
  void set(std::string_view text) {
    std::array<char, inlineSize + 1> bytes{};
    if (text.size() <= inlineSize) {
      text.copy(bytes.data(), text.size());
      bytes.back() = static_cast<char>(text.size() + 1);
    } else {
      const char* const copy = copyOf(text);
      std::memcpy(bytes.data(), &copy, sizeof copy);
      bytes.back() = isLong;
    }
    release();
    bytes_ = bytes;
  }

  friend bool operator==(const OptionalText& a, const OptionalText& b) {
    return a.isPresent() == b.isPresent() && a.get() == b.get();
  }

 private:
  // What the last byte holds: one of these, or the size of the text before it plus 1.
  static constexpr char isAbsent = 0;
  static constexpr char isLong = inlineSize + 2;

  // A block with the size of the text and the text.
  static const char* copyOf(std::string_view text) {
    const std::size_t size = text.size();
    auto copy = std::make_unique<char[]>(sizeof size + size);
    std::memcpy(copy.get(), &size, sizeof size);
    text.copy(copy.get() + sizeof size, size);
    return copy.release();
  }

  unsigned char kind() const { return static_cast<unsigned char>(bytes_.back()); }

  const char* block() const {
    const char* pointer = nullptr;
    std::memcpy(&pointer, bytes_.data(), sizeof pointer);
    return pointer;
  }

  void release() {
    if (kind() == isLong) const std::unique_ptr<const char[]> released(block());
  }

  std::array<char, inlineSize + 1> bytes_{};
};

}  // namespace Devpack
