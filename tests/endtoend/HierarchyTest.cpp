#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_literals;

class HierarchyTest : public ExecutableTest {
 protected:
  // Reads a hierarchy file of this text into a new consolidated file.
  Outcome readText(std::string_view text) const {
    write("hierarchy", text);
    return run({"-c", "-f", "out", "-h", "hierarchy"});
  }

  // Expects that the text is read without a word and gives these kernels.
  void expectKernels(std::string_view text, const std::string& kernels) const {
    EXPECT_EQ(readText(text), silence()) << text;
    EXPECT_EQ(dumpedJson("out"), jsonText(kernels)) << text;
  }

  // Expects that the text is refused with a message, and that nothing of it is used.
  void expectRefusal(std::string_view text, const std::string& message) const {
    EXPECT_EQ(readText(text), complained(message)) << text;
    EXPECT_EQ(read("out"), emptyFile()) << text;
  }
};

std::string versionMessage(const std::string& version, const std::string& file = "hierarchy") {
  return "Unsupported hierarchy file: " + file + "\nVersion: " + version +
         "\nSupported Version: 1\n";
}

TEST_F(HierarchyTest, TellsKindsAndPathsOfKernels) {
  const std::string text =
      "# written by the linker\n"
      "version: 1.0\n"
      "vadd:\n"
      "  type: clc\n"
      "  instance path: /top/vadd_1\n"
      "  instance path: /top/vadd_2\n"
      "mmult:\n"
      "  type: hls\n"
      "  instance path: /top/mmult_1\n";
  const std::string json =
      R"({  "Kernels" : [ { "Name" : "vadd", "Instance Paths" : [ "/top/vadd_1/inst", )"
      R"("/top/vadd_2/inst" ], "Type" : "OpenCL", "Arguments" : [ ], "Variables" : [ ], )"
      R"("Breakable Conditions" : [] }, { "Name" : "mmult", "Instance Paths" : [ )"
      R"("/top/mmult_1/inst" ], "Type" : "HLS", "Arguments" : [ ], "Variables" : [ ], )"
      R"("Breakable Conditions" : [] } ] })";
  EXPECT_EQ(readText(text), silence());
  EXPECT_TRUE(folderHolds(
      {{"hierarchy", text},
       {"out", container({section(3, json + '\0'),
                          recordsSection({kernelRecord("vadd", 0, {"/top/vadd_1", "/top/vadd_2"}),
                                          kernelRecord("mmult", 4, {"/top/mmult_1"})})})}}));
}

TEST_F(HierarchyTest, LayoutMeansNothingButForComments) {
  expectKernels(
      "\v\fa:\ttype:\r\nc\ninstance\n\npath:\n/top/a b:#\n#c: type: c\nd: # e:\ntype: ip # f",
      kernelJson("a", "C", {"/top/a"}) + ", " + kernelJson("b:", "Unknown") + ", " +
          kernelJson("d", "RTL"));
}

TEST_F(HierarchyTest, KnowsFourTypes) {
  expectKernels("a: type: clc b: type: c d: type: ip e: type: hls f: type: HLS g: type: rtl h:",
                kernelJson("a", "OpenCL") + ", " + kernelJson("b", "C") + ", " +
                    kernelJson("d", "RTL") + ", " + kernelJson("e", "HLS") + ", " +
                    kernelJson("f", "Unknown") + ", " + kernelJson("g", "Unknown") + ", " +
                    kernelJson("h", "Unknown"));
}

TEST_F(HierarchyTest, EmptyFilesAreFine) {
  for (const std::string text : {"", " \n\t", "# a:", "#\n# type:\n", "version: 1.0\n"}) {
    EXPECT_EQ(readText(text), silence()) << text;
    EXPECT_EQ(read("out"), emptyFile()) << text;
  }
}

TEST_F(HierarchyTest, VersionsUpToOneAreAccepted) {
  for (const std::string version : {"1.0", "1", "0.5", "-3", "+1.0e0", "1.00000001"}) {
    expectKernels("version: " + version + "\nk:", kernelJson("k", "Unknown"));
  }
}

TEST_F(HierarchyTest, VersionsAboveOneAreRefused) {
  expectRefusal("version: 1.01\nk:", versionMessage("1.01"));
  expectRefusal("version: 2.0\nk:", versionMessage("2"));
  expectRefusal("version:\n\n1.5", versionMessage("1.5"));
  expectRefusal("version: 1e99", versionMessage("3.40282e+38"));
}

TEST_F(HierarchyTest, RefusedVersionBehindKernelsTakesThemBack) {
  expectRefusal("a: type: c\nb:\nversion: 2.0\n", versionMessage("2"));
}

TEST_F(HierarchyTest, VersionWithoutANumberEndsTheReading) {
  expectKernels("a: type: c version: one b:", kernelJson("a", "C"));
  expectKernels("a: version:", kernelJson("a", "Unknown"));
  expectKernels("a: version: -1e99 b:", kernelJson("a", "Unknown"));
}

TEST_F(HierarchyTest, LettersBehindTheVersionAreAWord) {
  expectKernels("version: 1.0fir: k:",
                kernelJson("fir", "Unknown") + ", " + kernelJson("k", "Unknown"));
}

TEST_F(HierarchyTest, InstanceWithoutPathIsAnError) {
  expectRefusal("a: instance name: /top", "Parse error\n");
  expectRefusal("a: instance # path: /top", "Parse error\n");
  expectRefusal("a: instance", "Parse error\n");
  expectRefusal("a: instance path /top", "Parse error\n");
}

