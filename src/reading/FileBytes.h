#pragma once

#include "consolidated/Fault.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace consolidated {

/// Bytes of the header, which every open file has.
inline constexpr std::size_t headerSize = 16;

/// The fault of bytes that do not begin like a consolidated file, or none.
std::optional<Fault> headerFault(std::string_view bytes) noexcept;

/// Maps all of a regular file whose descriptor stands at its start; null data when that cannot be
/// done. To be unmapped by the caller.
std::string_view mapFile(int descriptor) noexcept;

/// Reads what a descriptor has from its position on into memory that the caller is to unmap. Gives
/// up as soon as the header is seen to be wrong, since a device may never end.
Result<std::string_view> readFile(int descriptor) noexcept;

}  // namespace consolidated
