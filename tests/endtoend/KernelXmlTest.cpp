#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string>
#include <string_view>

namespace consolidator {
namespace {

class KernelXmlTest : public ExecutableTest {
 protected:
  // Expects that the document is read without a word and gives these kernels.
  void expectKernels(std::string_view document, const std::string& kernels) const {
    write("kernel.xml", document);
    EXPECT_EQ(run({"-c", "-f", "out", "-k", "kernel.xml"}), silence()) << document;
    EXPECT_EQ(dumpedJson("out"), jsonText(kernels)) << document;
  }
};

constexpr std::string_view vadd =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<project name="vadd">
  <platform vendor="vendor" name="platform">
    <device name="device">
      <core name="core" target="hw">
        <kernel name="vadd" language="c">
          <port name="control" mode="slave"/>
          <arg name="a" addressQualifier="1" id="0" port="gmem" type="int*"/>
          <arg name="begin_r" addressQualifier="0" id="1" port="control" type="unsigned char"/>
        </kernel>
      </core>
    </device>
  </platform>
</project>
)";

constexpr std::string_view conditions =
    R"([{ "Start":true, "Cond":"== 1'b1 $i/bq_start"}, { "Stop":true, "Cond":"== 1'b1 $i/bq_done"}])";

std::string refused() { return "Could not parse kernel file\n"; }

std::string inCore(std::string_view content) {
  return "<project><platform><device><core>" + std::string(content) +
         "</core></device></platform></project>";
}

// The object of a kernel with these arguments.
std::string json(std::string_view name, std::string_view arguments) {
  return R"({ "Name" : ")" + std::string(name) +
         R"(", "Instance Paths" : [  ], "Type" : "Unknown", "Arguments" : [ )" +
         std::string(arguments) + R"(], "Variables" : [ ], "Breakable Conditions" : )" +
         std::string(conditions) + " }";
}

std::string vaddJson() {
  return json("vadd", R"([ "a", "a", "int*", 64], [ "begin", "begin_r", "unsigned char", 8])");
}

TEST_F(KernelXmlTest, GivesArgumentsAndTheConditionsOfStartAndStop) {
  write("kernel.xml", vadd);
  EXPECT_EQ(run({"-f", "out", "--kernel", "kernel.xml"}), silence());
  const std::string record = text("vadd") + u32(0) + u32(3) +                                    //
                             u32(2) + text("a") + text("a") + text("int*") + u32(0) +            //
                             text("begin") + text("begin_r") + text("unsigned char") + u32(0) +  //
                             u32(0) + u32(0) +                                                   //
                             u32(2) + u32(0) + text("== 1'b1 $i/bq_start") +                     //
                             u32(1) + text("== 1'b1 $i/bq_done") + u32(0);
  EXPECT_TRUE(
      folderHolds({{"kernel.xml", std::string(vadd)},
                   {"out", container({jsonSection(vaddJson()), recordsSection({record})})}}));
}

TEST_F(KernelXmlTest, ReservedWordsGetTheirNamesBack) {
  expectKernels(
      inCore("<kernel name='end_r'><arg name='reg_r'/><arg name='data_r'/>"
             "<arg name='_r'/><arg name='reverse_range_r'/></kernel>"),
      json("end_r", R"([ "reg", "reg_r", "", 32], [ "data_r", "data_r", "", 32], )"
                    R"([ "_r", "_r", "", 32], [ "reverse_range_r", "reverse_range_r", "", 32])"));
}

TEST_F(KernelXmlTest, KernelsHoldTheArgumentsOfThoseBeforeThem) {
  expectKernels(
      inCore("<kernel name='one'><arg name='a'/><arg name='b'/></kernel>"
             "<kernel name='two'><arg name='c'/><arg name='a' type='int'/></kernel>"),
      json("one", R"([ "a", "a", "", 32], [ "b", "b", "", 32])") + ", " +
          json("two", R"([ "a", "a", "", 32], [ "b", "b", "", 32], [ "c", "c", "", 32])"));
}

TEST_F(KernelXmlTest, AKernelWithoutANameHasAnEmptyOne) {
  expectKernels(inCore("<kernel/>"), json("", ""));
}

TEST_F(KernelXmlTest, AProjectWithoutKernelsAddsNothing) {
  write("kernel.xml", "<project/>");
  EXPECT_EQ(run({"-f", "out", "-k", "kernel.xml"}), silence());
  EXPECT_EQ(read("out"), emptyFile());
}

TEST_F(KernelXmlTest, ADoubleArgumentChangesThePathsOfTheKernel) {
  write("hierarchy", "vadd: type: clc instance path: /top/vadd_1");
  write("kernel.xml", inCore("<kernel name='vadd'><arg name='a' type='double*'/></kernel>"));
  EXPECT_EQ(run({"-f", "out", "-k", "kernel.xml", "-h", "hierarchy"}), silence());
  EXPECT_EQ(dumpedJson("out"),
            jsonText(R"({ "Name" : "vadd", "Instance Paths" : [ "/top/vadd_1/U0" ], "Type" : )"
                     R"("OpenCL", "Arguments" : [ [ "a", "a", "double*", 64]], "Variables" : )"
                     R"([ ], "Breakable Conditions" : )" +
                     std::string(conditions) + " }"));
}

TEST_F(KernelXmlTest, TextsAreNotEscaped) {
  expectKernels(inCore("<kernel name='k'><arg name='&lt;&quot;\\&#xE9;' type='a&amp;'/></kernel>"),
                json("k", "[ \"<\"\\\xC3\xA9\", \"<\"\\\xC3\xA9\", \"a&\", 32]"));
}

