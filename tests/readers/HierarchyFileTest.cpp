#include "model/Describe.h"
#include "readers/HierarchyFile.h"
#include "support/AllocationGauge.h"
#include "support/StreamCapture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

// What parsing a text gave, in a form to compare.
struct Outcome {
  bool result;
  std::vector<std::string> kernels;
  std::string messages;
};

std::string kernelIn(std::string_view name, KernelType type = KernelType::Unknown,
                     std::initializer_list<std::string_view> paths = {}) {
  KernelRecord record;
  record.name = name;
  record.type = type;
  for (const std::string_view path : paths) record.instancePaths.append(std::string(path));
  return describe(record);
}

Outcome parse(std::string_view text) {
  const StreamCapture capture;
  HierarchyFile reader("in.hierarchy", text);
  Outcome outcome{reader.parse(), {}, {}};
  for (const KernelRecord& record : reader.kernels()) outcome.kernels.push_back(describe(record));
  outcome.messages = capture.err();
  EXPECT_EQ(capture.out(), "");
  return outcome;
}

// The kernels of a text that is accepted without a message.
std::vector<std::string> kernelsOf(std::string_view text) {
  const Outcome outcome = parse(text);
  EXPECT_TRUE(outcome.result);
  EXPECT_EQ(outcome.messages, "");
  return outcome.kernels;
}

using Kernels = std::vector<std::string>;

TEST(HierarchyFile, ReadsTheExampleOfItsFormat) {
  EXPECT_EQ(kernelsOf("# written by the linker\n"
                      "version: 1.0\n"
                      "vadd:\n"
                      "  type: clc\n"
                      "  instance path: /top/vadd_1\n"
                      "  instance path: /top/vadd_2\n"
                      "mmult:\n"
                      "  type: hls\n"
                      "  instance path: /top/mmult_1\n"),
            (Kernels{kernelIn("vadd", KernelType::OpenCL, {"/top/vadd_1", "/top/vadd_2"}),
                     kernelIn("mmult", KernelType::HLS, {"/top/mmult_1"})}));
}

TEST(HierarchyFile, FilesWithoutKernelsGiveNoRecords) {
  for (const std::string_view text : {""sv, " \n\t "sv, "# only\n#comments"sv, "#"sv, "# \n\n"sv,
                                      "version: 1.0"sv, "type: c instance path: /p"sv}) {
    EXPECT_EQ(kernelsOf(text), Kernels()) << text;
  }
}

TEST(HierarchyFile, KnowsTheKindsOfKernels) {
  EXPECT_EQ(kernelsOf("a: type: clc b: type: c c: type: ip d: type: hls"),
            (Kernels{kernelIn("a", KernelType::OpenCL), kernelIn("b", KernelType::C),
                     kernelIn("c", KernelType::RTL), kernelIn("d", KernelType::HLS)}));
}

TEST(HierarchyFile, TakesEveryOtherKindAsUnknown) {
  EXPECT_EQ(kernelsOf("a: type: CLC b: type: hls, c: type: type: d: type: clc type: x"),
            (Kernels{kernelIn("a"), kernelIn("b"), kernelIn("c"), kernelIn("d")}));
}

TEST(HierarchyFile, AKernelWithoutTypeIsUnknown) {
  EXPECT_EQ(kernelsOf("a:"), Kernels{kernelIn("a", KernelType::Unknown)});
}

TEST(HierarchyFile, TheLastTypeOfAKernelCounts) {
  EXPECT_EQ(kernelsOf("a: type: clc type: ip"), Kernels{kernelIn("a", KernelType::RTL)});
}

TEST(HierarchyFile, TheTypeOfAKernelDoesNotReachTheNextOne) {
  EXPECT_EQ(kernelsOf("a: type: clc instance path: /p b:"),
            (Kernels{kernelIn("a", KernelType::OpenCL, {"/p"}), kernelIn("b")}));
}

