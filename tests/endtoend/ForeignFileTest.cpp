#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_literals;

// Files that this program would not have written: what can be read is kept, the rest is not an
// error.
class ForeignFileTest : public ExecutableTest {
 protected:
  // Expects what a run that adds nothing makes of a file.
  void expectRewritten(std::string_view bytes, const std::string& expected) const {
    write("out", bytes);
    EXPECT_EQ(run({"-f", "out", "-h", "missing"}), silence());
    EXPECT_TRUE(folderHolds({{"out", expected}}));
  }
};

TEST_F(ForeignFileTest, ShortFileOverwritesAsMuchOfTheHeader) {
  for (const std::uint32_t magic : {0x44332211U, 0xBEEFDAD4U}) {
    const std::string foreign = header(9, 0, 0x7F000009, magic);
    for (std::size_t size = 0; size < foreign.size(); ++size) {
      SCOPED_TRACE(size);
      const std::string kept = foreign.substr(0, size);
      std::string expected = emptyFile();
      expected.replace(0, std::min<std::size_t>(size, 12), kept.substr(0, 12));
      expectRewritten(kept, expected);
    }
  }
}

TEST_F(ForeignFileTest, WrongMagicIsKeptAndTheRestDropped) {
  const std::string sections =
      container({projectSection("name"), dwarfSection("debug"), jsonSection("")}).substr(16);
  const std::string expected = header(1, 1, 8, 0xBEEFDAD5) + emptyFile().substr(16);
  expectRewritten(header(3, 1, 8, 0xBEEFDAD5) + sections, expected);
  expectRewritten(expected, expected);
}

TEST_F(ForeignFileTest, WrongMagicTakesWhatTheRunAdds) {
  write("out", header(5, -1, 8, 0));
  write("hierarchy", "k:");
  EXPECT_EQ(run({"-f", "out", "-h", "hierarchy", "-p", "name"}), silence());
  std::string expected = container({projectSection("name"), jsonSection(kernelJson("k", "Unknown")),
                                    recordsSection({kernelRecord("k", 3)})});
  expected.replace(0, 12, header(0, -1, 8, 0).substr(0, 12));
  EXPECT_TRUE(folderHolds({{"hierarchy", "k:"}, {"out", expected}}));
}

TEST_F(ForeignFileTest, HeaderWithoutEntriesIsAnEmptyFile) {
  expectRewritten(header(0), emptyFile());
  expectRewritten(header(0) + "anything", emptyFile());
}

TEST_F(ForeignFileTest, EntriesOfATableThatIsCutAreKeptUnread) {
  const std::string entries = entry(0, 16, 4) + entry(2, 16, 4) + entry(1, 16, 4);
  const std::string expected = header(4) + entry(0, 112, 0) + entry(2, 112, 4) + entry(1, 116, 4) +
                               entry(3, 116, 22) + u32(0) + jsonSection("").bytes;
  expectRewritten(header(4) + entries, expected);
  expectRewritten(header(4) + entries + entry(3, 0, 0).substr(0, 23), expected);
  expectRewritten(header(0xFFFFFFFF) + entries + "abc", expected);
}

TEST_F(ForeignFileTest, PaddingIsNotReadAndWrittenAsZeros) {
  const std::string name = entry(0, 64, 4, 0xFFFFFFFF);
  const std::string json = entry(3, 68, 22, 0x01020304);
  expectRewritten(header(2) + name + json + "name" + jsonSection("").bytes,
                  container({projectSection("name"), jsonSection("")}));
}

TEST_F(ForeignFileTest, UnknownKindEndsTheReadingAndIsKeptWithoutBytes) {
  expectRewritten(container({projectSection("name"), section(7, "unknown"),
                             recordsSection({kernelRecord("k", 1)})}),
                  header(4) + entry(0, 112, 4) + entry(7, 116, 7) + entry(2, 116, 4) +
                      entry(3, 120, 22) + "name" + u32(0) + jsonSection("").bytes);
}

TEST_F(ForeignFileTest, EmptyJsonEntryIsFilled) {
  expectRewritten(header(1) + entry(3, 0, 0), emptyFile());
}

TEST_F(ForeignFileTest, SectionsAreMovedTogether) {
  expectRewritten(header(2) + entry(1, 80, 2) + entry(0, 70, 4) + std::string(6, 'x') + "name" +
                      std::string(6, 'x') + "DW" + "tail",
                  container({dwarfSection("DW"), projectSection("name"), jsonSection("")}));
}

TEST_F(ForeignFileTest, SectionsMayOverlapAnything) {
  expectRewritten(header(2) + entry(0, 0, 4) + entry(1, 0, 40),
                  container({projectSection("\xD4\xDA\xEF\xBE"),
                             dwarfSection(header(2) + entry(0, 0, 4)), jsonSection("")}));
}

// Project names.

TEST_F(ForeignFileTest, LastProjectNameIsWrittenToAll) {
  expectRewritten(container({projectSection("one"), jsonSection(""), projectSection("second")}),
                  container({projectSection("second"), jsonSection(""), projectSection("second")}));
}

TEST_F(ForeignFileTest, LastProjectNameIsChecked) {
  const std::string two = container({projectSection("one"), projectSection("two")});
  write("out", two);
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "two"}), silence());
  write("out", two);
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "one"}),
            failed("Error: consolidated file out has meta-data for project two, not specified "
                   "project one\n"));
}

