#include "consolidated/ConsolidatedFileFixture.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator {
namespace {

using ConsolidatedFileReadingTest = ConsolidatedFileFixture;

std::string recordsNamed(std::string_view name) { return u32(1) + kernelRecord(name, 3); }

TEST_F(ConsolidatedFileReadingTest, TakesEveryKindOfSection) {
  EXPECT_TRUE(readModel(container({{SectionKind::ProjectName, "proj"},
                                   {SectionKind::Dwarf, "DWARF"},
                                   {SectionKind::Json, "not looked at"},
                                   {SectionKind::KernelRecords, vaddRecords()}})));
  EXPECT_EQ(file_.projectName(), "proj");
  ASSERT_EQ(file_.kernels().size(), 1U);
  KernelRecord vadd;
  vadd.name = "vadd";
  vadd.type = KernelType::OpenCL;
  vadd.addInstancePath("/top/vadd_1");
  EXPECT_EQ(describe(file_.kernels()[0]), describe(vadd));
  EXPECT_EQ(file_.table(), (Table{{SectionKind::ProjectName, 112, 4},
                                  {SectionKind::Dwarf, 116, 5},
                                  {SectionKind::Json, 121, 13},
                                  {SectionKind::KernelRecords, 134, 55}}));
}

TEST_F(ConsolidatedFileReadingTest, FailsForAMissingFileAndADirectory) {
  EXPECT_FALSE(file_.readExisting(folder_.path("missing")));
  EXPECT_FALSE(file_.readExisting(folder_.path("")));
  EXPECT_EQ(file_.header(), FileHeader());
}

TEST_F(ConsolidatedFileReadingTest, AFileWithoutSectionsIsRead) {
  EXPECT_TRUE(readModel(header(0)));
  EXPECT_EQ(rewritten(header(0)), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileReadingTest, AShortFileOverwritesJustTheBytesItHas) {
  const std::string foreign = "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F";
  for (std::size_t size = 0; size < 16; ++size) {
    const std::string expected = foreign.substr(0, size) + header(1).substr(size);
    // The number of sections is set by saving, so its bytes are never those of the short file.
    EXPECT_EQ(rewritten(foreign.substr(0, size)),
              expected.substr(0, 12) + u32(1) + entry(SectionKind::Json, 40, 22) + emptyJson())
        << size << " bytes";
  }
}

TEST_F(ConsolidatedFileReadingTest, AForeignMagicIsKeptWithItsVersionsAndWrittenBack) {
  const std::string foreign =
      header(1, 1, 0x0C0B0A09, 0x04030201U) + entry(SectionKind::ProjectName, 40, 4) + "proj";
  EXPECT_FALSE(readModel(foreign));
  EXPECT_EQ(file_.header(), (FileHeader{0x04030201U, 1, 0x0C0B0A09, 1}));
  EXPECT_EQ(file_.table(), Table());
  EXPECT_EQ(file_.projectName(), "");
  EXPECT_EQ(rewritten(foreign),
            header(1, 1, 0x0C0B0A09, 0x04030201U) + entry(SectionKind::Json, 40, 22) + emptyJson());
}

TEST_F(ConsolidatedFileReadingTest, OtherVersionsAreReadAndWrittenBack) {
  const std::string old = header(1, -1, 77) + entry(SectionKind::Json, 40, 22) + emptyJson();
  EXPECT_TRUE(readModel(old));
  EXPECT_EQ(rewritten(old), old);
}

TEST_F(ConsolidatedFileReadingTest, ATableCutShortKeepsWholeEntriesAndVisitsNone) {
  EXPECT_FALSE(readModel(header(3) + entry(SectionKind::ProjectName, 0, 4) +
                         entry(SectionKind::Json, 1, 0xFFFFFFFFU) + std::string(23, '\0')));
  EXPECT_EQ(file_.table(),
            (Table{{SectionKind::ProjectName, 0, 4}, {SectionKind::Json, 1, 0xFFFFFFFFU}}))
      << "the size is cut when an entry is visited";
  EXPECT_EQ(file_.projectName(), "");
}

TEST_F(ConsolidatedFileReadingTest, ATableCutShortIsSavedWithItsWholeEntries) {
  EXPECT_EQ(rewritten(header(0xFFFFFFFFU) + entry(SectionKind::ProjectName, 0, 4)),
            header(2) + entry(SectionKind::ProjectName, 64, 0) + entry(SectionKind::Json, 64, 22) +
                emptyJson());
}

TEST_F(ConsolidatedFileReadingTest, SizesAreClampedWhenTheirEntriesAreVisited) {
  EXPECT_FALSE(readModel(header(4) + entry(SectionKind::Json, 0, 0xFFFFFFFFU) +
                         entry(SectionKind::KernelRecords, 112, 0xFFFFFFFFU) +
                         entry(unknownKind, 0, 0xFFFFFFFFU) +
                         entry(SectionKind::Json, 0, 0xFFFFFFFFU) + recordsNamed("k")));
  EXPECT_EQ(file_.table(), (Table{{SectionKind::Json, 0, 0xFFFFFFFEU},
                                  {SectionKind::KernelRecords, 112, 0xFFFFFFFEU},
                                  {unknownKind, 0, 0xFFFFFFFEU},
                                  {SectionKind::Json, 0, 0xFFFFFFFFU}}));
  EXPECT_EQ(kernelNames(), Names{"k"}) << "the size of a records section is no bound";
}

TEST_F(ConsolidatedFileReadingTest, ClampedSizesAreShortReadsForNamesAndDwarf) {
  for (const SectionKind kind : {SectionKind::ProjectName, SectionKind::Dwarf}) {
    file_.close();
    EXPECT_FALSE(readModel(header(1) + entry(kind, 40, 0xFFFFFFFFU) + "bytes"));
    EXPECT_EQ(file_.table(), (Table{{kind, 40, 0xFFFFFFFEU}}));
  }
}

TEST_F(ConsolidatedFileReadingTest, ANegativeOffsetEndsTheReadingEvenForAnEmptySection) {
  for (const SectionKind kind :
       {SectionKind::ProjectName, SectionKind::Dwarf, SectionKind::KernelRecords}) {
    file_.close();
    EXPECT_FALSE(readModel(header(2) + entry(kind, 0x80000000U, 0) +
                           entry(SectionKind::ProjectName, 64, 4) + "proj"));
    EXPECT_EQ(file_.projectName(), "");
  }
}

TEST_F(ConsolidatedFileReadingTest, TheOffsetOfJsonIsNotLookedAt) {
  EXPECT_TRUE(readModel(header(2) + entry(SectionKind::Json, 0x80000000U, 22) +
                        entry(SectionKind::ProjectName, 64, 4) + "proj"));
  EXPECT_EQ(file_.projectName(), "proj");
}

TEST_F(ConsolidatedFileReadingTest, EmptySectionsBeyondTheEndAreRead) {
  EXPECT_TRUE(readModel(header(3) + entry(SectionKind::ProjectName, 88, 4) +
                        entry(SectionKind::Dwarf, 0x7FFFFFFFU, 0) +
                        entry(SectionKind::ProjectName, 0x7FFFFFFFU, 0) + "proj"));
  EXPECT_EQ(file_.projectName(), "") << "the empty name of the last entry";
}

TEST_F(ConsolidatedFileReadingTest, ReadsBeyondTheEndAreShort) {
  for (const SectionKind kind :
       {SectionKind::ProjectName, SectionKind::Dwarf, SectionKind::KernelRecords}) {
    file_.close();
    EXPECT_FALSE(readModel(header(1) + entry(kind, 0x7FFFFFFFU, 1)));
  }
}

TEST_F(ConsolidatedFileReadingTest, AProjectNameEndsAtItsFirstZeroByte) {
  const std::string stored("proj\0ect", 8);
  EXPECT_TRUE(readModel(container({{SectionKind::ProjectName, stored}})));
  EXPECT_EQ(file_.projectName(), "proj");
  EXPECT_EQ(rewritten(container({{SectionKind::ProjectName, stored}})),
            container({{SectionKind::ProjectName, "proj"}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileReadingTest, AProjectNameThatEndsEarlyKeepsTheOneBefore) {
  EXPECT_FALSE(readModel(header(2) + entry(SectionKind::ProjectName, 64, 4) +
                         entry(SectionKind::ProjectName, 64, 5) + "proj"));
  EXPECT_EQ(file_.projectName(), "proj");
}

TEST_F(ConsolidatedFileReadingTest, SectionsMayOverlapAndStandAnywhere) {
  EXPECT_TRUE(readModel(header(2) + entry(SectionKind::ProjectName, 0, 2) +
                        entry(SectionKind::ProjectName, 16, 1)));
  EXPECT_EQ(file_.projectName(), "") << "the first byte of the table is a zero byte";
  file_.close();
  EXPECT_TRUE(readModel(header(1) + entry(SectionKind::ProjectName, 0, 2)));
  EXPECT_EQ(file_.projectName(), "\xD4\xDA");
}

// The reading stops there, and the entry is saved with nothing written for it.
TEST_F(ConsolidatedFileReadingTest, AnUnknownKindStopsTheReadingAndIsSavedWithoutBytes) {
  const std::string foreign =
      header(3) + entry(SectionKind::ProjectName, 88, 4) + entry(unknownKind, 92, 5) +
      entry(SectionKind::KernelRecords, 97, 37) + "proj" + "seven" + recordsNamed("k");
  EXPECT_FALSE(readModel(foreign));
  EXPECT_EQ(kernelNames(), Names());
  EXPECT_EQ(rewritten(foreign),
            header(4) + entry(SectionKind::ProjectName, 112, 4) + entry(unknownKind, 116, 5) +
                entry(SectionKind::KernelRecords, 116, 4) + entry(SectionKind::Json, 120, 22) +
                "proj" + u32(0) + emptyJson());
}

TEST_F(ConsolidatedFileReadingTest, ASecondRecordThatCannotBeDecodedLeavesOneKernel) {
  const std::string records = u32(2) + kernelRecord("first", 3) + kernelRecord("second", 3);
  EXPECT_FALSE(readModel(
      container({{SectionKind::Json, ""}, {SectionKind::KernelRecords, records.substr(0, 70)}})));
  EXPECT_EQ(kernelNames(), Names{"first"});
}

TEST_F(ConsolidatedFileReadingTest, RecordsThatCannotBeDecodedEndTheReading) {
  EXPECT_FALSE(readModel(header(2) + entry(SectionKind::KernelRecords, 64, 8) +
                         entry(SectionKind::ProjectName, 8, 4) + u32(1)));
  EXPECT_EQ(file_.projectName(), "");
}

TEST_F(ConsolidatedFileReadingTest, ARecordCountThatIsCutShortFails) {
  for (std::size_t size = 0; size < 4; ++size) {
    file_.close();
    EXPECT_FALSE(readModel(container({{SectionKind::KernelRecords, std::string(size, '\0')}})));
  }
  file_.close();
  EXPECT_TRUE(readModel(container({{SectionKind::KernelRecords, std::string(4, '\0')}})));
}

TEST_F(ConsolidatedFileReadingTest, RecordsOfOneNameAreNotMerged) {
  EXPECT_TRUE(readModel(container(
      {{SectionKind::KernelRecords, u32(2) + kernelRecord("k", 4) + kernelRecord("k", 1)}})));
  EXPECT_EQ(kernelNames(), (Names{"k", "k"}));
}

TEST_F(ConsolidatedFileReadingTest, SeveralRecordSectionsAreAppended) {
  EXPECT_TRUE(readModel(container({{SectionKind::KernelRecords, recordsNamed("a")},
                                   {SectionKind::KernelRecords, recordsNamed("b")}})));
  EXPECT_EQ(kernelNames(), (Names{"a", "b"}));
}

}  // namespace
}  // namespace consolidator
