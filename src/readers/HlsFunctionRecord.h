#pragma once

#include "model/KernelRecord.h"
#include "readers/HlsLocalRecord.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Line numbers are found by themselves.
struct LineNumberKey {
  std::uint32_t operator()(std::uint32_t line) const { return line; }

  static std::uint64_t hash(std::uint32_t line) { return keyedHash(std::uint64_t{line}); }
};

using LineNumberList = KeyedList<std::uint32_t, LineNumberKey>;

/// A synthesised function, as the debug file of high-level synthesis describes it.
struct HlsFunctionRecord {
  std::string name;      ///< words joined by single spaces
  TextList files;        ///< source files, without duplicates
  LineNumberList lines;  ///< source lines, without duplicates
  std::vector<HlsLocalRecord> locals;

  /// Empties the record, which keeps most of its memory for the next function.
  void clear();

  /// Adds a source position such as `kernel.cpp:12`: file and line each unless present. The file
  /// ends at the first ":"; of the decimal digits behind it the low 32 bits count.
  void addLocation(std::string_view position);

  friend bool operator==(const HlsFunctionRecord&, const HlsFunctionRecord&) = default;
};

}  // namespace consolidator
