#include "model/BitLocation.h"

#include <gtest/gtest.h>

namespace consolidator {
namespace {

TEST(BitLocation, IsZeroWhenNew) {
  const BitLocation location;
  EXPECT_EQ(location.first, 0U);
  EXPECT_EQ(location.second, 0U);
}

TEST(BitLocation, ComparesBothNumbers) {
  EXPECT_EQ((BitLocation{1, 2}), (BitLocation{1, 2}));
  EXPECT_NE((BitLocation{1, 2}), (BitLocation{1, 3}));
  EXPECT_NE((BitLocation{1, 2}), (BitLocation{3, 2}));
}

}  // namespace
}  // namespace consolidator
