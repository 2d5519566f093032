// What an explained run says of losses that are not those of one input.

#include "inspect/explain/ExplainedRun.h"
#include "support/Bytes.h"
#include "support/NamedPipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

using LossCodes = std::vector<std::string>;

class ExplainedLossesTest : public testing::Test {
 protected:
  // The codes of what a run with these options, or without any input, loses of a file with these
  // bytes.
  LossCodes losses(const std::string& bytes, std::vector<std::string> words = {}) {
    if (words.empty()) words = {"-h", folder_.path("missing")};
    words.insert(words.begin(), {"-f", folder_.write("file", bytes)});
    explanation_ = explainRun(words);
    EXPECT_EQ(folder_.read("file"), bytes);
    LossCodes codes;
    for (const Loss& loss : explanation_.losses) codes.push_back(loss.code);
    return codes;
  }

  TemporaryFolder folder_;
  Explanation explanation_;
};

const std::string fileWithJson = container({{SectionKind::Json, emptyJson()}});

TEST_F(ExplainedLossesTest, NameSectionsBeyondTwoGibibytes) {
  const std::string dwarf = folder_.write("dwarf", "");
  std::filesystem::resize_file(dwarf, (std::uintmax_t{1} << 31) - 1);
  const Explanation explanation =
      explainRun({"-f", folder_.path("new"), "-d", dwarf, "-h", folder_.write("h", "k:\n")});
  EXPECT_EQ(explanation.inputs.at(0).outcome, InputOutcome::Used);
  ASSERT_FALSE(explanation.losses.empty());
  for (const Loss& loss : explanation.losses) EXPECT_EQ(loss.code, "section-unwritten");
  EXPECT_FALSE(folder_.holds("new"));
}

TEST_F(ExplainedLossesTest, NameADumpOfNothing) {
  EXPECT_EQ(losses(fileWithJson, {"-u", folder_.path("out")}), LossCodes{"dump-empty"});
  EXPECT_EQ(losses(fileWithJson, {"-j", folder_.path("out")}), LossCodes());
  const std::string outside = header(1) + entry(1, 40, 1);
  EXPECT_EQ(losses(outside, {"-u", folder_.path("out")}), LossCodes{"dump-empty"});
  EXPECT_FALSE(folder_.holds("out"));
}

TEST_F(ExplainedLossesTest, NameADumpThatCannotBeOpened) {
  EXPECT_EQ(losses(fileWithJson, {"-j", folder_.path("")}), LossCodes{"dump-not-written"});
}

TEST_F(ExplainedLossesTest, NameTheSecondOfTwoDumps) {
  const std::string file = container({{SectionKind::Dwarf, "d"}, {SectionKind::Json, emptyJson()}});
  EXPECT_EQ(losses(file, {"-j", folder_.path("j"), "-u", folder_.path("u")}),
            LossCodes{"dump-not-written"});
}

TEST_F(ExplainedLossesTest, NameADumpOverTheFileItself) {
  EXPECT_EQ(losses(fileWithJson, {"-j", folder_.path("file")}), LossCodes{"dump-over-file"});
  EXPECT_TRUE(explanation_.after.empty());
}

TEST_F(ExplainedLossesTest, AreNoneWhereADumpLeavesInputsUnread) {
  EXPECT_EQ(losses(fileWithJson, {"-j", folder_.path("out"), "-k", folder_.path("missing")}),
            LossCodes());
  ASSERT_EQ(explanation_.inputs.size(), 1U);
  EXPECT_EQ(explanation_.inputs[0].outcome, InputOutcome::Ignored);
}

TEST_F(ExplainedLossesTest, AreNoneWhereARunIsNotMade) {
  EXPECT_EQ(losses(fileWithJson, {"-k", "xml", "--help"}), LossCodes());
  EXPECT_EQ(losses(fileWithJson, {"-k", "xml", "-v"}), LossCodes());
}

