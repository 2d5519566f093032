#include "ReadingFixture.h"
#include "consolidated/Kernel.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace consolidated {
namespace {

class BelongingTest : public ReadingFixture {
 protected:
  // With a register and a variable "i", whose second name is "i_r".
  Kernel kernelWith(std::string_view rtlName) {
    return *readRecords(u32(1) + text("k") + u32(0) + u32(4) + u32(0) + u32(1) + text("i") +
                        text("i_r") + text("int") + u32(0) + u32(1) + text(rtlName) + u32(0) +
                        u32(0) + u32(0))
                .kernels()
                .begin();
  }

  // Of the register to the variable.
  Belonging of(std::string_view rtlName, std::string_view path) {
    const Kernel kernel = kernelWith(rtlName);
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

// Texts of few letters overlap themselves in many ways.
TEST_F(BelongingTest, IsThatOfASearchWithTheSlash) {
  std::mt19937 random(1);
  const auto randomText = [&](std::size_t most) {
    std::string letters(random() % (most + 1), 'a');
    for (char& letter : letters) letter = "aaab/"[random() % 5];
    return letters;
  };
  for (std::size_t i = 0; i < 20'000; ++i) {
    const std::string name = randomText(24) + "/i_r";
    const std::string path = randomText(i % 8);
    const bool isCertain = name.find(path + '/') != std::string::npos;
    const bool isThere = name.find(path) != std::string::npos;
    const Belonging expected = isCertain ? Belonging::Certain
                               : isThere ? Belonging::Doubtful
                                         : Belonging::None;
    EXPECT_EQ(of(name, path), expected) << path << " in " << name;
  }
}

TEST_F(BelongingTest, TakesNoMemory) {
  const std::string path(1000, 'a');
  const Kernel kernel = kernelWith(path + "0" + path + "/i_r");
  const HardwareVariable hardware = *kernel.hardwareVariables().begin();
  const Variable variable = *kernel.variables().begin();
  const consolidator::AllocationGauge gauge;
  EXPECT_EQ(belonging(hardware, variable, path), Belonging::Certain);
  EXPECT_EQ(gauge.total(), 0U);
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
  EXPECT_EQ(of("/" + many + "/i_r", many.substr(many.size() / 2)), Belonging::Certain);
}

}  // namespace
}  // namespace consolidated
