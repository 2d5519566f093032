#include "readers/NetBit.h"

#include <charconv>
#include <system_error>

namespace consolidator {

std::optional<std::uint32_t> NetBit::index() const {
  std::uint32_t index = 0;
  const char* const start = indexText_.data();
  const auto result = std::from_chars(start, start + indexText_.size(), index);
  if (result.ec == std::errc::result_out_of_range || index >= endOfIndices) return std::nullopt;
  return index;
}

bool NetBit::hasPlainIndex() const {
  return indexText_.data() == nullptr ||
         (!indexText_.empty() &&
          indexText_.find_first_not_of("0123456789") == indexText_.size() - 1);
}

}  // namespace consolidator
