#include "text/FindLast.h"

#include <gtest/gtest.h>

#include <string_view>

namespace consolidator {
namespace {

TEST(FindLast, FindsTheLastOfSeveral) {
  EXPECT_EQ(findLast("a/b/c", '/'), 3U);
  EXPECT_EQ(findLast("/", '/'), 0U);
  EXPECT_EQ(findLast("ab/", '/'), 2U);
}

TEST(FindLast, FindsNothingWhereThereIsNone) {
  EXPECT_EQ(findLast("abc", '/'), std::string_view::npos);
  EXPECT_EQ(findLast("", '/'), std::string_view::npos);
  EXPECT_EQ(findLast(std::string_view(), '/'), std::string_view::npos);
}

TEST(FindLast, LooksNoFurtherThanTheText) {
  const std::string_view text = "a/b/c";
  EXPECT_EQ(findLast(text.substr(0, 3), '/'), 1U);
  EXPECT_EQ(findLast(text.substr(2, 1), '/'), std::string_view::npos);
}

}  // namespace
}  // namespace consolidator
