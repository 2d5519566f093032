#include "lookup/CommonNumbers.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace consolidator {
namespace {

using Numbers = std::vector<std::uint32_t>;
using Positions = std::vector<std::uint32_t>;

constexpr std::size_t nothing = 0;  // is cheap
constexpr std::size_t everything = static_cast<std::size_t>(-1);

// A collection of texts with these numbers.
NumbersByText collectionOf(const std::vector<Numbers>& lists) {
  struct Entry {
    std::uint32_t number;
    std::size_t text;
  };

  std::vector<std::string> texts;
  std::vector<Entry> entries;
  for (std::size_t i = 0; i < lists.size(); ++i) {
    texts.push_back(std::to_string(i));
    for (const std::uint32_t number : lists[i]) entries.push_back({number, i});
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [](const Entry& a, const Entry& b) { return a.number < b.number; });
  std::vector<NumbersByText::Note> notes;
  for (const Entry& entry : entries) notes.push_back({texts[entry.text], entry.number});
  return NumbersByText(notes);
}

// So many numbers from `first` on, each by `step` more than the one before.
Numbers series(std::uint32_t first, std::uint32_t step, std::size_t count) {
  Numbers numbers;
  while (numbers.size() < count) {
    numbers.push_back(first);
    first += step;
  }
  return numbers;
}

Numbers find(CommonNumbers& common, std::size_t one, const Positions& others, std::size_t cheap) {
  Numbers found{99};
  common.find(one, others, cheap, found);
  return found;
}

TEST(CommonNumbers, FindsThoseOfATextAndOfAnyOfTheOthers) {
  const NumbersByText ones = collectionOf({{0, 1, 2, 3, 4}});
  const NumbersByText others = collectionOf({{0, 5}, {1, 3}, {3, 4}, {6}});
  CommonNumbers common(ones, others, 7);
  EXPECT_EQ(find(common, 0, {}, nothing), Numbers());
  EXPECT_EQ(find(common, 0, {2, 1}, nothing), (Numbers{1, 3, 4}));
  EXPECT_EQ(find(common, 0, {0, 3}, nothing), (Numbers{0}));
  EXPECT_EQ(find(common, 0, {3}, nothing), Numbers());
}

TEST(CommonNumbers, FindsTheSameInLongListsAgain) {
  const NumbersByText ones = collectionOf({series(0, 2, 100), series(1, 2, 100)});
  const NumbersByText others = collectionOf({series(0, 3, 100), series(1, 6, 50)});
  CommonNumbers common(ones, others, 300);
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(find(common, 0, {0}, nothing), series(0, 6, 34)) << round;
    EXPECT_EQ(find(common, 1, {0}, nothing), series(3, 6, 33)) << round;
    EXPECT_EQ(find(common, 0, {1}, nothing), Numbers()) << round;
    EXPECT_EQ(find(common, 1, {1}, nothing), series(1, 6, 34)) << round;
  }
}

// Lists of all lengths, more pairs than are remembered, both ways of comparing.
TEST(CommonNumbers, FindsWhatAPlainComparisonFinds) {
  constexpr std::uint32_t end = 80;
  std::mt19937 random(70);
  const auto randomLists = [&] {
    std::vector<Numbers> lists(150);
    for (Numbers& list : lists) {
      const std::uint32_t share = 1 + random() % 8;
      for (std::uint32_t number = 0; number < end; ++number) {
        if (random() % 8 < share) list.push_back(number);
      }
      if (list.empty()) list.push_back(0);
    }
    return lists;
  };
  const NumbersByText ones = collectionOf(randomLists());
  const NumbersByText others = collectionOf(randomLists());
  CommonNumbers common(ones, others, end);
  for (int round = 0; round < 100'000 && !HasFailure(); ++round) {
    const std::size_t one = random() % ones.size();
    Positions chosen;
    const std::size_t count = random() % 10 == 0 ? random() % 40 : 1;
    while (chosen.size() < count) {
      chosen.push_back(static_cast<std::uint32_t>(random() % others.size()));
    }
    std::set<std::uint32_t> expected;
    for (const std::uint32_t number : ones.numbers(one)) {
      for (const std::uint32_t other : chosen) {
        const NumbersByText::Numbers list = others.numbers(other);
        if (std::find(list.begin(), list.end(), number) != list.end()) expected.insert(number);
      }
    }
    EXPECT_EQ(find(common, one, chosen, random() % 2 == 0 ? nothing : everything),
              Numbers(expected.begin(), expected.end()));
  }
}

TEST(CommonNumbers, MemoryIsProportionalToTheCollections) {
  const NumbersByText ones = collectionOf(std::vector<Numbers>(300, series(0, 2, 20)));
  const NumbersByText others = collectionOf(std::vector<Numbers>(300, series(1, 2, 20)));
  const AllocationGauge gauge;
  CommonNumbers common(ones, others, 40);
  for (std::size_t one = 0; one < ones.size(); ++one) {
    for (std::uint32_t other = 0; other < others.size(); ++other) {
      find(common, one, {other}, nothing);
    }
  }
  EXPECT_LT(gauge.largest(), 100 * (ones.noteCount() + others.noteCount()));
}

}  // namespace
}  // namespace consolidator
