#pragma once

#include <cstdint>
#include <vector>

namespace consolidator {

/// Two numbers that locate one bit in the device's configuration memory. The model stores and
/// renders them as the reader supplied them, without interpreting them.
struct BitLocation {
  std::uint32_t first = 0;
  std::uint32_t second = 0;

  friend bool operator==(const BitLocation&, const BitLocation&) = default;
};

/// Location of one bit of a hardware signal; the position in its list is the bit index.
using LogicLocation = BitLocation;

/// Locations of the bits of a variable in one kernel instance; the position is the bit number.
using InstanceBits = std::vector<BitLocation>;

}  // namespace consolidator
