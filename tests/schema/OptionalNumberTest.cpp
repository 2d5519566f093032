#include "schema/OptionalNumber.h"

#include <gtest/gtest.h>

namespace Devpack {
namespace {

TEST(OptionalNumberTest, IsAbsentAtFirst) {
  EXPECT_FALSE(OptionalNumber().isPresent());
  EXPECT_EQ(OptionalNumber().get(), 0U);
}

TEST(OptionalNumberTest, HoldsWhatItIsSetTo) {
  OptionalNumber number;
  number.set(4294967295U);
  EXPECT_TRUE(number.isPresent());
  EXPECT_EQ(number.get(), 4294967295U);
}

TEST(OptionalNumberTest, ZeroIsNotAbsent) {
  OptionalNumber zero;
  zero.set(0);
  EXPECT_TRUE(zero.isPresent());
  EXPECT_FALSE(zero == OptionalNumber());
}

}  // namespace
}  // namespace Devpack
