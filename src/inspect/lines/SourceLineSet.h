#pragma once

#include "inspect/lines/SourceLines.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace consolidator::inspect {

/// Collects lines of source files, of which many come again and again.
class SourceLineSet {
 public:
  /// The number of a file, equal for equal paths.
  std::uint32_t file(std::string_view path);

  void add(std::uint32_t file, std::uint32_t line);

  /// All files that have lines.
  std::vector<SourceFileLines> take();

 private:
  void dropRepeated();

  std::unordered_map<std::string, std::uint32_t> numbers_;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> lines_;  // of files, by their numbers
  std::size_t enough_ = std::size_t{1} << 20U;  // of these until repeated ones are dropped
};

}  // namespace consolidator::inspect
