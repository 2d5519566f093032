#include "lookup/HashedSet.h"

#include <algorithm>
#include <utility>

namespace consolidator {

namespace {

constexpr int memberBits = 8;

}  // namespace

bool HashedSet::add(std::uint64_t hash, unsigned member) {
  if (2 * (count_ + 1) > slots_.size()) grow();
  std::uint64_t& slot = slotOf(hash);
  if (slot == 0) {
    slot = hash >> memberBits << memberBits;
    ++count_;
  }
  const std::uint64_t before = slot;
  slot |= std::uint64_t{1} << member;
  return slot != before;
}

// Returns the slot of the hash, or the free one where it belongs.
std::uint64_t& HashedSet::slotOf(std::uint64_t hash) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t i = hash >> memberBits & mask;
  while (slots_[i] != 0 && (slots_[i] ^ hash) >> memberBits != 0) i = (i + 1) & mask;
  return slots_[i];
}

void HashedSet::grow() {
  constexpr std::size_t leastSlots = 16;
  const auto old =
      std::exchange(slots_, std::vector<std::uint64_t>(std::max(leastSlots, 2 * slots_.size())));
  for (const std::uint64_t slot : old) {
    if (slot != 0) slotOf(slot) = slot;
  }
}

}  // namespace consolidator
