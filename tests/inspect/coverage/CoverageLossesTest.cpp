#include "inspect/coverage/CoverageLosses.h"
#include "inspect/diff/Differences.h"
#include "support/Growth.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

KernelRecord kernelAt(const std::string& path, std::uint32_t bits) {
  KernelRecord kernel;
  kernel.name = "k";
  kernel.addInstancePath(path);
  kernel.addVariable("i", "i_r", "int");
  for (std::uint32_t bit = 0; bit < bits; ++bit) {
    kernel.setLogicLocation(path + "/i_r", bit, 1, bit);
  }
  return kernel;
}

// The losses, by instance, bits before and bits after.
std::vector<std::string> lossesBetween(const std::vector<KernelRecord>& before,
                                       const std::vector<KernelRecord>& after) {
  const std::string bytesBefore = fileOf(before);
  const std::string bytesAfter = fileOf(after);
  const auto fileBefore = consolidated::File::fromBytes(bytesBefore);
  const auto fileAfter = consolidated::File::fromBytes(bytesAfter);
  std::vector<std::string> losses;
  CoverageLosses(*fileBefore, *fileAfter).report([&](const CoverageLoss& loss) {
    losses.push_back(std::string(loss.instance) + " " + std::to_string(loss.before.bits) + " " +
                     (loss.after ? std::to_string(loss.after->bits) : "gone"));
  });
  return losses;
}

using Losses = std::vector<std::string>;

TEST(CoverageLossesTest, FindsFewerBits) {
  EXPECT_EQ(lossesBetween({kernelAt("/a", 2)}, {kernelAt("/a", 1)}), Losses{"/a 2 1"});
  EXPECT_EQ(lossesBetween({kernelAt("/a", 2)}, {kernelAt("/a", 0)}), Losses{"/a 2 0"});
  EXPECT_EQ(lossesBetween({kernelAt("/a", 1)}, {kernelAt("/a", 2)}), Losses());
}

TEST(CoverageLossesTest, FindsNewGap) {
  KernelRecord gap = kernelAt("/a", 2);
  gap.setLogicLocation("/a/i_r", 5, 1, 1);
  EXPECT_EQ(lossesBetween({kernelAt("/a", 2)}, {gap}), Losses{"/a 2 3"});
  EXPECT_EQ(lossesBetween({gap}, {gap}), Losses());
}

TEST(CoverageLossesTest, FindsWhatIsGone) {
  EXPECT_EQ(lossesBetween({kernelAt("/a", 1)}, {}), Losses{"/a 1 gone"});
  EXPECT_EQ(lossesBetween({kernelAt("/a", 1)}, {kernelAt("/b", 1)}), Losses{"/a 1 gone"});
  EXPECT_EQ(lossesBetween({kernelAt("/a", 0)}, {}), Losses());
}

TEST(CoverageLossesTest, DropsDoubtfulRegisters) {
  KernelRecord doubtful = kernelAt("/a", 0);
  doubtful.setLogicLocation("/ab/i_r", 0, 1, 1);
  EXPECT_EQ(lossesBetween({doubtful}, {kernelAt("/a", 0)}), Losses());
  EXPECT_EQ(lossesBetween({kernelAt("/a", 1)}, {doubtful}), Losses{"/a 1 0"});
}

TEST(CoverageLossesTest, MatchesKernelsOfOneNameInTheirOrder) {
  const std::vector<KernelRecord> before{kernelAt("/a", 1), kernelAt("/b", 1)};
  EXPECT_EQ(lossesBetween(before, before), Losses());
  EXPECT_EQ(lossesBetween(before, {kernelAt("/b", 1), kernelAt("/a", 1)}),
            (Losses{"/a 1 gone", "/b 1 gone"}));
}

// Each of these has a long text that would be told again with two thousand others.
TEST(CoverageLossesTest, LeavesOutKernelsOfWhichTooMuchWouldBeTold) {
  const std::string text(100'000, 'x');
  KernelRecord path;
  KernelRecord name;
  KernelRecord variable;
  path.addInstancePath(text);
  name.addInstancePath("/a");
  name.name = text;
  variable.addVariable(text, "r", "int");
  for (int i = 0; i < 2000; ++i) {
    path.addVariable(std::to_string(i), "r", "int");
    name.addVariable(std::to_string(i), "r", "int");
    variable.addInstancePath(std::to_string(i));
  }
  for (const KernelRecord& kernel : {path, name, variable}) {
    const std::string bytes = fileOf({kernel});
    const auto file = consolidated::File::fromBytes(bytes);
    EXPECT_EQ(CoverageLosses(*file, *file).report([](const auto&) {}).notCompared, 1U);
  }
}

TEST(CoverageLossesTest, TakesLinearTime) {
  const auto prepare = [](std::size_t size) -> Work {
    std::vector<KernelRecord> kernels;
    for (std::size_t i = 0; i < size; ++i) {
      kernels.push_back(kernelAt("/a", 1));
      kernels.back().name = "k" + std::to_string(i % 2 == 0 ? i : 0);
    }
    const auto bytes = std::make_shared<std::string>(fileOf(kernels));
    return [bytes] {
      const auto file = consolidated::File::fromBytes(*bytes);
      EXPECT_TRUE(CoverageLosses(*file, *file).report([](const auto&) {}).holds());
    };
  };
  EXPECT_LE(Growth(prepare, 500).perDoubling(), Growth::limit());
}

}  // namespace
}  // namespace consolidator::inspect