// The conditions that are stored by then stand in another order, so they are not the same.
TEST_F(KernelXmlTest, ReadingItAgainInALaterRunAddsTheConditionsAgain) {
  write("kernel.xml", inCore("<kernel name='k'/>"));
  EXPECT_EQ(run({"-f", "out", "-k", "kernel.xml", "-k", "kernel.xml"}), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(json("k", "")));
  EXPECT_EQ(run({"-f", "out", "-k", "kernel.xml"}), silence());
  EXPECT_EQ(dumpedJson("out"),
            jsonText(R"({ "Name" : "k", "Instance Paths" : [  ], "Type" : "Unknown", )"
                     R"("Arguments" : [ ], "Variables" : [ ], "Breakable Conditions" : )"
                     R"([{ "Start":true, "Cond":"== $i/bq_start 1'b1"}, )"
                     R"({ "Stop":true, "Cond":"== $i/bq_done 1'b1"}, )"
                     R"({ "Start":true, "Cond":"== 1'b1 $i/bq_start"}, )"
                     R"({ "Stop":true, "Cond":"== 1'b1 $i/bq_done"}] })"));
}

TEST_F(KernelXmlTest, WhatCannotBeReadAddsNothing) {
  const std::string good = inCore("<kernel name='k'/>");
  for (const std::string& document :
       {std::string(), std::string("<"), good + "<", good + good, good.substr(0, good.size() - 1),
        std::string("<kernel name='k'/>"), inCore("<kernel><arg addressQualifier='x'/></kernel>"),
        "<!DOCTYPE project [<!ENTITY a 'b'>]>" + good, std::string(100000, '<'),
        "<!DOCTYPE project [<!ATTLIST arg name CDATA 'a'>]>" + good}) {
    write("kernel.xml", document);
    EXPECT_EQ(run({"-c", "-f", "out", "-k", "kernel.xml"}), complained(refused())) << document;
    EXPECT_EQ(read("out"), emptyFile()) << document;
  }
}

TEST_F(KernelXmlTest, ElementsNestUpTo256Deep) {
  std::string document = "<kernel name='k'>";
  for (int i = 0; i < 251; ++i) document += "<module>";
  for (int i = 0; i < 251; ++i) document += "</module>";
  expectKernels(inCore(document + "</kernel>"), json("k", ""));
  write("kernel.xml", inCore(document + "</kernel>").replace(0, 9, "<project><x>"));
  EXPECT_EQ(run({"-c", "-f", "out", "-k", "kernel.xml"}), complained(refused()));
  std::string bottomless = "<project>";
  for (int i = 0; i < 100000; ++i) bottomless += "<module>";
  write("kernel.xml", bottomless);
  EXPECT_EQ(run({"-c", "-f", "out", "-k", "kernel.xml"}), complained(refused()));
}

TEST_F(KernelXmlTest, ARefusedFileStopsNeitherTheOthersNorTheRun) {
  write("first.xml", inCore("<kernel name='first'/>"));
  write("bad.xml", inCore("<kernel name='bad'/>") + "x");
  write("last.xml", inCore("<kernel name='last'/>"));
  EXPECT_EQ(run({"-f", "out", "-k", "first.xml", "-k", "bad.xml", "-k", "last.xml"}),
            complained(refused()));
  EXPECT_EQ(dumpedJson("out"), jsonText(json("first", "") + ", " + json("last", "")));
}

TEST_F(KernelXmlTest, WhatCannotBeOpenedIsSkipped) {
  EXPECT_EQ(run({"-f", "out", "-k", "missing", "-k", ".", "-k", ""}), silence());
  EXPECT_EQ(read("out"), emptyFile());
}

TEST_F(KernelXmlTest, MayComeThroughAProcessSubstitution) {
  write("kernel.xml", vadd);
  EXPECT_EQ(runScript("exec \"$0\" -f out -k <(cat kernel.xml)"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(vaddJson()));
  const std::string slowly = "head -c 200 kernel.xml; sleep 0.2; tail -c +201 kernel.xml";
  EXPECT_EQ(runScript("exec \"$0\" -c -f out -k <(" + slowly + ")"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(vaddJson()));
}

TEST_F(KernelXmlTest, MayComeThroughStandardInput) {
  write("kernel.xml", vadd);
  EXPECT_EQ(runScript("cat kernel.xml | \"$0\" -f out -k /dev/stdin"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(vaddJson()));
}

TEST_F(KernelXmlTest, MayComeThroughANamedPipeWhoseWriterIsThere) {
  write("kernel.xml", vadd);
  const std::string slowly = "(head -c 200 kernel.xml; sleep 0.2; tail -c +201 kernel.xml) >pipe &";
  EXPECT_EQ(runScript("mkfifo pipe; " + slowly + " exec \"$0\" -f out -k pipe"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(vaddJson()));
}

// The writer is done as soon as the file is opened for the first time, at times before it is opened
// for the second.
TEST_F(KernelXmlTest, MayComeThroughANamedPipeWhoseWriterIsDone) {
  write("kernel.xml", vadd);
  for (int round = 0; round < 20; ++round) {
    ASSERT_EQ(runScript("rm -f pipe; mkfifo pipe; cat kernel.xml >pipe & "
                        "exec \"$0\" -c -f out -k pipe"),
              silence());
    ASSERT_EQ(dumpedJson("out"), jsonText(vaddJson()));
  }
}

TEST_F(KernelXmlTest, APipeThatWasReadAlreadyIsEmpty) {
  write("kernel.xml", vadd);
  EXPECT_EQ(runScript("cat kernel.xml | \"$0\" -f out -k /dev/stdin -k /dev/stdin"),
            complained(refused()));
  EXPECT_EQ(dumpedJson("out"), jsonText(vaddJson()));
}

}  // namespace
}  // namespace consolidator
