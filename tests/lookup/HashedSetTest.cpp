#include "lookup/HashedSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <utility>

namespace consolidator {
namespace {

TEST(HashedSetTest, KnowsWhatWasAdded) {
  std::mt19937_64 random(1);
  std::set<std::uint64_t> plain;
  HashedSet set;
  for (int i = 0; i < 10'000; ++i) {
    const std::uint64_t hash = random() % 8'000 << 40U;
    EXPECT_EQ(set.add(hash), plain.insert(hash).second);
  }
}

TEST(HashedSetTest, KnowsTheMembersOfEachHash) {
  std::mt19937_64 random(2);
  std::set<std::pair<std::uint64_t, unsigned>> plain;
  HashedSet set;
  for (int i = 0; i < 10'000; ++i) {
    const std::uint64_t hash = random() % 1'000 << 50U;
    const auto member = static_cast<unsigned>(random() % 8);
    EXPECT_EQ(set.add(hash, member), plain.emplace(hash, member).second);
  }
}

TEST(HashedSetTest, TakesEveryHash) {
  HashedSet set;
  EXPECT_TRUE(set.add(0));
  EXPECT_FALSE(set.add(0));
  EXPECT_TRUE(set.add(~std::uint64_t{0}));
  EXPECT_FALSE(set.add(~std::uint64_t{0}));
}

}  // namespace
}  // namespace consolidator
