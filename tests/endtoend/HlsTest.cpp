#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::string_view hls =
    "# made for vadd\n"
    "Begin Function vadd\n"
    "RTL vadd fsm (state == 3)\n"
    "local sum\n"
    "at vadd.cpp:12\n"
    "last sum_reg[31:0] vadd\n"
    "End Function vadd\n";

class HlsTest : public ExecutableTest {};

TEST_F(HlsTest, AnHlsFileGivesVariablesAndSourceLines) {
  write("vadd.dbg", hls);
  EXPECT_EQ(run({"-f", "out", "--hls", "vadd.dbg"}), silence());
  const std::string json =
      R"({ "Name" : "vadd", "Instance Paths" : [  ], "Type" : "Unknown", "Arguments" : [ ], )"
      R"("Variables" : [ [ "sum", "sum_reg", "int", 32]], "Breakable Conditions" : )"
      R"([{ "File":"vadd.cpp", "Line":12, "Cond":"== 3 $i/state"}] })";
  const std::string record =
      text("vadd") + u32(0) + u32(3) + u32(0) +                                 //
      u32(1) + text("sum") + text("sum_reg") + text("int") + u32(0) + u32(0) +  //
      u32(1) + u32(2) + text("== 3 $i/state") + u32(12) + text("vadd.cpp") + u32(0);
  EXPECT_TRUE(folderHolds({{"vadd.dbg", std::string(hls)},
                           {"out", container({jsonSection(json), recordsSection({record})})}}));
}

TEST_F(HlsTest, AFileThatIsRefusedAddsNothingSilently) {
  write("bad.dbg", std::string(hls) + "nonsense\n");
  write("long.dbg", std::string(hls) + "#" + std::string(1023, 'c'));
  write("vadd.dbg", hls);
  EXPECT_EQ(run({"-f", "bad", "-s", "bad.dbg", "-s", "long.dbg", "-s", "missing.dbg", "-s", ".",
                 "-s", "/dev/zero"}),
            silence());
  EXPECT_EQ(read("bad"), emptyFile());
  EXPECT_EQ(run({"-f", "good", "-s", "vadd.dbg"}), silence());
  EXPECT_EQ(run({"-f", "both", "-s", "bad.dbg", "-s", "vadd.dbg"}), silence());
  EXPECT_EQ(read("both"), read("good"));
}

TEST_F(HlsTest, ANamedPipeIsAsGoodAsAFile) {
  write("vadd.dbg", hls);
  EXPECT_EQ(run({"-f", "from_file", "-s", "vadd.dbg"}), silence());
  remove("vadd.dbg");
  write("text", hls);
  EXPECT_EQ(
      runScript("mkfifo vadd.dbg; cat text >vadd.dbg & \"$0\" -f from_pipe -s vadd.dbg; wait"),
      silence());
  EXPECT_EQ(read("from_pipe"), read("from_file"));
}

}  // namespace
}  // namespace consolidator
