#include "readers/RegisterIndex.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using Positions = std::vector<std::uint32_t>;

constexpr std::size_t longestName = 16;

KernelRecord kernelWithRegister(const std::vector<std::string>& paths,
                                const std::vector<std::string>& arguments,
                                const std::vector<std::string>& variables) {
  KernelRecord kernel;
  for (const std::string& path : paths) kernel.addInstancePath(path);
  for (const std::string& text : arguments) kernel.addArgument("a_" + text, text, "int");
  for (const std::string& text : variables) kernel.addVariable("v_" + text, text, "int");
  return kernel;
}

TEST(RegisterIndex, FindsTheKernelsWithBothTheRegisterAndAPath) {
  const KernelSequence kernels{
      kernelWithRegister({"/top/u0"}, {"r"}, {}), kernelWithRegister({"/top/u0"}, {"s"}, {}),
      kernelWithRegister({"/top/u1"}, {"r"}, {}), kernelWithRegister({"/top"}, {}, {"r"}),
      kernelWithRegister({}, {"r"}, {})};
  RegisterIndex index(kernels, longestName);
  EXPECT_EQ(index.find("top/u0/r").kernels, (Positions{0, 3}));
  EXPECT_EQ(index.find("top/u1/r").kernels, (Positions{2, 3}));
  EXPECT_EQ(index.find("top/u0/s").kernels, (Positions{1}));
  EXPECT_EQ(index.find("top/u0/t").kernels, Positions());
  EXPECT_EQ(index.find("r").kernels, Positions());
}

TEST(RegisterIndex, NamesTheRegisterWithASlashInFront) {
  const KernelSequence kernels{kernelWithRegister({"/top"}, {"r", ""}, {})};
  RegisterIndex index(kernels, longestName);
  EXPECT_EQ(index.find("top/r").hardwareName, "/top/r");
  EXPECT_EQ(index.find("").hardwareName, "/");
}

TEST(RegisterIndex, FindsTheSameForTheSameNameAgain) {
  const KernelSequence kernels{kernelWithRegister({"/top"}, {"r", ""}, {})};
  RegisterIndex index(kernels, longestName);
  for (const char* const name : {"top/r", "top/r", "other/r", "other/r", "", "", "top/", "top/r"}) {
    const bool isInside = std::string_view(name).starts_with("top/");
    EXPECT_EQ(index.find(name).kernels, isInside ? Positions{0} : Positions()) << name;
  }
}

TEST(RegisterIndex, PathsLongerThanANameTakeNoMemory) {
  const KernelSequence kernels{
      kernelWithRegister({std::string(1'000'000, 'p'), "/top/u0/register"}, {"register"}, {})};
  const AllocationGauge gauge;
  RegisterIndex index(kernels, longestName);
  EXPECT_EQ(index.find("top/u0/register").kernels, (Positions{0}));
  EXPECT_LT(gauge.total(), 10'000U);
}

TEST(RegisterIndex, ListsAKernelOnceForSeveralPathsAndRegisters) {
  const KernelSequence kernels{
      kernelWithRegister({"/top", "/top/u0", "u0", ""}, {"r"}, {"r"}),
      kernelWithRegister({"u0", "/top/u0"}, {"r"}, {}),
  };
  RegisterIndex index(kernels, longestName);
  EXPECT_EQ(index.find("top/u0/r").kernels, (Positions{0, 1}));
}

TEST(RegisterIndex, MayKnowEveryRegisterOfArgumentsAndVariables) {
  const KernelSequence kernels{kernelWithRegister({}, {"r"}, {"s"}),
                               kernelWithRegister({}, {"t"}, {})};
  const RegisterIndex index(kernels, longestName);
  EXPECT_TRUE(index.mayKnow("r"));
  EXPECT_TRUE(index.mayKnow("s"));
  EXPECT_TRUE(index.mayKnow("t"));
  EXPECT_FALSE(RegisterIndex({}, longestName).mayKnow("r"));
}

}  // namespace
}  // namespace consolidator
