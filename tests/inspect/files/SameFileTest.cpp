#include "inspect/files/SameFile.h"
#include "support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;

class SameFileTest : public testing::Test {
 protected:
  SameFileTest() {
    fs::create_hard_link(file_, folder_.path("name"));
    fs::create_symlink("file", folder_.path("link"));
    fs::create_symlink("missing", folder_.path("dangling"));
    fs::create_directory(folder_.path("below"));
  }

  bool isSame(const std::string& a, const std::string& b) const {
    const bool result = isSameFile(folder_.path(a), folder_.path(b));
    EXPECT_EQ(isSameFile(folder_.path(b), folder_.path(a)), result);
    return result;
  }

  TemporaryFolder folder_;
  std::string file_ = folder_.write("file", "same");
  std::string other_ = folder_.write("other", "same");
};

TEST_F(SameFileTest, KnowsAFileByAllItsNames) {
  for (const char* const name : {"file", "name", "link", "below/../file"}) {
    EXPECT_TRUE(isSame("file", name)) << name;
  }
  for (const char* const name : {"other", "missing", "dangling", "below"}) {
    EXPECT_FALSE(isSame("file", name)) << name;
  }
}

TEST_F(SameFileTest, KnowsThePlaceOfAFileThatIsMissing) {
  for (const char* const name : {"missing", "dangling", "./missing", "below/../missing"}) {
    EXPECT_TRUE(isSame("missing", name)) << name;
  }
  EXPECT_FALSE(isSame("missing", "absent"));
  EXPECT_FALSE(isSame("missing", "below/missing"));
}

TEST_F(SameFileTest, TakesAnEmptyNameForNoFile) {
  EXPECT_FALSE(isSameFile("", ""));
  EXPECT_FALSE(isSameFile("", "missing"));
  EXPECT_FALSE(isSameFile("missing", ""));
}

TEST_F(SameFileTest, KnowsAFileThatIsOpen) {
  const int descriptor = ::open(file_.c_str(), O_RDONLY | O_CLOEXEC);
  EXPECT_TRUE(isSameFile(folder_.path("link"), descriptor));
  EXPECT_FALSE(isSameFile(other_, descriptor));
  EXPECT_FALSE(isSameFile(folder_.path("missing"), descriptor));
  ::close(descriptor);
  EXPECT_FALSE(isSameFile(file_, descriptor));
}

}  // namespace
}  // namespace consolidator::inspect
