#include "model/BitLocation.h"

#include "model/ByteReader.h"
#include "model/ByteWriter.h"

namespace consolidator {

void writeLocations(ByteWriter& out, const std::vector<BitLocation>& locations) {
  out.writeU32(static_cast<std::uint32_t>(locations.size()));
  for (const BitLocation& location : locations) {
    out.writeU32(location.first);
    out.writeU32(location.second);
  }
}

bool readLocations(ByteReader& in, std::vector<BitLocation>& locations) {
  std::uint32_t count = 0;
  if (!in.readClampedU32(count)) return false;
  locations.reserve(in.plausibleCount(count, sizeof(BitLocation)));
  for (std::uint32_t i = 0; i < count; ++i) {
    BitLocation location;
    if (!in.readU32(location.first) || !in.readU32(location.second)) return false;
    locations.push_back(location);
  }
  return true;
}

}  // namespace consolidator
