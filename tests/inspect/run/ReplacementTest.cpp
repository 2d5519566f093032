#include "inspect/files/FileBeside.h"
#include "inspect/run/Replacement.h"
#include "support/AccessList.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>
#include <variant>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;

class ReplacementTest : public testing::Test {
 protected:
  static Replacement make(const std::string& path) {
    auto made = Replacement::make(path);
    return std::get<Replacement>(std::move(made));
  }

  static std::string refusalOf(const std::string& path) {
    const auto made = Replacement::make(path);
    const auto* const refusal = std::get_if<Replacement::Refusal>(&made);
    return refusal == nullptr ? "" : refusal->reason;
  }

  static mode_t modeOf(const std::string& path) {
    struct stat status {};

    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
  }

  std::ptrdiff_t fileCount() const {
    return std::distance(fs::directory_iterator(folder_.path("")), fs::directory_iterator());
  }

  TemporaryFolder folder_;
};

TEST_F(ReplacementTest, IsRemovedUnlessItTakesTheName) {
  const std::string path = folder_.write("file", "old");
  {
    const Replacement replacement = make(path);
    writeFile(replacement.path(), "new");
  }
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(fileCount(), 1);
}

TEST_F(ReplacementTest, TakesTheNameOfTheFile) {
  const std::string path = folder_.write("file", "old");
  {
    Replacement replacement = make(path);
    writeFile(replacement.path(), "new");
    EXPECT_FALSE(replacement.takeName());
  }
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(fileCount(), 1);
}

TEST_F(ReplacementTest, TakesANameThatNoFileHas) {
  Replacement replacement = make(folder_.path("file"));
  writeFile(replacement.path(), "new");
  EXPECT_FALSE(replacement.takeName());
  EXPECT_EQ(folder_.read("file"), "new");
}

TEST_F(ReplacementTest, KeepsModeAndAttributes) {
  const std::string path = folder_.write("file", "old");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  const bool hasAttributes = ::setxattr(path.c_str(), "user.note", "kept", 4, 0) == 0 &&
                             ::setxattr(path.c_str(), "user.empty", "", 0, 0) == 0;
  Replacement replacement = make(path);
  ASSERT_FALSE(replacement.takeName());
  EXPECT_EQ(modeOf(path), 0640U);
  std::string value(4, ' ');
  if (!hasAttributes) GTEST_SKIP() << "no extended attributes here";
  EXPECT_EQ(::getxattr(path.c_str(), "user.note", value.data(), value.size()), 4);
  EXPECT_EQ(value, "kept");
  EXPECT_EQ(::getxattr(path.c_str(), "user.empty", nullptr, 0), 0);
}

TEST_F(ReplacementTest, LetsNobodyInWhoseRightsOnlyTheFolderGives) {
  const std::string path = folder_.write("file", "old");
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  if (!giveDefaultAccessList(folder_.path(""))) GTEST_SKIP() << "no access control lists here";
  ASSERT_TRUE(hasAccessList(folder_.write("another", "")));
  Replacement replacement = make(path);
  ASSERT_FALSE(replacement.takeName());
  EXPECT_FALSE(hasAccessList(path));
  EXPECT_EQ(modeOf(path), 0640U);
}

TEST_F(ReplacementTest, KeepsAnAccessList) {
  if (!giveDefaultAccessList(folder_.path(""))) GTEST_SKIP() << "no access control lists here";
  const std::string path = folder_.write("file", "old");
  ASSERT_EQ(::removexattr(folder_.path("").c_str(), "system.posix_acl_default"), 0);
  ASSERT_TRUE(hasAccessList(path));
  Replacement replacement = make(path);
  ASSERT_FALSE(replacement.takeName());
  EXPECT_TRUE(hasAccessList(path));
}

