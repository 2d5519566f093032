#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace consolidator {
namespace {

using namespace std::string_literals;

class CreateAndAddTest : public ExecutableTest {};

TEST_F(CreateAndAddTest, FileWithNothingInItHas62Bytes) {
  const std::string expected =
      "\xD4\xDA\xEF\xBE\x01\0\0\0\x01\0\0\0\x01\0\0\0"
      "\x03\0\0\0\0\0\0\0\x28\0\0\0\0\0\0\0\x16\0\0\0\0\0\0\0"
      "{  \"Kernels\" : [  ] }\0"s;
  ASSERT_EQ(expected.size(), 62U);
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence());
  EXPECT_TRUE(folderHolds({{"out", expected}}));
}

TEST_F(CreateAndAddTest, ProjectNameStandsBeforeTheJsonText) {
  const std::string expected =
      "\xD4\xDA\xEF\xBE\x01\0\0\0\x01\0\0\0\x02\0\0\0"
      "\0\0\0\0\0\0\0\0\x40\0\0\0\0\0\0\0\x04\0\0\0\0\0\0\0"
      "\x03\0\0\0\0\0\0\0\x44\0\0\0\0\0\0\0\x16\0\0\0\0\0\0\0"
      "name{  \"Kernels\" : [  ] }\0"s;
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "name"}), silence());
  EXPECT_TRUE(folderHolds({{"out", expected}}));
}

TEST_F(CreateAndAddTest, SectionsStandInTheOrderInWhichTheyCame) {
  const std::string expected =
      "\xD4\xDA\xEF\xBE\x01\0\0\0\x01\0\0\0\x04\0\0\0"
      "\0\0\0\0\0\0\0\0\x70\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0"
      "\x01\0\0\0\0\0\0\0\x71\0\0\0\0\0\0\0\x03\0\0\0\0\0\0\0"
      "\x03\0\0\0\0\0\0\0\x74\0\0\0\0\0\0\0\x92\0\0\0\0\0\0\0"
      "\x02\0\0\0\0\0\0\0\x06\x01\0\0\0\0\0\0\x25\0\0\0\0\0\0\0"
      "p"
      "D\0W"
      "{  \"Kernels\" : [ { \"Name\" : \"k\", \"Instance Paths\" : [  ], \"Type\" : \"HLS\", "
      "\"Arguments\" : [ ], \"Variables\" : [ ], \"Breakable Conditions\" : [] } ] }\0"
      "\x01\0\0\0"
      "\x01\0\0\0k\0\0\0\0\x04\0\0\0"
      "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s;
  write("hierarchy", "k: type: hls");
  write("dwarf", "D\0W"s);
  EXPECT_EQ(run({"-f", "out", "-h", "hierarchy", "-d", "dwarf", "-p", "p"}), silence());
  EXPECT_TRUE(folderHolds({{"hierarchy", "k: type: hls"}, {"dwarf", "D\0W"s}, {"out", expected}}));
}

TEST_F(CreateAndAddTest, EveryRunThatNamesTheProjectAddsAnEntry) {
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(run({"-f", "out", "-h", "missing", "-p", "name"}), silence());
  }
  EXPECT_TRUE(folderHolds({{"out", container({projectSection("name"), jsonSection(""),
                                              projectSection("name"), projectSection("name")})}}));
}

TEST_F(CreateAndAddTest, AddKeepsWhatTheFileHolds) {
  write("first", "a: type: c instance path: /top/a");
  write("second", "b: type: ip a: type: hls instance path: /top/a2");
  write("dwarf", "debug");
  ASSERT_EQ(run({"-f", "out", "-h", "first", "-p", "name", "-d", "dwarf"}), silence());
  ASSERT_EQ(run({"-a", "-f", "out", "-h", "second"}), silence());
  EXPECT_EQ(
      read("out"),
      container(
          {projectSection("name"), dwarfSection("debug"),
           jsonSection(kernelJson("a", "C", {"/top/a", "/top/a2"}) + ", " + kernelJson("b", "RTL")),
           recordsSection({kernelRecord("a", 1, {"/top/a", "/top/a2"}), kernelRecord("b", 2)})}));
}

TEST_F(CreateAndAddTest, AddingNothingChangesNothing) {
  write("hierarchy", "k: instance path: /top/k");
  ASSERT_EQ(run({"-f", "out", "-h", "hierarchy", "-p", "name"}), silence());
  const std::string saved = read("out");
  for (const std::string input : {"missing", "hierarchy"}) {
    EXPECT_EQ(run({"-f", "out", "-h", input}), silence());
    EXPECT_TRUE(folderHolds({{"hierarchy", "k: instance path: /top/k"}, {"out", saved}}));
  }
}

