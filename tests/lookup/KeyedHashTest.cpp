#include "lookup/KeyedHash.h"
#include "support/CollidingKeys.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::size_t keyCount = 2000;

TEST(KeyedHash, OfATextIsThatOfItsBytes) {
  const HashSeed seed{1, 2};
  KeyedHash hash(seed);
  hash.add("text");
  EXPECT_EQ(keyedHash("text", seed), hash.finish());
}

TEST(KeyedHash, UsesTheSeedOfTheProcess) {
  EXPECT_EQ(keyedHash("text"), keyedHash("text", HashSeed::ofProcess()));
  EXPECT_EQ(keyedHash(std::uint64_t{7}), keyedHash(std::uint64_t{7}, HashSeed::ofProcess()));
}

TEST(KeyedHash, SeedsAreDrawnAtRandom) {
  const HashSeed a = HashSeed::random();
  const HashSeed b = HashSeed::random();
  EXPECT_NE(a.first, b.first);
  EXPECT_NE(a.second, b.second);
  EXPECT_NE(a.first, a.second);
}

TEST(KeyedHash, TellsTextsApartThatCollideWithoutASeed) {
  std::set<std::string> texts;
  std::set<std::size_t> plainHashes;
  std::set<std::uint32_t> hashes;
  for (std::size_t i = 0; i < keyCount; ++i) {
    const std::string text = collidingText(i);
    texts.insert(text);
    plainHashes.insert(std::hash<std::string_view>{}(text));
    hashes.insert(static_cast<std::uint32_t>(keyedHash(text, {1, 2})));
  }
  EXPECT_EQ(texts.size(), keyCount);
#ifdef __GLIBCXX__
  EXPECT_EQ(plainHashes.size(), 1U) << "they would collide";
#endif
  EXPECT_EQ(hashes.size(), keyCount);
}

// The places in a table of 2^16.
TEST(KeyedHash, SpreadsNumbersThatCollideWithoutASeed) {
  CollidingNumbers numbers([](std::uint32_t number) { return number; });
  std::set<std::uint16_t> places;
  for (std::size_t i = 0; i < keyCount; ++i) {
    places.insert(static_cast<std::uint16_t>(keyedHash(std::uint64_t{numbers[i]}, {1, 2})));
  }
  EXPECT_GT(places.size(), keyCount * 9 / 10);
}

}  // namespace
}  // namespace consolidator