TEST_F(ForeignFileTest, ProjectNameEndsAtAZeroByte) {
  expectRewritten(container({projectSection("na\0me"s)}),
                  container({projectSection("na"), jsonSection("")}));
  expectRewritten(container({projectSection("\0"s)}),
                  container({projectSection(""), jsonSection("")}));
}

TEST_F(ForeignFileTest, EmptyProjectNameIsNone) {
  write("out", container({projectSection("")}));
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "name"}), silence());
  EXPECT_TRUE(folderHolds(
      {{"out", container({projectSection("name"), projectSection("name"), jsonSection("")})}}));
}

TEST_F(ForeignFileTest, ProjectNameThatIsCutEndsTheReading) {
  write("out", header(2) + entry(0, 64, 5) + entry(2, 0, 0) + "name");
  EXPECT_EQ(run({"-f", "out", "-h", "missing", "-p", "other"}), silence());
  EXPECT_TRUE(folderHolds({{"out", container({projectSection("other"), recordsSection({}),
                                              projectSection("other"), jsonSection("")})}}));
}

// DWARF sections.

TEST_F(ForeignFileTest, LastDwarfIsWrittenInTheSizeOfEachEntry) {
  expectRewritten(container({dwarfSection("short"), dwarfSection("longer")}),
                  container({dwarfSection("longe"), dwarfSection("longer"), jsonSection("")}));
}

TEST_F(ForeignFileTest, NoEntryGetsMoreDwarfThanThereIs) {
  expectRewritten(container({dwarfSection("longer"), dwarfSection("short")}),
                  header(3) + entry(1, 88, 6) + entry(1, 93, 5) + entry(3, 98, 22) + "short" +
                      "short" + jsonSection("").bytes);
}

TEST_F(ForeignFileTest, DwarfThatIsCutIsNotKeptAndStillBlocksAnother) {
  write("out", header(2) + entry(1, 64, 6) + entry(0, 64, 4) + "debug");
  write("dwarf", "other");
  EXPECT_EQ(run({"-f", "out", "-d", "dwarf"}), silence());
  EXPECT_TRUE(folderHolds({{"dwarf", "other"},
                           {"out", header(3) + entry(1, 88, 6) + entry(0, 88, 0) +
                                       entry(3, 88, 22) + jsonSection("").bytes}}));
}

TEST_F(ForeignFileTest, DwarfThatIsCutTakesAnEarlierOneAlong) {
  expectRewritten(
      header(2) + entry(1, 64, 5) + entry(1, 64, 6) + "debug",
      header(3) + entry(1, 88, 5) + entry(1, 88, 6) + entry(3, 88, 22) + jsonSection("").bytes);
}

TEST_F(ForeignFileTest, DwarfThatCannotBeSoughtLeavesAnEarlierOne) {
  expectRewritten(header(2) + entry(1, 64, 5) + entry(1, 0x80000000, 4) + "debug",
                  container({dwarfSection("debug"), dwarfSection("debu"), jsonSection("")}));
}

TEST_F(ForeignFileTest, EmptyDwarfSectionIsHeldAndBlocksAnother) {
  write("out", container({dwarfSection("")}));
  write("dwarf", "other");
  EXPECT_EQ(run({"-f", "out", "-d", "dwarf"}), silence());
  EXPECT_EQ(read("out"), container({dwarfSection(""), jsonSection("")}));
}

// Offsets and sizes.

TEST_F(ForeignFileTest, OffsetsAreCutTo32Bits) {
  expectRewritten(header(1) + entry(0, 0x700000028, 4) + "name",
                  container({projectSection("name"), jsonSection("")}));
}

TEST_F(ForeignFileTest, NegativeOffsetEndsTheReading) {
  for (const std::uint64_t offset : {0x80000000U, 0xFFFFFFFFU}) {
    expectRewritten(
        header(2) + entry(0, offset, 0) + entry(1, 64, 4) + "debu",
        header(3) + entry(0, 88, 0) + entry(1, 88, 4) + entry(3, 88, 22) + jsonSection("").bytes);
  }
}

TEST_F(ForeignFileTest, EmptySectionMayStandBehindTheEnd) {
  expectRewritten(header(2) + entry(0, 0x7FFFFFFF, 0) + entry(1, 64, 5) + "debug",
                  container({projectSection(""), dwarfSection("debug"), jsonSection("")}));
}

TEST_F(ForeignFileTest, SectionBehindTheEndEndsTheReading) {
  expectRewritten(
      header(2) + entry(0, 0x7FFFFFFF, 1) + entry(1, 64, 5) + "debug",
      header(3) + entry(0, 88, 0) + entry(1, 88, 5) + entry(3, 88, 22) + jsonSection("").bytes);
}

TEST_F(ForeignFileTest, LargestSizeIsOneLessOnceItsEntryIsVisited) {
  expectRewritten(
      header(3) + entry(3, 0, 0xFFFFFFFF) + entry(7, 0, 0xFFFFFFFF) + entry(8, 0, 0xFFFFFFFF),
      header(3) + entry(3, 88, 22) + entry(7, 110, 0xFFFFFFFE) + entry(8, 110, 0xFFFFFFFF) +
          jsonSection("").bytes);
  expectRewritten(header(2) + entry(1, 64, 0xFFFFFFFF) + entry(1, 64, 0xFFFFFFFF) + "debug",
                  header(3) + entry(1, 88, 0xFFFFFFFE) + entry(1, 88, 0xFFFFFFFF) +
                      entry(3, 88, 22) + jsonSection("").bytes);
}

}  // namespace
}  // namespace consolidator
