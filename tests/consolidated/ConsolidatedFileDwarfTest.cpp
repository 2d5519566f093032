#include "consolidated/ConsolidatedFileFixture.h"
#include "support/PiecewisePipe.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace consolidator {
namespace {

using ConsolidatedFileDwarfTest = ConsolidatedFileFixture;

TEST_F(ConsolidatedFileDwarfTest, IsCopiedByteForByte) {
  std::string dwarf;
  for (int i = 0; i < 3 * 256; ++i) dwarf += static_cast<char>(i);
  open("");
  file_.addDwarf(folder_.write("dwarf", dwarf));
  EXPECT_EQ(file_.table(), (Table{{SectionKind::Dwarf, 0, 768}}));
  EXPECT_EQ(saved(), container({{SectionKind::Dwarf, dwarf}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, IsCopiedWholeAboveTheSizeOfAHugePage) {
  std::string dwarf(std::size_t{5} * 1024 * 1024 + 7, '\0');
  for (std::size_t i = 0; i < dwarf.size(); ++i) dwarf[i] = static_cast<char>(i * i >> 7U);
  open("");
  file_.addDwarf(folder_.write("dwarf", dwarf));
  EXPECT_TRUE(saved() == container({{SectionKind::Dwarf, dwarf}, {SectionKind::Json, emptyJson()}}))
      << "the DWARF section differs from the file";
}

TEST_F(ConsolidatedFileDwarfTest, TheFirstOneOfARunIsKept) {
  open("");
  file_.addDwarf(folder_.write("first", "one"));
  file_.addDwarf(folder_.write("second", "another"));
  EXPECT_EQ(saved(), container({{SectionKind::Dwarf, "one"}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, TheOneOfTheFileIsKept) {
  const std::string before =
      container({{SectionKind::Dwarf, "one"}, {SectionKind::Json, emptyJson()}});
  open(before);
  file_.addDwarf(folder_.write("second", "another"));
  EXPECT_EQ(saved(), before);
}

TEST_F(ConsolidatedFileDwarfTest, MissingOrEmptyFilesAddNoSection) {
  open("");
  file_.addDwarf(folder_.path("missing"));
  file_.addDwarf(folder_.write("empty", ""));
  file_.addDwarf("");
  EXPECT_EQ(saved(), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, AFileThatFailedDoesNotBlockTheNextOne) {
  open("");
  file_.addDwarf(folder_.write("empty", ""));
  file_.addDwarf(folder_.write("dwarf", "d"));
  EXPECT_EQ(saved(), container({{SectionKind::Dwarf, "d"}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, ADirectoryAddsNothing) {
  open("");
  file_.addDwarf(folder_.path(""));
  EXPECT_EQ(saved(), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, APipeAddsNothingSinceItHasNoSize) {
  const PiecewisePipe pipe({"bytes"});
  open("");
  file_.addDwarf(pipe.path());
  EXPECT_EQ(saved(), container({{SectionKind::Json, emptyJson()}}));
}

// Pseudo files of the system state a size that they do not have.
TEST_F(ConsolidatedFileDwarfTest, AFileThatHoldsLessThanItsSizeSaysAddsNothing) {
  const std::string pseudo = "/sys/kernel/mm/transparent_hugepage/enabled";
  if (!std::filesystem::exists(pseudo) || std::filesystem::file_size(pseudo) < 1000) {
    GTEST_SKIP() << "no such file on this system";
  }
  open("");
  file_.addDwarf(pseudo);
  EXPECT_EQ(saved(), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, TheConsolidatedFileItselfIsEmptyByThen) {
  open(container({{SectionKind::ProjectName, "proj"}, {SectionKind::Json, emptyJson()}}));
  file_.addDwarf(path_);
  EXPECT_EQ(saved(),
            container({{SectionKind::ProjectName, "proj"}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, KeepsItsSizeWhateverTheStreamTook) {
  openForDump(container({{SectionKind::Json, emptyJson()}}));
  file_.addDwarf(folder_.write("dwarf", "bytes"));
  SectionEntry entry{SectionKind::Dwarf, 1, 5};
  file_.writeSection(entry);  // onto a stream for reading, which takes nothing
  EXPECT_EQ(entry, (SectionEntry{SectionKind::Dwarf, 0, 5}));
}

TEST_F(ConsolidatedFileDwarfTest, IsWrittenInFullByEverySave) {
  open("");
  file_.addDwarf(folder_.write("dwarf", "bytes"));
  file_.save();
  EXPECT_EQ(saved(), container({{SectionKind::Dwarf, "bytes"}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileDwarfTest, AnEmptyStoredSectionCountsAsTheFirstOne) {
  const std::string before =
      container({{SectionKind::Dwarf, ""}, {SectionKind::Json, emptyJson()}});
  open(before);
  file_.addDwarf(folder_.write("dwarf", "bytes"));
  EXPECT_EQ(saved(), before);
}

// Its bytes end early: nothing is held, nothing is written, and the size stays.
TEST_F(ConsolidatedFileDwarfTest, AStoredEntryWithoutItsBytesKeepsItsSizeAndBlocksOthers) {
  open(header(1) + entry(SectionKind::Dwarf, 40, 100) + "only a few");
  file_.addDwarf(folder_.write("dwarf", "bytes"));
  EXPECT_EQ(saved(), header(2) + entry(SectionKind::Dwarf, 64, 100) +
                         entry(SectionKind::Json, 64, 22) + emptyJson());
}

TEST_F(ConsolidatedFileDwarfTest, SeveralStoredEntriesWriteTheirOwnSizesOfTheLastBytes) {
  open(container({{SectionKind::Dwarf, "123456789"},
                  {SectionKind::Dwarf, "ab"},
                  {SectionKind::Dwarf, "wxyz"},
                  {SectionKind::Json, emptyJson()}}));
  // The bytes of the last entry are held. The first writes the 4 of them that there are under a
  // size of 9, the second the 2 that it asks for.
  EXPECT_EQ(saved(), header(4) + entry(SectionKind::Dwarf, 112, 9) +
                         entry(SectionKind::Dwarf, 116, 2) + entry(SectionKind::Dwarf, 118, 4) +
                         entry(SectionKind::Json, 122, 22) + "wxyz" + "wx" + "wxyz" + emptyJson());
}

TEST_F(ConsolidatedFileDwarfTest, AShortSecondEntryDiscardsTheBytesOfTheFirst) {
  open(header(2) + entry(SectionKind::Dwarf, 64, 3) + entry(SectionKind::Dwarf, 64, 4) + "abc");
  EXPECT_EQ(saved(), header(3) + entry(SectionKind::Dwarf, 88, 3) +
                         entry(SectionKind::Dwarf, 88, 4) + entry(SectionKind::Json, 88, 22) +
                         emptyJson());
}

TEST_F(ConsolidatedFileDwarfTest, ASecondEntryAtANegativeOffsetKeepsTheBytesOfTheFirst) {
  open(header(2) + entry(SectionKind::Dwarf, 64, 3) + entry(SectionKind::Dwarf, 0x80000000U, 2) +
       "abc");
  EXPECT_EQ(saved(), header(3) + entry(SectionKind::Dwarf, 88, 3) +
                         entry(SectionKind::Dwarf, 91, 2) + entry(SectionKind::Json, 93, 22) +
                         "abc" + "ab" + emptyJson());
}

}  // namespace
}  // namespace consolidator
