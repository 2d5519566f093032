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

std::string kernel(std::string_view name, KernelType type = KernelType::Unknown,
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
            (Kernels{kernel("vadd", KernelType::OpenCL, {"/top/vadd_1", "/top/vadd_2"}),
                     kernel("mmult", KernelType::HLS, {"/top/mmult_1"})}));
}

TEST(HierarchyFile, FilesWithoutKernelsGiveNoRecords) {
  for (const std::string_view text : {""sv, " \n\t "sv, "# only\n#comments"sv, "#"sv, "# \n\n"sv,
                                      "version: 1.0"sv, "type: c instance path: /p"sv}) {
    EXPECT_EQ(kernelsOf(text), Kernels()) << text;
  }
}

TEST(HierarchyFile, KnowsTheKindsOfKernels) {
  EXPECT_EQ(kernelsOf("a: type: clc b: type: c c: type: ip d: type: hls"),
            (Kernels{kernel("a", KernelType::OpenCL), kernel("b", KernelType::C),
                     kernel("c", KernelType::RTL), kernel("d", KernelType::HLS)}));
}

TEST(HierarchyFile, TakesEveryOtherKindAsUnknown) {
  EXPECT_EQ(kernelsOf("a: type: CLC b: type: hls, c: type: type: d: type: clc type: x"),
            (Kernels{kernel("a"), kernel("b"), kernel("c"), kernel("d")}));
}

TEST(HierarchyFile, AKernelWithoutTypeIsUnknown) {
  EXPECT_EQ(kernelsOf("a:"), Kernels{kernel("a", KernelType::Unknown)});
}

TEST(HierarchyFile, TheLastTypeOfAKernelCounts) {
  EXPECT_EQ(kernelsOf("a: type: clc type: ip"), Kernels{kernel("a", KernelType::RTL)});
}

TEST(HierarchyFile, TheTypeOfAKernelDoesNotReachTheNextOne) {
  EXPECT_EQ(kernelsOf("a: type: clc instance path: /p b:"),
            (Kernels{kernel("a", KernelType::OpenCL, {"/p"}), kernel("b")}));
}

TEST(HierarchyFile, APathGivenTwiceIsStoredOnce) {
  EXPECT_EQ(kernelsOf("a: instance path: /p instance path: /q instance path: /p"),
            Kernels{kernel("a", KernelType::Unknown, {"/p", "/q"})});
}

TEST(HierarchyFile, LineEndsAreWhiteSpaceLikeAnyOther) {
  EXPECT_EQ(kernelsOf("a:\ninstance\n\n\tpath:\r\n/p\vtype:\fip"),
            Kernels{kernel("a", KernelType::RTL, {"/p"})});
}

TEST(HierarchyFile, ANameIsItsWordWithoutTheLastCharacterWhateverThatIs) {
  EXPECT_EQ(kernelsOf("vadd a: b:: c;\xC3\xA4 \0x"sv),
            (Kernels{kernel("vad"), kernel("a"), kernel("b:"), kernel("c;\xC3"),
                     kernel(std::string(1, '\0'))}));
}

TEST(HierarchyFile, WordsThatAreNoKeywordsAreHeaders) {
  EXPECT_EQ(kernelsOf("path: Type: TYPE: types: instances version type Instance"),
            (Kernels{kernel("path"), kernel("Type"), kernel("TYPE"), kernel("types"),
                     kernel("instance"), kernel("versio"), kernel("typ"), kernel("Instanc")}));
}

TEST(HierarchyFile, KeywordsGluedToTheirValuesAreHeaders) {
  EXPECT_EQ(kernelsOf("type:clc instancepath: version:2.0"),
            (Kernels{kernel("type:cl"), kernel("instancepath"), kernel("version:2.")}));
}

TEST(HierarchyFile, KeywordsAreTakenAsValuesWhereAValueStands) {
  EXPECT_EQ(kernelsOf("a: instance path: instance instance path: type: type: version: clc"),
            (Kernels{kernel("a", KernelType::Unknown, {"instance", "type:"}), kernel("cl")}));
}

TEST(HierarchyFile, AValueMayBeginWithANumberSignWhereNoCommentIsLookedFor) {
  EXPECT_EQ(kernelsOf("a: instance path: #p type: #c\nb:"),
            (Kernels{kernel("a", KernelType::Unknown, {"#p"}), kernel("b")}));
}

