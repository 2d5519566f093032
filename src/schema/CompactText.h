#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace Devpack {

/// A text of any bytes. Documents hold millions of attributes, nearly all of them short, so that
/// what one takes counts: up to `inlineSize` bytes stand in the object itself, and together with a
/// flag behind it it takes no more than 24 bytes.
class CompactText {
 public:
  static constexpr std::size_t inlineSize = 22;

  CompactText() = default;

  explicit CompactText(std::string_view text) {
    if (text.size() <= inlineSize) {
      text.copy(bytes_.data(), text.size());
      bytes_.back() = static_cast<char>(text.size());
    } else {
      const std::string* const copy = std::make_unique<std::string>(text).release();
      std::memcpy(bytes_.data(), &copy, pointerSize);
      bytes_.back() = isOwner;
    }
  }

  CompactText(const CompactText& other) : CompactText(other.view()) {}

  CompactText(CompactText&& other) noexcept : bytes_(std::exchange(other.bytes_, {})) {}

  CompactText& operator=(CompactText other) noexcept {
    other.bytes_ = std::exchange(bytes_, other.bytes_);  // far faster than a swap byte by byte
    return *this;
  }

  ~CompactText() {
    if (bytes_.back() == isOwner) const std::unique_ptr<const std::string> released(owned());
  }

  /// The bytes, as long as the object is not changed.
  std::string_view view() const {
    if (bytes_.back() == isOwner) return *owned();
    return {bytes_.data(), static_cast<std::size_t>(bytes_.back())};
  }

  friend bool operator==(const CompactText& a, const CompactText& b) {
    return a.view() == b.view();
  }

 private:
  static constexpr char isOwner = inlineSize + 1;
  static constexpr std::size_t pointerSize = sizeof(void*);

  const std::string* owned() const {
    const std::string* text = nullptr;
    std::memcpy(&text, bytes_.data(), pointerSize);
    return text;
  }

  // The text and in the last byte its size; or a pointer to it and isOwner.
  std::array<char, inlineSize + 1> bytes_{};
};

}  // namespace Devpack