// Writing takes the one of them from a user's file, the other one from that of root.
TEST_F(ReplacementTest, KeepsRightsThatWritingTakesAway) {
  constexpr std::string_view name = "security.capability";
  constexpr std::string_view rights("\1\0\0\2\0\x20\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 20);
  const std::string path = folder_.write("file", "old");
  ASSERT_EQ(::chmod(path.c_str(), 04750), 0);
  const bool isRoot = ::setxattr(path.c_str(), name.data(), rights.data(), rights.size(), 0) == 0;
  Replacement replacement = make(path);
  ASSERT_EQ(::write(replacement.descriptor(), "new", 3), 3);
  ASSERT_FALSE(replacement.takeName());
  EXPECT_EQ(modeOf(path), 04750U);
  EXPECT_EQ(::getxattr(path.c_str(), name.data(), nullptr, 0) > 0, isRoot);
}

TEST_F(ReplacementTest, KeepsTheModeThatTheFileWasGivenMeanwhile) {
  const std::string path = folder_.write("file", "old");
  Replacement replacement = make(path);
  ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
  ASSERT_FALSE(replacement.takeName());
  EXPECT_EQ(modeOf(path), 0600U);
}

TEST_F(ReplacementTest, LeavesAFileThatWasGivenAnotherNameMeanwhile) {
  const std::string path = folder_.write("file", "old");
  Replacement replacement = make(path);
  fs::create_hard_link(path, folder_.path("another"));
  EXPECT_EQ(replacement.takeName()->reason, "was changed by somebody else meanwhile");
  EXPECT_EQ(readFile(path), "old");
}

TEST_F(ReplacementTest, LeavesFilesWhoseLinkWasMovedMeanwhile) {
  const std::string path = folder_.write("file", "old");
  fs::create_symlink("file", folder_.path("link"));
  Replacement replacement = make(folder_.path("link"));
  folder_.write("another", "theirs");
  fs::create_symlink("another", folder_.path("moved"));
  fs::rename(folder_.path("moved"), folder_.path("link"));
  EXPECT_EQ(replacement.takeName()->reason, "was changed by somebody else meanwhile");
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(folder_.read("another"), "theirs");
}

TEST_F(ReplacementTest, LeavesAFileThatWasReplacedMeanwhile) {
  const std::string path = folder_.write("file", "old");
  Replacement replacement = make(path);
  fs::rename(folder_.write("another", "old"), path);
  EXPECT_EQ(replacement.takeName()->reason, "was changed by somebody else meanwhile");
  EXPECT_EQ(readFile(path), "old");
}

TEST_F(ReplacementTest, LeavesAFileThatAppearedMeanwhile) {
  Replacement replacement = make(folder_.path("file"));
  folder_.write("file", "theirs");
  EXPECT_EQ(replacement.takeName()->reason, "was changed by somebody else meanwhile");
  EXPECT_EQ(folder_.read("file"), "theirs");
}

TEST_F(ReplacementTest, FollowsSymbolicLinks) {
  fs::create_directory(folder_.path("below"));
  const std::string path = folder_.write("below/file", "old");
  fs::create_symlink("below/file", folder_.path("link"));
  fs::create_symlink(folder_.path("link"), folder_.path("second"));
  Replacement replacement = make(folder_.path("second"));
  writeFile(replacement.path(), "new");
  ASSERT_FALSE(replacement.takeName());
  EXPECT_TRUE(fs::is_symlink(folder_.path("second")));
  EXPECT_TRUE(fs::is_symlink(folder_.path("link")));
  EXPECT_EQ(readFile(path), "new");
}

TEST_F(ReplacementTest, SaysOfALoopOfLinksWhatTheSystemSays) {
  fs::create_symlink("b", folder_.path("a"));
  fs::create_symlink("a", folder_.path("b"));
  EXPECT_EQ(refusalOf(folder_.path("a")), "Too many levels of symbolic links");
}

TEST_F(ReplacementTest, RefusesWhatIsNoRegularFile) {
  EXPECT_EQ(refusalOf("/dev/null"), "is no regular file");
  fs::create_directory(folder_.path("below"));
  EXPECT_EQ(refusalOf(folder_.path("below")), "is no regular file");
  ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(refusalOf(folder_.path("pipe")), "is no regular file");
}

TEST_F(ReplacementTest, RefusesAFileWithSeveralNames) {
  const std::string path = folder_.write("file", "old");
  fs::create_hard_link(path, folder_.path("other"));
  EXPECT_EQ(refusalOf(path), "has several names (hard links), of which one alone would change");
  EXPECT_EQ(fileCount(), 2);
}

TEST_F(ReplacementTest, RefusesAFolderThatIsNotThere) {
  EXPECT_EQ(refusalOf(folder_.path("nowhere/file")), "cannot be locked: No such file or directory");
}

TEST_F(ReplacementTest, RemovesWhatAKilledProcessLeft) {
  const std::string path = folder_.write("file", "old");
  const pid_t child = ::fork();
  if (child == 0) {
    const Replacement replacement = make(path);
    std::raise(SIGKILL);
  }
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_EQ(fileCount(), 3);
  folder_.write(".other.consolidator-1-0", "of another file");
  { const Replacement replacement = make(path); }
  EXPECT_EQ(fileCount(), 2);
  EXPECT_EQ(readFile(path), "old");
}

TEST_F(ReplacementTest, LeavesWhatSomebodyIsAtWorkOn) {
  const std::string path = folder_.write("file", "old");
  const FileBeside other(path, 0666);
  { const Replacement replacement = make(path); }
  EXPECT_TRUE(fs::exists(other.path()));
}

// The name of a file may be looked up before, and its number of names be read after that.
TEST_F(ReplacementTest, TakesNoReplacedFileForOneWithSeveralNames) {
  const std::string path = folder_.write("file", "");
  std::atomic<bool> isDone = false;
  std::thread other([&] {
    while (!isDone) fs::rename(folder_.write("other", ""), path);
  });
  constexpr int rounds = 2000;
  for (int i = 0; i < rounds; ++i) EXPECT_EQ(refusalOf(path), "");
  isDone = true;
  other.join();
}

// Each of several processes adds a letter to what the one before left.
TEST_F(ReplacementTest, ProcessesWaitForOneAnother) {
  const std::string path = folder_.write("file", "");
  constexpr int processes = 12;
  const auto addLetter = [&]() noexcept {
    Replacement replacement = make(path);
    writeFile(replacement.path(), readFile(path) + "x");
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    EXPECT_FALSE(replacement.takeName());
  };
  for (int i = 0; i < processes; ++i) {
    if (::fork() == 0) {
      addLetter();
      ::_exit(0);
    }
  }
  for (int i = 0; i < processes; ++i) ::wait(nullptr);
  EXPECT_EQ(readFile(path), std::string(processes, 'x'));
  EXPECT_EQ(fileCount(), 1);
}

class FileFlagsTest : public ReplacementTest {
 protected:
  static unsigned long flagsOf(const std::string& path) {
    unsigned long flags = 0;
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_EQ(::ioctl(file, FS_IOC_GETFLAGS, &flags), 0);
    ::close(file);
    return flags;
  }

  // Returns whether the file system has such flags, and this process may set them.
  static bool setFlags(const std::string& path, unsigned long flags) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool isSet = ::ioctl(file, FS_IOC_SETFLAGS, &flags) == 0;
    ::close(file);
    return isSet;
  }
};

TEST_F(FileFlagsTest, AreKept) {
  const std::string path = folder_.write("file", "old");
  if (!setFlags(path, FS_NODUMP_FL)) GTEST_SKIP() << "no file flags here";
  Replacement replacement = make(path);
  ASSERT_FALSE(replacement.takeName());
  EXPECT_NE(flagsOf(path) & FS_NODUMP_FL, 0U);
  EXPECT_EQ(readFile(path), "");
}

TEST_F(FileFlagsTest, AreNotLostWhereAFileCanOnlyBeAddedTo) {
  const std::string path = folder_.write("file", "old");
  if (!setFlags(path, FS_APPEND_FL)) GTEST_SKIP() << "files cannot be made to be added to here";
  const std::string reason = refusalOf(path);
  setFlags(path, 0);
  EXPECT_EQ(reason, "has an owner, a mode or attributes that a new file cannot be given");
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(fileCount(), 1);
}

}  // namespace
}  // namespace consolidator::inspect
