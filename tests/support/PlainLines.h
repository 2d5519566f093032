#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>

namespace consolidator {

/// What a bounded line read makes of one line: its characters up to the first zero byte, or nothing
/// when all of them, zero bytes included, are more than the bound. At the end of the input a line
/// is empty, and the stream has failed.
inline std::optional<std::string> readLinePlainly(std::istream& in, std::size_t bound) {
  std::string line;
  std::getline(in, line);
  if (line.size() > bound) return std::nullopt;
  return std::string(line.c_str());
}

}  // namespace consolidator
