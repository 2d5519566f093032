#include "inspect/run/ResultCheck.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator::inspect {
namespace {

class ResultCheckTest : public testing::Test {
 protected:
  std::string whyUnsoundBytes(const std::string& bytes, VerificationDepth depth) const {
    return whyUnsound(folder_.write("file", bytes), depth);
  }

  TemporaryFolder folder_;
};

TEST_F(ResultCheckTest, FindsWhatAShortWriteLeaves) {
  const std::string whole =
      container({{SectionKind::Json, emptyJson()}, {SectionKind::KernelRecords, u32(0)}});
  EXPECT_EQ(whyUnsoundBytes(whole, VerificationDepth::Structure), "");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_NE(whyUnsoundBytes(whole.substr(0, size), VerificationDepth::Structure), "") << size;
  }
  const std::string hollow = std::string(16, '\0') + whole.substr(16);
  EXPECT_NE(whyUnsoundBytes(hollow, VerificationDepth::Structure), "");
}

TEST_F(ResultCheckTest, RendersTheTextIfAskedTo) {
  std::string other = emptyJson();
  other[2] = 'X';
  const std::string bytes = container({{SectionKind::Json, other}});
  EXPECT_EQ(whyUnsoundBytes(bytes, VerificationDepth::Structure), "");
  EXPECT_NE(whyUnsoundBytes(bytes, VerificationDepth::Everything).find("[json-mismatch]"),
            std::string::npos);
}

TEST_F(ResultCheckTest, AFileThatCannotBeReadEqualsNone) {
  const std::string file = folder_.write("file", container({{SectionKind::Json, emptyJson()}}));
  EXPECT_TRUE(areEqual(file, file));
  EXPECT_FALSE(areEqual(folder_.path("missing"), file));
  EXPECT_FALSE(areEqual(file, folder_.write("other", "no consolidated file")));
}

}  // namespace
}  // namespace consolidator::inspect
