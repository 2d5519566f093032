#include "lookup/PositionIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <random>
#include <vector>

namespace consolidator {
namespace {

bool always(std::size_t /*position*/) { return true; }

// The positions under a hash.
std::vector<std::size_t> visited(const PositionIndex& index, std::size_t hash) {
  std::vector<std::size_t> positions;
  index.find(hash, [&](std::size_t position) {
    positions.push_back(position);
    return false;
  });
  std::sort(positions.begin(), positions.end());
  return positions;
}

std::vector<std::size_t> countUpTo(std::size_t end) {
  std::vector<std::size_t> positions(end);
  std::iota(positions.begin(), positions.end(), std::size_t{0});
  return positions;
}

TEST(PositionIndex, FindsNothingWhenEmpty) {
  const PositionIndex index;
  EXPECT_EQ(index.find(0, always), PositionIndex::none);
}

TEST(PositionIndex, FindsAPositionUnderItsHashOnly) {
  PositionIndex index;
  index.add(7, 0);
  EXPECT_EQ(index.find(7, always), 0U);
  EXPECT_EQ(index.find(7 + 32, always), PositionIndex::none);
  EXPECT_EQ(index.find(8, always), PositionIndex::none);
}

TEST(PositionIndex, AsksForAMatchWhereHashesAgree) {
  PositionIndex index;
  index.add(7, 0);
  index.add(7, 1);
  index.add(7, 2);
  EXPECT_EQ(index.find(7, [](std::size_t position) { return position == 2; }), 2U);
  EXPECT_EQ(index.find(7, [](std::size_t) { return false; }), PositionIndex::none);
}

TEST(PositionIndex, FindsOrAdds) {
  PositionIndex index(3);
  EXPECT_EQ(index.findOrAdd(7, 0, always), 0U) << "added";
  EXPECT_EQ(index.findOrAdd(7, 1, [](std::size_t) { return false; }), 1U) << "another key";
  EXPECT_EQ(index.findOrAdd(7, 2, always), 0U) << "found";
  EXPECT_EQ(visited(index, 7), countUpTo(2));
  EXPECT_EQ(index.findOrAdd(8, 2, always), 2U);
  EXPECT_EQ(index.find(8, always), 2U);
}

TEST(PositionIndex, GrowsBeyondTheRoomThatWasMade) {
  PositionIndex index(1);
  for (std::size_t i = 0; i < 300; ++i) ASSERT_EQ(index.findOrAdd(i, i, always), i);
  for (std::size_t i = 0; i < 300; ++i) ASSERT_EQ(index.findOrAdd(i, 300, always), i);
}

// So many hashes have every slot of the first tables as their home, the last ones too, from where
// a run of equal hashes goes on at the start.
TEST(PositionIndex, KeysOfEqualHashesAreAllFoundWhileTheTableGrows) {
  for (std::size_t hash = 0; hash < 512; ++hash) {
    PositionIndex index;
    for (std::size_t i = 0; i < 70; ++i) {
      index.add(hash, i);
      ASSERT_EQ(visited(index, hash), countUpTo(i + 1)) << hash;
    }
  }
}

TEST(PositionIndex, AgreesWithAListOfHashesAtRandom) {
  std::mt19937 random(20240101);
  for (int round = 0; round < 200; ++round) {
    PositionIndex index;
    std::vector<std::size_t> hashes;
    // Few distinct hashes, so that each is there several times.
    std::uniform_int_distribution<std::size_t> anyHash(0, 40);
    for (std::size_t i = 0; i < 200; ++i) {
      const std::size_t hash = (anyHash(random) * 16) - 8;
      index.add(hash, i);
      hashes.push_back(hash);
    }
    for (std::size_t key = 0; key <= 40; ++key) {
      const std::size_t hash = (key * 16) - 8;
      std::vector<std::size_t> expected;
      for (std::size_t i = 0; i < hashes.size(); ++i) {
        if (hashes[i] == hash) expected.push_back(i);
      }
      ASSERT_EQ(visited(index, hash), expected) << "round " << round << ", hash " << hash;
    }
  }
}

}  // namespace
}  // namespace consolidator
