#include "schema/CompactText.h"
#include "schema/OptionalValue.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>

namespace Devpack {
namespace {

// Texts of all lengths around that which the object itself holds, zero bytes included.
class CompactTextTest : public testing::TestWithParam<std::size_t> {
 protected:
  static std::string text() {
    std::string text;
    for (std::size_t i = 0; i < GetParam(); ++i) text += static_cast<char>(i * 37);
    return text;
  }
};

TEST_P(CompactTextTest, HoldsItsBytes) { EXPECT_EQ(CompactText(text()).view(), text()); }

TEST_P(CompactTextTest, CopiesAreIndependent) {
  CompactText original(text());
  const CompactText copy(original);
  CompactText assigned("another text that is not short at all");
  assigned = original;
  original = CompactText("changed");
  EXPECT_EQ(copy.view(), text());
  EXPECT_EQ(assigned.view(), text());
  EXPECT_EQ(original.view(), "changed");
}

TEST_P(CompactTextTest, MovesTakeTheBytesAlong) {
  CompactText original(text());
  CompactText moved(std::move(original));
  EXPECT_EQ(moved.view(), text());
  CompactText assigned("another text that is not short at all");
  assigned = std::move(moved);
  EXPECT_EQ(assigned.view(), text());
}

TEST_P(CompactTextTest, SurvivesAssignmentToItself) {
  CompactText one(text());
  const CompactText& same = one;
  one = same;
  EXPECT_EQ(one.view(), text());
}

TEST_P(CompactTextTest, ComparesBytes) {
  EXPECT_TRUE(CompactText(text()) == CompactText(text()));
  EXPECT_FALSE(CompactText(text()) == CompactText(text() + '\0'));
  EXPECT_FALSE(CompactText(text() + 'a') == CompactText(text() + 'b'));
}

INSTANTIATE_TEST_SUITE_P(Sizes, CompactTextTest,
                         testing::Values(0U, 1U, 21U, 22U, 23U, 24U, 100U, 100000U));

TEST(CompactTextSizeTest, AnAttributeTakes24Bytes) { EXPECT_EQ(sizeof(Attribute), 24U); }

TEST(CompactTextSizeTest, IsEmptyAtFirst) { EXPECT_EQ(CompactText().view(), ""); }

}  // namespace
}  // namespace Devpack
