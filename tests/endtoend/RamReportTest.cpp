#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string_view>

namespace consolidator {
namespace {

constexpr std::string_view hierarchy = "vadd: type: hls instance path: /top/vadd_1";
constexpr std::string_view ramReport =
    "8. Block Ram / URAM Memory Power - Instantiated\n"
    "3. Memory Utilization - Inferred\n"
    "|/top/vadd_1/buffer_reg|RAMB36E2|\n"
    "4. Memory Performance - Inferred\n";

class RamReportTest : public ExecutableTest {};

TEST_F(RamReportTest, AReportChangesNothing) {
  write("h", hierarchy);
  write("report", ramReport);
  EXPECT_EQ(run({"-f", "without", "-h", "h"}), silence());
  EXPECT_EQ(run({"-f", "with", "-h", "h", "--ram", "report"}), silence());
  EXPECT_EQ(read("with"), container({jsonSection(kernelJson("vadd", "HLS", {"/top/vadd_1"})),
                                     recordsSection({kernelRecord("vadd", 4, {"/top/vadd_1"})})}));
  EXPECT_EQ(read("with"), read("without"));
}

TEST_F(RamReportTest, AnyReportIsAcceptedSilently) {
  write("h", hierarchy);
  EXPECT_EQ(run({"-f", "without", "-h", "h"}), silence());
  EXPECT_EQ(runScript("\"$0\" -f with -h h -r <(cat \"$0\") -r missing -r . -r /dev/null"),
            silence());
  EXPECT_EQ(read("with"), read("without"));
}

}  // namespace
}  // namespace consolidator
