#include "text/LeadingDecimal.h"

#include <algorithm>
#include <limits>

namespace consolidator {

std::uint64_t leadingDecimal(std::string_view text) {
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
