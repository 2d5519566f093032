#include "lookup/HashedSet.h"

#include <algorithm>
#include <utility>

namespace consolidator {

bool HashedSet::add(std::uint64_t hash) {
  if (2 * (count_ + 1) > slots_.size()) grow();
  return addToSlots(hash == 0 ? 1 : hash);
}

bool HashedSet::addToSlots(std::uint64_t hash) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t i = hash & mask;
  for (; slots_[i] != 0; i = (i + 1) & mask) {
    if (slots_[i] == hash) return false;
  }
  slots_[i] = hash;
  ++count_;
  return true;
}

void HashedSet::grow() {
  constexpr std::size_t leastSlots = 16;
  const auto old =
      std::exchange(slots_, std::vector<std::uint64_t>(std::max(leastSlots, 2 * slots_.size())));
  count_ = 0;
  for (const std::uint64_t hash : old) {
    if (hash != 0) addToSlots(hash);
  }
}

}  // namespace consolidator
