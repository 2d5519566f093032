#include "ReadingFixture.h"
#include "consolidated/Kernel.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace consolidated {
namespace {

class BelongingTest : public ReadingFixture {
 protected:
  // Of a register to the variable "i", whose second name is "i_r".
  Belonging of(std::string_view rtlName, std::string_view path) {
    const Kernel kernel = *readRecords(u32(1) + text("k") + u32(0) + u32(4) + u32(0) + u32(1) +
                                       text("i") + text("i_r") + text("int") + u32(0) + u32(1) +
                                       text(rtlName) + u32(0) + u32(0) + u32(0))
                               .kernels()
                               .begin();
    return belonging(*kernel.hardwareVariables().begin(), *kernel.variables().begin(), path);
  }
};

TEST_F(BelongingTest, IsCertainWhereASlashFollowsThePath) {
  EXPECT_EQ(of("/t/k_1/i_r", "/t/k_1"), Belonging::Certain);
  EXPECT_EQ(of("/t/k_1/sub/i_r", "/t/k_1"), Belonging::Certain);
  EXPECT_EQ(of("/wrapper/t/k_1/i_r", "/t/k_1"), Belonging::Certain);
  EXPECT_EQ(of("/i_r", ""), Belonging::Certain);
}

TEST_F(BelongingTest, IsDoubtfulWhereANameGoesOnAfterThePath) {
  EXPECT_EQ(of("/t/k_10/i_r", "/t/k_1"), Belonging::Doubtful);
  EXPECT_EQ(of("/t/k_1/i_r", "/t/k_1/i_r"), Belonging::Doubtful);
  EXPECT_EQ(of("/t/k_1/i_r", "/t/k_1/"), Belonging::Doubtful);
}

TEST_F(BelongingTest, IsCertainIfASlashFollowsALaterOccurrence) {
  EXPECT_EQ(of("/k_10/k_1/i_r", "/k_1"), Belonging::Certain);
  EXPECT_EQ(of("/aaaa/i_r", "aa"), Belonging::Certain);
}

TEST_F(BelongingTest, NeedsTheSecondNameOfTheVariable) {
  EXPECT_EQ(of("/t/k_1/i_r2", "/t/k_1"), Belonging::None);
  EXPECT_EQ(of("/t/k_1/i", "/t/k_1"), Belonging::None);
  EXPECT_EQ(of("/t/k_1/i_r/", "/t/k_1"), Belonging::None);
}

TEST_F(BelongingTest, NeedsThePath) {
  EXPECT_EQ(of("/t/k_2/i_r", "/t/k_1"), Belonging::None);
  EXPECT_EQ(of("i_r", "/t/k_1"), Belonging::None);
}

TEST_F(BelongingTest, TakesNoTimeBeyondLinear) {
  const std::string many(std::size_t{1} << 20U, 'a');
  EXPECT_EQ(of("/" + many + "b/i_r", many + "c"), Belonging::None);
  EXPECT_EQ(of("/" + many + "b/i_r", many.substr(many.size() / 2)), Belonging::Doubtful);
}

}  // namespace
}  // namespace consolidated
