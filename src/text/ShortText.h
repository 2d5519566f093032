#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace consolidator {

// Most texts of the model are so short that a call into the C library takes longer than the work.

/// Copies a text to a place that has room for it and returns the place behind it.
inline char* putText(char* to, std::string_view text) {
  const char* const from = text.data();
  const std::size_t size = text.size();
  const auto putEnds = [&]<std::size_t half>() {
    struct Half {
      char bytes[half];  // NOLINT(*-avoid-c-arrays): copied as one value
    } head{}, tail{};
    std::memcpy(&head, from, half);
    std::memcpy(&tail, from + size - half, half);
    std::memcpy(to, &head, half);
    std::memcpy(to + size - half, &tail, half);
  };
  if (size > 32) {
    std::memcpy(to, from, size);
  } else if (size >= 16) {
    putEnds.template operator()<16>();
  } else if (size >= 8) {
    putEnds.template operator()<8>();
  } else if (size >= 4) {
    putEnds.template operator()<4>();
  } else if (size > 0) {
    to[0] = from[0];
    to[size / 2] = from[size / 2];
    to[size - 1] = from[size - 1];
  }
  return to + size;
}

/// Returns the number of bytes before the first zero byte, at most `size`.
inline std::size_t lengthUpToZero(const char* text, std::size_t size) {
  constexpr std::uint64_t eachByte = 0x0101'0101'0101'0101U;
  std::size_t length = 0;
  for (std::uint64_t bytes = 0; length + sizeof bytes <= size; length += sizeof bytes) {
    std::memcpy(&bytes, text + length, sizeof bytes);
    // Marks zero bytes and, behind the first of them, maybe others. The first comes lowest, since
    // the host is little-endian.
    const std::uint64_t marks = (bytes - eachByte) & ~bytes & (eachByte * 0x80);
    if (marks != 0) return length + static_cast<std::size_t>(std::countr_zero(marks)) / 8;
  }
  while (length < size && text[length] != '\0') ++length;
  return length;
}

}  // namespace consolidator
