#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace consolidator {
namespace {

TEST(AllocationGauge, SeesEveryWayOfAskingForMemory) {
  const std::string before(5000, 'x');
  AllocationGauge gauge;
  EXPECT_EQ(gauge.largest(), 0U);
  const std::unique_ptr<char[]> array = std::make_unique<char[]>(1000);
  EXPECT_EQ(gauge.largest(), 1000U);
  std::string text(1500, 'x');
  EXPECT_GE(gauge.largest(), 1500U);
  const std::string pages(std::size_t{2} * 1024 * 1024, 'x');
  EXPECT_GE(gauge.largest(), pages.size());
  EXPECT_GE(gauge.total(), 1000 + 1500 + std::size_t{2} * 1024 * 1024);
}

}  // namespace
}  // namespace consolidator
