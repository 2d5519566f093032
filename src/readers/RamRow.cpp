#include "readers/RamRow.h"

#include <cstddef>

namespace consolidator {

std::optional<RamRow> RamRow::split(std::string_view line) {
  const std::size_t first = line.find('|', 1);
  if (first == std::string_view::npos) return std::nullopt;
  const std::size_t second = line.find('|', first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  return RamRow{line.substr(1, first - 1), line.substr(first + 1, second - first - 1)};
}

}  // namespace consolidator
