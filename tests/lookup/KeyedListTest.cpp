#include "lookup/KeyedList.h"
#include "support/CollidingKeys.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

// An element whose mark tells equal keys apart.
struct Item {
  std::string key;
  int mark = 0;

  friend bool operator==(const Item&, const Item&) = default;
};

struct ItemKey : TextKeyHash {
  std::string_view operator()(const Item& item) const { return item.key; }
};

// Four different hashes for all texts.
struct CollidingKey {
  std::string_view operator()(const Item& item) const { return item.key; }

  static std::uint64_t hash(std::string_view key) { return key.size() % 4; }
};

template <std::uint64_t number>
struct SeededKey {
  std::string_view operator()(const Item& item) const { return item.key; }

  static std::uint64_t hash(std::string_view key) { return keyedHash(key, {number, number}); }
};

// A key that counts its comparisons.
struct CountedText {
  std::string_view text;
  std::size_t* comparisons = nullptr;

  friend bool operator==(const CountedText& a, const CountedText& b) {
    ++*a.comparisons;
    return a.text == b.text;
  }
};

struct CountedItem {
  std::string key;
  std::size_t* comparisons = nullptr;
};

struct CountedKey {
  CountedText operator()(const CountedItem& item) const { return {item.key, item.comparisons}; }

  static std::uint64_t hash(const CountedText& key) { return TextKeyHash::hash(key.text); }
};

template <typename KeyOf>
std::vector<Item> contents(const KeyedList<Item, KeyOf>& list) {
  return {list.begin(), list.end()};
}

std::string keyOf(int number) { return "key" + std::to_string(number); }

KeyedList<Item, ItemKey> listOf(int count) {
  KeyedList<Item, ItemKey> list;
  for (int i = 0; i < count; ++i) list.append({keyOf(i), i});
  return list;
}

TEST(KeyedList, IsEmptyWhenNew) {
  KeyedList<Item, ItemKey> list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.size(), 0U);
  EXPECT_EQ(list.begin(), list.end());
  EXPECT_EQ(list.find("a"), nullptr);
  EXPECT_FALSE(list.contains(""));
}

TEST(KeyedList, KeepsTheOrderOfAppending) {
  KeyedList<Item, ItemKey> list;
  list.append({"z", 1});
  list.append({"a", 2});
  list.append({"m", 3});
  EXPECT_EQ(contents(list), (std::vector<Item>{{"z", 1}, {"a", 2}, {"m", 3}}));
  EXPECT_EQ(list[1], (Item{"a", 2}));
}

TEST(KeyedList, AppendReturnsTheAppendedElement) {
  KeyedList<Item, ItemKey> list;
  list.append({"a", 1}).mark = 7;
  EXPECT_EQ(contents(list), (std::vector<Item>{{"a", 7}}));
}

TEST(KeyedList, FindReturnsTheElementToChange) {
  KeyedList<Item, ItemKey> list = listOf(40);
  list.find(keyOf(33))->mark = -1;
  EXPECT_EQ(list[33].mark, -1);
}

TEST(KeyedList, ComparesKeysExactly) {
  KeyedList<Item, ItemKey> list;
  list.append({"Key", 1});
  list.append({std::string("a\0b", 3), 2});
  EXPECT_FALSE(list.contains("key"));
  EXPECT_FALSE(list.contains("Ke"));
  EXPECT_FALSE(list.contains("a"));
  EXPECT_TRUE(list.contains(std::string("a\0b", 3)));
}

TEST(KeyedList, GivesItsElementsUp) {
  KeyedList<Item, ItemKey> list = listOf(40);
  EXPECT_TRUE(list.contains(keyOf(39)));
  EXPECT_EQ(list.takeItems(), contents(listOf(40)));
  EXPECT_TRUE(list.empty());
  EXPECT_FALSE(list.contains(keyOf(39)));
}

// As in a file whose texts were cut at their zero bytes: if an index kept them all, each addition
// would pass all others, which takes minutes.
TEST(KeyedList, ManyEqualKeysAreFoundQuickly) {
  constexpr int count = 100'000;
  KeyedList<Item, ItemKey> list;
  const std::clock_t start = std::clock();
  for (int i = 0; i < count; ++i) {
    list.append({"same", i});
    EXPECT_EQ(list.find("same")->mark, 0);
  }
  EXPECT_LT(std::clock() - start, 10 * CLOCKS_PER_SEC);
}

