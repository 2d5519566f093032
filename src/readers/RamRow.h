#pragma once

#include <optional>
#include <string_view>

namespace consolidator {

/// A table row of the RAM utilization report. "|" ends each field; the texts are not trimmed.
struct RamRow {
  std::string_view instanceName;   ///< first field: the RAM's place in the hierarchy
  std::string_view primitiveType;  ///< second field, for example " RAMB36E2 "

  /// Splits a line, whose first character counts as the start of the first field, whatever it is.
  /// Nothing for a line that ends before its second field does.
  static std::optional<RamRow> split(std::string_view line);

  bool isBlockRam() const { return primitiveType.find("RAMB") != std::string_view::npos; }

  friend bool operator==(const RamRow&, const RamRow&) = default;
};

}  // namespace consolidator
