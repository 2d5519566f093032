#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <string>

namespace consolidator {
namespace {

class ProjectCheckTest : public ExecutableTest {
 protected:
  void SetUp() override {
    ASSERT_EQ(run({"-f", "out", "-h", "missing", "-p", "a"}), silence());
    ASSERT_EQ(read("out"), saved_);
  }

  const std::string saved_ = container({projectSection("a"), jsonSection("")});
};

TEST_F(ProjectCheckTest, OtherProjectIsRefusedAndLeavesTheFileEmpty) {
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "b"}),
            failed("Error: consolidated file out has meta-data for project a, not specified "
                   "project b\n"));
  EXPECT_TRUE(folderHolds({{"out", ""}}));
}

TEST_F(ProjectCheckTest, SameProjectIsAccepted) {
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "a"}), silence());
  EXPECT_TRUE(folderHolds(
      {{"out", container({projectSection("a"), jsonSection(""), projectSection("a")})}}));
}

TEST_F(ProjectCheckTest, NoProjectIsAccepted) {
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence());
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", ""}), silence());
  EXPECT_TRUE(folderHolds({{"out", saved_}}));
}

TEST_F(ProjectCheckTest, FileWithoutProjectTakesAny) {
  write("out", emptyFile());
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "b"}), silence());
  EXPECT_TRUE(folderHolds({{"out", container({jsonSection(""), projectSection("b")})}}));
}

TEST_F(ProjectCheckTest, CreateTakesAnyProject) {
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "missing", "-p", "b"}), silence());
  EXPECT_TRUE(folderHolds({{"out", container({projectSection("b"), jsonSection("")})}}));
}

TEST_F(ProjectCheckTest, NamesAreComparedExactly) {
  for (const std::string name : {"A", "aa", "a ", " a"}) {
    write("out", saved_);
    EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", name}),
              failed("Error: consolidated file out has meta-data for project a, not specified "
                     "project " +
                     name + "\n"));
    EXPECT_TRUE(folderHolds({{"out", ""}}));
  }
}

TEST_F(ProjectCheckTest, NameIsAnyBytes) {
  const std::string name = "\xC3\xA4 \"x\"\t\xFF";
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "missing", "-p", name}), silence());
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", name}), silence());
  EXPECT_EQ(read("out"), container({projectSection(name), jsonSection(""), projectSection(name)}));
}

TEST_F(ProjectCheckTest, StandsBeforeADumpAndThenKeepsTheFile) {
  EXPECT_EQ(run({"-f", "out", "-p", "b", "--dump-json", "json"}),
            failed("Error: consolidated file out has meta-data for project a, not specified "
                   "project b\n"));
  EXPECT_TRUE(folderHolds({{"out", saved_}}));
}

TEST_F(ProjectCheckTest, ReadsNoInputOfARefusedRun) {
  write("hierarchy", "version: 2.0");
  EXPECT_EQ(run({"-f", "out", "-h", "hierarchy", "-p", "b"}),
            failed("Error: consolidated file out has meta-data for project a, not specified "
                   "project b\n"));
}

TEST_F(ProjectCheckTest, ComesBeforeTheVersionCheck) {
  write("out", container({projectSection("a")}, 2, 0));
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "b"}),
            failed("Error: consolidated file out has meta-data for project a, not specified "
                   "project b\n"));
  EXPECT_TRUE(folderHolds({{"out", ""}}));
}

}  // namespace
}  // namespace consolidator
