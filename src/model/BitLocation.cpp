#include "model/BitLocation.h"

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"

#include <string_view>
#include <type_traits>

namespace consolidator {

// The members stand as the bytes do, and the host is little-endian as the format is.
static_assert(sizeof(BitLocation) == 2 * sizeof(std::uint32_t));
static_assert(std::is_trivially_copyable_v<BitLocation>);

void writeLocations(ByteWriter& out, const std::vector<BitLocation>& locations) {
  out.writeU32(static_cast<std::uint32_t>(locations.size()));
  out.write(std::string_view(reinterpret_cast<const char*>(locations.data()),
                             locations.size() * sizeof(BitLocation)));
}

bool readLocations(ByteReader& in, std::vector<BitLocation>& locations) {
  std::uint32_t count = 0;
  if (!in.readClampedU32(count)) return false;
  const std::size_t available = in.plausibleCount(count, sizeof(BitLocation));
  const std::size_t held = locations.size();
  locations.resize(held + available);
  return in.readBytes(reinterpret_cast<char*>(locations.data() + held),
                      available * sizeof(BitLocation)) &&
         available == count;
}

bool skipLocations(ByteReader& in) {
  std::uint32_t count = 0;
  return in.readClampedU32(count) && in.skip(count * sizeof(BitLocation));
}

}  // namespace consolidator
