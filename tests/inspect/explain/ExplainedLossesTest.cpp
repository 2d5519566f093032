// What an explained run says of losses that are not those of one input.

#include "inspect/explain/ExplainedRun.h"
#include "support/Bytes.h"
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
  // The codes of what a run with these options loses of a file with these bytes.
  LossCodes losses(const std::string& bytes, std::vector<std::string> words) {
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
  EXPECT_EQ(explanation_.inputs[0].reason, "the run dumps a section");
}

TEST_F(ExplainedLossesTest, AreNoneWhereARunIsNotMade) {
  EXPECT_EQ(losses(fileWithJson, {"-k", "xml", "--help"}), LossCodes());
  EXPECT_EQ(explanation_.inputs.at(0).reason, "the run prints its usage");
  EXPECT_EQ(losses(fileWithJson, {"-k", "xml", "-v"}), LossCodes());
  EXPECT_EQ(explanation_.inputs.at(0).reason, "the run prints its version");
  EXPECT_EQ(losses(header(0, 2, 0), {"-k", "xml"}), LossCodes{"version-unsupported"});
  EXPECT_EQ(explanation_.inputs.at(0).reason, "the run ends before its inputs");
}

}  // namespace
}  // namespace consolidator::inspect
