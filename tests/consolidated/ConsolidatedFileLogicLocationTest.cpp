#include "consolidated/ConsolidatedFileFixture.h"
#include "support/MemoryStream.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

KernelRecord kernelAt(std::string_view name, std::string_view path) {
  KernelRecord kernel;
  kernel.name = name;
  kernel.addInstancePath(path);
  kernel.addArgument("sum", "acc", "int");
  return kernel;
}

class ConsolidatedFileLogicLocationTest : public ConsolidatedFileFixture {
 protected:
  void openWith(const KernelSequence& kernels) {
    std::string records = u32(static_cast<std::uint32_t>(kernels.size()));
    for (const KernelRecord& kernel : kernels) records += encode(kernel);
    open(container({{SectionKind::KernelRecords, records}}));
    ASSERT_EQ(file_.kernels().size(), kernels.size());
  }

  void addFile(std::string_view text) { file_.addLogicLocations(folder_.write("ll", text)); }

  // The hardware variables, one a line: kernel, name, locations.
  std::string shown() const {
    std::string text;
    for (const KernelRecord& kernel : file_.kernels()) {
      for (const HardwareVariable& variable : kernel.hardwareVariables) {
        text += kernel.name + " " + variable.rtlName;
        for (const LogicLocation& location : variable.logicLocations) {
          text += " " + std::to_string(location.first) + ":" + std::to_string(location.second);
        }
        text += "\n";
      }
    }
    return text;
  }
};

TEST_F(ConsolidatedFileLogicLocationTest, AddsHardwareVariablesToTheKernels) {
  openWith({kernelAt("k", "/top/u0"), kernelAt("l", "/top/u1")});
  addFile("Bit 1 a 2 die0 0 Net=top/u1/acc\nBit 1 b 3 die0 0 Net=top/u0/acc[1]\n");
  EXPECT_EQ(shown(), "k /top/u0/acc 0:0 11:3\nl /top/u1/acc 10:2\n");
}

TEST_F(ConsolidatedFileLogicLocationTest, AVariableThatIsThereBeforeKeepsItsLocations) {
  KernelRecord kernel = kernelAt("k", "/top");
  kernel.setLogicLocation("/top/acc", 0, 8, 9);
  openWith({kernel});
  addFile(
      "Bit 1 a 2 die0 0 Net=top/acc[0]\nBit 1 b 3 die0 0 Net=top/acc[1]\n"
      "Bit 1 c 4 die0 0 Net=top/u0/acc\n");
  EXPECT_EQ(shown(), "k /top/acc 8:9\nk /top/u0/acc 12:4\n");
}

TEST_F(ConsolidatedFileLogicLocationTest, ASecondFileAddsOnlyVariablesThatTheFirstDidNot) {
  openWith({kernelAt("k", "/top")});
  addFile("Bit 1 a 2 die0 0 Net=top/acc[0]\n");
  addFile("Bit 1 b 3 die0 0 Net=top/acc[1]\nBit 1 c 4 die0 0 Net=top/u0/acc\n");
  EXPECT_EQ(shown(), "k /top/acc 10:2\nk /top/u0/acc 12:4\n");
}

TEST_F(ConsolidatedFileLogicLocationTest, ALaterKernelOfANameHandsItsVariablesToTheFirst) {
  openWith({kernelAt("k", "/top/u0"), kernelAt("k", "/top/u1")});
  addFile("Bit 1 a 2 die0 0 Net=top/u1/acc\n");
  EXPECT_EQ(shown(), "k /top/u1/acc 10:2\n");
  EXPECT_EQ(file_.kernels()[0].hardwareVariables.size(), 1U);
}

TEST_F(ConsolidatedFileLogicLocationTest, AMissingFileMergesTheCopiesWithoutAMessage) {
  openWith({kernelAt("k", "/top/u0"), kernelAt("k", "/top/u1")});
  const StreamCapture capture;
  file_.addLogicLocations(folder_.path("missing"));
  file_.addLogicLocations(folder_.path(""));
  ASSERT_EQ(file_.kernels().size(), 2U);
  EXPECT_EQ(file_.kernels()[0].instancePaths.size(), 2U) << "the first takes what the second has";
  EXPECT_EQ(file_.kernels()[1].instancePaths.size(), 1U);
  EXPECT_EQ(capture.out() + capture.err(), "");
}

TEST_F(ConsolidatedFileLogicLocationTest, NothingIsAddedWhereNoKernelIsKnown) {
  addFile("Bit 1 a 2 die0 0 Net=top/acc\n");
  EXPECT_EQ(file_.kernels().size(), 0U);
}

}  // namespace
}  // namespace consolidator
