#pragma once

#include "text/ScanBytes.h"

#include <array>
#include <cstddef>
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

/// Returns the number of characters before the first space or control character with a code below
/// that of the space, which includes all white space and the zero byte.
inline std::size_t plainLength(std::string_view text) {
  return lengthBeforeCodeBelow<' ' + 1>(text);
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
