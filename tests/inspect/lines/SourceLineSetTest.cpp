#include "inspect/lines/SourceLineSet.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace consolidator::inspect {
namespace {

using LineNumbers = std::vector<std::uint32_t>;

TEST(SourceLineSetTest, GivesLinesAscendingAndOnce) {
  SourceLineSet set;
  const std::uint32_t file = set.file("/k.c");
  for (const std::uint32_t line : {7U, 7U, 3U, 7U, 5U, 3U}) set.add(file, line);
  const auto files = set.take();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].path, "/k.c");
  EXPECT_EQ(files[0].lines, (LineNumbers{3, 5, 7}));
}

TEST(SourceLineSetTest, NumbersEqualPathsAlike) {
  SourceLineSet set;
  const std::uint32_t first = set.file("/k.c");
  EXPECT_NE(set.file("/j.c"), first);
  EXPECT_EQ(set.file("/k.c"), first);
}

TEST(SourceLineSetTest, LeavesOutFilesWithoutLines) {
  SourceLineSet set;
  set.file("/empty.c");
  set.add(set.file("/k.c"), 1);
  const auto files = set.take();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files[0].path, "/k.c");
}

// As many as are held at once, again and again: all stay, and no line comes twice.
TEST(SourceLineSetTest, KeepsEachOfVeryManyLinesOnce) {
  constexpr std::uint32_t many = 700000;
  SourceLineSet set;
  const std::uint32_t file = set.file("/k.c");
  for (int round = 0; round < 4; ++round) {
    for (std::uint32_t line = 1; line <= many; ++line) set.add(file, line);
  }
  const LineNumbers lines = set.take().at(0).lines;
  ASSERT_EQ(lines.size(), many);
  EXPECT_EQ(lines.front(), 1U);
  EXPECT_EQ(lines.back(), many);
}

}  // namespace
}  // namespace consolidator::inspect
