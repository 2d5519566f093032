#include "model/AllocationGauge.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace consolidator {
namespace {

TEST(AllocationGauge, CountsArraysAndContainersWhileItLives) {
  const std::vector<char> before(5000);
  AllocationGauge gauge;
  EXPECT_EQ(gauge.total(), 0U);
  auto array = std::make_unique<char[]>(1000);
  const std::vector<char> container(300);
  array.reset();
  EXPECT_EQ(gauge.largest(), 1000U);
  EXPECT_EQ(gauge.total(), 1300U);
}

}  // namespace
}  // namespace consolidator
