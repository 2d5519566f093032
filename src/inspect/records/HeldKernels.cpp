#include "inspect/records/HeldKernels.h"

namespace consolidator::inspect {

std::size_t mostHeldKernels(const consolidated::File& file) {
  constexpr std::size_t leastRecord = 32;  // bytes
  constexpr std::size_t mostOverlaps = 4;
  return file.bytes().size() / leastRecord * mostOverlaps;
}

}  // namespace consolidator::inspect