// If they all had one hash, each search would pass all others, which takes minutes.
TEST(KeyedList, KeysThatCollideWithoutASeedAreFoundQuickly) {
  constexpr std::size_t count = 50'000;
  KeyedList<Item, ItemKey> list;
  const std::clock_t start = std::clock();
  for (std::size_t i = 0; i < count; ++i) {
    const std::string key = collidingText(i);
    if (!list.contains(key)) list.append({key});
  }
  EXPECT_EQ(list.size(), count);
  EXPECT_LT(std::clock() - start, 10 * CLOCKS_PER_SEC);
}

// Around the size from which searches go through the index.
class KeyedListSizes : public testing::TestWithParam<int> {};

TEST_P(KeyedListSizes, KnowWhetherKeysAreDistinct) {
  KeyedList<Item, ItemKey> list(contents(listOf(GetParam())));
  EXPECT_TRUE(list.hasDistinctKeys());
  list.append({"twice", 1});
  EXPECT_TRUE(list.hasDistinctKeys());
  list.append({"twice", 2});
  EXPECT_FALSE(list.hasDistinctKeys());
  EXPECT_EQ(list.find("twice")->mark, 1) << "the first is found";
}

TEST_P(KeyedListSizes, FindsEveryElementAndNothingElse) {
  KeyedList<Item, ItemKey> list = listOf(GetParam());
  for (int i = 0; i < GetParam(); ++i) {
    ASSERT_NE(list.find(keyOf(i)), nullptr);
    EXPECT_EQ(list.find(keyOf(i))->mark, i);
  }
  EXPECT_FALSE(list.contains(keyOf(GetParam())));
}

TEST_P(KeyedListSizes, FindsTheFirstOfEqualKeys) {
  KeyedList<Item, ItemKey> list = listOf(GetParam());
  for (int i = 0; i < 40; ++i) list.append({"same", i});
  EXPECT_EQ(list.find("same")->mark, 0);
  list.append({keyOf(0), -1});
  EXPECT_EQ(list.find(keyOf(0))->mark, GetParam() == 0 ? -1 : 0);
}

TEST_P(KeyedListSizes, FindsElementsAppendedAfterASearch) {
  KeyedList<Item, ItemKey> list = listOf(GetParam());
  EXPECT_FALSE(list.contains("late"));
  list.append({"late", 99});
  ASSERT_TRUE(list.contains("late"));
  EXPECT_EQ(list.find("late")->mark, 99);
}

TEST_P(KeyedListSizes, FindsByTheNewKeysAfterAnEdit) {
  KeyedList<Item, ItemKey> list = listOf(GetParam());
  EXPECT_FALSE(list.contains("edited0"));
  list.edit([](std::vector<Item>& items) {
    for (Item& item : items) item.key = "edited" + std::to_string(item.mark);
    std::reverse(items.begin(), items.end());
  });
  EXPECT_FALSE(list.contains(keyOf(0)));
  for (int i = 0; i < GetParam(); ++i) {
    ASSERT_TRUE(list.contains("edited" + std::to_string(i)));
    EXPECT_EQ(list.find("edited" + std::to_string(i))->mark, i);
  }
}

TEST_P(KeyedListSizes, FindsNothingOfWhatWasCleared) {
  KeyedList<Item, ItemKey> list = listOf(GetParam());
  EXPECT_FALSE(list.contains("other"));
  list.clear();
  EXPECT_TRUE(list.empty());
  EXPECT_FALSE(list.contains(keyOf(0)));
  list.append({"new", 5});
  EXPECT_EQ(list.find("new")->mark, 5);
}

TEST_P(KeyedListSizes, CopiesAreIndependent) {
  KeyedList<Item, ItemKey> list = listOf(GetParam());
  EXPECT_FALSE(list.contains("copied"));
  KeyedList<Item, ItemKey> copy = list;
  copy.append({"copied", 1});
  EXPECT_TRUE(copy.contains("copied"));
  EXPECT_FALSE(list.contains("copied"));
  EXPECT_EQ(list, listOf(GetParam()));
  copy = list;
  EXPECT_EQ(copy, list);
  EXPECT_FALSE(copy.contains("copied"));
}

