// Consolidated files where there is no room for them. Nothing is said about it; the file holds what
// there was room for, in the order of the writing: sections first, then header and table. What
// still waits in the stream's buffer when the header's turn comes has to be written first, so that
// then the header is missing, too, and the file starts with zeros in its place.

#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"
#include "endtoend/TimedRun.h"
#include "endtoend/VaddBuild.h"

#include <cstddef>
#include <string>

namespace consolidator {
namespace {

constexpr std::size_t kibibyte = 1024;

// Where sections start after a table of so many entries.
std::size_t sectionsStart(std::size_t entries) { return 16 + 24 * entries; }

class FullDeviceTest : public ExecutableTest {
 protected:
  // Bytes that look different everywhere.
  static std::string manyBytes(std::size_t size) {
    std::string bytes;
    while (bytes.size() < size) bytes += std::to_string(bytes.size()) + ' ';
    return bytes.substr(0, size);
  }

  // Expects that a file which may have so many KiB is left as `after`, whatever the process was
  // told to do about the signal that comes with such a limit.
  void expectBelowLimit(std::size_t limit, const std::string& options, const std::string& before,
                        const std::string& after) const {
    for (const std::string signal : {"", "trap '' XFSZ; "}) {
      SCOPED_TRACE(signal + options);
      write("out", before);
      EXPECT_EQ(runScript(signal + "ulimit -f " + std::to_string(limit) + "; exec " + timed +
                          "-f out " + options),
                silence());
      Files files{{"out", after}};
      for (const std::string input : {"dwarf", "h"}) {
        if (!read(input).empty()) files[input] = read(input);
      }
      EXPECT_TRUE(folderHolds(files));
    }
  }
};

TEST_F(FullDeviceTest, AFileThatMayHaveNoBytesIsEmpty) {
  write("h", hierarchyOption().text);
  expectBelowLimit(0, "-h h", VaddKernel().file(), "");
  expectBelowLimit(0, "-c -h h -p name", VaddKernel().file(), "");
  EXPECT_EQ(runScript("ulimit -f 0; exec " + timed + "-f new -h h"), silence());
  EXPECT_EQ(read("new"), "");
}

TEST_F(FullDeviceTest, AFileWithinItsLimitIsWhole) {
  write("h", hierarchyOption().text);
  expectBelowLimit(1, "-h h", VaddKernel().file(), hierarchyOption().read);
}

// The last section is too large for the stream's buffer, so that nothing waits there.
TEST_F(FullDeviceTest, ALastSectionWithoutRoomIsCutAndItsSizeStays) {
  const std::string dwarf = manyBytes(20 * kibibyte);
  write("dwarf", dwarf);
  const VaddKernel vadd;
  const std::string whole =
      container({jsonSection(vadd.json()), recordsSection({vadd.record()}), dwarfSection(dwarf)});
  expectBelowLimit(8, "-d dwarf", vadd.file(), whole.substr(0, 8 * kibibyte));
}

TEST_F(FullDeviceTest, SectionsAfterACutOneAndTheHeaderAreMissing) {
  const std::string dwarf = manyBytes(5 * kibibyte);
  write("dwarf", dwarf);
  const std::size_t start = sectionsStart(2);
  expectBelowLimit(4, "-d dwarf", "",
                   std::string(start, '\0') + dwarf.substr(0, 4 * kibibyte - start));
}

TEST_F(FullDeviceTest, ADocumentThatIsCutEndsTheFile) {
  std::string hierarchy;
  std::string json;
  for (int i = 0; i < 100; ++i) {
    const std::string name = "kernel" + std::to_string(i);
    hierarchy += name + ":\n";
    json += (json.empty() ? "" : ", ") + kernelJson(name, "Unknown");
  }
  write("h", hierarchy);
  const std::size_t start = sectionsStart(2);
  expectBelowLimit(4, "-h h", "",
                   std::string(start, '\0') + jsonText(json).substr(0, 4 * kibibyte - start));
}

TEST_F(FullDeviceTest, ADumpIsCut) {
  const std::string dwarf = manyBytes(20 * kibibyte);
  const std::string file = container({dwarfSection(dwarf)});
  write("out", file);
  for (const std::string signal : {"", "trap '' XFSZ; "}) {
    EXPECT_EQ(runScript(signal + "ulimit -f 8; exec " + timed + "-f out -u dumped"), silence());
    EXPECT_TRUE(folderHolds({{"out", file}, {"dumped", dwarf.substr(0, 8 * kibibyte)}}));
  }
}

TEST_F(FullDeviceTest, ADeviceThatIsAlwaysFullTakesAllInSilence) {
  write("dwarf", manyBytes(20 * kibibyte));
  write("h", hierarchyOption().text);
  const std::string file = container({dwarfSection(manyBytes(20 * kibibyte))});
  write("out", file);
  EXPECT_EQ(runScript("exec " + timed + "-f /dev/full -h h -d dwarf -p name"), silence());
  EXPECT_EQ(runScript("exec " + timed + "-c -f /dev/full -h h -d dwarf"), silence());
  EXPECT_EQ(runScript("exec " + timed + "-f out -u /dev/full"), silence());
  EXPECT_TRUE(folderHolds(
      {{"dwarf", manyBytes(20 * kibibyte)}, {"h", hierarchyOption().text}, {"out", file}}));
}

// Runs on a file system of 1 MiB that only they see.
class SmallFileSystemTest : public FullDeviceTest {
 protected:
  static constexpr std::size_t capacity = kibibyte * kibibyte;

  void SetUp() override {
    ASSERT_EQ(runScript("mkdir mnt"), silence());
    if (runScript(mounted("true")).status != 0) GTEST_SKIP() << "cannot mount a file system";
  }

  static std::string mounted(const std::string& commands) {
    return "exec unshare --user --map-root-user --mount bash -e -c "
           "'mount -t tmpfs -o size=1m none mnt 2>/dev/null; " +
           commands + "' \"$0\"";
  }
};

TEST_F(SmallFileSystemTest, AFileThatFitsIsWhole) {
  const std::string dwarf = manyBytes(capacity / 2);
  write("dwarf", dwarf);
  EXPECT_EQ(runScript(mounted(timed + "-f mnt/out -d dwarf; cp mnt/out saved")), silence());
  EXPECT_EQ(read("saved"), container({dwarfSection(dwarf), jsonSection("")}));
}

TEST_F(SmallFileSystemTest, AFileThatDoesNotFitIsCut) {
  const std::string dwarf = manyBytes(2 * capacity);
  write("dwarf", dwarf);
  EXPECT_EQ(runScript(mounted(timed + "-f mnt/out -d dwarf; cp mnt/out saved")), silence());
  const std::size_t start = sectionsStart(2);
  EXPECT_TRUE(folderHolds({{"dwarf", dwarf},
                           {"saved", std::string(start, '\0') + dwarf.substr(0, capacity - start)},
                           {"mnt/", ""}}));
}

TEST_F(SmallFileSystemTest, WithoutRoomNothingIsKept) {
  write("h", hierarchyOption().text);
  write("before", VaddKernel().file());
  EXPECT_EQ(runScript(mounted("head -c 1M /dev/zero >mnt/filler; " + timed +
                              "-f mnt/new -h h; cp mnt/new saved")),
            silence());
  EXPECT_TRUE(folderHolds({{"before", VaddKernel().file()},
                           {"h", hierarchyOption().text},
                           {"saved", ""},
                           {"mnt/", ""}}));
}

}  // namespace
}  // namespace consolidator
