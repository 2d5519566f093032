#pragma once

#include <charconv>
#include <stdexcept>
#include <string>
#include <string_view>

namespace consolidator {

/// The bytes written as pairs of hexadecimal digits; white space between pairs is for the eye.
inline std::string hexBytes(std::string_view digits) {
  std::string bytes;
  while (!digits.empty()) {
    if (digits.front() == ' ' || digits.front() == '\n') {
      digits.remove_prefix(1);
      continue;
    }
    const std::string_view pair = digits.substr(0, 2);
    unsigned value = 0;
    const auto [end, error] = std::from_chars(pair.data(), pair.data() + pair.size(), value, 16);
    if (error != std::errc() || end != pair.data() + 2) {
      throw std::invalid_argument("not a pair of hexadecimal digits: " + std::string(pair));
    }
    bytes += static_cast<char>(value);
    digits.remove_prefix(2);
  }
  return bytes;
}

}  // namespace consolidator
