#include "inspect/records/ConsolidatedInput.h"
#include "inspect/records/CutFileGuard.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <variant>
#include <vector>

namespace consolidator::inspect {
namespace {

class CutFileGuardTest : public testing::Test {
 protected:
  // Opens a large file under a name of its own.
  ConsolidatedInput open(const std::string& name) {
    const std::string bytes = container({{SectionKind::Dwarf, std::string(100'000, 'd')}});
    return std::get<ConsolidatedInput>(ConsolidatedInput::open(folder_.write(name, bytes)));
  }

  void cut(const std::string& name) { std::filesystem::resize_file(folder_.path(name), 16); }

  TemporaryFolder folder_;
};

TEST_F(CutFileGuardTest, ReadsZerosInsteadOfWhatWasCut) {
  const ConsolidatedInput input = open("file");
  EXPECT_FALSE(input.wasCut());
  cut("file");
  EXPECT_EQ(input.file().bytes()[99'999], '\0');
  EXPECT_TRUE(input.wasCut());
}

TEST_F(CutFileGuardTest, KnowsWhichOfSeveralFilesWasCut) {
  const ConsolidatedInput first = open("first");
  const ConsolidatedInput second = open("second");
  cut("second");
  EXPECT_EQ(first.file().bytes()[99'999], 'd');
  EXPECT_EQ(second.file().bytes()[99'999], '\0');
  EXPECT_FALSE(first.wasCut());
  EXPECT_TRUE(second.wasCut());
}

// Those that find no guard are read into memory, where a cut does not reach them.
TEST_F(CutFileGuardTest, LeavesFilesWholeOfWhichThereAreTooManyToGuard) {
  std::vector<ConsolidatedInput> inputs;
  for (int i = 0; i < 12; ++i) inputs.push_back(open(std::to_string(i)));
  for (int i = 0; i < 12; ++i) cut(std::to_string(i));
  int whole = 0;
  for (const ConsolidatedInput& input : inputs) {
    const bool isWhole = input.file().bytes()[99'999] == 'd';
    EXPECT_NE(input.wasCut(), isWhole);
    whole += isWhole ? 1 : 0;
  }
  EXPECT_GT(whole, 0);
  inputs.clear();
  EXPECT_TRUE(CutFileGuard().isGuarding()) << "a file that is closed needs no guard any more";
}

}  // namespace
}  // namespace consolidator::inspect