TEST_P(KeyedListSizes, MovesTakeEverythingAndLeaveAnEmptyList) {
  KeyedList<Item, ItemKey> list = listOf(GetParam());
  EXPECT_FALSE(list.contains("other"));
  KeyedList<Item, ItemKey> moved = std::move(list);
  EXPECT_EQ(moved, listOf(GetParam()));
  for (int i = 0; i < GetParam(); ++i) {
    EXPECT_EQ(moved.find(keyOf(i))->mark, i);
  }
  // A list that was moved from is empty, and can be filled again.
  EXPECT_TRUE(list.empty());  // NOLINT(bugprone-use-after-move)
  list.append({"new", 5});
  EXPECT_EQ(list.find("new")->mark, 5);
}

INSTANTIATE_TEST_SUITE_P(AroundTheIndex, KeyedListSizes,
                         testing::Values(0, 1, 14, 15, 16, 17, 31, 32, 33, 100));

TEST(KeyedList, EqualityComparesElementsInOrder) {
  KeyedList<Item, ItemKey> list = listOf(20);
  KeyedList<Item, ItemKey> searched = listOf(20);
  EXPECT_TRUE(searched.contains(keyOf(3)));
  EXPECT_EQ(list, searched);
  searched.find(keyOf(3))->mark = 4;
  EXPECT_NE(list, searched);
  searched.edit([](std::vector<Item>& items) {
    items[3].mark = 3;
    std::swap(items[0], items[1]);
  });
  EXPECT_NE(list, searched);
}

TEST(KeyedList, AddIfAbsentComparesAConstantNumberOfKeys) {
  constexpr std::size_t count = 20'000;
  std::size_t comparisons = 0;
  KeyedList<CountedItem, CountedKey> list;
  for (int pass = 0; pass < 2; ++pass) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::string key = "key" + std::to_string(i);
      if (!list.contains({key, &comparisons})) list.append({key, &comparisons});
    }
  }
  EXPECT_EQ(list.size(), count);
  // One comparison for each key of the second pass, and few for the short list at the start.
  EXPECT_GE(comparisons, count);
  EXPECT_LE(comparisons, 2 * count);
}

// Compares with a vector that is searched from the front. Marks start at 1 and never repeat.
template <typename KeyOf>
class KeyedListAtRandom : public testing::Test {
 protected:
  void run() {
    for (int round = 0; round < 300; ++round) {
      KeyedList<Item, KeyOf> list;
      std::vector<Item> plain;
      for (int step = 0; step < 120; ++step) {
        change(list, plain);
        const std::string key = anyKey();
        const auto expected = std::find_if(plain.begin(), plain.end(),
                                           [&](const Item& item) { return item.key == key; });
        const Item* found = list.find(key);
        const int mark = found == nullptr ? 0 : found->mark;
        ASSERT_EQ(mark, expected == plain.end() ? 0 : expected->mark) << "round " << round;
      }
      ASSERT_EQ(contents(list), plain) << "round " << round;
    }
  }

 private:
  std::string anyKey() { return std::string(random_() % 3, 'k') + std::to_string(random_() % 40); }

  void change(KeyedList<Item, KeyOf>& list, std::vector<Item>& plain) {
    const auto choice = random_() % 100;
    const Item item{anyKey(), ++mark_};
    if (choice < 40) {
      list.append(item);
      plain.push_back(item);
    } else if (choice < 90) {
      addIfAbsent(list, plain, item);
    } else if (choice < 94) {
      const auto erase = [&](std::vector<Item>& items) {
        std::erase_if(items, [&](const Item& other) { return other.key == item.key; });
      };
      list.edit(erase);
      erase(plain);
    } else if (choice < 97) {
      KeyedList<Item, KeyOf> copy = list;
      list = std::move(copy);
    } else if (choice < 98) {
      list.clear();
      plain.clear();
    }
  }

  static void addIfAbsent(KeyedList<Item, KeyOf>& list, std::vector<Item>& plain,
                          const Item& item) {
    if (!list.contains(item.key)) list.append(item);
    if (std::none_of(plain.begin(), plain.end(),
                     [&](const Item& other) { return other.key == item.key; })) {
      plain.push_back(item);
    }
  }

  std::mt19937 random_{20240102};
  int mark_ = 0;
};

using KeysAtRandom = testing::Types<ItemKey, CollidingKey, SeededKey<0>, SeededKey<1>>;
TYPED_TEST_SUITE(KeyedListAtRandom, KeysAtRandom);

TYPED_TEST(KeyedListAtRandom, AgreesWithALinearSearch) { this->run(); }

}  // namespace
}  // namespace consolidator
