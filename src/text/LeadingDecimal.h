#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace consolidator {

/// The number that the decimal digits at the start of a text form: 0 when there are none (a sign or
/// white space counts as none), 2^63 - 1 when it is greater than that.
inline std::uint64_t leadingDecimal(std::string_view text) {
  constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
  std::uint64_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    if (number > largest / 10) return largest;
    number = 10 * number + static_cast<std::uint64_t>(c - '0');
  }
  return std::min(number, largest);
}

}  // namespace consolidator
