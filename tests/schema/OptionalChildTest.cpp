#include "schema/OptionalChild.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace Devpack {
namespace {

using Child = OptionalChild<std::string>;

Child childOf(const char* text) {
  Child child;
  child.set(text);
  return child;
}

TEST(OptionalChildTest, IsAbsentAtFirst) { EXPECT_EQ(Child().get(), nullptr); }

TEST(OptionalChildTest, HoldsWhatItIsSetTo) {
  Child child;
  const std::string* const first = &child.set("first");
  EXPECT_EQ(child.get(), first);
  EXPECT_EQ(*child.get(), "first");
  EXPECT_EQ(child.set(), "");
  child.set("second") += " and more";
  EXPECT_EQ(*std::as_const(child).get(), "second and more");
}

TEST(OptionalChildTest, IsAbsentOnceCleared) {
  Child child = childOf("text");
  child.clear();
  EXPECT_EQ(child.get(), nullptr);
}

TEST(OptionalChildTest, CopiesAreDeep) {
  Child child = childOf("text");
  const Child copy = child;
  Child assigned = childOf("other");
  assigned = child;
  *child.get() = "changed";
  EXPECT_EQ(*copy.get(), "text");
  EXPECT_EQ(*assigned.get(), "text");
  assigned = Child();
  EXPECT_EQ(assigned.get(), nullptr);
  EXPECT_EQ(Child(assigned).get(), nullptr);
}

TEST(OptionalChildTest, SurvivesAssignmentToItself) {
  Child child = childOf("text");
  const Child& same = child;
  child = same;
  EXPECT_EQ(*child.get(), "text");
}

TEST(OptionalChildTest, ComparesByValue) {
  EXPECT_TRUE(Child() == Child());
  EXPECT_TRUE(childOf("a") == childOf("a"));
  EXPECT_FALSE(childOf("a") == childOf("b"));
  EXPECT_FALSE(childOf("") == Child());
  EXPECT_FALSE(Child() == childOf(""));
}

}  // namespace
}  // namespace Devpack
