#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace consolidator {
namespace {

using namespace std::string_literals;

class CreateAndAddTest : public ExecutableTest {};

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

// The program itself serves, with its debug information in a debug build.
TEST_F(CreateAndAddTest, AnObjectFileIsKeptByteForByte) {
  EXPECT_EQ(runScript("\"$0\" -f out -d \"$0\" && \"$0\" -f out -h missing && "
                      "\"$0\" -f out -u dumped && cmp \"$0\" dumped"),
            silence());
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

}  // namespace
}  // namespace consolidator
