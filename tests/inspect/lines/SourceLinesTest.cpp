#include "inspect/lines/SourceLines.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

const SourceLines twoFiles{
    {{"/a/k.c", {1, 4000000000U}}, {"/j.c", {}}}, "one unit is damaged", true};

void expectEqual(const SourceLines& decoded, const SourceLines& expected) {
  EXPECT_EQ(decoded.isRead, expected.isRead);
  EXPECT_EQ(decoded.problem, expected.problem);
  ASSERT_EQ(decoded.files.size(), expected.files.size());
  for (std::size_t i = 0; i < expected.files.size(); ++i) {
    EXPECT_EQ(decoded.files[i].path, expected.files[i].path);
    EXPECT_EQ(decoded.files[i].lines, expected.files[i].lines);
  }
}

TEST(SourceLinesTest, ComesBackAsItWasTold) {
  for (const SourceLines& lines : {twoFiles, SourceLines{{}, "no ELF file", false}}) {
    const auto decoded = decode(encode(lines));
    ASSERT_TRUE(decoded);
    expectEqual(*decoded, lines);
  }
}

// An answer may end wherever one file does: a child that fails says so by its status.
TEST(SourceLinesTest, RefusesBytesThatEndWithinAFile) {
  const SourceLines withoutFiles{{}, twoFiles.problem, true};
  const SourceLines withOneFile{{twoFiles.files[0]}, twoFiles.problem, true};
  const std::vector<std::size_t> wholeSizes{encode(withoutFiles).size(),
                                            encode(withOneFile).size()};
  const std::string bytes = encode(twoFiles);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    const bool isWhole = size == wholeSizes[0] || size == wholeSizes[1];
    EXPECT_EQ(decode(bytes.substr(0, size)).has_value(), isWhole) << size;
  }
}

TEST(SourceLinesTest, RefusesSizesBeyondTheEnd) {
  const std::string bytes = encode(twoFiles);
  const std::size_t first = encode(SourceLines{{}, twoFiles.problem, true}).size();
  const std::size_t sizeOfPath = first;
  const std::size_t countOfLines = first + 4 + twoFiles.files[0].path.size();
  for (const std::size_t place : {std::size_t{1}, sizeOfPath, countOfLines}) {
    std::string wrong = bytes;
    wrong[place + 3] = '\xFF';
    EXPECT_FALSE(decode(wrong)) << place;
  }
}

TEST(SourceLinesTest, RefusesBytesAfterTheLastFile) {
  EXPECT_FALSE(decode(encode(twoFiles) + 'x'));
}

}  // namespace
}  // namespace consolidator::inspect