TEST_F(ExplainedLossesTest, NameWhatADamagedFileLoses) {
  const std::string whole =
      container({{SectionKind::ProjectName, "name"}, {SectionKind::Json, emptyJson()}});
  EXPECT_EQ(losses(whole), LossCodes());
  EXPECT_EQ(losses(""), LossCodes());
  EXPECT_EQ(losses(whole.substr(0, 15)), LossCodes{"damaged"});
  EXPECT_EQ(losses(whole.substr(0, 30)), LossCodes{"damaged"});
  EXPECT_EQ(losses(header(1) + entry(9, 40, 0)), LossCodes{"damaged"});
  EXPECT_EQ(losses(header(1) + entry(0, 40, 1)), LossCodes{"damaged"});
  EXPECT_EQ(losses(std::string(16, 'x')), (LossCodes{"foreign-magic", "version-unsupported"}));
  EXPECT_EQ(losses(whole, {"-p", "other", "-h", folder_.path("missing")}),
            LossCodes{"project-differs"});
  EXPECT_EQ(losses(header(0, 2, 0)), LossCodes{"version-unsupported"});
  EXPECT_TRUE(explanation_.after.empty());
}

// The record of a kernel that has nothing but conditions.
std::string recordOf(const std::string& conditions) {
  return text("k") + u32(0) + u32(3) + u32(0) + u32(0) + u32(0) + conditions + u32(0);
}

const std::string oneCondition = u32(1) + u32(0) + text("== 1 $i/a");

TEST_F(ExplainedLossesTest, NameWhatASaveDoesToConditions) {
  const auto saved = [&](const std::string& conditions) {
    return losses(container({{SectionKind::KernelRecords, u32(1) + recordOf(conditions)}}));
  };
  EXPECT_EQ(saved(oneCondition), LossCodes());
  EXPECT_EQ(saved(u32(1) + u32(0) + text("(1'b1 == 1'b1)")), LossCodes{"condition-removed"});
  EXPECT_EQ(saved(u32(1) + u32(0) + text("== 1 f(x)")), LossCodes{"condition-decays"});
  EXPECT_EQ(saved(u32(2) + u32(0) + text("== 1 $i/a") + u32(0) + text("== $i/a 1")),
            LossCodes{"duplicate-condition"});
}

TEST_F(ExplainedLossesTest, AreNoneOfConditionsOfKernelsWithOneName) {
  const std::string record = recordOf(oneCondition);
  const std::string file = container({{SectionKind::KernelRecords, u32(2) + record + record}});
  EXPECT_TRUE(losses(file).empty());
}

TEST_F(ExplainedLossesTest, AreNoneOfConditionsThatArePreparedAgain) {
  const std::string file =
      container({{SectionKind::Json, ""},
                 {SectionKind::Json, ""},
                 {SectionKind::KernelRecords, u32(1) + recordOf(oneCondition)}});
  EXPECT_TRUE(losses(file).empty());
}

TEST_F(ExplainedLossesTest, NameDwarfThatIsNotTheStoredOne) {
  const std::string file = container({{SectionKind::Dwarf, "bytes"}});
  EXPECT_EQ(losses(file, {"-d", folder_.write("same", "bytes")}), LossCodes());
  EXPECT_EQ(explanation_.inputs[0].outcome, InputOutcome::Ignored);
  EXPECT_EQ(losses(file, {"-d", folder_.write("other", "byteS")}), LossCodes{"dwarf-differs"});
  EXPECT_EQ(losses(file, {"-d", folder_.write("empty", "")}), LossCodes());
  for (const std::string& path : {folder_.path("missing"), folder_.path("")}) {
    EXPECT_EQ(losses(file, {"-d", path}), LossCodes());
    EXPECT_EQ(explanation_.inputs[0].outcome, InputOutcome::Skipped);
  }
  const NamedPipe pipe;  // nobody writes to it, and the run does not open it
  EXPECT_EQ(losses(file, {"-d", pipe.path()}), LossCodes());
  EXPECT_EQ(explanation_.inputs[0].outcome, InputOutcome::Ignored);
}

TEST_F(ExplainedLossesTest, NameLocationsThatAreNotTaken) {
  const std::string variable = text("i") + text("i_r") + text("int") + u32(0);
  const std::string record = text("k") + u32(1) + text("/t/k_1") + u32(3) + u32(0) + u32(1) +
                             variable + u32(1) + text("/t/k_1/i_r") + u32(1) + u32(7) + u32(8) +
                             u32(0) + u32(0);
  const std::string file = container({{SectionKind::KernelRecords, u32(1) + record}});
  EXPECT_EQ(losses(file, {"-l", folder_.write("ll", "Bit 1 0x2 3 d 4 Net=t/k_1/i_r\n")}),
            LossCodes{"locations-differ"});
  EXPECT_TRUE(explanation_.neverFound.empty());
}

}  // namespace
}  // namespace consolidator::inspect
