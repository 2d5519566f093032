#include "reading/SectionBytes.h"

#include <cstdint>

namespace consolidated {

std::optional<Text> sectionBytes(std::string_view file, const Section& section) noexcept {
  const std::optional<std::uint32_t> offset = section.seekOffset();
  const std::uint32_t size = section.clampedSize();
  if (!offset) return std::nullopt;
  if (size == 0) return Text({}, *offset);
  if (std::uint64_t{*offset} + size > file.size()) return std::nullopt;
  return Text(file.substr(*offset, size), *offset);
}

}  // namespace consolidated
