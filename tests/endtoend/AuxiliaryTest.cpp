#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string>
#include <string_view>

namespace consolidator {
namespace {

class AuxiliaryTest : public ExecutableTest {
 protected:
  // Expects that the text is read without a word and gives this kernel.
  void expectKernel(std::string_view text, const std::string& kernel) const {
    write("aux.xml", text);
    EXPECT_EQ(run({"-c", "-f", "out", "-x", "aux.xml"}), silence()) << text;
    EXPECT_EQ(dumpedJson("out"), jsonText(kernel)) << text;
  }

  // Expects that the text is refused with a message, and that nothing of it is used.
  void expectRefusal(std::string_view text) const {
    write("aux.xml", text);
    EXPECT_EQ(run({"-c", "-f", "out", "-x", "aux.xml"}),
              complained("Malformed auxiliary file: aux.xml\n"))
        << text;
    EXPECT_EQ(read("out"), emptyFile()) << text;
  }
};

constexpr std::string_view vadd =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<ak:acceleratorMap xmlns:ak=\"urn:ak\" ak:functionName=\"vadd\" >\n"
    "  <ak:arg ak:originalName=\"a\" ak:busTypeRef=\"\"acc_fifo\"\" />\n"
    "  <ak:arg ak:busTypeRef=\"acc_fifo\" ak:originalName=\"b\" />\n"
    "  <ak:arg ak:originalName=\"begin_r\" ak:direction=\"in\" />\n"
    "</ak:acceleratorMap>\n";

// The object of a kernel with these arguments.
std::string json(std::string_view name, std::string_view arguments) {
  return R"({ "Name" : ")" + std::string(name) +
         R"(", "Instance Paths" : [  ], "Type" : "Unknown", "Arguments" : [ )" +
         std::string(arguments) + R"(], "Variables" : [ ], "Breakable Conditions" : [] })";
}

std::string vaddJson() {
  return json("vadd",
              R"([ "a", "a", "int*", 64], [ "b", "b", "int", 32], [ "begin", "begin_r", "", 32])");
}

TEST_F(AuxiliaryTest, GivesTheArgumentsOfOneKernel) {
  write("aux.xml", vadd);
  EXPECT_EQ(run({"-f", "out", "--aux", "aux.xml"}), silence());
  const std::string record = text("vadd") + u32(0) + u32(3) +                          //
                             u32(3) + text("a") + text("a") + text("int*") + u32(0) +  //
                             text("b") + text("b") + text("int") + u32(0) +            //
                             text("begin") + text("begin_r") + text("") + u32(0) +     //
                             u32(0) + u32(0) + u32(0) + u32(0);
  EXPECT_TRUE(
      folderHolds({{"aux.xml", std::string(vadd)},
                   {"out", container({jsonSection(vaddJson()), recordsSection({record})})}}));
}

TEST_F(AuxiliaryTest, ArgumentsNeedNeitherANameNorAKernel) {
  expectKernel("<ak:arg\n<ak:arg x=\"y\"\n<ak:arg ak:busTypeRef=\"x\"\n",
               json("", R"([ "", "", "", 32])"));
}

TEST_F(AuxiliaryTest, AFileWithoutARecognisedLineGivesAnEmptyKernel) {
  expectKernel("", json("", ""));
  expectKernel("<project>\n</project>\n", json("", ""));
}

TEST_F(AuxiliaryTest, ValuesAreCutAtFixedPositions) {
  expectKernel("<ak:acceleratorMap ak:functionName=\"vadd\">\n<ak:arg ak:originalName=\"a b\" />\n",
               json("vadd\"", R"([ "", "", "", 32])"));
}

TEST_F(AuxiliaryTest, AWordWithoutItsValueIsMalformed) {
  expectRefusal(std::string(vadd) + "<ak:arg ak:originalName= />");
  expectRefusal(std::string(vadd) + "<ak:arg ak:busTypeRef=");
  expectRefusal("<ak:acceleratorMap ak:functionName=\n" + std::string(vadd));
}

TEST_F(AuxiliaryTest, ALineMayHave1023Characters) {
  const std::string line = "<ak:arg ak:originalName=\"a\"";
  const std::string blanks(1023 - line.size(), ' ');
  expectKernel(line + blanks, json("", R"([ "a", "a", "", 32])"));
  expectKernel(line + blanks + "\n", json("", R"([ "a", "a", "", 32])"));
  expectRefusal(line + blanks + " ");
  expectRefusal(line + blanks + " \n");
  expectRefusal(std::string(1000000, 'x'));
}

TEST_F(AuxiliaryTest, ALineThatNeverEndsIsRefusedAtOnce) {
  EXPECT_EQ(run({"-c", "-f", "out", "-x", "/dev/zero"}),
            complained("Malformed auxiliary file: /dev/zero\n"));
  EXPECT_EQ(read("out"), emptyFile());
}

TEST_F(AuxiliaryTest, ARefusedFileStopsNeitherTheOthersNorTheRun) {
  write("first.xml", "<ak:acceleratorMap ak:functionName=\"first\"\n");
  write("bad.xml", "<ak:acceleratorMap ak:functionName=\"bad\"\n<ak:arg ak:busTypeRef=\n");
  write("long.xml", std::string(1024, 'x'));
  write("last.xml", "<ak:acceleratorMap ak:functionName=\"last\"\n");
  EXPECT_EQ(
      run({"-f", "out", "-x", "first.xml", "-x", "bad.xml", "-x", "long.xml", "-x", "last.xml"}),
      complained("Malformed auxiliary file: bad.xml\nMalformed auxiliary file: long.xml\n"));
  EXPECT_EQ(dumpedJson("out"), jsonText(json("first", "") + ", " + json("last", "")));
}

TEST_F(AuxiliaryTest, AddsToWhatTheKernelXmlTells) {
  write("kernel.xml",
        "<project><platform><device><core><kernel name='vadd'><arg name='b' type='char'/>"
        "</kernel></core></device></platform></project>");
  write("aux.xml", vadd);
  EXPECT_EQ(run({"-f", "out", "-x", "aux.xml", "-k", "kernel.xml"}), silence());
  EXPECT_EQ(dumpedJson("out"),
            jsonText(R"({ "Name" : "vadd", "Instance Paths" : [  ], "Type" : "Unknown", )"
                     R"("Arguments" : [ [ "b", "b", "char", 8], [ "a", "a", "int*", 64], )"
                     R"([ "begin", "begin_r", "", 32]], "Variables" : [ ], )"
                     R"("Breakable Conditions" : [{ "Start":true, "Cond":"== 1'b1 $i/bq_start"}, )"
                     R"({ "Stop":true, "Cond":"== 1'b1 $i/bq_done"}] })"));
}

TEST_F(AuxiliaryTest, WhatCannotBeOpenedIsSkipped) {
  EXPECT_EQ(run({"-f", "out", "-x", "missing", "-x", ".", "-x", ""}), silence());
  EXPECT_EQ(read("out"), emptyFile());
}

TEST_F(AuxiliaryTest, MayComeThroughPipes) {
  write("aux.xml", vadd);
  EXPECT_EQ(runScript("exec \"$0\" -f out -x <(cat aux.xml)"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(vaddJson()));
  EXPECT_EQ(runScript("mkfifo pipe; cat aux.xml >pipe & exec \"$0\" -c -f out -x pipe"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(vaddJson()));
}

}  // namespace
}  // namespace consolidator
