#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::string_view hierarchy =
    "vadd:\n"
    "  type: hls\n"
    "  instance path: /top/vadd_1\n"
    "  instance path: /top/vadd_2\n";
constexpr std::string_view hls =
    "RTL vadd fsm (state == 3)\n"
    "local sum\n"
    "at vadd.cpp:12\n"
    "last sum_reg[31:0] vadd\n";
constexpr std::string_view logicLocations =
    "Revision 3\n"
    "; Bit 1 0x1 1 die0 0 Net=top/vadd_1/sum_reg[0]\n"
    "Bit 1001 0x00001001 18 die0 0 Block=X1Y2 Latch=AQ Net=top/vadd_1/sum_reg[1]\n"
    "Bit 1000 0x00001000 17 die0 0 Block=X1Y2 Latch=BQ Net=top/vadd_1/sum_reg[0]\n"
    "Bit 1002 0x00001002 19 die0 0 Block=X1Y2 Latch=CQ Net=top/vadd_1/other_reg[0]\n"
    "Bit 1003 0x00001003 20 die0 0 Block=X1Y2 Latch=DQ Net=top/static/sum_reg[0]\n"
    "Bit 1004 0x00001004 21 die0 0 Block=X1Y3 Latch=AQ Net=top/vadd_2/sum_reg[2]\n";

constexpr std::string_view expectedJson =
    R"({ "Name" : "vadd", "Instance Paths" : [ "/top/vadd_1/inst", "/top/vadd_2/inst" ], )"
    R"("Type" : "HLS", "Arguments" : [ ], "Variables" : [ [ "sum", "sum_reg", "int", 32]], )"
    R"("Hardware Variables" : [ { "RTLName" : "/top/vadd_1/sum_reg", "Logic Locations" : )"
    R"([ [ 4096, 17], [ 4097, 18]] } , { "RTLName" : "/top/vadd_2/sum_reg", )"
    R"("Logic Locations" : [ [ 0, 0], [ 0, 0], [ 4100, 21]] } ], "Breakable Conditions" : )"
    R"([{ "File":"vadd.cpp", "Line":12, "Cond":"== 3 $i/state"}] })";

class LogicLocationTest : public ExecutableTest {
 protected:
  void writeBuild() const {
    write("h", hierarchy);
    write("vadd.dbg", hls);
    write("ll", logicLocations);
  }
};

TEST_F(LogicLocationTest, AFileGivesHardwareVariablesOfTheRegistersOfTheSameRun) {
  writeBuild();
  EXPECT_EQ(run({"-f", "out", "--ll", "ll", "-s", "vadd.dbg", "-h", "h"}), silence());
  const std::string record =
      text("vadd") + u32(2) + text("/top/vadd_1") + text("/top/vadd_2") + u32(4) + u32(0) +  //
      u32(1) + text("sum") + text("sum_reg") + text("int") + u32(0) +                        //
      u32(2) + text("/top/vadd_1/sum_reg") + u32(2) + u32(4096) + u32(17) + u32(4097) + u32(18) +
      text("/top/vadd_2/sum_reg") + u32(3) + u32(0) + u32(0) + u32(0) + u32(0) + u32(4100) +
      u32(21) +  //
      u32(1) + u32(2) + text("== 3 $i/state") + u32(12) + text("vadd.cpp") + u32(0);
  EXPECT_EQ(read("out"), container({jsonSection(expectedJson), recordsSection({record})}));
}

// The condition is prepared anew by each save, so it has to come last.
TEST_F(LogicLocationTest, RegistersOfEarlierRunsCount) {
  writeBuild();
  EXPECT_EQ(run({"-f", "out", "-h", "h"}), silence());
  EXPECT_EQ(run({"-f", "out", "-s", "vadd.dbg", "-l", "ll"}), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(expectedJson));
}

TEST_F(LogicLocationTest, AFileBeforeTheKernelsAreKnownAddsNothing) {
  writeBuild();
  EXPECT_EQ(run({"-f", "out", "-l", "ll"}), silence());
  EXPECT_EQ(read("out"), emptyFile());
}

TEST_F(LogicLocationTest, ALineThatSaysNothingIsSkippedSilently) {
  writeBuild();
  EXPECT_EQ(run({"-f", "without", "-h", "h", "-s", "vadd.dbg"}), silence());
  write("ll", "Bit\nBit x\nBit 1 2 3 die0 0 Net=\nNet=top/vadd_1/sum_reg\n" +
                  std::string(3000, 'x') + " Bit 1 2 3 die0 0 Net=top/vadd_1/sum_reg\n");
  EXPECT_EQ(run({"-f", "with", "-h", "h", "-s", "vadd.dbg", "-l", "ll"}), silence());
  EXPECT_EQ(read("with"), read("without"));
}

// Deliberate: the copies of the kernels are merged although there is no file to read.
TEST_F(LogicLocationTest, AMissingFileMergesStoredKernelsOfOneName) {
  const std::string one = kernelRecord("k", 3, {"/top/u0"});
  const std::string other = kernelRecord("k", 1, {"/top/u1"});
  for (const std::string file : {"missing", "."}) {
    write("out", container({jsonSection(""), recordsSection({one, other})}));
    EXPECT_EQ(run({"-f", "out", "-l", file}), silence());
    EXPECT_EQ(read("out"),
              container({jsonSection(kernelJson("k", "C", {"/top/u0", "/top/u1"}) + ", " +
                                     kernelJson("k", "C", {"/top/u1"})),
                         recordsSection({kernelRecord("k", 1, {"/top/u0", "/top/u1"}), other})}));
  }
}

TEST_F(LogicLocationTest, APipeIsAsGoodAsAFile) {
  writeBuild();
  EXPECT_EQ(run({"-f", "from_file", "-h", "h", "-s", "vadd.dbg", "-l", "ll"}), silence());
  EXPECT_EQ(runScript("\"$0\" -f from_pipe -h h -s vadd.dbg -l <(cat ll)"), silence());
  EXPECT_EQ(read("from_pipe"), read("from_file"));
}

TEST_F(LogicLocationTest, AVeryLongFileTakesConstantMemory) {
  constexpr long someMebibytes = 4 * 1024;
  writeBuild();
  const ExecutableRun small = start({"-f", "small", "-h", "h", "-s", "vadd.dbg", "-l", "ll"});
  ASSERT_EQ(small.outcome(), silence());
  const std::string lines = "yes \"$(cat ll)\" | head -n 800000";
  const std::string line = "head -c 64M /dev/zero; echo; cat ll";
  const std::string blanks = "yes '' | head -c 64M; cat ll";
  for (const std::string& generator : {lines, line, blanks}) {
    const ExecutableRun large =
        startScript("exec \"$0\" -f large -h h -s vadd.dbg -l <(" + generator + ")");
    EXPECT_EQ(large.outcome(), silence()) << generator;
    EXPECT_LE(large.peakMemory(), small.peakMemory() + someMebibytes) << generator;
    EXPECT_EQ(read("large"), read("small")) << generator;
    remove("large");
  }
}

}  // namespace
}  // namespace consolidator
