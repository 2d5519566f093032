#include "lmx60/MemorySource.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace lmx {
namespace {

TEST(MemorySourceTest, HandsOutTheTextPieceByPiece) {
  c_memory_source source("abcdefg");
  std::array<char, 3> bytes{};
  std::string all;
  for (const std::size_t expected : {3U, 3U, 1U, 0U, 0U}) {
    const std::size_t count = source.read(bytes.data(), bytes.size());
    EXPECT_EQ(count, expected);
    all.append(bytes.data(), count);
  }
  EXPECT_EQ(all, "abcdefg");
  EXPECT_TRUE(source.is_open());
}

}  // namespace
}  // namespace lmx