TEST(HierarchyFile, APathGivenTwiceIsStoredOnce) {
  EXPECT_EQ(kernelsOf("a: instance path: /p instance path: /q instance path: /p"),
            Kernels{kernelIn("a", KernelType::Unknown, {"/p", "/q"})});
}

TEST(HierarchyFile, LineEndsAreWhiteSpaceLikeAnyOther) {
  EXPECT_EQ(kernelsOf("a:\ninstance\n\n\tpath:\r\n/p\vtype:\fip"),
            Kernels{kernelIn("a", KernelType::RTL, {"/p"})});
}

TEST(HierarchyFile, ANameIsItsWordWithoutTheLastCharacterWhateverThatIs) {
  EXPECT_EQ(kernelsOf("vadd a: b:: c;\xC3\xA4 \0x"sv),
            (Kernels{kernelIn("vad"), kernelIn("a"), kernelIn("b:"), kernelIn("c;\xC3"),
                     kernelIn(std::string(1, '\0'))}));
}

TEST(HierarchyFile, WordsThatAreNoKeywordsAreHeaders) {
  EXPECT_EQ(
      kernelsOf("path: Type: TYPE: types: instances version type Instance"),
      (Kernels{kernelIn("path"), kernelIn("Type"), kernelIn("TYPE"), kernelIn("types"),
               kernelIn("instance"), kernelIn("versio"), kernelIn("typ"), kernelIn("Instanc")}));
}

TEST(HierarchyFile, KeywordsGluedToTheirValuesAreHeaders) {
  EXPECT_EQ(kernelsOf("type:clc instancepath: version:2.0"),
            (Kernels{kernelIn("type:cl"), kernelIn("instancepath"), kernelIn("version:2.")}));
}

TEST(HierarchyFile, KeywordsAreTakenAsValuesWhereAValueStands) {
  EXPECT_EQ(kernelsOf("a: instance path: instance instance path: type: type: version: clc"),
            (Kernels{kernelIn("a", KernelType::Unknown, {"instance", "type:"}), kernelIn("cl")}));
}

TEST(HierarchyFile, AValueMayBeginWithANumberSignWhereNoCommentIsLookedFor) {
  EXPECT_EQ(kernelsOf("a: instance path: #p type: #c\nb:"),
            (Kernels{kernelIn("a", KernelType::Unknown, {"#p"}), kernelIn("b")}));
}

TEST(HierarchyFile, WordsKeepZeroBytes) {
  EXPECT_EQ(kernelsOf("a\0b: instance path: /p\0q type: c\0"sv),
            Kernels{kernelIn("a\0b"sv, KernelType::Unknown, {"/p\0q"sv})});
}

TEST(HierarchyFile, AHeaderThatRepeatsANameIsASecondRecord) {
  EXPECT_EQ(kernelsOf("a: type: c a: type: ip"),
            (Kernels{kernelIn("a", KernelType::C), kernelIn("a", KernelType::RTL)}));
}

TEST(HierarchyFile, ValuesBeforeAnyHeaderGoToTheFirstKernel) {
  EXPECT_EQ(kernelsOf("type: hls instance path: /p a: b:"),
            (Kernels{kernelIn("a", KernelType::HLS, {"/p"}), kernelIn("b")}));
}

TEST(HierarchyFile, ANamelessKernelIsStoredAtTheEndOnly) {
  EXPECT_EQ(kernelsOf(": type: c"), Kernels{kernelIn("", KernelType::C)});
  EXPECT_EQ(kernelsOf(": type: c instance path: /p a:"),
            Kernels{kernelIn("a", KernelType::C, {"/p"})});
  EXPECT_EQ(kernelsOf("a: : type: c"), (Kernels{kernelIn("a"), kernelIn("", KernelType::C)}));
  EXPECT_EQ(kernelsOf("x"), Kernels{kernelIn("")});
}

