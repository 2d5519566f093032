#include "lookup/NumbersByText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using Notes = std::vector<NumbersByText::Note>;
using Numbers = std::vector<std::uint32_t>;

Numbers listed(NumbersByText::Numbers numbers) { return {numbers.begin(), numbers.end()}; }

Numbers found(const NumbersByText& index, std::string_view text) {
  const std::size_t position = index.positionOf(text);
  return position == PositionIndex::none ? Numbers() : listed(index.numbers(position));
}

TEST(NumbersByText, ListsTheNumbersOfEachTextInOrder) {
  const NumbersByText index(Notes{{"b", 0}, {"a", 0}, {"a", 1}, {"c", 4}, {"b", 4}, {"a", 9}});
  ASSERT_EQ(index.size(), 3U);
  EXPECT_EQ(index.noteCount(), 6U);
  EXPECT_EQ(index.text(0), "b");
  EXPECT_EQ(listed(index.numbers(0)), (Numbers{0, 4}));
  EXPECT_EQ(index.text(1), "a");
  EXPECT_EQ(listed(index.numbers(1)), (Numbers{0, 1, 9}));
  EXPECT_EQ(index.text(2), "c");
  EXPECT_EQ(listed(index.numbers(2)), (Numbers{4}));
  EXPECT_EQ(index.texts(), (std::vector<std::string_view>{"b", "a", "c"}));
}

TEST(NumbersByText, FindsTextsAsAWholeOnly) {
  const NumbersByText index(Notes{{"acc", 0}, {"acc_reg", 1}, {"", 2}});
  EXPECT_EQ(found(index, "acc"), (Numbers{0}));
  EXPECT_EQ(found(index, "acc_reg"), (Numbers{1}));
  EXPECT_EQ(found(index, ""), (Numbers{2}));
  EXPECT_EQ(found(index, "acc_"), Numbers());
  EXPECT_EQ(found(index, "ACC"), Numbers());
}

TEST(NumbersByText, ListsANumberOnceHoweverOftenItIsNotedWithTheText) {
  const NumbersByText index(Notes{{"a", 3}, {"b", 3}, {"a", 3}, {"a", 4}});
  EXPECT_EQ(found(index, "a"), (Numbers{3, 4}));
  EXPECT_EQ(index.noteCount(), 3U);
}

TEST(NumbersByText, FindsNothingWithoutNotes) {
  const NumbersByText index(Notes{});
  EXPECT_EQ(index.size(), 0U);
  EXPECT_TRUE(index.texts().empty());
  EXPECT_EQ(found(index, ""), Numbers());
}

TEST(NumbersByText, FindsEachOfManyTexts) {
  std::vector<std::string> texts;
  for (int i = 0; i < 10'000; ++i) texts.push_back("register_" + std::to_string(i));
  Notes notes;
  for (std::uint32_t i = 0; i < texts.size(); ++i) notes.push_back({texts[i], i});
  const NumbersByText index(notes);
  for (std::uint32_t i = 0; i < texts.size(); ++i) {
    ASSERT_EQ(found(index, texts[i]), (Numbers{i}));
  }
}

TEST(NumbersByText, DoesNotReferToTheNotesLater) {
  std::string text = "acc";
  const NumbersByText index(Notes{{text, 5}});
  text = "xyz";
  EXPECT_EQ(found(index, "acc"), (Numbers{5}));
}

}  // namespace
}  // namespace consolidator
