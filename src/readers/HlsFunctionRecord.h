#pragma once

#include "readers/HlsLocalRecord.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// A synthesised function, as the debug file of high-level synthesis describes it.
struct HlsFunctionRecord {
  std::string name;                   ///< words joined by single spaces
  std::string file;                   ///< of its first source position
  std::optional<std::uint32_t> line;  ///< of its first source position; none without one
  std::vector<HlsLocalRecord> locals;

  /// Empties the record, which keeps most of its memory for the next function.
  void clear();

  /// Takes a source position such as `kernel.cpp:12`, unless there is one: only the first counts.
  /// The file ends at the first ":"; of the decimal digits after it the low 32 bits count.
  void addLocation(std::string_view position);

  friend bool operator==(const HlsFunctionRecord&, const HlsFunctionRecord&) = default;
};

}  // namespace consolidator
