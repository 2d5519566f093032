#include "consolidated/Locations.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

namespace consolidated {
namespace {

using consolidator::u32;

static_assert(std::random_access_iterator<Locations::Iterator>);

class LocationsTest : public testing::Test {
 protected:
  const std::string bytes_ = u32(1) + u32(2) + u32(0xFFFFFFFF) + u32(4) + u32(5) + u32(6);
  const Locations locations_{bytes_, 100};
};

TEST_F(LocationsTest, AreFoundByTheNumberOfTheBit) {
  EXPECT_EQ(locations_.size(), 3U);
  EXPECT_EQ(locations_.offset(), 100U);
  EXPECT_EQ(locations_[1].first, 0xFFFFFFFFU);
  EXPECT_EQ(locations_[1].second, 4U);
  EXPECT_TRUE((locations_[2] == Location{5, 6}));
  EXPECT_TRUE((locations_[2] != Location{5, 7}));
  EXPECT_TRUE((locations_[2] != Location{6, 6}));
}

TEST_F(LocationsTest, MayBeNone) {
  const Locations none;
  EXPECT_TRUE(none.empty());
  EXPECT_FALSE(locations_.empty());
  EXPECT_TRUE(none.begin() == none.end());
}

TEST_F(LocationsTest, AreGoneOverInAnyDirection) {
  std::vector<std::uint32_t> firsts;
  for (const Location location : locations_) firsts.push_back(location.first);
  EXPECT_EQ(firsts, (std::vector<std::uint32_t>{1, 0xFFFFFFFF, 5}));

  auto at = locations_.end();
  EXPECT_EQ((*--at).first, 5U);
  EXPECT_EQ((*at--).first, 5U);
  EXPECT_EQ((*at++).second, 4U);
  EXPECT_EQ((*(at - 2)).first, 1U);
  EXPECT_EQ((*(1 + locations_.begin())).second, 4U);
  EXPECT_EQ(locations_.begin()[2].second, 6U);
  EXPECT_EQ(locations_.end() - locations_.begin(), 3);
}

TEST_F(LocationsTest, AreOrderedByTheNumberOfTheBit) {
  const auto first = locations_.begin();
  const auto second = first + 1;
  EXPECT_TRUE(first < second && second > first && first <= second && second >= first);
  EXPECT_TRUE(first <= first && first >= first && first == first && first != second);
  EXPECT_FALSE(first < first || first > first || second < first || second <= first);
}

}  // namespace
}  // namespace consolidated
