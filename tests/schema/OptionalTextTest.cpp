#include "schema/OptionalText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace Devpack {
namespace {

OptionalText textOf(std::string_view text) {
  OptionalText value;
  value.set(text);
  return value;
}

// Texts of all lengths around that which the object itself holds, zero bytes included.
class OptionalTextTest : public testing::TestWithParam<std::size_t> {
 protected:
  static std::string text() {
    std::string text;
    for (std::size_t i = 0; i < GetParam(); ++i) text += static_cast<char>(i * 37);
    return text;
  }
};

TEST_P(OptionalTextTest, HoldsItsBytes) {
  EXPECT_TRUE(textOf(text()).isPresent());
  EXPECT_EQ(textOf(text()).get(), text());
}

TEST_P(OptionalTextTest, CopiesAreIndependent) {
  OptionalText original = textOf(text());
  const OptionalText copy(original);
  OptionalText assigned = textOf("another text that is not short at all");
  assigned = original;
  original.set("changed");
  EXPECT_EQ(copy.get(), text());
  EXPECT_EQ(assigned.get(), text());
  EXPECT_EQ(original.get(), "changed");
}

TEST_P(OptionalTextTest, MovesTakeTheBytesAlong) {
  OptionalText original = textOf(text());
  OptionalText moved(std::move(original));
  EXPECT_EQ(moved.get(), text());
  OptionalText assigned = textOf("another text that is not short at all");
  assigned = std::move(moved);
  EXPECT_EQ(assigned.get(), text());
}

TEST_P(OptionalTextTest, SurvivesAssignmentToItself) {
  OptionalText one = textOf(text());
  const OptionalText& same = one;
  one = same;
  EXPECT_EQ(one.get(), text());
  one.set(one.get());
  EXPECT_EQ(one.get(), text());
}

TEST_P(OptionalTextTest, ComparesBytes) {
  EXPECT_TRUE(textOf(text()) == textOf(text()));
  EXPECT_FALSE(textOf(text()) == textOf(text() + '\0'));
  EXPECT_FALSE(textOf(text() + 'a') == textOf(text() + 'b'));
}

TEST_P(OptionalTextTest, BecomesAbsentByAssignment) {
  OptionalText one = textOf(text());
  one = {};
  EXPECT_FALSE(one.isPresent());
  EXPECT_EQ(one.get(), "");
  EXPECT_TRUE(one == OptionalText());
  EXPECT_FALSE(one == textOf(text()));
}

INSTANTIATE_TEST_SUITE_P(Sizes, OptionalTextTest,
                         testing::Values(0U, 1U, 14U, 15U, 16U, 17U, 100U, 100000U));

TEST(OptionalTextSizeTest, Takes16Bytes) { EXPECT_EQ(sizeof(OptionalText), 16U); }

}  // namespace
}  // namespace Devpack
