#include "inspect/files/TemporaryFile.h"
#include "support/MemoryFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace consolidator::inspect {
namespace {

TEST(TemporaryFileTest, IsThereAsLongAsTheObject) {
  std::string path;
  {
    const TemporaryFile file;
    path = file.path();
    EXPECT_EQ(file.error(), 0);
    EXPECT_TRUE(std::filesystem::exists(path));
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(TemporaryFileTest, CopiesAllThatWasWritten) {
  TemporaryFile file;
  std::string bytes(200'001, 'x');
  bytes[100'000] = 'y';
  writeFile(file.path(), bytes);
  const MemoryFile target;
  OutputSink sink(target.descriptor());
  file.copyTo(sink);
  EXPECT_TRUE(sink.flush());
  EXPECT_EQ(file.error(), 0);
  EXPECT_TRUE(target.read() == bytes);
}

TEST(TemporaryFileTest, StopsWhereNothingMoreIsTaken) {
  TemporaryFile file;
  writeFile(file.path(), std::string(200'000, 'x'));
  OutputSink closed(-1);
  file.copyTo(closed);
  EXPECT_EQ(closed.error(), EBADF);
  EXPECT_EQ(file.error(), 0);
}

TEST(TemporaryFileTest, TellsThatThereIsNoPlaceForIt) {
  const char* const found = std::getenv("TMPDIR");
  const auto before = found == nullptr ? std::nullopt : std::optional<std::string>(found);
  ::setenv("TMPDIR", "/proc", 1);  // takes no new files
  TemporaryFile file;
  before ? ::setenv("TMPDIR", before->c_str(), 1) : ::unsetenv("TMPDIR");
  EXPECT_NE(file.error(), 0);
  OutputSink sink(-1);
  file.copyTo(sink);
  EXPECT_EQ(sink.error(), 0) << "nothing is written";
}

}  // namespace
}  // namespace consolidator::inspect
