#include "consolidated/ConsolidatedFileFixture.h"
#include "readers/InputFile.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

KernelRecord kernelNamed(std::string_view name, KernelType type = KernelType::Unknown) {
  KernelRecord kernel;
  kernel.name = name;
  kernel.type = type;
  return kernel;
}

// A reader that hands over records given to it: some at once, the others once it is parsed.
class ScriptedReader : public InputFile {
 public:
  ScriptedReader(bool valid, bool result, KernelSequence parsed)
      : InputFile("scripted", ""), valid_(valid), result_(result), parsed_(std::move(parsed)) {}

  void give(const KernelRecord& kernel) { kernels_.push_back(kernel); }

  bool isValid() const override { return valid_; }

  bool parse() override {
    ++timesParsed_;
    kernels_.insert(kernels_.end(), parsed_.begin(), parsed_.end());
    return result_;
  }

  int timesParsed() const { return timesParsed_; }

 private:
  bool valid_;
  bool result_;
  KernelSequence parsed_;
  int timesParsed_ = 0;
};

using ConsolidatedFileInputTest = ConsolidatedFileFixture;

TEST_F(ConsolidatedFileInputTest, RecordsAreMergedOneByOneInOrder) {
  ScriptedReader reader(true, true,
                        {kernelNamed("b"), kernelNamed("a", KernelType::RTL),
                         kernelNamed("b", KernelType::HLS), kernelNamed("b", KernelType::C)});
  file_.addInput(reader);
  EXPECT_EQ(reader.timesParsed(), 1);
  EXPECT_EQ(kernelNames(), (Names{"b", "a"}));
  EXPECT_EQ(file_.kernels()[0].type, KernelType::HLS) << "the first known type wins";
  EXPECT_EQ(file_.kernels()[1].type, KernelType::RTL);
}

TEST_F(ConsolidatedFileInputTest, NothingIsMergedWhenParsingFails) {
  ScriptedReader reader(true, false, {kernelNamed("a")});
  file_.addInput(reader);
  EXPECT_EQ(reader.timesParsed(), 1);
  EXPECT_EQ(kernelNames(), Names());
}

TEST_F(ConsolidatedFileInputTest, AReaderWithoutRecordsAddsNothing) {
  const StreamCapture capture;
  ScriptedReader reader(true, true, {});
  file_.addInput(reader);
  EXPECT_EQ(kernelNames(), Names());
  EXPECT_EQ(capture.out() + capture.err(), "");
}

TEST_F(ConsolidatedFileInputTest, AReaderThatIsNotValidIsNotParsedButHandsOverItsList) {
  ScriptedReader reader(false, true, {kernelNamed("parsed")});
  reader.give(kernelNamed("given"));
  file_.addInput(reader);
  EXPECT_EQ(reader.timesParsed(), 0);
  EXPECT_EQ(kernelNames(), Names{"given"});
}

// Copies of stored kernels come back as they are; the one place where that shows.
TEST_F(ConsolidatedFileInputTest, HandingBackStoredKernelsOfOneNameFillsInTheFirst) {
  file_.readExisting(folder_.write(
      "file", container({{SectionKind::KernelRecords, u32(2) + kernelRecord("k", 3, {"/one"}) +
                                                          kernelRecord("k", 4, {"/two"})}})));
  ScriptedReader reader(false, true, {});
  for (const KernelRecord& kernel : file_.kernels()) reader.give(kernel);
  file_.addInput(reader);
  ASSERT_EQ(kernelNames(), (Names{"k", "k"}));
  KernelRecord first = kernelNamed("k", KernelType::HLS);
  first.addInstancePath("/one");
  first.addInstancePath("/two");
  EXPECT_EQ(describe(file_.kernels()[0]), describe(first));
}

TEST_F(ConsolidatedFileInputTest, HierarchyFilesBringTheirKernels) {
  file_.addHierarchy(folder_.write("first", "a: type: hls b:"));
  file_.addHierarchy(folder_.write("second", "c: a: instance path: /a type: ip"));
  EXPECT_EQ(kernelNames(), (Names{"a", "b", "c"}));
  KernelRecord expected = kernelNamed("a", KernelType::HLS);
  expected.addInstancePath("/a");
  EXPECT_EQ(describe(file_.kernels()[0]), describe(expected));
}

TEST_F(ConsolidatedFileInputTest, AMissingHierarchyFileChangesNothingAndPrintsNothing) {
  const StreamCapture capture;
  file_.addHierarchy(folder_.path("missing"));
  file_.addHierarchy(folder_.path(""));
  EXPECT_EQ(kernelNames(), Names());
  EXPECT_EQ(capture.out() + capture.err(), "");
}

TEST_F(ConsolidatedFileInputTest, ARefusedHierarchyFileMergesNoneOfItsKernels) {
  const StreamCapture capture;
  const std::string path = folder_.write("refused", "a: b: c: version: 2 d:");
  file_.addHierarchy(path);
  EXPECT_EQ(kernelNames(), Names());
  EXPECT_EQ(capture.err(),
            "Unsupported hierarchy file: " + path + "\nVersion: 2\nSupported Version: 1\n");
  EXPECT_EQ(capture.out(), "");
}

TEST_F(ConsolidatedFileInputTest, ARefusedInputDoesNotStopLaterOnes) {
  const StreamCapture capture;
  file_.addHierarchy(folder_.write("refused", "a: instance name: x"));
  file_.addHierarchy(folder_.write("accepted", "b:"));
  EXPECT_EQ(kernelNames(), Names{"b"});
  EXPECT_EQ(capture.err(), "Parse error\n");
}

}  // namespace
}  // namespace consolidator
