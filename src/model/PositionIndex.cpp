#include "model/PositionIndex.h"

#include <algorithm>
#include <utility>

namespace consolidator {

void PositionIndex::grow() {
  constexpr std::size_t smallest = 32;
  std::vector<Slot> old = std::exchange(slots_, {});
  slots_.resize(std::max(smallest, 2 * old.size()));
  // A run of equal hashes may wrap around the end of the table. Re-placing from just behind an
  // unused slot keeps every run in the order in which it was added.
  const auto start = std::find_if(old.begin(), old.end(),
                                  [](const Slot& slot) { return slot.position == unused; });
  std::rotate(old.begin(), start, old.end());
  for (const Slot& slot : old) {
    if (slot.position != unused) place(slot);
  }
}

}  // namespace consolidator
