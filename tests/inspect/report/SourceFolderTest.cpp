#include "inspect/report/SourceFolder.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>

namespace consolidator::inspect {
namespace {

namespace fs = std::filesystem;

class SourceFolderTest : public testing::Test {
 protected:
  SourceFolderTest() {
    fs::create_directories(outer_.path("below/deep"));
    outer_.write("below/k.c", "one\ntwo\n\nfour");
    outer_.write("below/deep/d.c", "deep\n");
    outer_.write("secret", "secret\n");
    outer_.write("belowed", "no child\n");
    sources_.emplace(path("below"));
  }

  std::string path(const std::string& name) const { return outer_.path(name); }

  const SourceText* linesOf(const std::string& name) { return sources_->linesOf(name); }

 private:
  TemporaryFolder outer_;
  std::optional<SourceFolder> sources_;  // opened once the folder is there
};

TEST_F(SourceFolderTest, ReadsTheLinesOfFilesBelowIt) {
  ASSERT_NE(linesOf(path("below/k.c")), nullptr);
  EXPECT_EQ((*linesOf(path("below/k.c")))[3], "four");
  EXPECT_EQ((*linesOf(path("below/./deep/../deep/d.c")))[0], "deep");
}

TEST_F(SourceFolderTest, TakesRelativePathsFromTheFolder) {
  EXPECT_EQ((*linesOf("deep/d.c"))[0], "deep");
}

TEST_F(SourceFolderTest, RefusesWhatIsNotBelowIt) {
  EXPECT_EQ(linesOf(path("secret")), nullptr);
  EXPECT_EQ(linesOf(path("belowed")), nullptr);
  EXPECT_EQ(linesOf("../secret"), nullptr);
  EXPECT_EQ(linesOf(path("below/../secret")), nullptr);
  EXPECT_EQ(linesOf("/etc/passwd"), nullptr);
}

TEST_F(SourceFolderTest, RefusesLinksThatLeadOut) {
  fs::create_symlink(path("secret"), path("below/link"));
  fs::create_directory_symlink(path(""), path("below/up"));
  fs::create_symlink("k.c", path("below/inside"));
  EXPECT_EQ(linesOf(path("below/link")), nullptr);
  EXPECT_EQ(linesOf(path("below/up/secret")), nullptr);
  EXPECT_NE(linesOf(path("below/inside")), nullptr);
}

TEST_F(SourceFolderTest, RefusesWhatIsNoFile) {
  ASSERT_EQ(::mkfifo(path("below/pipe").c_str(), 0600), 0);
  EXPECT_EQ(linesOf(path("below/pipe")), nullptr);
  EXPECT_EQ(linesOf(path("below/deep")), nullptr);
  EXPECT_EQ(linesOf(path("below/missing")), nullptr);
  EXPECT_EQ(linesOf(""), nullptr);
  EXPECT_EQ(linesOf(std::string("k.c\0x", 5)), nullptr);
}

TEST_F(SourceFolderTest, ReadsNoMoreThanItKeeps) {
  fs::resize_file(path("below/k.c"), 33U << 20U);
  EXPECT_EQ(linesOf("k.c"), nullptr);
  fs::resize_file(path("below/k.c"), 20U << 20U);
  EXPECT_NE(linesOf("k.c"), nullptr);
  fs::copy_file(path("below/k.c"), path("below/other.c"));
  EXPECT_EQ(linesOf("other.c"), nullptr);
  EXPECT_NE(linesOf("k.c"), nullptr) << "what was read stays";
}

TEST(SourceFolder, HasNoFilesWhereThereIsNoFolder) {
  EXPECT_EQ(SourceFolder("").linesOf("/etc/passwd"), nullptr);
  EXPECT_EQ(SourceFolder("/nowhere/at/all").linesOf("/etc/passwd"), nullptr);
}

TEST(SourceFolder, MayBeTheRoot) {
  const TemporaryFolder folder;
  EXPECT_NE(SourceFolder("/").linesOf(folder.write("k.c", "one\n")), nullptr);
}

}  // namespace
}  // namespace consolidator::inspect
