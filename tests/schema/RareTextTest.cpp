#include "schema/RareText.h"

#include <gtest/gtest.h>

namespace Devpack {
namespace {

TEST(RareTextTest, IsAbsentAtFirst) {
  EXPECT_FALSE(RareText().isPresent());
  EXPECT_EQ(RareText().get(), "");
}

TEST(RareTextTest, HoldsWhatItIsSetTo) {
  RareText text;
  text.set("first");
  text.set("second");
  EXPECT_TRUE(text.isPresent());
  EXPECT_EQ(text.get(), "second");
}

TEST(RareTextTest, AnEmptyTextIsNotAbsent) {
  RareText empty;
  empty.set("");
  EXPECT_TRUE(empty.isPresent());
  EXPECT_FALSE(empty == RareText());
}

}  // namespace
}  // namespace Devpack
