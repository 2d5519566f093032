#include "schema/ChildList.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

namespace Devpack {
namespace {

using List = ChildList<std::string>;

List listOf(std::initializer_list<const char*> texts) {
  List list;
  for (const char* const text : texts) list.append() = text;
  return list;
}

TEST(ChildListTest, KeepsTheOrderOfAppending) {
  List list;
  EXPECT_EQ(list.count(), 0U);
  list.append() = "a";
  EXPECT_EQ(list.append(), "");
  list.append() = "c";
  ASSERT_EQ(list.count(), 3U);
  EXPECT_EQ(list.get(0), "a");
  EXPECT_EQ(list.get(1), "");
  EXPECT_EQ(std::as_const(list).get(2), "c");
}

TEST(ChildListTest, VisitsChildrenInTheirOrder) {
  std::string visited;
  listOf({"a", "b", "c"}).forEach([&](const std::string& child) { visited += child; });
  EXPECT_EQ(visited, "abc");
}

TEST(ChildListTest, ChildrenKeepTheirAddress) {
  List list;
  const std::string* const first = &(list.append() = "a");
  for (int i = 0; i < 1000; ++i) list.append();
  EXPECT_EQ(&list.get(0), first);
}

TEST(ChildListTest, CopiesAreDeep) {
  List list = listOf({"a", "b"});
  const List copy = list;
  List assigned = listOf({"c"});
  assigned = list;
  list.get(0) = "changed";
  EXPECT_TRUE(copy == listOf({"a", "b"}));
  EXPECT_TRUE(assigned == copy);
}

TEST(ChildListTest, SurvivesAssignmentToItself) {
  List list = listOf({"a", "b"});
  const List& same = list;
  list = same;
  EXPECT_TRUE(list == listOf({"a", "b"}));
}

TEST(ChildListTest, ComparesCountOrderAndValues) {
  EXPECT_TRUE(List() == List());
  EXPECT_TRUE(listOf({"a", "b"}) == listOf({"a", "b"}));
  EXPECT_FALSE(listOf({"a", "b"}) == listOf({"b", "a"}));
  EXPECT_FALSE(listOf({"a", "b"}) == listOf({"a"}));
  EXPECT_FALSE(listOf({"a"}) == listOf({"a", "b"}));
}

TEST(ChildListDeathTest, AnIndexPastTheEndStopsTheProgram) {
  List list = listOf({"a"});
  EXPECT_DEATH(list.get(1), "");
  EXPECT_DEATH(std::as_const(list).get(static_cast<std::size_t>(-1)), "");
  EXPECT_DEATH(List().get(0), "");
}

}  // namespace
}  // namespace Devpack
