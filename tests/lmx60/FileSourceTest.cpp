#include "lmx60/FileSource.h"
#include "support/InterruptedPipe.h"
#include "support/NamedPipe.h"
#include "support/PiecewisePipe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>
#include <thread>

namespace lmx {
namespace {

using consolidator::InterruptedPipe;
using consolidator::NamedPipe;
using consolidator::PiecewisePipe;
using consolidator::TemporaryFolder;

std::string everything(c_file_source& source) {
  std::array<char, 7> bytes{};
  std::string all;
  std::size_t count = 0;
  do {
    count = source.read(bytes.data(), bytes.size());
    all.append(bytes.data(), count);
  } while (count == bytes.size());
  return all;
}

TEST(FileSourceTest, ReadsAFileToItsEnd) {
  const TemporaryFolder folder;
  const std::string bytes("several blocks of\0 bytes\r\n", 26);
  c_file_source source(folder.write("file", bytes).c_str());
  EXPECT_TRUE(source.is_open());
  EXPECT_EQ(everything(source), bytes);
  EXPECT_EQ(everything(source), "");
}

TEST(FileSourceTest, AReadErrorEndsTheFile) {
  c_file_source source("/proc/self/mem");
  EXPECT_TRUE(source.is_open());
  EXPECT_EQ(everything(source), "");
}

TEST(FileSourceTest, DoesNotOpenWhatIsMissing) {
  const TemporaryFolder folder;
  c_file_source source(folder.path("missing").c_str());
  EXPECT_FALSE(source.is_open());
  EXPECT_EQ(everything(source), "");
}

TEST(FileSourceTest, DoesNotOpenTheEmptyName) { EXPECT_FALSE(c_file_source("").is_open()); }

TEST(FileSourceTest, DoesNotOpenADirectory) {
  const TemporaryFolder folder;
  EXPECT_FALSE(c_file_source(folder.path(".").c_str()).is_open());
}

TEST(FileSourceTest, KeepsNoDescriptorOfADirectory) {
  const TemporaryFolder folder;
  const int before = dup(STDIN_FILENO);
  close(before);
  { const c_file_source source(folder.path(".").c_str()); }
  const int after = dup(STDIN_FILENO);
  close(after);
  EXPECT_EQ(after, before);
}

TEST(FileSourceTest, PutsThePiecesOfAPipeTogether) {
  const PiecewisePipe pipe({"abcd", "efg", "hi"});
  c_file_source source(pipe.path().c_str());
  std::array<char, 100> bytes{};
  ASSERT_TRUE(source.is_open());
  EXPECT_EQ(std::string(bytes.data(), source.read(bytes.data(), bytes.size())), "abcdefghi");
}

TEST(FileSourceTest, ReadsANamedPipeAlthoughItsWriterIsDone) {
  NamedPipe pipe;
  pipe.write("all of it");
  pipe.closeWriter();
  c_file_source source(pipe.path().c_str());
  ASSERT_TRUE(source.is_open());
  EXPECT_EQ(everything(source), "all of it");
}

TEST(FileSourceTest, FindsANamedPipeWithoutAWriterEmpty) {
  NamedPipe pipe;
  pipe.closeWriter();
  c_file_source source(pipe.path().c_str());
  ASSERT_TRUE(source.is_open());
  EXPECT_EQ(everything(source), "");
}

TEST(FileSourceTest, ReadsOnAfterASignalAndEndsAllTheSame) {
  const InterruptedPipe pipe("all of it");
  c_file_source source(pipe.path().c_str());
  EXPECT_EQ(everything(source), "all of it");
}

TEST(FileSourceTest, WaitsForTheWriterOfANamedPipe) {
  NamedPipe pipe;
  c_file_source source(pipe.path().c_str());
  ASSERT_TRUE(source.is_open());
  std::thread writing([&pipe] {
    for (const char* const piece : {"one ", "two ", "three"}) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      pipe.write(piece);
    }
    pipe.closeWriter();
  });
  EXPECT_EQ(everything(source), "one two three");
  writing.join();
}

}  // namespace
}  // namespace lmx
