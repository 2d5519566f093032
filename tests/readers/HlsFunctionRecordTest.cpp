#include "readers/HlsFunctionRecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using Files = std::vector<std::string>;
using Lines = std::vector<std::uint32_t>;

template <typename List>
auto items(const List& list) {
  return std::vector<typename List::value_type>(list.begin(), list.end());
}

HlsFunctionRecord recordOf(std::initializer_list<std::string_view> positions) {
  HlsFunctionRecord function;
  for (const std::string_view position : positions) function.addLocation(position);
  return function;
}

TEST(HlsFunctionRecord, SplitsAPositionAtItsFirstColon) {
  const HlsFunctionRecord function = recordOf({"src/a.cpp:12", "b:3:4"});
  EXPECT_EQ(items(function.files), (Files{"src/a.cpp", "b"}));
  EXPECT_EQ(items(function.lines), (Lines{12, 3}));
}

TEST(HlsFunctionRecord, KeepsFilesAndLinesOnceEachInTheirFirstOrder) {
  const HlsFunctionRecord function = recordOf({"b.c:2", "a.c:1", "b.c:1", "a.c:2", "a.c:3"});
  EXPECT_EQ(items(function.files), (Files{"b.c", "a.c"}));
  EXPECT_EQ(items(function.lines), (Lines{2, 1, 3}));
}

TEST(HlsFunctionRecord, TakesEmptyFilesAndLinesThatDoNotParse) {
  const HlsFunctionRecord function = recordOf({":7", "a:", "a:x", "a:-5", "a:+5", "a:8x"});
  EXPECT_EQ(items(function.files), (Files{"", "a"}));
  EXPECT_EQ(items(function.lines), (Lines{7, 0, 8}));
}

TEST(HlsFunctionRecord, KeepsTheLow32BitsOfALine) {
  const HlsFunctionRecord function =
      recordOf({"a:4294967295", "a:4294967296", "a:4294967301", "a:9223372036854775807"});
  EXPECT_EQ(items(function.lines), (Lines{4294967295, 0, 5}));
  EXPECT_EQ(items(recordOf({"a:99999999999999999999"}).lines), (Lines{4294967295}));
}

TEST(HlsFunctionRecord, APositionWithoutAColonIsAFileAtLine0) {
  const HlsFunctionRecord function = recordOf({"a.c"});
  EXPECT_EQ(items(function.files), (Files{"a.c"}));
  EXPECT_EQ(items(function.lines), (Lines{0}));
}

TEST(HlsFunctionRecord, IsEmptyWhenCleared) {
  HlsFunctionRecord function = recordOf({"a.c:1", "b.c:2"});
  function.name = "f";
  function.locals.push_back({"sum", "sum_reg", 32});
  function.clear();
  EXPECT_EQ(function, HlsFunctionRecord());
  function.addLocation("a.c:2");
  EXPECT_EQ(items(function.files), (Files{"a.c"}));
  EXPECT_EQ(items(function.lines), (Lines{2}));
}

}  // namespace
}  // namespace consolidator
