#include "consolidated/ByteBlock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

namespace consolidator {
namespace {

constexpr std::size_t hugePage = std::size_t{2} * 1024 * 1024;

TEST(ByteBlock, HoldsExactlyItsBytesWhateverItsSize) {
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{1}, std::size_t{4096}, hugePage - 1, hugePage, hugePage + 1}) {
    ByteBlock block(size);
    ASSERT_NE(block.data(), nullptr) << size;
    ASSERT_EQ(block.size(), size);
    std::fill_n(block.data(), size, 'x');
    EXPECT_EQ(block.view(), std::string(size, 'x')) << size;
  }
}

TEST(ByteBlock, MovesWithoutCopying) {
  ByteBlock block(3);
  std::copy_n("abc", 3, block.data());
  const char* const bytes = block.data();
  const ByteBlock moved = std::move(block);
  EXPECT_EQ(moved.view().data(), bytes);
  EXPECT_EQ(moved.view(), "abc");
}

}  // namespace
}  // namespace consolidator