TEST(HierarchyFile, ACommentEndsWithItsLine) {
  EXPECT_EQ(kernelsOf("a: type: clc # the kind: instance\nb: #c:\n#\nd:"),
            (Kernels{kernelIn("a", KernelType::OpenCL), kernelIn("b"), kernelIn("d")}));
}

TEST(HierarchyFile, ACommentAfterAValueIsSkippedUpToTheLineEnd) {
  EXPECT_EQ(kernelsOf("a:\ntype: clc #b: c:\ntype: ip"), Kernels{kernelIn("a", KernelType::RTL)});
}

TEST(HierarchyFile, OnlyANewlineEndsAComment) {
  EXPECT_EQ(kernelsOf("a: # b:\rc:\vd:\fe:\0f:\ng:"sv), (Kernels{kernelIn("a"), kernelIn("g")}));
}

TEST(HierarchyFile, ANumberSignInsideAWordBeginsNoComment) {
  EXPECT_EQ(kernelsOf("a#b: c#"), (Kernels{kernelIn("a#b"), kernelIn("c")}));
}

TEST(HierarchyFile, AMissingPathAtTheEndAddsTheEmptyPath) {
  for (const std::string_view text : {"a: instance path:"sv, "a: instance path:\n"sv}) {
    EXPECT_EQ(kernelsOf(text), Kernels{kernelIn("a", KernelType::Unknown, {""})});
  }
}

TEST(HierarchyFile, AMissingTypeAtTheEndIsUnknown) {
  EXPECT_EQ(kernelsOf("a: type: clc type:"), Kernels{kernelIn("a")});
  EXPECT_EQ(kernelsOf("a: type: clc type: \n"), Kernels{kernelIn("a")});
}

TEST(HierarchyFile, WhiteSpaceAtTheEndIsNoHeader) {
  EXPECT_EQ(kernelsOf("a: type: c\n \t\r\n"), Kernels{kernelIn("a", KernelType::C)});
}

TEST(HierarchyFile, InstanceWithoutPathIsAParseError) {
  for (const std::string_view text :
       {"a: instance name: /p"sv, "a: instance Path: /p"sv, "a: instance path /p"sv,
        "a: instance instance path: /p"sv, "a: instance #path:"sv}) {
    const Outcome outcome = parse(text);
    EXPECT_FALSE(outcome.result) << text;
    EXPECT_EQ(outcome.messages, "Parse error\n") << text;
  }
}

TEST(HierarchyFile, ALoneInstanceAtTheEndIsAParseError) {
  for (const std::string_view text : {"instance"sv, "a: instance"sv, "a: instance \n"sv}) {
    const Outcome outcome = parse(text);
    EXPECT_FALSE(outcome.result) << text;
    EXPECT_EQ(outcome.messages, "Parse error\n") << text;
  }
}

TEST(HierarchyFile, AParseErrorKeepsTheRecordsBefore) {
  EXPECT_EQ(parse("a: b: c: instance x").kernels, (Kernels{kernelIn("a"), kernelIn("b")}));
}

TEST(HierarchyFile, ACommentMayBeOfAnyLength) {
  const TemporaryFolder folder;
  const std::string path = folder.write("file", '#' + std::string(4'000'000, 'c') + "\na:");
  const AllocationGauge gauge;
  HierarchyFile reader(path.c_str());
  EXPECT_TRUE(reader.parse());
  ASSERT_EQ(reader.kernels().size(), 1U);
  EXPECT_EQ(describe(reader.kernels()[0]), kernelIn("a"));
  EXPECT_LT(gauge.total(), 1'000'000U);
}

TEST(HierarchyFile, IsNotValidWithoutAFile) {
  const TemporaryFolder folder;
  EXPECT_FALSE(HierarchyFile(folder.path("missing").c_str()).isValid());
  EXPECT_FALSE(HierarchyFile(folder.path("").c_str()).isValid());
}

}  // namespace
}  // namespace consolidator
