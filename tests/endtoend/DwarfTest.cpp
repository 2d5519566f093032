#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace consolidator {
namespace {

class DwarfTest : public ExecutableTest {
 protected:
  // Expects that the file adds nothing and that nothing is said about it.
  void expectNoSection(const std::string& dwarf) const {
    EXPECT_EQ(run({"-c", "-f", "out", "-d", dwarf}), silence());
    ASSERT_EQ(std::filesystem::file_size(path("out")), emptyFile().size());
    EXPECT_EQ(read("out"), emptyFile());
  }
};

std::string allByteValues() {
  std::string bytes;
  for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
  return bytes;
}

TEST_F(DwarfTest, IsKeptByteForByte) {
  write("dwarf", allByteValues());
  ASSERT_EQ(run({"-f", "out", "-d", "dwarf"}), silence());
  EXPECT_EQ(run({"-f", "out", "-u", "dumped"}), silence());
  EXPECT_TRUE(folderHolds({{"dwarf", allByteValues()},
                           {"dumped", allByteValues()},
                           {"out", container({dwarfSection(allByteValues()), jsonSection("")})}}));
}

TEST_F(DwarfTest, SingleByteIsASection) {
  write("dwarf", "x");
  EXPECT_EQ(run({"-f", "out", "-d", "dwarf"}), silence());
  EXPECT_EQ(read("out"), container({dwarfSection("x"), jsonSection("")}));
}

// The program itself serves, with its debug information in a debug build.
TEST_F(DwarfTest, ObjectFileIsKeptByteForByte) {
  EXPECT_EQ(runScript("\"$0\" -f out -d \"$0\" && \"$0\" -f out -h missing && "
                      "\"$0\" -f out -u dumped && cmp \"$0\" dumped && rm dumped"),
            silence());
  EXPECT_EQ(dumpedJson("out"), jsonText(""));
}

TEST_F(DwarfTest, TheFirstOneIsKept) {
  write("first", "one");
  write("second", "and two");
  ASSERT_EQ(run({"-f", "out", "-d", "first"}), silence());
  EXPECT_EQ(run({"-f", "out", "-d", "second"}), silence());
  EXPECT_TRUE(folderHolds({{"first", "one"},
                           {"second", "and two"},
                           {"out", container({dwarfSection("one"), jsonSection("")})}}));
}

TEST_F(DwarfTest, MayComeInALaterRun) {
  write("dwarf", "debug");
  ASSERT_EQ(run({"-f", "out", "-h", "missing", "-p", "name"}), silence());
  EXPECT_EQ(run({"-f", "out", "-d", "dwarf"}), silence());
  EXPECT_EQ(read("out"),
            container({projectSection("name"), jsonSection(""), dwarfSection("debug")}));
}

TEST_F(DwarfTest, MissingFileAddsNothing) { expectNoSection("missing"); }

TEST_F(DwarfTest, EmptyFileAddsNothing) {
  write("dwarf", "");
  expectNoSection("dwarf");
}

TEST_F(DwarfTest, FolderAddsNothing) { expectNoSection("."); }

TEST_F(DwarfTest, UnreadableFileAddsNothing) {
  if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
  write("dwarf", "debug");
  ASSERT_EQ(chmod(path("dwarf").c_str(), 0), 0);
  expectNoSection("dwarf");
}

TEST_F(DwarfTest, PipeAddsNothing) {
  EXPECT_EQ(runScript("exec \"$0\" -f out -d <(echo debug 2>&-)"), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
  EXPECT_EQ(runScript("mkfifo pipe; echo debug >pipe 2>&- & exec \"$0\" -f out -d pipe"),
            silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}, {"pipe|", ""}}));
}

TEST_F(DwarfTest, DeviceAddsNothing) { expectNoSection("/dev/null"); }

TEST_F(DwarfTest, FileOfTwoGibibytesAddsNothing) {
  ASSERT_EQ(runScript("truncate --size=2G dwarf"), silence());
  expectNoSection("dwarf");
  ASSERT_EQ(runScript("truncate --size=4294967299 dwarf"), silence());
  expectNoSection("dwarf");
}

}  // namespace
}  // namespace consolidator
