#include "inspect/coverage/Percent.h"

#include <gtest/gtest.h>

namespace consolidator::inspect {
namespace {

TEST(PercentTest, RoundsToOneDecimal) {
  EXPECT_EQ(Percent::of(1, 2).text(), "50.0");
  EXPECT_EQ(Percent::of(2, 3).text(), "66.7");
  EXPECT_EQ(Percent::of(1, 3).text(), "33.3");
}

TEST(PercentTest, KeepsAllAndNoneApartFromTheRest) {
  EXPECT_EQ(Percent::of(5, 5).text(), "100.0");
  EXPECT_EQ(Percent::of(99'999, 100'000).text(), "99.9");
  EXPECT_EQ(Percent::of(0, 5).text(), "0.0");
  EXPECT_EQ(Percent::of(1, 100'000).text(), "0.1");
}

TEST(PercentTest, ReadsAtMostOneDecimal) {
  EXPECT_EQ(Percent::parse("66.7"), Percent::of(2, 3));
  EXPECT_EQ(Percent::parse("100"), Percent::of(1, 1));
  EXPECT_EQ(Percent::parse("0"), Percent::of(0, 1));
  for (const char* const text : {"", ".", "1.", ".1", "1.23", "100.1", "1e1", " 1", "+1", "1,5"}) {
    EXPECT_EQ(Percent::parse(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace consolidator::inspect
