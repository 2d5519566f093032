// Any bytes are read as a consolidated file by the tool and by the reading library for other
// programs: both must find the same, and the views of the library must be of these bytes.

#include "../tests/support/BothReadings.h"
#include "../tests/support/Bytes.h"
#include "Require.h"
#include "consolidated/File.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator {

namespace {

void requireStored(std::string_view bytes, const consolidated::Text& text) {
  require(text.stored() == bytes.substr(text.offset(), text.stored().size()),
          "a text stands where its offset says");
}

void requireInside(std::string_view bytes, const consolidated::Locations& locations) {
  require(locations.offset() + 8 * locations.size() <= bytes.size(), "locations are inside");
  require(locations.size() == numberAt(bytes, locations.offset() - 4, 4),
          "the number of locations stands in front of them");
}

void requireOffsets(std::string_view bytes, const consolidated::Kernel& kernel) {
  requireStored(bytes, kernel.name());
  for (const auto& path : kernel.instancePaths()) requireStored(bytes, path);
  for (const auto& variables : {kernel.arguments(), kernel.variables()}) {
    for (const auto& variable : variables) {
      requireStored(bytes, variable.name());
      requireStored(bytes, variable.second());
      requireStored(bytes, variable.cType());
      for (const auto& locations : variable.instanceBits()) requireInside(bytes, locations);
    }
  }
  for (const auto& variable : kernel.hardwareVariables()) {
    requireStored(bytes, variable.rtlName());
    requireInside(bytes, variable.logicLocations());
  }
  for (const auto& condition : kernel.breakableConditions()) {
    requireStored(bytes, condition.condition());
    requireStored(bytes, condition.file());
  }
  for (const auto& bram : kernel.brams()) requireStored(bytes, bram);
}

void requireOffsets(std::string_view bytes) {
  const auto file = consolidated::File::fromBytes(bytes);
  if (!file) return;
  std::uint64_t end = 0;
  for (const auto& kernel : file->kernels()) {
    requireOffsets(bytes, kernel);
    require(kernel.endOffset() - kernel.offset() >= 32, "no kernel is shorter than 32 bytes");
    end = kernel.endOffset();
  }
  require(end <= bytes.size(), "records are inside");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string difference = consolidator::BothReadings().difference(bytes);
  consolidator::require(difference.empty(), difference.c_str());
  consolidator::requireOffsets(bytes);
  return 0;
}
