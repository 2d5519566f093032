// Twice the data takes twice the time, whatever the data are. CONSOLIDATOR_GROWTH=16 compares data
// that take 16 times as long.

#include "driver/GrowthCases.h"

#include <gtest/gtest.h>

#include <ostream>

namespace consolidator {

void PrintTo(const GrowthCase& growthCase, std::ostream* out);

void PrintTo(const GrowthCase& growthCase, std::ostream* out) { *out << growthCase.name; }

namespace {

class GrowthTest : public testing::TestWithParam<GrowthCase> {};

TEST_P(GrowthTest, TwiceTheDataTakeTwiceTheTime) {
#ifdef NDEBUG
  const Growth growth(GetParam().prepare, 16);
  EXPECT_LE(growth.perDoubling(), Growth::limit()) << growth.text();
  RecordProperty("growth", growth.text());
#else
  // Only optimised code is worth comparing; but it should do no harm at all.
  EXPECT_LT(timeOf(GetParam().prepare(256)), 1.0);
#endif
}

const auto caseName = [](const testing::TestParamInfo<GrowthCase>& info) {
  return info.param.name;
};

INSTANTIATE_TEST_SUITE_P(Inputs, GrowthTest, testing::ValuesIn(inputGrowthCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Containers, GrowthTest, testing::ValuesIn(containerGrowthCases()),
                         caseName);

}  // namespace
}  // namespace consolidator
