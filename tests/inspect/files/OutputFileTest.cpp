#include "inspect/files/OutputFile.h"
#include "support/AccessList.h"
#include "support/MemoryFile.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;

mode_t modeOf(const std::string& path) {
  struct stat status {};

  EXPECT_EQ(::lstat(path.c_str(), &status), 0);
  return status.st_mode & 07777U;
}

bool write(const std::string& path, std::string_view text) {
  OutputFile file(path);
  file.sink().write(text);
  return file.finish();
}

class OutputFileTest : public testing::Test {
 protected:
  std::string path(std::string_view name) const { return folder_.path(name); }

  std::size_t countFiles() const {
    const fs::directory_iterator files(path(""));
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  TemporaryFolder folder_;
};

TEST_F(OutputFileTest, MakesAFileWithTheModeOfAnyNewOne) {
  const mode_t mask = ::umask(027);
  EXPECT_TRUE(write(path("new"), "text"));
  ::umask(mask);
  EXPECT_EQ(folder_.read("new"), "text");
  EXPECT_EQ(modeOf(path("new")), 0640U);
  EXPECT_EQ(countFiles(), 1U);
}

TEST_F(OutputFileTest, ReplacesAFileAndKeepsItsMode) {
  folder_.write("old", "a long text from before");
  ::chmod(path("old").c_str(), 0705);
  EXPECT_TRUE(write(path("old"), "text"));
  EXPECT_EQ(folder_.read("old"), "text");
  EXPECT_EQ(modeOf(path("old")), 0705U);
  EXPECT_EQ(countFiles(), 1U);
}

TEST_F(OutputFileTest, LetsNobodyInWhoseRightsOnlyTheFolderGives) {
  folder_.write("old", "before");
  ::chmod(path("old").c_str(), 0640);
  if (!giveDefaultAccessList(path(""))) GTEST_SKIP() << "no access control lists here";
  EXPECT_TRUE(write(path("old"), "text"));
  EXPECT_FALSE(hasAccessList(path("old")));
  EXPECT_EQ(modeOf(path("old")), 0640U);
  EXPECT_TRUE(write(path("new"), "text"));
  EXPECT_TRUE(hasAccessList(path("new")));
}

// Links of processes call a removed file so, and another file may have that name.
TEST_F(OutputFileTest, WritesARemovedFileInPlace) {
  const int removed = ::open(folder_.write("file", "").c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(::unlink(path("file").c_str()), 0);
  folder_.write("file (deleted)", "other");
  EXPECT_TRUE(write("/proc/self/fd/" + std::to_string(removed), "text"));
  EXPECT_EQ(folder_.read("file (deleted)"), "other");

  struct stat status {};

  EXPECT_EQ(::fstat(removed, &status), 0);
  EXPECT_EQ(status.st_size, 4);
  ::close(removed);
}

TEST_F(OutputFileTest, LeavesTheOldFileUntilAllIsWritten) {
  folder_.write("old", "before");
  {
    OutputFile file(path("old"));
    file.sink().write(std::string(1'000'000, 'x'));
    EXPECT_EQ(folder_.read("old"), "before");
  }
  EXPECT_EQ(folder_.read("old"), "before");
  EXPECT_EQ(countFiles(), 1U);
}

TEST_F(OutputFileTest, LeavesNothingWhereNothingWas) {
  { const OutputFile file(path("new")); }
  EXPECT_EQ(countFiles(), 0U);
}

TEST_F(OutputFileTest, KeepsTheOldNameOfWhoStillReadsIt) {
  folder_.write("old", "before");
  std::ifstream reader(path("old"));
  EXPECT_TRUE(write(path("old"), "text"));
  std::string read;
  reader >> read;
  EXPECT_EQ(read, "before");
}

TEST_F(OutputFileTest, FollowsSymbolicLinks) {
  fs::create_directory(path("there"));
  folder_.write("there/old", "before");
  fs::create_symlink("there/old", path("link"));
  fs::create_symlink("there/new", path("dangling"));
  EXPECT_TRUE(write(path("link"), "text"));
  EXPECT_TRUE(write(path("dangling"), "more"));
  EXPECT_TRUE(fs::is_symlink(path("link")));
  EXPECT_TRUE(fs::is_symlink(path("dangling")));
  EXPECT_EQ(folder_.read("there/old"), "text");
  EXPECT_EQ(folder_.read("there/new"), "more");
}

TEST_F(OutputFileTest, TakesTheLongestName) {
  const std::string name(NAME_MAX, 'n');
  EXPECT_TRUE(write(path(name), "text"));
  EXPECT_EQ(folder_.read(name), "text");
}

TEST_F(OutputFileTest, LeavesWhatSomebodyIsAtWorkOn) {
  OutputFile first(path("new"));
  first.sink().write("first");
  EXPECT_TRUE(write(path("new"), "second"));
  EXPECT_EQ(folder_.read("new"), "second");
  EXPECT_TRUE(first.finish());
  EXPECT_EQ(folder_.read("new"), "first");
  EXPECT_EQ(countFiles(), 1U);
}

TEST_F(OutputFileTest, RemovesWhatAKilledProcessLeft) {
  folder_.write(".new.consolidator-1-0", "part");
  folder_.write(".other.consolidator-1-0", "of another file");
  EXPECT_TRUE(write(path("new"), "text"));
  EXPECT_FALSE(fs::exists(path(".new.consolidator-1-0")));
  EXPECT_EQ(countFiles(), 2U);
}

TEST_F(OutputFileTest, LeavesWhatOnlyLooksLikeThat) {
  for (const char* const ending : {"notes", "1", "1-", "-1", "1-0.txt", "b.consolidator-lock"}) {
    folder_.write(std::string(".new.consolidator-") + ending, "");
  }
  ASSERT_EQ(::mkfifo(path(".new.consolidator-1-0").c_str(), 0600), 0);
  EXPECT_TRUE(write(path("new"), "text"));
  EXPECT_EQ(countFiles(), 8U);
}

TEST_F(OutputFileTest, WritesAPipeAtOnce) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  std::string read;
  std::thread reader([&] { read = folder_.read("pipe"); });
  EXPECT_TRUE(write(path("pipe"), "text"));
  reader.join();
  EXPECT_EQ(read, "text");
  EXPECT_TRUE(fs::is_fifo(path("pipe")));
}

TEST_F(OutputFileTest, NoticesAFullDisk) {
  OutputFile file("/dev/full");
  file.sink().write("text");
  EXPECT_FALSE(file.finish());
  EXPECT_EQ(file.error(), ENOSPC);
}

TEST_F(OutputFileTest, TellsWhyNothingCanBeWritten) {
  OutputFile folder(path(""));
  EXPECT_FALSE(folder.finish());
  EXPECT_EQ(folder.error(), EISDIR);
  OutputFile nowhere(path("missing/new"));
  EXPECT_FALSE(nowhere.finish());
  EXPECT_EQ(nowhere.error(), ENOENT);
  OutputFile below(folder_.write("file", "") + "/new");
  EXPECT_FALSE(below.finish());
  EXPECT_EQ(below.error(), ENOTDIR);
}

TEST_F(OutputFileTest, WritesAFileWithoutANameAtOnce) {
  const MemoryFile file;
  file.write("a long text from before");
  EXPECT_TRUE(write(file.path(), "text"));
  EXPECT_EQ(file.read(), "text");
}

TEST_F(OutputFileTest, TellsThatAFolderTookItsPlace) {
  OutputFile file(path("new"));
  file.sink().write("text");
  fs::create_directory(path("new"));
  EXPECT_FALSE(file.finish());
  EXPECT_EQ(file.error(), EISDIR);
}

TEST_F(OutputFileTest, LeavesNothingWhereItsPlaceIsTaken) {
  {
    OutputFile file(path("new"));
    fs::create_directory(path("new"));
    EXPECT_FALSE(file.finish());
  }
  EXPECT_EQ(countFiles(), 1U);
}

TEST_F(OutputFileTest, GivesUpWhereAllNamesAreTaken) {
  for (int i = 0; i < 1000; ++i) {
    fs::create_directory(
        path(".new.consolidator-" + std::to_string(::getpid()) + "-" + std::to_string(i)));
  }
  EXPECT_FALSE(write(path("new"), "text"));
  EXPECT_FALSE(folder_.holds("new"));
  EXPECT_EQ(countFiles(), 1000U);
}

}  // namespace
}  // namespace consolidator::inspect
