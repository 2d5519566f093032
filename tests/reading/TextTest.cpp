#include "consolidated/Text.h"

#include <gtest/gtest.h>

#include <string_view>

namespace consolidated {
namespace {

TEST(TextTest, EndsAtItsFirstZeroByteWhenItIsRead) {
  using namespace std::string_view_literals;
  const Text text("ab\0cd\0"sv, 7);
  EXPECT_EQ(text.view(), "ab");
  EXPECT_EQ(text.stored(), "ab\0cd\0"sv);
  EXPECT_EQ(text.offset(), 7U);
}

TEST(TextTest, IsReadWholeWithoutOne) {
  EXPECT_EQ(Text("ab", 0).view(), "ab");
  EXPECT_EQ(Text().view(), "");
}

}  // namespace
}  // namespace consolidated
