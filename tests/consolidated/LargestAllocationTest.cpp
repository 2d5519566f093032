#include "consolidated/ByteBlock.h"
#include "support/LargestAllocation.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace consolidator {
namespace {

TEST(LargestAllocation, SeesEveryWayOfAskingForMemory) {
  const std::string before(5000, 'x');
  LargestAllocation largest;
  EXPECT_EQ(largest.bytes(), 0U);
  const std::unique_ptr<char[]> array = std::make_unique<char[]>(1000);
  EXPECT_EQ(largest.bytes(), 1000U);
  std::string text(1500, 'x');
  EXPECT_GE(largest.bytes(), 1500U);
  const ByteBlock block(2000);
  EXPECT_EQ(largest.bytes(), 2000U);
  const ByteBlock pages(std::size_t{2} * 1024 * 1024);
  EXPECT_EQ(largest.bytes(), std::size_t{2} * 1024 * 1024);
}

}  // namespace
}  // namespace consolidator
