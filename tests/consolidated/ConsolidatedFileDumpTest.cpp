#include "consolidated/ConsolidatedFileFixture.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace consolidator {
namespace {

class ConsolidatedFileDumpTest : public ConsolidatedFileFixture {
 protected:
  // What a dump of the section leaves in a file that held something before.
  std::string dumped(std::string_view bytes, SectionKind kind) {
    const std::string out = folder_.write("dump", "held before");
    openForDump(bytes);
    file_.dumpSection(kind, out);
    file_.close();
    return folder_.read("dump");
  }
};

const std::string dwarfBytes("DWARF\0with a zero byte", 22);

const std::string fullToDump = container({{SectionKind::ProjectName, "proj"},
                                          {SectionKind::Dwarf, dwarfBytes},
                                          {SectionKind::Json, vaddJson()},
                                          {SectionKind::KernelRecords, vaddRecords()}});

TEST_F(ConsolidatedFileDumpTest, JsonIsTheSavedTextAndItsZeroByte) {
  EXPECT_EQ(dumped(fullToDump, SectionKind::Json), vaddJson());
}

TEST_F(ConsolidatedFileDumpTest, DwarfIsTheFileThatWasAdded) {
  EXPECT_EQ(dumped(fullToDump, SectionKind::Dwarf), dwarfBytes);
}

TEST_F(ConsolidatedFileDumpTest, EveryKindIsCopiedAsStored) {
  EXPECT_EQ(dumped(fullToDump, SectionKind::ProjectName), "proj");
  EXPECT_EQ(dumped(fullToDump, SectionKind::KernelRecords), vaddRecords());
}

TEST_F(ConsolidatedFileDumpTest, NamedDumpsAreThoseOfTheirKinds) {
  openForDump(fullToDump);
  file_.dumpDwarf(folder_.path("dwarf"));
  file_.dumpJson(folder_.path("json"));
  EXPECT_EQ(folder_.read("dwarf"), dwarfBytes);
  EXPECT_EQ(folder_.read("json"), vaddJson());
}

TEST_F(ConsolidatedFileDumpTest, IsEmptyWithoutSuchASection) {
  EXPECT_EQ(dumped(container({{SectionKind::Json, emptyJson()}}), SectionKind::Dwarf), "");
  EXPECT_TRUE(folder_.holds("dump"));
}

TEST_F(ConsolidatedFileDumpTest, IsEmptyForAFileThatIsNoConsolidatedFile) {
  EXPECT_EQ(dumped("something else", SectionKind::Json), "");
}

TEST_F(ConsolidatedFileDumpTest, TakesTheFirstOfSeveralSections) {
  EXPECT_EQ(dumped(container({{SectionKind::Json, "first"}, {SectionKind::Json, "second"}}),
                   SectionKind::Json),
            "first");
}

TEST_F(ConsolidatedFileDumpTest, CopiesWhatIsStoredEvenIfItIsNoJson) {
  EXPECT_EQ(dumped(container({{SectionKind::Json, "\x01\x02 not JSON"}}), SectionKind::Json),
            "\x01\x02 not JSON");
}

TEST_F(ConsolidatedFileDumpTest, ReachesSectionsAfterOneThatCannotBeRead) {
  EXPECT_EQ(dumped(header(2) + entry(7, 0, 0) + entry(SectionKind::Json, 64, 4) + "json",
                   SectionKind::Json),
            "json");
}

TEST_F(ConsolidatedFileDumpTest, IsEmptyWhenTheSectionEndsEarly) {
  EXPECT_EQ(dumped(header(1) + entry(SectionKind::Json, 40, 5) + "json", SectionKind::Json), "");
  EXPECT_EQ(
      dumped(header(1) + entry(SectionKind::Json, 40, 0xFFFFFFFFU) + "json", SectionKind::Json),
      "");
  EXPECT_EQ(dumped(header(1) + entry(SectionKind::Json, 4000, 1), SectionKind::Json), "");
}

TEST_F(ConsolidatedFileDumpTest, SizesAreClampedLikeInAReadingOfTheWholeFile) {
  const std::string table =
      entry(SectionKind::ProjectName, 0, 0) + entry(SectionKind::Json, 0, 0xFFFFFFFFU) +
      entry(unknownKind, 0, 0xFFFFFFFFU) + entry(SectionKind::Json, 0, 0xFFFFFFFFU);
  openForDump(header(4) + table);
  const Table clamped = file_.table();
  file_.close();
  EXPECT_FALSE(readModel(header(4) + table));
  EXPECT_EQ(clamped, file_.table());
  EXPECT_EQ(clamped[1].size, 0xFFFFFFFEU);
}

TEST_F(ConsolidatedFileDumpTest, DwarfBeforeTheNameIsNotHeld) {
  const std::string bytes = container(
      {{SectionKind::Dwarf, std::string(4'000'000, 'd')}, {SectionKind::ProjectName, "proj"}});
  const AllocationGauge gauge;
  openForDump(bytes);
  EXPECT_EQ(file_.projectName(), "proj");
  EXPECT_LT(gauge.total(), 1'000'000U);
}

TEST_F(ConsolidatedFileDumpTest, KernelsBeforeTheNameAreNotHeld) {
  constexpr std::uint32_t kernels = 20'000;
  std::string records = u32(kernels);
  for (std::uint32_t i = 0; i < kernels; ++i) records += kernelRecord("kernel", 3);
  const std::string bytes =
      container({{SectionKind::KernelRecords, records}, {SectionKind::ProjectName, "proj"}});
  const AllocationGauge gauge;
  openForDump(bytes);
  EXPECT_EQ(file_.projectName(), "proj");
  EXPECT_EQ(kernelNames(), Names());
  EXPECT_LT(gauge.total(), 600'000U);
}

TEST_F(ConsolidatedFileDumpTest, ANameAfterRecordsThatCannotBeReadDoesNotCount) {
  const std::string records = u32(2) + kernelRecord("first", 3) + kernelRecord("second", 3);
  for (std::size_t size = 0; size < records.size(); ++size) {
    openForDump(header(3) + entry(SectionKind::ProjectName, 88, 4) +
                entry(SectionKind::KernelRecords, 95, 4) + entry(SectionKind::ProjectName, 92, 3) +
                "nameend" + records.substr(0, size));
    EXPECT_EQ(file_.projectName(), "name") << size;
  }
}

TEST_F(ConsolidatedFileDumpTest, KeepsTheConsolidatedFile) {
  dumped(fullToDump, SectionKind::Json);
  EXPECT_EQ(folder_.read("file"), fullToDump);
}

TEST_F(ConsolidatedFileDumpTest, OntoTheConsolidatedFileItselfLeavesItEmpty) {
  openForDump(fullToDump);
  file_.dumpJson(path_);
  EXPECT_EQ(folder_.read("file"), "");
}

TEST_F(ConsolidatedFileDumpTest, WithoutStreamNoOutputIsMade) {
  file_.openOrCreate(folder_.path("missing"), false, true);
  file_.dumpJson(folder_.path("dump"));
  EXPECT_FALSE(folder_.holds("dump"));
}

TEST_F(ConsolidatedFileDumpTest, AnOutputThatCannotBeOpenedIsSkipped) {
  openForDump(fullToDump);
  file_.dumpJson(folder_.path("no/such/folder"));
  file_.dumpJson(folder_.path("dump"));
  EXPECT_EQ(folder_.read("dump"), vaddJson());
}

}  // namespace
}  // namespace consolidator
