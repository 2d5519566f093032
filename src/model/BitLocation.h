#pragma once

#include <cstdint>
#include <vector>

namespace consolidator {

class ByteReader;
class ByteWriter;

/// Two numbers that locate one bit in the device's configuration memory. The model stores and
/// renders them as the reader supplied them; it never interprets them.
struct BitLocation {
  std::uint32_t first = 0;
  std::uint32_t second = 0;

  friend bool operator==(const BitLocation&, const BitLocation&) = default;
};

/// Location of one bit of a hardware signal; the position in its list is the bit index.
using LogicLocation = BitLocation;

/// Locations of the bits of a variable in one kernel instance; the position is the bit number.
using InstanceBits = std::vector<BitLocation>;

/// Appends a count followed by the locations, two u32 each.
void writeLocations(ByteWriter& out, const std::vector<BitLocation>& locations);

/// Appends to `locations` what writeLocations() wrote. A short read returns false and keeps the
/// locations read so far.
bool readLocations(ByteReader& in, std::vector<BitLocation>& locations);

/// Skips what writeLocations() wrote. Returns false when it is not all there.
bool skipLocations(ByteReader& in);

}  // namespace consolidator
