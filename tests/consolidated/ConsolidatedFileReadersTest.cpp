// The inputs that go through a reader of their own kind, from the file to the kernels.

#include "consolidated/ConsolidatedFile.h"
#include "model/Describe.h"
#include "support/StreamCapture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator {
namespace {

class ConsolidatedFileReadersTest : public testing::Test {
 protected:
  std::string kernels() const {
    std::string text;
    for (const KernelRecord& kernel : file_.kernels()) text += describe(kernel);
    return text;
  }

  TemporaryFolder folder_;
  ConsolidatedFile file_;
};

TEST_F(ConsolidatedFileReadersTest, AnHlsFileAddsVariablesAndConditions) {
  file_.addHls(folder_.write("vadd.dbg",
                             "RTL vadd fsm (state == 3)\n"
                             "local sum\n"
                             "at vadd.cpp:12\n"
                             "last sum_reg[31:0] vadd\n"));
  KernelRecord expected;
  expected.name = "vadd";
  expected.addVariable("sum", "sum_reg", "int");
  BreakableCondition condition(ConditionKind::SourceLine, "(state == 3)");
  condition.file = "vadd.cpp";
  condition.line = 12;
  expected.addBreakableCondition(condition);
  EXPECT_EQ(kernels(), describe(expected));
}

TEST_F(ConsolidatedFileReadersTest, AnHlsFileThatIsRefusedAddsNothing) {
  const StreamCapture capture;
  file_.addHls(folder_.write(
      "vadd.dbg", "RTL vadd fsm x\nlocal sum\nat vadd.cpp:12\nlast sum_reg x\nnonsense"));
  EXPECT_EQ(kernels(), "");
  EXPECT_EQ(capture.out() + capture.err(), "");
}

TEST_F(ConsolidatedFileReadersTest, ARamReportChangesNothing) {
  file_.addHierarchy(folder_.write("hierarchy", "vadd: type: hls instance path: /top/vadd_1"));
  const std::string before = kernels();
  file_.addRamReport(folder_.write("report",
                                   "8. Block Ram / URAM Memory Power - Instantiated\n"
                                   "3. Memory Utilization - Inferred\n"
                                   "|/top/vadd_1/buffer_reg|RAMB36E2|\n"));
  EXPECT_EQ(kernels(), before);
}

TEST_F(ConsolidatedFileReadersTest, FilesThatCannotBeOpenedAreSkippedSilently) {
  const StreamCapture capture;
  for (const std::string& path : {folder_.path("missing"), folder_.path("")}) {
    file_.addHls(path);
    file_.addRamReport(path);
  }
  EXPECT_EQ(kernels(), "");
  EXPECT_EQ(capture.out() + capture.err(), "");
}

}  // namespace
}  // namespace consolidator
