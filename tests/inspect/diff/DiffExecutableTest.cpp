// What the options of the tool add, as the built executables tell it.

#include "inspect/InspectRun.h"
#include "support/InputSamples.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

class DiffExecutableTest : public testing::Test {
 protected:
  DiffExecutableTest() {
    folder_.write("base.hierarchy",
                  "version: 1.0\n"
                  "vadd: type: clc instance path: /top/vadd_1\n"
                  "scale: instance path: /top/scale_1\n");
    folder_.write("more.hierarchy", "version: 1.0\nvadd: instance path: /top/vadd_2\nlast:\n");
    folder_.write("vadd.xml",
                  "<project name=\"vadd\"><platform><device><core><kernel name=\"vadd\">"
                  "<arg name=\"a\" addressQualifier=\"1\" type=\"int*\"/></kernel></core></device>"
                  "</platform></project>");
    folder_.write("scale.dbg",
                  "Begin Function scale\n"
                  "RTL scale fsm (state == 3'b010)\n"
                  "local i\n"
                  "at scale.c:11\n"
                  "last i_reg[30:0] scale\n"
                  "End Function scale\n");
    folder_.write("scale_auxiliary.xml",
                  "<ak:acceleratorMap ak:functionName=\"scale\" >\n"
                  "<ak:arg ak:originalName=\"factor\" ak:busTypeRef=\"acc_fifo\" />\n"
                  "</ak:acceleratorMap>\n");
    folder_.write("design.ll",
                  "Bit 1 0x00401f80 96 die0 0 Net=top/scale_1/i_reg[0]\n"
                  "Bit 2 0x00401f81 97 die0 0 Net=top/scale_1/i_reg[2]\n"
                  "Bit 3 0x00401f81 98 die0 0 Net=static/i_reg\n");
    folder_.write("design.ram", ramReportSample);
    folder_.write("elf", "\177ELF");
  }

  Outcome run(const std::string& script) const {
    return startInspectScript("set -e; " + script, folder_.path("")).outcome();
  }

  // The changes that adding these options makes to a file made with others.
  std::string changesBy(const std::string& added, const std::string& first = "") const {
    const Outcome outcome = run("\"$CONSOLIDATOR\" -c -f a -h base.hierarchy " + first +
                                "; cp a b; \"$CONSOLIDATOR\" -f b " + added +
                                "; \"$INSPECT\" diff a b | sed '/^  /,$d'");
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
  }

 private:
  TemporaryFolder folder_;
};

TEST_F(DiffExecutableTest, NamesWhatAHierarchyAdds) {
  EXPECT_EQ(changesBy("-h more.hierarchy"),
            "kernel vadd\n"
            "+ instance_path /top/vadd_2\n"
            "kernel last\n"
            "+ kernel instance_paths 0, arguments 0, variables 0, hardware_variables 0, "
            "logic_locations 0, breakable_conditions 0, brams 0\n");
}

TEST_F(DiffExecutableTest, NamesWhatKernelXmlAdds) {
  EXPECT_EQ(changesBy("-k vadd.xml"),
            "kernel vadd\n"
            "+ argument a: int*, register a\n"
            "+ breakable_condition start: == 1'b1 $i/bq_start\n"
            "+ breakable_condition stop: == 1'b1 $i/bq_done\n");
}

TEST_F(DiffExecutableTest, NamesWhatHlsAdds) {
  EXPECT_EQ(changesBy("-s scale.dbg"),
            "kernel scale\n"
            "+ variable i: int, register i_reg\n"
            "+ breakable_condition source_line scale.c:11: == 3'b010 $i/state\n");
}

TEST_F(DiffExecutableTest, NamesWhatAuxiliaryXmlAdds) {
  EXPECT_EQ(changesBy("-x scale_auxiliary.xml"),
            "kernel scale\n"
            "+ argument factor: int, register factor\n");
}

TEST_F(DiffExecutableTest, NamesWhatLogicLocationsAdd) {
  EXPECT_EQ(changesBy("-l design.ll", "-s scale.dbg"),
            "kernel scale\n"
            "+ hardware_variable /top/scale_1/i_reg: 0x401f80:96 0x0:0 0x401f81:97\n");
}

TEST_F(DiffExecutableTest, NamesNothingForARamReport) { EXPECT_EQ(changesBy("-r design.ram"), ""); }

TEST_F(DiffExecutableTest, NamesTheDwarf) {
  EXPECT_EQ(changesBy("-d elf"), "file\n+ dwarf 4 bytes\n");
  EXPECT_EQ(changesBy("-d elf", "-d elf"), "");
}

TEST_F(DiffExecutableTest, NamesTheProject) {
  EXPECT_EQ(changesBy("-p vadd -r design.ram"), "file\n+ project vadd\n");
  EXPECT_EQ(changesBy("-p vadd -r design.ram", "-p vadd"), "");
}

TEST_F(DiffExecutableTest, HoldsABuildThatIsSavedOnceMoreForEqual) {
  const std::string build =
      "\"$CONSOLIDATOR\" -c -f a -h base.hierarchy -k vadd.xml -s scale.dbg;"
      "cp a b; \"$CONSOLIDATOR\" -f b -r design.ram; ! cmp -s a b; ";
  EXPECT_EQ(run(build + "\"$INSPECT\" diff a b | tail -n 1"), holds("equal\n"));
  EXPECT_EQ(run(build + "\"$INSPECT\" diff a b > out").status, 0);
  EXPECT_EQ(run(build + "\"$INSPECT\" diff --exact a b | sed '/^  /,$d'"),
            holds("kernel vadd\n"
                  "- breakable_condition start: == 1'b1 $i/bq_start\n"
                  "+ breakable_condition start: == $i/bq_start 1'b1\n"
                  "- breakable_condition stop: == 1'b1 $i/bq_done\n"
                  "+ breakable_condition stop: == $i/bq_done 1'b1\n"
                  "kernel scale\n"
                  "- breakable_condition source_line scale.c:11: == 3'b010 $i/state\n"
                  "+ breakable_condition source_line scale.c:11: == $i/state 3'b010\n"));
}

TEST_F(DiffExecutableTest, ComparesPipesAndStandardInput) {
  const std::string build = "\"$CONSOLIDATOR\" -c -f a -h base.hierarchy; ";
  EXPECT_EQ(run(build + "\"$INSPECT\" diff --stat <(cat a) - < a | tail -n 1"), holds("equal\n"));
}

// The first file is open when the second one, a named pipe, waits for its writer.
TEST_F(DiffExecutableTest, ClosesTheDocumentWhenAFileIsCutMeanwhile) {
  const Outcome outcome =
      run("\"$CONSOLIDATOR\" -c -f a -h base.hierarchy; cp a copy; mkfifo b;"
          "{ exec 3> b; truncate -s 0 a; cat copy >&3; } & "
          "\"$INSPECT\" diff --format=json a b");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, said("a: cut while it was read"));
  EXPECT_TRUE(outcome.out.starts_with(R"({"format":"consolidator-diff/1","equal":false,)"));
  EXPECT_TRUE(outcome.out.ends_with(R"(],"complete":false,"lossy_texts":0})"
                                    "\n"))
      << outcome.out;
}

}  // namespace
}  // namespace consolidator::inspect