TEST_F(CreateAndAddTest, KernelRecordsFollowOnceAKernelIsKnown) {
  ASSERT_EQ(run({"-f", "out", "-h", "missing"}), silence());
  write("hierarchy", "k:");
  ASSERT_EQ(run({"-f", "out", "-h", "hierarchy", "-p", "p"}), silence());
  EXPECT_EQ(read("out"), container({jsonSection(kernelJson("k", "Unknown")), projectSection("p"),
                                    recordsSection({kernelRecord("k", 3)})}));
}

TEST_F(CreateAndAddTest, CreateOverwritesAll) {
  write("first", "a:");
  write("second", "b:");
  write("dwarf", "debug");
  ASSERT_EQ(run({"-f", "out", "-h", "first", "-p", "name", "-d", "dwarf"}), silence());
  ASSERT_EQ(run({"-c", "-f", "out", "-h", "second"}), silence());
  EXPECT_EQ(read("out"), container({jsonSection(kernelJson("b", "Unknown")),
                                    recordsSection({kernelRecord("b", 3)})}));
}

TEST_F(CreateAndAddTest, CreateTakesTheDwarfOfItsOwnRun) {
  write("first", "one");
  write("second", "two");
  ASSERT_EQ(run({"-f", "out", "-d", "first"}), silence());
  ASSERT_EQ(run({"-c", "-f", "out", "-d", "second"}), silence());
  EXPECT_EQ(read("out"), container({dwarfSection("two"), jsonSection("")}));
}

TEST_F(CreateAndAddTest, CreateNeverReadsTheFile) {
  write("out", header(0, 2, 7));
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "missing"}), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
  write("out", container({projectSection("other")}));
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "missing", "-p", "name"}), silence());
  EXPECT_TRUE(folderHolds({{"out", container({projectSection("name"), jsonSection("")})}}));
}

TEST_F(CreateAndAddTest, ShorterResultLeavesNothingOfTheOldFile) {
  write("out", std::string(100000, 'x'));
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "missing"}), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

TEST_F(CreateAndAddTest, AnEmptyFileIsFilled) {
  write("out", "");
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

TEST_F(CreateAndAddTest, FileThatCannotBeOpenedIsAnError) {
  EXPECT_EQ(run({"-f", "missing/out", "-h", "missing"}), failed("Unable to open missing/out\n"));
  EXPECT_EQ(run({"-c", "-f", "missing/out", "-h", "missing"}),
            failed("Unable to open missing/out\n"));
  const std::string tooLong(300, 'x');
  EXPECT_EQ(run({"-f", tooLong, "-h", "missing"}), failed("Unable to open " + tooLong + "\n"));
  EXPECT_TRUE(folderHolds({}));
}

TEST_F(CreateAndAddTest, FolderCannotBeWritten) {
  EXPECT_EQ(run({"-f", ".", "-h", "missing"}), failed("Unable to open .\n"));
  EXPECT_EQ(run({"-c", "-f", ".", "-h", "missing"}), failed("Unable to open .\n"));
  EXPECT_TRUE(folderHolds({}));
}

TEST_F(CreateAndAddTest, FileWithoutPermissionToWriteIsKept) {
  if (geteuid() == 0) GTEST_SKIP() << "root may write everything";
  write("out", emptyFile());
  ASSERT_EQ(chmod(path("out").c_str(), 0400), 0);
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), failed("Unable to open out\n"));
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "missing"}), failed("Unable to open out\n"));
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

TEST_F(CreateAndAddTest, FileWithoutPermissionToReadIsTakenAsEmpty) {
  if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
  write("out", container({projectSection("other"), jsonSection("")}));
  ASSERT_EQ(chmod(path("out").c_str(), 0200), 0);
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "name"}), silence());
  ASSERT_EQ(chmod(path("out").c_str(), 0600), 0);
  EXPECT_TRUE(folderHolds({{"out", container({projectSection("name"), jsonSection("")})}}));
}

TEST_F(CreateAndAddTest, TheFileItselfIsEmptyAsAnInput) {
  write("out", "k: instance path: /top/k");
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "out", "-d", "out"}), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

TEST_F(CreateAndAddTest, FullDeviceIsNoError) {
  EXPECT_EQ(run({"-f", "/dev/full", "-h", "missing"}), silence());
  EXPECT_EQ(run({"-f", "/dev/null", "-h", "missing"}), silence());
}

}  // namespace
}  // namespace consolidator
