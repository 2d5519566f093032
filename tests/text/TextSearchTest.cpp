#include "support/AllocationGauge.h"
#include "text/TextSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using Positions = std::vector<std::uint32_t>;

Positions sorted(Positions positions) {
  std::sort(positions.begin(), positions.end());
  return positions;
}

Positions find(TextSearch& search, std::string_view text) { return sorted(search.findIn(text)); }

Positions find(const std::vector<std::string_view>& patterns, std::string_view text) {
  TextSearch search(patterns);
  return find(search, text);
}

TEST(TextSearch, FindsPatternsAnywhere) {
  EXPECT_EQ(find({"ab", "bc", "x", "abcd"}, "zabcd"), (Positions{0, 1, 3}));
  EXPECT_EQ(find({"ab", "bc", "x", "abcd"}, "zx"), (Positions{2}));
  EXPECT_EQ(find({"ab", "bc", "x", "abcd"}, "acbd"), Positions());
}

TEST(TextSearch, FindsAPatternInsideTheStartOfAnother) {
  EXPECT_EQ(find({"abcde", "bc"}, "abcx"), (Positions{1}));
  EXPECT_EQ(find({"abab", "bb", "aba"}, "ababb"), (Positions{0, 1, 2}));
}

TEST(TextSearch, GoesOnAfterTheLongestSuffixThatMayStillMatch) {
  EXPECT_EQ(find({"aab"}, "aaab"), (Positions{0}));
  EXPECT_EQ(find({"abac", "babx"}, "ababx"), (Positions{1}));
}

TEST(TextSearch, ReportsAPatternOnceHoweverOftenItOccurs) {
  EXPECT_EQ(find({"a", "aa"}, "aaaaaaaa"), (Positions{0, 1}));
}

TEST(TextSearch, ReportsAPatternAgainInTheNextSearch) {
  const std::vector<std::string_view> patterns{"a"};
  TextSearch search(patterns);
  EXPECT_EQ(find(search, "a"), (Positions{0}));
  EXPECT_EQ(find(search, "b"), Positions());
  EXPECT_EQ(find(search, "a"), (Positions{0}));
}

TEST(TextSearch, EndsOnceEnoughPatternsAreFound) {
  const std::vector<std::string_view> patterns{"a", "b", "c"};
  TextSearch search(patterns);
  EXPECT_EQ(sorted(search.findSomeIn("xbxaxc", 2)), (Positions{0, 1}));
  EXPECT_EQ(sorted(search.findSomeIn("xbxaxc", 3)), (Positions{0, 1, 2}));
  EXPECT_EQ(sorted(search.findSomeIn("xbx", 3)), (Positions{1}));
}

TEST(TextSearch, FindsNoMoreThanEnoughPatternsInOnePlace) {
  const std::vector<std::string_view> patterns{"aaa", "aa", "a"};
  TextSearch search(patterns);
  EXPECT_EQ(search.findSomeIn("aaa", 2).size(), 2U);
}

TEST(TextSearch, TheEmptyPatternOccursInEveryText) {
  EXPECT_EQ(find({"", "a"}, ""), (Positions{0}));
  EXPECT_EQ(find({"", "a"}, "xay"), (Positions{0, 1}));
}

TEST(TextSearch, NothingOccursWhereThereAreNoPatterns) { EXPECT_EQ(find({}, "abc"), Positions()); }

TEST(TextSearch, TakesEveryByte) {
  using namespace std::string_view_literals;
  EXPECT_EQ(find({"\0"sv, "\xFF\0"sv, "\x80"sv}, "a\xFF\0"sv), (Positions{0, 1}));
}

// So many bytes of patterns take 13 bytes each, and building the search not much more.
TEST(TextSearch, MemoryIsProportionalToThePatterns) {
  std::mt19937 random(51);
  std::vector<std::string> patterns(2'000);
  for (std::string& pattern : patterns) {
    while (pattern.size() < 100) pattern += static_cast<char>('a' + random() % 26);
  }
  const std::vector<std::string_view> views(patterns.begin(), patterns.end());
  const AllocationGauge gauge;
  const TextSearch search(views);
  EXPECT_LT(gauge.total(), 100 * patterns.size() * 16);
}

// Texts over two letters, so that patterns overlap in every way.
TEST(TextSearch, FindsWhatAPlainSearchFinds) {
  std::mt19937 random(50);
  const auto randomText = [&](std::size_t length) {
    std::string text;
    while (text.size() < length) text += random() % 2 == 0 ? 'a' : 'b';
    return text;
  };
  for (int round = 0; round < 20'000 && !HasFailure(); ++round) {
    std::vector<std::string> patterns;
    for (std::size_t count = random() % 10; count > 0; --count) {
      patterns.push_back(randomText(random() % 7));
    }
    std::sort(patterns.begin(), patterns.end());
    patterns.erase(std::unique(patterns.begin(), patterns.end()), patterns.end());
    std::shuffle(patterns.begin(), patterns.end(), random);
    const std::string text = randomText(random() % 16);
    Positions expected;
    for (std::uint32_t i = 0; i < patterns.size(); ++i) {
      if (text.find(patterns[i]) != std::string::npos) expected.push_back(i);
    }
    EXPECT_EQ(find({patterns.begin(), patterns.end()}, text), expected)
        << text << " in " << testing::PrintToString(patterns);
  }
}

}  // namespace
}  // namespace consolidator
