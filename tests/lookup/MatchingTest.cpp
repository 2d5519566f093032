#include "lookup/Matching.h"
#include "support/CollidingKeys.h"
#include "support/Growth.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

using Keys = std::vector<std::string>;

const std::string& sameText(const std::string& key) { return key; }

TEST(MatchingTest, GivesTheNthOfAKeyForTheNth) {
  const Keys keys{"a", "b", "a", "c", "a"};
  Matching matching(keys, sameText);
  EXPECT_EQ(matching.take("a"), 0U);
  EXPECT_EQ(matching.take("c"), 3U);
  EXPECT_EQ(matching.take("a"), 2U);
  EXPECT_EQ(matching.take("a"), 4U);
  EXPECT_EQ(matching.take("a"), std::nullopt);
  EXPECT_EQ(matching.take("b"), 1U);
  EXPECT_EQ(matching.take("b"), std::nullopt);
}

TEST(MatchingTest, KnowsWhatIsLeft) {
  const Keys keys{"a", "a", "", "b"};
  Matching matching(keys, sameText);
  matching.take("a");
  matching.take("");
  EXPECT_FALSE(matching.isLeft(0));
  EXPECT_TRUE(matching.isLeft(1));
  EXPECT_FALSE(matching.isLeft(2));
  EXPECT_TRUE(matching.isLeft(3));
}

TEST(MatchingTest, GivesNothingForUnknownKeys) {
  const Keys none;
  const Keys keys{"a"};
  EXPECT_EQ(Matching(none, sameText).take("a"), std::nullopt);
  EXPECT_EQ(Matching(keys, sameText).take("b"), std::nullopt);
}

// Takes all keys, the last one first.
void takeAll(const Keys& keys) {
  Matching matching(keys, sameText);
  std::size_t found = 0;
  for (std::size_t i = keys.size(); i-- > 0;) found += matching.take(keys[i]) ? 1U : 0U;
  ASSERT_EQ(found, keys.size());
}

double growthOf(std::string (*key)(std::size_t number)) {
  const auto prepare = [key](std::size_t size) {
    Keys keys(size);
    for (std::size_t i = 0; i < size; ++i) keys[i] = key(i);
    return [keys = std::move(keys)] { takeAll(keys); };
  };
  return Growth(prepare, 4096).perDoubling();
}

TEST(MatchingTest, TakesLinearTimeWhateverTheKeysAre) {
  EXPECT_LT(growthOf([](std::size_t /*number*/) { return std::string("key"); }), Growth::limit());
  EXPECT_LT(growthOf([](std::size_t number) { return std::to_string(number); }), Growth::limit());
  EXPECT_LT(growthOf(collidingText), Growth::limit());
}

}  // namespace
}  // namespace consolidator