TEST(HierarchyFile, WordsKeepZeroBytes) {
  EXPECT_EQ(kernelsOf("a\0b: instance path: /p\0q type: c\0"sv),
            Kernels{kernel("a\0b"sv, KernelType::Unknown, {"/p\0q"sv})});
}

TEST(HierarchyFile, AHeaderThatRepeatsANameIsASecondRecord) {
  EXPECT_EQ(kernelsOf("a: type: c a: type: ip"),
            (Kernels{kernel("a", KernelType::C), kernel("a", KernelType::RTL)}));
}

TEST(HierarchyFile, ValuesBeforeAnyHeaderGoToTheFirstKernel) {
  EXPECT_EQ(kernelsOf("type: hls instance path: /p a: b:"),
            (Kernels{kernel("a", KernelType::HLS, {"/p"}), kernel("b")}));
}

TEST(HierarchyFile, ANamelessKernelIsStoredAtTheEndOnly) {
  EXPECT_EQ(kernelsOf(": type: c"), Kernels{kernel("", KernelType::C)});
  EXPECT_EQ(kernelsOf(": type: c instance path: /p a:"),
            Kernels{kernel("a", KernelType::C, {"/p"})});
  EXPECT_EQ(kernelsOf("a: : type: c"), (Kernels{kernel("a"), kernel("", KernelType::C)}));
  EXPECT_EQ(kernelsOf("x"), Kernels{kernel("")});
}

TEST(HierarchyFile, ACommentEndsWithItsLine) {
  EXPECT_EQ(kernelsOf("a: type: clc # the kind: instance\nb: #c:\n#\nd:"),
            (Kernels{kernel("a", KernelType::OpenCL), kernel("b"), kernel("d")}));
}

TEST(HierarchyFile, ACommentAfterAValueIsSkippedUpToTheLineEnd) {
  EXPECT_EQ(kernelsOf("a:\ntype: clc #b: c:\ntype: ip"), Kernels{kernel("a", KernelType::RTL)});
}

TEST(HierarchyFile, OnlyANewlineEndsAComment) {
  EXPECT_EQ(kernelsOf("a: # b:\rc:\vd:\fe:\0f:\ng:"sv), (Kernels{kernel("a"), kernel("g")}));
}

TEST(HierarchyFile, ANumberSignInsideAWordBeginsNoComment) {
  EXPECT_EQ(kernelsOf("a#b: c#"), (Kernels{kernel("a#b"), kernel("c")}));
}

TEST(HierarchyFile, AMissingPathAtTheEndAddsTheEmptyPath) {
  for (const std::string_view text : {"a: instance path:"sv, "a: instance path:\n"sv}) {
    EXPECT_EQ(kernelsOf(text), Kernels{kernel("a", KernelType::Unknown, {""})});
  }
}

TEST(HierarchyFile, AMissingTypeAtTheEndIsUnknown) {
  EXPECT_EQ(kernelsOf("a: type: clc type:"), Kernels{kernel("a")});
  EXPECT_EQ(kernelsOf("a: type: clc type: \n"), Kernels{kernel("a")});
}

TEST(HierarchyFile, WhiteSpaceAtTheEndIsNoHeader) {
  EXPECT_EQ(kernelsOf("a: type: c\n \t\r\n"), Kernels{kernel("a", KernelType::C)});
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
  EXPECT_EQ(parse("a: b: c: instance x").kernels, (Kernels{kernel("a"), kernel("b")}));
}

TEST(HierarchyFile, ACommentMayBeOfAnyLength) {
  const TemporaryFolder folder;
  const std::string path = folder.write("file", '#' + std::string(4'000'000, 'c') + "\na:");
  const AllocationGauge gauge;
  HierarchyFile reader(path.c_str());
  EXPECT_TRUE(reader.parse());
  ASSERT_EQ(reader.kernels().size(), 1U);
  EXPECT_EQ(describe(reader.kernels()[0]), kernel("a"));
  EXPECT_LT(gauge.total(), 1'000'000U);
}

TEST(HierarchyFile, IsNotValidWithoutAFile) {
  const TemporaryFolder folder;
  EXPECT_FALSE(HierarchyFile(folder.path("missing").c_str()).isValid());
  EXPECT_FALSE(HierarchyFile(folder.path("").c_str()).isValid());
}

}  // namespace
}  // namespace consolidator
