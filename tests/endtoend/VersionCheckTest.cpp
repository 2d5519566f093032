#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <cstdint>
#include <limits>
#include <string>

namespace consolidator {
namespace {

class VersionCheckTest : public ExecutableTest {
 protected:
  // What a run on the file "out" says about its version.
  static Outcome refusal(const std::string& version) {
    return failed("Error: consolidated file out is version " + version +
                  " and only versions up to 1.1 are supported.\n");
  }
};

TEST_F(VersionCheckTest, NewerMajorVersionIsRefusedAndLeavesTheFileEmpty) {
  write("out", container({jsonSection("")}, 2, 0));
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), refusal("2.0"));
  EXPECT_TRUE(folderHolds({{"out", ""}}));
}

TEST_F(VersionCheckTest, MessageShowsSignedNumbers) {
  write("out", container({jsonSection("")}, std::numeric_limits<std::int32_t>::max(),
                         std::numeric_limits<std::int32_t>::min()));
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), refusal("2147483647.-2147483648"));
}

TEST_F(VersionCheckTest, MinorVersionIsNotCheckedAndStays) {
  write("out", container({jsonSection("")}, 1, 99));
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence());
  EXPECT_TRUE(folderHolds({{"out", container({jsonSection("")}, 1, 99)}}));
}

TEST_F(VersionCheckTest, OlderMajorVersionsAreAcceptedAndStay) {
  for (const std::int32_t version : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    write("out", container({projectSection("name"), jsonSection("")}, version, -2));
    EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence());
    EXPECT_TRUE(
        folderHolds({{"out", container({projectSection("name"), jsonSection("")}, version, -2)}}));
  }
}

TEST_F(VersionCheckTest, StandsBeforeADumpAndThenKeepsTheFile) {
  const std::string newer = container({jsonSection("")}, 2, 5);
  write("out", newer);
  EXPECT_EQ(run({"-f", "out", "--dump-json", "json"}), refusal("2.5"));
  EXPECT_TRUE(folderHolds({{"out", newer}}));
}

TEST_F(VersionCheckTest, ForeignFileIsCheckedToo) {
  write("out", header(0, 3, 4, 0x12345678) + "anything");
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), refusal("3.4"));
  EXPECT_TRUE(folderHolds({{"out", ""}}));
}

TEST_F(VersionCheckTest, ShortFileIsCheckedToo) {
  write("out", header(0, 2).substr(0, 5));
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), refusal("2.1"));
  write("out", header(0, 2, 0x107).substr(0, 9));
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), refusal("2.7"));
  write("out", "some text");
  EXPECT_EQ(run({"-f", "out", "-h", "missing"}), refusal("2019914784.116"));
  EXPECT_TRUE(folderHolds({{"out", ""}}));
}

TEST_F(VersionCheckTest, CreateDoesNotLook) {
  write("out", container({jsonSection("")}, 2, 0));
  EXPECT_EQ(run({"-c", "-f", "out", "-h", "missing"}), silence());
  EXPECT_TRUE(folderHolds({{"out", emptyFile()}}));
}

}  // namespace
}  // namespace consolidator
