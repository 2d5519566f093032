#include "consolidated/StdioFile.h"
#include "support/MemoryStream.h"
#include "support/NamedPipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

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

TEST(StdioFile, HoldsTheBytesFromItsPositionOn) {
  const MemoryStream stream("0123456789");
  for (const int start : {0, 4, 10, 11}) {
    for (int size = 0; size < 12; ++size) {
      std::fseek(stream.get(), start, SEEK_SET);
      EXPECT_EQ(holdsBytes(stream.get(), static_cast<std::uint64_t>(size)),
                size == 0 || start + size <= 10)
          << size << " from " << start;
    }
  }
  std::rewind(stream.get());
  EXPECT_FALSE(holdsBytes(stream.get(), 0xFFFFFFFFU));
}

// Files of the kernel claim a page and hold less.
TEST(StdioFile, HoldsNoBytesThatAFileOnlyClaims) {
  const char* const pseudo = "/sys/kernel/mm/transparent_hugepage/enabled";
  const StdioFile file = openStdioFile(pseudo, "r");
  if (!file || std::filesystem::file_size(pseudo) < 1000) GTEST_SKIP() << "no such file";
  EXPECT_FALSE(holdsBytes(file.get(), 1000));
}

TEST(StdioFile, CopiesBytesFromOnePositionToTheOther) {
  std::string bytes;
  for (std::size_t i = 0; i < 1'000'000; ++i) bytes += static_cast<char>(i * i >> 7U);
  for (const std::uint32_t size : {0U, 1U, 256U * 1024, 256U * 1024 + 1, 900'000U}) {
    const MemoryStream from(bytes);
    const MemoryStream to("before");
    std::fseek(from.get(), 100, SEEK_SET);
    std::fseek(to.get(), 3, SEEK_SET);
    EXPECT_EQ(copyBytes(from.get(), to.get(), size), size);
    const std::string expected = "bef" + bytes.substr(100, size);
    EXPECT_TRUE(to.bytes() == expected + std::string("before").substr(std::min(3 + size, 6U)))
        << size;
  }
}

TEST(StdioFile, CopiesWhatThereIsAndCountsItWhateverIsTaken) {
  const MemoryStream from("bytes");
  const StdioFile full = openStdioFile("/dev/full", "w");
  ASSERT_NE(full, nullptr);
  std::setvbuf(full.get(), nullptr, _IONBF, 0);
  EXPECT_EQ(copyBytes(from.get(), full.get(), 9), 5U);
}

}  // namespace
}  // namespace consolidator
