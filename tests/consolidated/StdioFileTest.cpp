#include "consolidated/StdioFile.h"
#include "support/NamedPipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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

TEST(StdioFile, OpenedAtOnceIsThatOfAnyFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(openStdioFileAtOnce(folder.path("file"), "r"), nullptr);
  EXPECT_NE(openStdioFileAtOnce(folder.path("file"), "w"), nullptr);
  const StdioFile file = openStdioFileAtOnce(folder.path("file"), "r");
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(awaitBytes(file.get())) << "the end of a file is there at once";
}

TEST(StdioFile, OpenedAtOnceReadsWhatAPipeHas) {
  NamedPipe pipe;
  const StdioFile file = openStdioFileAtOnce(pipe.path(), "r");
  ASSERT_NE(file, nullptr);
  EXPECT_FALSE(awaitBytes(file.get()));
  EXPECT_EQ(std::fgetc(file.get()), EOF);
  std::clearerr(file.get());
  pipe.write("x");
  EXPECT_TRUE(awaitBytes(file.get()));
  EXPECT_EQ(std::fgetc(file.get()), 'x');
  pipe.closeWriter();
  EXPECT_TRUE(awaitBytes(file.get())) << "the end of a pipe is there once nobody writes to it";
}

TEST(StdioFile, OpenedAtOnceWritesToAPipeThatHasAReader) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo(folder.path("unread").c_str(), 0600), 0);
  EXPECT_EQ(openStdioFileAtOnce(folder.path("unread"), "w"), nullptr);
  const NamedPipe pipe;
  EXPECT_NE(openStdioFileAtOnce(pipe.path(), "w"), nullptr);
}

}  // namespace
}  // namespace consolidator
