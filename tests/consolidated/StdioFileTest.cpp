#include "consolidated/StdioFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace consolidator {
namespace {

TEST(StdioFile, IsNoneForAFileThatCannotBeOpened) {
  const TemporaryFolder folder;
  EXPECT_EQ(openStdioFile(folder.path("missing"), "r"), nullptr);
  EXPECT_EQ(openStdioFile("", "w"), nullptr);
}

TEST(StdioFile, ClosesItsStreamAtTheEnd) {
  const TemporaryFolder folder;
  {
    const StdioFile file = openStdioFile(folder.path("file"), "w");
    ASSERT_NE(file, nullptr);
    std::fputs("held back by the stream until it is closed", file.get());
  }
  EXPECT_EQ(folder.read("file"), "held back by the stream until it is closed");
}

}  // namespace
}  // namespace consolidator
