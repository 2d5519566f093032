#include "schema/OptionalValue.h"

#include <gtest/gtest.h>

#include <string>

namespace Devpack {
namespace {

TEST(OptionalValueTest, IsAbsentAtFirst) {
  const Attribute text;
  EXPECT_FALSE(text.isPresent());
  EXPECT_EQ(text.get(), "");
  const UnsignedAttribute number;
  EXPECT_FALSE(number.isPresent());
  EXPECT_EQ(number.get(), 0U);
}

TEST(OptionalValueTest, HoldsWhatItIsSetTo) {
  Attribute text;
  text.set("first");
  text.set(std::string("second"));
  EXPECT_TRUE(text.isPresent());
  EXPECT_EQ(text.get(), "second");
  UnsignedAttribute number;
  number.set(4294967295U);
  EXPECT_TRUE(number.isPresent());
  EXPECT_EQ(number.get(), 4294967295U);
}

TEST(OptionalValueTest, AnEmptyValueIsNotAnAbsentOne) {
  TextElement empty;
  empty.set("");
  EXPECT_TRUE(empty.isPresent());
  EXPECT_FALSE(empty == TextElement());
  UnsignedAttribute zero;
  zero.set(0U);
  EXPECT_FALSE(zero == UnsignedAttribute());
}

TEST(OptionalValueTest, BecomesAbsentByAssignment) {
  Attribute text;
  text.set("value");
  text = {};
  EXPECT_TRUE(text == Attribute());
}

}  // namespace
}  // namespace Devpack
