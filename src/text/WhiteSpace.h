#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace consolidator {

inline constexpr std::array<bool, 256> whiteSpaceTable = [] {
  std::array<bool, 256> table{};
  for (const char c : std::string_view(" \t\n\v\f\r")) {
    table[static_cast<unsigned char>(c)] = true;
  }
  return table;
}();

/// Whether a character is white space in the C locale, which separates the words of every input.
constexpr bool isWhiteSpace(char c) { return whiteSpaceTable[static_cast<unsigned char>(c)]; }

/// Returns the number of characters before the first that is white space or a control character of
/// a lower code than " ", the zero byte included.
inline std::size_t plainLength(std::string_view text) {
  constexpr std::uint64_t eachByte = 0x0101010101010101U;
  std::uint64_t bytes = 0;
  std::size_t length = 0;
  for (; length + sizeof bytes <= text.size(); length += sizeof bytes) {
    std::memcpy(&bytes, text.data() + length, sizeof bytes);
    // Marks every byte up to " ". The borrow may mark bytes above the first of these, too; the
    // first comes lowest, since the host is little-endian.
    const std::uint64_t marks = (bytes - eachByte * (' ' + 1)) & ~bytes & (eachByte * 0x80);
    if (marks != 0) return length + static_cast<std::size_t>(std::countr_zero(marks)) / 8;
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) > ' ') ++length;
  return length;
}

/// Returns the number of characters before the first white space.
inline std::size_t wordLength(std::string_view text) {
  std::size_t length = plainLength(text);
  while (length < text.size() && !isWhiteSpace(text[length])) {
    ++length;
    length += plainLength(text.substr(length));
  }
  return length;
}

}  // namespace consolidator
