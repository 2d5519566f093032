#include "consolidated/ConsolidatedFileFixture.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator {
namespace {

using ConsolidatedFileTest = ConsolidatedFileFixture;

const std::string wholeFile = container({{SectionKind::ProjectName, "proj"},
                                         {SectionKind::Dwarf, "\177ELF"},
                                         {SectionKind::Json, vaddJson()},
                                         {SectionKind::KernelRecords, vaddRecords()}});

TEST_F(ConsolidatedFileTest, WithoutAnythingIsSavedAsSixtyTwoBytes) {
  file_.openOrCreate(path_, false, false);
  const std::string bytes = saved();
  EXPECT_EQ(bytes, header(1) + entry(SectionKind::Json, 40, 22) + emptyJson());
  EXPECT_EQ(bytes.size(), 62U);
}

TEST_F(ConsolidatedFileTest, PutsTheProjectNameBeforeTheJson) {
  file_.openOrCreate(path_, false, false);
  file_.setProject("proj");
  EXPECT_EQ(saved(), header(2) + entry(SectionKind::ProjectName, 64, 4) +
                         entry(SectionKind::Json, 68, 22) + "proj" + emptyJson());
}

TEST_F(ConsolidatedFileTest, AppendsProjectDwarfJsonAndRecordsInThisOrder) {
  file_.openOrCreate(path_, true, false);
  file_.setProject("proj");
  file_.addDwarf(folder_.write("dwarf", "\177ELF"));
  file_.addHierarchy(folder_.write("hierarchy", vaddHierarchy));
  EXPECT_EQ(saved(), wholeFile);
}

TEST_F(ConsolidatedFileTest, AddModeCreatesAMissingFileWithThisRunsSectionsOnly) {
  file_.openOrCreate(path_, false, false);
  ASSERT_TRUE(file_.isOpen());
  EXPECT_EQ(file_.header(), FileHeader());
  EXPECT_EQ(file_.table(), Table());
  file_.addHierarchy(folder_.write("hierarchy", vaddHierarchy));
  EXPECT_EQ(saved(), container({{SectionKind::Json, vaddJson()},
                                {SectionKind::KernelRecords, vaddRecords()}}));
}

TEST_F(ConsolidatedFileTest, AddModeKeepsAllThatTheFileHeld) {
  open(wholeFile);
  EXPECT_EQ(file_.projectName(), "proj");
  ASSERT_EQ(file_.kernels().size(), 1U);
  EXPECT_EQ(saved(), wholeFile);
}

TEST_F(ConsolidatedFileTest, CreateModeNeverReadsTheOldFile) {
  file_.openOrCreate(folder_.write("file", wholeFile), true, false);
  ASSERT_TRUE(file_.isOpen());
  EXPECT_EQ(file_.projectName(), "");
  EXPECT_EQ(file_.table(), Table());
  EXPECT_TRUE(file_.kernels().empty());
  EXPECT_EQ(saved(), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileTest, CreateModeTakesNoVersionFromTheOldFile) {
  file_.openOrCreate(folder_.write("file", header(0, 2, 7)), true, false);
  EXPECT_EQ(file_.header(), FileHeader());
}

TEST_F(ConsolidatedFileTest, OpeningForWritingEmptiesTheFile) {
  open(wholeFile);
  EXPECT_EQ(folder_.read("file"), "");
  file_.close();
  EXPECT_EQ(folder_.read("file"), "");
}

TEST_F(ConsolidatedFileTest, OpeningForADumpKeepsTheFile) {
  openForDump(wholeFile);
  ASSERT_TRUE(file_.isOpen());
  file_.close();
  EXPECT_EQ(folder_.read("file"), wholeFile);
}

TEST_F(ConsolidatedFileTest, SavingOntoTheStreamOfADumpChangesNothing) {
  openForDump(wholeFile);
  file_.setProject("other");
  file_.addHierarchy(folder_.write("hierarchy", "more:"));
  EXPECT_EQ(saved(), wholeFile);
}

TEST_F(ConsolidatedFileTest, DumpingInCreateModeReadsNoModelButKeepsTheFile) {
  file_.openOrCreate(folder_.write("file", wholeFile), true, true);
  ASSERT_TRUE(file_.isOpen());
  EXPECT_EQ(file_.table(), Table());
  file_.dumpDwarf(folder_.path("dump"));
  EXPECT_EQ(folder_.read("dump"), "");
  EXPECT_EQ(saved(), wholeFile);
}

TEST_F(ConsolidatedFileTest, AMissingFileHasNoStreamForADump) {
  file_.openOrCreate(path_, false, true);
  EXPECT_FALSE(file_.isOpen());
  EXPECT_FALSE(folder_.holds("file"));
}

TEST_F(ConsolidatedFileTest, AnEmptyPathHasNoStream) {
  file_.openOrCreate("", false, false);
  EXPECT_FALSE(file_.isOpen());
  file_.openOrCreate("", true, false);
  EXPECT_FALSE(file_.isOpen());
  file_.openOrCreate("", false, true);
  EXPECT_FALSE(file_.isOpen());
}

TEST_F(ConsolidatedFileTest, ADirectoryCannotBeOpenedForWriting) {
  file_.openOrCreate(folder_.path(""), false, false);
  EXPECT_FALSE(file_.isOpen());
  file_.openOrCreate(folder_.path(""), true, false);
  EXPECT_FALSE(file_.isOpen());
}

TEST_F(ConsolidatedFileTest, ADirectoryOpensForADumpWhichIsEmpty) {
  file_.openOrCreate(folder_.path(""), false, true);
  EXPECT_TRUE(file_.isOpen());
  file_.dumpJson(folder_.path("dump"));
  EXPECT_TRUE(folder_.holds("dump"));
  EXPECT_EQ(folder_.read("dump"), "");
}

TEST_F(ConsolidatedFileTest, WithoutStreamNothingIsSaved) {
  file_.openOrCreate(path_, false, true);
  file_.setProject("proj");
  file_.save();
  EXPECT_FALSE(folder_.holds("file"));
  EXPECT_EQ(file_.table().size(), 1U) << "sections are ensured for a file that can be written";
}

TEST_F(ConsolidatedFileTest, ThreeRunsWithOneNameGiveThreeProjectEntries) {
  for (int run = 0; run < 3; ++run) {
    file_.openOrCreate(path_, false, false);
    file_.setProject("proj");
    file_.save();
    file_.close();
  }
  EXPECT_EQ(folder_.read("file"), container({{SectionKind::ProjectName, "proj"},
                                             {SectionKind::Json, emptyJson()},
                                             {SectionKind::ProjectName, "proj"},
                                             {SectionKind::ProjectName, "proj"}}));
}

TEST_F(ConsolidatedFileTest, AnEmptyProjectNameAddsNoEntryAndKeepsTheName) {
  open(wholeFile);
  file_.setProject("");
  EXPECT_EQ(file_.projectName(), "proj");
  EXPECT_EQ(saved(), wholeFile);
}

TEST_F(ConsolidatedFileTest, EveryProjectEntryIsWrittenWithTheCurrentName) {
  open(container({{SectionKind::ProjectName, "first"},
                  {SectionKind::ProjectName, "second"},
                  {SectionKind::Json, emptyJson()}}));
  EXPECT_EQ(file_.projectName(), "second") << "a later entry replaces the name of an earlier one";
  file_.setProject("x");
  EXPECT_EQ(saved(), container({{SectionKind::ProjectName, "x"},
                                {SectionKind::ProjectName, "x"},
                                {SectionKind::Json, emptyJson()},
                                {SectionKind::ProjectName, "x"}}));
}

TEST_F(ConsolidatedFileTest, NamingTheProjectAddsAnEntryThatHasNoPlaceYet) {
  file_.openOrCreate(path_, false, false);
  file_.setProject("proj");
  EXPECT_EQ(file_.projectName(), "proj");
  EXPECT_EQ(file_.table(), (Table{{SectionKind::ProjectName, 0, 4}}));
}

TEST_F(ConsolidatedFileTest, EnsuresRecordsOnlyOnceAKernelIsKnown) {
  file_.openOrCreate(path_, false, false);
  file_.ensureSections();
  EXPECT_EQ(file_.table(), (Table{{SectionKind::Json, 0, 0}}));
  file_.addHierarchy(folder_.write("hierarchy", "k:"));
  file_.ensureSections();
  file_.ensureSections();
  EXPECT_EQ(file_.table(), (Table{{SectionKind::Json, 0, 0}, {SectionKind::KernelRecords, 0, 0}}));
}

TEST_F(ConsolidatedFileTest, OpeningAgainForgetsTheFileBefore) {
  openForDump(wholeFile);
  const std::string other = folder_.path("other");
  file_.openOrCreate(other, false, false);
  EXPECT_EQ(file_.projectName(), "");
  EXPECT_TRUE(file_.kernels().empty());
  file_.save();
  file_.close();
  EXPECT_EQ(readFile(other), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileTest, ClosingForgetsEverything) {
  openForDump(wholeFile);
  file_.close();
  EXPECT_FALSE(file_.isOpen());
  EXPECT_EQ(file_.projectName(), "");
  EXPECT_EQ(file_.table(), Table());
  EXPECT_TRUE(file_.kernels().empty());
}

TEST_F(ConsolidatedFileTest, PrintsHeaderAndTableInDecimalAndTheMagicInHexadecimal) {
  openForDump(wholeFile);
  const StreamCapture capture;
  file_.printHeader();
  // After the table of 4 entries stand 4, 4, 170 and 55 bytes.
  EXPECT_EQ(capture.out(),
            "Magic number: beefdad4\n"
            "Major Version: 1\n"
            "Minor Version: 1\n"
            "Num sections: 4\n"
            "Section 0: 0\nOffset: 112\nSize: 4\n"
            "Section 1: 1\nOffset: 116\nSize: 4\n"
            "Section 2: 3\nOffset: 120\nSize: 170\n"
            "Section 3: 2\nOffset: 290\nSize: 55\n");
  EXPECT_EQ(capture.err(), "");
}

TEST_F(ConsolidatedFileTest, PrintsWhatAForeignFileHolds) {
  openForDump(header(1, -2, 300) + entry(0xFFFFFFFFU, 0xFFFFFFFFFFFFFFFFU, 10));
  const StreamCapture capture;
  file_.printHeader();
  EXPECT_EQ(capture.out(),
            "Magic number: beefdad4\n"
            "Major Version: -2\n"
            "Minor Version: 300\n"
            "Num sections: 1\n"
            "Section 0: 4294967295\nOffset: 18446744073709551615\nSize: 10\n");
}

TEST_F(ConsolidatedFileTest, NoOperationButTheListingPrints) {
  const StreamCapture capture;
  file_.openOrCreate(folder_.path("no/such/folder"), false, false);
  open("not a consolidated file at all");
  file_.setProject("proj");
  file_.addDwarf(folder_.path("missing"));
  file_.addHierarchy(folder_.path("missing"));
  file_.dumpJson(folder_.path("no/such/folder"));
  file_.save();
  file_.close();
  EXPECT_EQ(capture.out(), "");
  EXPECT_EQ(capture.err(), "");
}

}  // namespace
}  // namespace consolidator
