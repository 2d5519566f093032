#include "text/TextFilter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace consolidator {
namespace {

TEST(TextFilter, KnowsEveryTextThatWasAdded) {
  TextFilter filter(2000);
  std::string text;
  for (int i = 0; i < 1000; ++i) filter.add("name_" + std::to_string(i));
  for (int i = 0; i < 1000; ++i, text += 'x') filter.add(text);
  for (int i = 0; i < 1000; ++i) EXPECT_TRUE(filter.mayHold("name_" + std::to_string(i))) << i;
  for (; !text.empty(); text.pop_back()) {
    EXPECT_TRUE(text.size() == 1000 || filter.mayHold(text)) << text.size();
  }
  EXPECT_TRUE(filter.mayHold(""));
}

TEST(TextFilter, ErrsSeldom) {
  constexpr int count = 10'000;
  TextFilter filter(count);
  for (int i = 0; i < count; ++i) filter.add("partial_sum_" + std::to_string(i) + "_reg");
  int errors = 0;
  for (int i = 0; i < count; ++i) {
    errors += filter.mayHold("payload_" + std::to_string(i) + "_reg") ? 1 : 0;
  }
  EXPECT_LT(errors, count / 10);
}

TEST(TextFilter, KnowsNothingWhenNothingWasAdded) {
  const TextFilter filter(0);
  EXPECT_FALSE(filter.mayHold(""));
  EXPECT_FALSE(filter.mayHold("a"));
}

TEST(TextFilter, TakesMoreTextsThanItHasRoomFor) {
  TextFilter filter(1);
  for (int i = 0; i < 1000; ++i) filter.add(std::to_string(i));
  for (int i = 0; i < 1000; ++i) EXPECT_TRUE(filter.mayHold(std::to_string(i))) << i;
}

}  // namespace
}  // namespace consolidator
