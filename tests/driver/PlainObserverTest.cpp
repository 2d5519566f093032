#include "consolidated/OutputFiles.h"
#include "driver/DriverRun.h"
#include "observer/RunObserver.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace consolidator {
namespace {

// Opens what a run opens by itself.
class PlainOutputs : public OutputFiles {
 public:
  StdioFile openConsolidatedFile(const std::string& path) override {
    return openStdioFileAtOnce(path, "w");
  }

  StdioFile openDump(const std::string& path) override { return openStdioFile(path, "w"); }
};

class PlainObserverTest : public testing::Test {
 protected:
  // A run with an observer that does nothing of its own.
  static Outcome observe(std::vector<std::string> words) {
    const Arguments arguments(std::move(words));
    const StreamCapture capture;
    RunObserver observer;
    PlainOutputs outputs;
    ConsolidatedFile file(observer, outputs);
    const int status = runConsolidation(arguments.count(), arguments.values(), file);
    return {status, capture.out(), capture.err()};
  }

  // Runs with the same options on a file that holds the same end alike.
  void expectNoDifference(std::vector<std::string> words, const std::string& before = "") {
    words.insert(words.begin(), {"-f", folder_.write("file", before)});
    const Outcome wanted = run(words);
    const std::string made = folder_.read("file");
    folder_.write("file", before);
    EXPECT_EQ(observe(words), wanted);
    EXPECT_EQ(folder_.read("file"), made);
  }

  TemporaryFolder folder_;
  std::string hierarchy_ = folder_.write("h", "k:\n type: hls\n instance path: /t/k_1\n what\n");
  std::string variables_ = folder_.write("k.dbg", "RTL a b c\nlocal i\nat k.c:1\nend i_r\n");
  std::string locations_ =
      folder_.write("ll", "Bit 1 0x2 3 d 4 Net=t/k_1/i_r\nBit x\nBit 1 0x2 3 d 4 Net=t/z\n");
  std::string refused_ = folder_.write("xml", "<project>");
  std::string dwarf_ = folder_.write("dwarf", "bytes");
};

TEST_F(PlainObserverTest, ChangesNothingInWhatIsMerged) {
  expectNoDifference({"-c", "-h", hierarchy_, "-s", variables_, "-l", locations_, "-l", locations_,
                      "-d", dwarf_, "-p", "name"});
  expectNoDifference({"-h", hierarchy_, "-h", hierarchy_, "-s", variables_}, folder_.read("file"));
}

TEST_F(PlainObserverTest, ChangesNothingInWhatIsRefused) {
  expectNoDifference({"-k", refused_, "-k", folder_.path("missing"), "-h", hierarchy_},
                     "no consolidated file");
  expectNoDifference({"-h", hierarchy_}, header(0, 2, 0));
  expectNoDifference({"-d", dwarf_, "-p", "other"},
                     container({{SectionKind::ProjectName, "name"}, {SectionKind::Dwarf, "old"}}));
}

TEST_F(PlainObserverTest, ChangesNothingInWhatIsLeftOut) {
  const std::string twice =
      folder_.write("twice.dbg", "RTL a b c\nlocal i\nat k.c:1\nend i_r\nlocal i\nend j_r\n");
  expectNoDifference({"-k", folder_.path("missing"), "-s", twice, "-d", dwarf_},
                     container({{SectionKind::Dwarf, "bytes"}}));
}

TEST_F(PlainObserverTest, ChangesNothingInConditions) {
  const std::string conditions = u32(2) + u32(0) + consolidator::text("(1'b1 == 1'b1)") + u32(0) +
                                 consolidator::text("== 1 $i");
  const std::string record =
      consolidator::text("k") + u32(0) + u32(3) + u32(0) + u32(0) + u32(0) + conditions + u32(0);
  expectNoDifference({"-h", hierarchy_},
                     container({{SectionKind::KernelRecords, u32(1) + record}}));
}

TEST_F(PlainObserverTest, ReadsTheFileItselfAsTheRunDoes) {
  expectNoDifference({"-c", "-k", folder_.path("file")}, "k:\n");
}

}  // namespace
}  // namespace consolidator
