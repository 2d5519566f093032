#include "lookup/PositionIndex.h"

#include <algorithm>
#include <utility>

namespace consolidator {

void PositionIndex::grow() {
  constexpr std::size_t smallest = 32;
  const std::vector<Slot> old = std::exchange(slots_, {});
  slots_.resize(std::max(smallest, 2 * old.size()));
  for (const Slot& slot : old) {
    if (slot.position == unused) continue;
    std::size_t i = slot.hash & mask();
    while (slots_[i].position != unused) i = (i + 1) & mask();
    slots_[i] = slot;
  }
}

}  // namespace consolidator