TEST_F(HierarchyTest, ValueMissingAtTheEndIsEmpty) {
  expectKernels("a: instance path:", kernelJson("a", "Unknown", {""}));
  expectKernels("a: type: c type:", kernelJson("a", "Unknown"));
}

TEST_F(HierarchyTest, PathIsKeptOncePerKernel) {
  expectKernels(
      "a: instance path: /x instance path: /X instance path: /x b: instance path: /x",
      kernelJson("a", "Unknown", {"/x", "/X"}) + ", " + kernelJson("b", "Unknown", {"/x"}));
}

TEST_F(HierarchyTest, LinesBeforeTheFirstKernelBelongToIt) {
  expectKernels("type: ip instance path: /x a: b:",
                kernelJson("a", "RTL", {"/x"}) + ", " + kernelJson("b", "Unknown"));
  EXPECT_EQ(readText("type: ip instance path: /x"), silence());
  EXPECT_EQ(read("out"), emptyFile());
}

TEST_F(HierarchyTest, KernelWithoutANameIsStoredAtTheEndOnly) {
  expectKernels(": instance path: /x", kernelJson("", "Unknown", {"/x"}));
  expectKernels(": type: c instance path: /x a:", kernelJson("a", "C", {"/x"}));
}

TEST_F(HierarchyTest, AnyOtherWordStartsAKernel) {
  expectKernels("path: Type: versions: kernel",
                kernelJson("path", "Unknown") + ", " + kernelJson("Type", "Unknown") + ", " +
                    kernelJson("versions", "Unknown") + ", " + kernelJson("kerne", "Unknown"));
}

TEST_F(HierarchyTest, RepeatedKernelIsMerged) {
  expectKernels("a: instance path: /x b: a: type: c instance path: /y a: type: hls",
                kernelJson("a", "C", {"/x", "/y"}) + ", " + kernelJson("b", "Unknown"));
}

TEST_F(HierarchyTest, TextsAreNotEscaped) {
  expectKernels("\"\\\x01\xFF: instance path: /a\"b\\c",
                kernelJson("\"\\\x01\xFF", "Unknown", {"/a\"b\\c"}));
}

TEST_F(HierarchyTest, ZeroBytesStayInWordsUntilTheFileIsReadAgain) {
  ASSERT_EQ(readText("a\0b: instance path: /x\0y"s), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(kernelJson("a\0b"s, "Unknown", {"/x\0y"s})));
  ASSERT_EQ(run({"-f", "out", "-h", "missing"}), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(kernelJson("a", "Unknown", {"/x"})));
}

TEST_F(HierarchyTest, CommentsAndWordsMayBeLong) {
  const std::string longText(300000, 'x');
  expectKernels(
      "# " + longText + "\n" + longText + ": #" + longText + "\ninstance path: /" + longText,
      kernelJson(longText, "Unknown", {"/" + longText}));
}

TEST_F(HierarchyTest, FilesAreReadInOrder) {
  write("first", "b: type: c instance path: /1");
  write("second", "a: b: type: ip instance path: /2 instance path: /1");
  EXPECT_EQ(run({"-f", "out", "-h", "first", "-h", "second"}), silence());
  EXPECT_EQ(dumpedJson("out"),
            jsonText(kernelJson("b", "C", {"/1", "/2"}) + ", " + kernelJson("a", "Unknown")));
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "second", "-h", "first"}), silence());
  EXPECT_EQ(dumpedJson("out"),
            jsonText(kernelJson("a", "Unknown") + ", " + kernelJson("b", "RTL", {"/2", "/1"})));
}

TEST_F(HierarchyTest, RefusedFileStopsNeitherTheOthersNorTheRun) {
  write("first", "a:");
  write("newer", "b: version: 3");
  write("broken", "c: instance");
  write("last", "d:");
  EXPECT_EQ(run({"-f", "out", "-h", "first", "-h", "newer", "-h", "broken", "-h", "last"}),
            complained(versionMessage("3", "newer") + "Parse error\n"));
  EXPECT_EQ(dumpedJson("out"),
            jsonText(kernelJson("a", "Unknown") + ", " + kernelJson("d", "Unknown")));
}

TEST_F(HierarchyTest, WhatCannotBeOpenedIsSkipped) {
  write("hierarchy", "a:");
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-h", ".", "-h", "", "-h", "hierarchy"}), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(kernelJson("a", "Unknown")));
}

TEST_F(HierarchyTest, MayComeThroughAPipe) {
  const std::string script =
      "exec \"$0\" -f out -h <(echo a: type: c; sleep 0.1; echo instance path: /x) -h <(echo b:)";
  EXPECT_EQ(runScript(script), silence());
  EXPECT_EQ(dumpedJson("out"),
            jsonText(kernelJson("a", "C", {"/x"}) + ", " + kernelJson("b", "Unknown")));
}

TEST_F(HierarchyTest, MayComeThroughANamedPipe) {
  EXPECT_EQ(runScript("mkfifo pipe; echo a: >pipe & exec \"$0\" -f out -h pipe"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(kernelJson("a", "Unknown")));
}

TEST_F(HierarchyTest, MayComeThroughStandardInput) {
  EXPECT_EQ(runScript("echo a: | \"$0\" -f out -h /dev/stdin"), silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(kernelJson("a", "Unknown")));
}

}  // namespace
}  // namespace consolidator
