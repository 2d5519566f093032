#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace consolidator {

/// Returns the position of the last such character, or npos, as std::string_view::rfind() does.
/// With that one, which looks at one byte at a time, a logic-location file takes 1.1 to 1.2 times
/// the CPU time.
inline std::size_t findLast(std::string_view text, char c) {
  if (text.empty()) return std::string_view::npos;  // and maybe no data
  const void* const found = memrchr(text.data(), c, text.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

}  // namespace consolidator
