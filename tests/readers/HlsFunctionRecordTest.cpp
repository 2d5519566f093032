#include "readers/HlsFunctionRecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>

namespace consolidator {
namespace {

HlsFunctionRecord recordOf(std::initializer_list<std::string_view> positions) {
  HlsFunctionRecord function;
  for (const std::string_view position : positions) function.addLocation(position);
  return function;
}

void expectPosition(const HlsFunctionRecord& function, std::string_view file, std::uint32_t line) {
  EXPECT_EQ(function.file, file);
  EXPECT_EQ(function.line, line);
}

TEST(HlsFunctionRecord, SplitsAPositionAtItsFirstColon) {
  expectPosition(recordOf({"src/a.cpp:12"}), "src/a.cpp", 12);
  expectPosition(recordOf({"b:3:4"}), "b", 3);
}

TEST(HlsFunctionRecord, KeepsTheFirstPosition) {
  expectPosition(recordOf({"b.c:2", "a.c:1", "b.c:1"}), "b.c", 2);
  expectPosition(recordOf({":0", "a.c:1"}), "", 0);
}

TEST(HlsFunctionRecord, TakesAnEmptyFileAndALineThatDoesNotParse) {
  expectPosition(recordOf({":7"}), "", 7);
  for (const char* const position : {"a:", "a:x", "a:-5", "a:+5"}) {
    expectPosition(recordOf({position}), "a", 0);
  }
  expectPosition(recordOf({"a:8x"}), "a", 8);
}

TEST(HlsFunctionRecord, KeepsTheLow32BitsOfALine) {
  expectPosition(recordOf({"a:4294967295"}), "a", 4294967295);
  expectPosition(recordOf({"a:4294967296"}), "a", 0);
  expectPosition(recordOf({"a:4294967301"}), "a", 5);
  expectPosition(recordOf({"a:9223372036854775807"}), "a", 4294967295);
  expectPosition(recordOf({"a:99999999999999999999"}), "a", 4294967295);
}

TEST(HlsFunctionRecord, APositionWithoutAColonIsAFileAtLine0) {
  expectPosition(recordOf({"a.c"}), "a.c", 0);
}

TEST(HlsFunctionRecord, IsEmptyWhenCleared) {
  HlsFunctionRecord function = recordOf({"a.c:1"});
  function.name = "f";
  function.locals.push_back({"sum", "sum_reg", 32});
  function.clear();
  EXPECT_EQ(function, HlsFunctionRecord());
  EXPECT_EQ(function.line, std::nullopt);
  function.addLocation("b.c:2");
  expectPosition(function, "b.c", 2);
}

}  // namespace
}  // namespace consolidator
