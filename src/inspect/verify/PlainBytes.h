#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace consolidator::inspect {

/// How many bytes at the start of a text may stand in a JSON string as they are: ASCII other than
/// control characters below 0x20, quotes and backslashes. Hardly any text has others.
inline std::size_t plainBytes(std::string_view text) {
  constexpr std::uint64_t each = 0x0101'0101'0101'0101U;
  // Marks bytes below a number of at most 128 and, above the first of them, maybe others.
  const auto below = [](std::uint64_t word, std::uint64_t number) {
    return (word - each * number) & ~word;
  };
  const auto special = [&](std::uint64_t word) {
    return (word | below(word, ' ') | below(word ^ each * '"', 1) | below(word ^ each * '\\', 1)) &
           (each * 0x80);
  };
  // The first byte comes lowest, since the host is little-endian.
  const auto before = [](std::uint64_t marks) {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
  };
  std::size_t size = 0;
  std::uint64_t word = 0;
  for (; size + sizeof word <= text.size(); size += sizeof word) {
    std::memcpy(&word, text.data() + size, sizeof word);
    if (const std::uint64_t marks = special(word); marks != 0) return size + before(marks);
  }
  word = 0;  // what follows the text is special
  if (size < text.size()) std::memcpy(&word, text.data() + size, text.size() - size);
  return size + before(special(word));
}

}  // namespace consolidator::inspect
