#include "inspect/coverage/PairBudget.h"
#include "inspect/verify/VerifyFixture.h"

#include <gtest/gtest.h>

namespace consolidator::inspect {
namespace {

class PairBudgetTest : public testing::Test {
 protected:
  bool spend(double bytes) {
    const auto file = consolidated::File::fromBytes(bytes_);
    return budget_.spend(*(*file).kernels().begin(), bytes);
  }

  std::string bytes_ = container({{SectionKind::KernelRecords, recordsOf({plainKernel()})}});
  double inProportion_ = 64.0 * static_cast<double>(recordsOf({plainKernel()}).size() - 4);
  PairBudget budget_;
};

TEST_F(PairBudgetTest, GivesWhatIsInProportionAgainAndAgain) {
  for (int i = 0; i < 100'000; ++i) ASSERT_TRUE(spend(inProportion_));
}

TEST_F(PairBudgetTest, GivesALimitedExcessToAllKernelsTogether) {
  EXPECT_TRUE(spend(inProportion_ + 40e6));
  EXPECT_FALSE(spend(inProportion_ + 40e6));
  EXPECT_TRUE(spend(inProportion_ + 24e6)) << "what is refused costs nothing";
  EXPECT_FALSE(spend(inProportion_ + 1));
  EXPECT_TRUE(spend(inProportion_));
}

}  // namespace
}  // namespace consolidator::inspect
