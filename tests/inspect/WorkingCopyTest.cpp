#include "inspect/WorkingCopy.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>
#include <variant>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;

class WorkingCopyTest : public testing::Test {
 protected:
  static WorkingCopy make(const std::string& path) {
    auto made = WorkingCopy::make(path);
    return std::get<WorkingCopy>(std::move(made));
  }

  static std::string refusalOf(const std::string& path) {
    const auto made = WorkingCopy::make(path);
    const auto* const refusal = std::get_if<WorkingCopy::Refusal>(&made);
    return refusal == nullptr ? "" : refusal->reason;
  }

  std::ptrdiff_t fileCount() const {
    return std::distance(fs::directory_iterator(folder_.path("")), fs::directory_iterator());
  }

  TemporaryFolder folder_;
};

TEST_F(WorkingCopyTest, HoldsTheBytesOfTheFile) {
  const std::string path = folder_.write("file", std::string(300'000, 'x'));
  EXPECT_EQ(readFile(make(path).path()), std::string(300'000, 'x'));
}

TEST_F(WorkingCopyTest, IsRemovedUnlessItTakesTheName) {
  const std::string path = folder_.write("file", "old");
  {
    const WorkingCopy copy = make(path);
    writeFile(copy.path(), "new");
  }
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(fileCount(), 1);
}

TEST_F(WorkingCopyTest, TakesTheNameOfTheFile) {
  const std::string path = folder_.write("file", "old");
  {
    WorkingCopy copy = make(path);
    writeFile(copy.path(), "new");
    EXPECT_EQ(copy.takeName(), "");
  }
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(fileCount(), 1);
}

TEST_F(WorkingCopyTest, TakesANameThatNoFileHas) {
  WorkingCopy copy = make(folder_.path("file"));
  writeFile(copy.path(), "new");
  EXPECT_EQ(copy.takeName(), "");
  EXPECT_EQ(folder_.read("file"), "new");
}

TEST_F(WorkingCopyTest, KeepsModeAndAttributes) {
  const std::string path = folder_.write("file", "old");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  const bool hasAttributes = ::setxattr(path.c_str(), "user.note", "kept", 4, 0) == 0;
  WorkingCopy copy = make(path);
  ASSERT_EQ(copy.takeName(), "");

  struct stat now {};

  ASSERT_EQ(::stat(path.c_str(), &now), 0);
  EXPECT_EQ(now.st_mode & 07777U, 0640U);
  std::string value(4, ' ');
  if (!hasAttributes) GTEST_SKIP() << "no extended attributes here";
  EXPECT_EQ(::getxattr(path.c_str(), "user.note", value.data(), value.size()), 4);
  EXPECT_EQ(value, "kept");
}

TEST_F(WorkingCopyTest, LeavesAFileThatWasReplacedMeanwhile) {
  const std::string path = folder_.write("file", "old");
  WorkingCopy copy = make(path);
  fs::rename(folder_.write("another", "old"), path);
  EXPECT_EQ(copy.takeName(), "was changed by somebody else meanwhile");
  EXPECT_EQ(readFile(path), "old");
}

TEST_F(WorkingCopyTest, LeavesAFileThatAppearedMeanwhile) {
  WorkingCopy copy = make(folder_.path("file"));
  folder_.write("file", "theirs");
  EXPECT_EQ(copy.takeName(), "was changed by somebody else meanwhile");
  EXPECT_EQ(folder_.read("file"), "theirs");
}

TEST_F(WorkingCopyTest, FollowsSymbolicLinks) {
  fs::create_directory(folder_.path("below"));
  const std::string path = folder_.write("below/file", "old");
  fs::create_symlink("below/file", folder_.path("link"));
  fs::create_symlink(folder_.path("link"), folder_.path("second"));
  WorkingCopy copy = make(folder_.path("second"));
  writeFile(copy.path(), "new");
  ASSERT_EQ(copy.takeName(), "");
  EXPECT_TRUE(fs::is_symlink(folder_.path("second")));
  EXPECT_TRUE(fs::is_symlink(folder_.path("link")));
  EXPECT_EQ(readFile(path), "new");
}

TEST_F(WorkingCopyTest, RefusesWhatIsNoRegularFile) {
  EXPECT_EQ(refusalOf("/dev/null"), "is no regular file");
  fs::create_directory(folder_.path("below"));
  EXPECT_EQ(refusalOf(folder_.path("below")), "is no regular file");
  ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(refusalOf(folder_.path("pipe")), "is no regular file");
}

TEST_F(WorkingCopyTest, RefusesAFileWithSeveralNames) {
  const std::string path = folder_.write("file", "old");
  fs::create_hard_link(path, folder_.path("other"));
  EXPECT_EQ(refusalOf(path), "has several names (hard links), of which one alone would change");
  EXPECT_EQ(fileCount(), 2);
}

TEST_F(WorkingCopyTest, RefusesAFolderThatIsNotThere) {
  EXPECT_EQ(refusalOf(folder_.path("nowhere/file")), "cannot be locked: No such file or directory");
}

TEST_F(WorkingCopyTest, RemovesWhatAKilledProcessLeft) {
  const std::string path = folder_.write("file", "old");
  const pid_t child = ::fork();
  if (child == 0) {
    const WorkingCopy copy = make(path);
    std::raise(SIGKILL);
  }
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_EQ(fileCount(), 3);
  folder_.write(".other.consolidator-copy", "of another file");
  { const WorkingCopy copy = make(path); }
  EXPECT_EQ(fileCount(), 2);
  EXPECT_EQ(readFile(path), "old");
}

// Each of several processes adds a letter to what the one before left.
TEST_F(WorkingCopyTest, ProcessesWaitForOneAnother) {
  const std::string path = folder_.write("file", "");
  constexpr int processes = 12;
  for (int i = 0; i < processes; ++i) {
    if (::fork() == 0) {
      {
        WorkingCopy copy = make(path);
        writeFile(copy.path(), readFile(copy.path()) + "x");
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        EXPECT_EQ(copy.takeName(), "");
      }
      ::_exit(0);
    }
  }
  for (int i = 0; i < processes; ++i) ::wait(nullptr);
  EXPECT_EQ(readFile(path), std::string(processes, 'x'));
  EXPECT_EQ(fileCount(), 1);
}

}  // namespace
}  // namespace consolidator::inspect
