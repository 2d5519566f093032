#include "consolidated/ConsolidatedFileFixture.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>

namespace consolidator {
namespace {

using ConsolidatedFileWritingTest = ConsolidatedFileFixture;

TEST_F(ConsolidatedFileWritingTest, StoredEntriesKeepTheirOrder) {
  EXPECT_EQ(rewritten(container({{SectionKind::KernelRecords, vaddRecords()},
                                 {SectionKind::Dwarf, "DWARF"},
                                 {SectionKind::ProjectName, "proj"}})),
            container({{SectionKind::KernelRecords, vaddRecords()},
                       {SectionKind::Dwarf, "DWARF"},
                       {SectionKind::ProjectName, "proj"},
                       {SectionKind::Json, vaddJson()}}));
}

TEST_F(ConsolidatedFileWritingTest, SectionsStandWithoutGapsWhereverTheyStoodBefore) {
  EXPECT_EQ(rewritten(header(2) + entry(SectionKind::ProjectName, 70, 4) +
                      entry(SectionKind::Json, 74, 0) + "-gap--proj-gap-"),
            container({{SectionKind::ProjectName, "proj"}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileWritingTest, StoredJsonIsRenderedAnew) {
  EXPECT_EQ(
      rewritten(
          container({{SectionKind::Json, "stale"}, {SectionKind::KernelRecords, vaddRecords()}})),
      container({{SectionKind::Json, vaddJson()}, {SectionKind::KernelRecords, vaddRecords()}}));
}

TEST_F(ConsolidatedFileWritingTest, ARecordsSectionWithoutKernelsHoldsTheirCount) {
  EXPECT_EQ(rewritten(container({{SectionKind::KernelRecords, u32(0)}})),
            container({{SectionKind::KernelRecords, u32(0)}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(ConsolidatedFileWritingTest, RecordsHoldTheConditionsThatTheJsonPrepared) {
  EXPECT_EQ(rewritten(container({{SectionKind::Json, ""},
                                 {SectionKind::KernelRecords,
                                  recordsWithConditions({"(1'b1 == 1'b1)", "(x == 1'b1)"})}})),
            container({{SectionKind::Json, jsonWithCondition("== 1'b1 $i/x")},
                       {SectionKind::KernelRecords, recordsWithConditions({"== 1'b1 $i/x"})}}));
}

// Preparing is not idempotent; consumers have always seen the operands change places.
TEST_F(ConsolidatedFileWritingTest, OperandsAlternateFromSaveToSave) {
  const std::string straight =
      container({{SectionKind::Json, jsonWithCondition("== $i/bq_start 1'b1")},
                 {SectionKind::KernelRecords, recordsWithConditions({"== $i/bq_start 1'b1"})}});
  const std::string swapped =
      container({{SectionKind::Json, jsonWithCondition("== 1'b1 $i/bq_start")},
                 {SectionKind::KernelRecords, recordsWithConditions({"== 1'b1 $i/bq_start"})}});
  EXPECT_EQ(rewritten(straight), swapped);
  EXPECT_EQ(rewritten(swapped), straight);
}

TEST_F(ConsolidatedFileWritingTest, RecordsBeforeTheFirstJsonAreWrittenUnprepared) {
  EXPECT_EQ(rewritten(container({{SectionKind::KernelRecords, recordsWithConditions({"(x == 1)"})},
                                 {SectionKind::Json, ""}})),
            container({{SectionKind::KernelRecords, recordsWithConditions({"(x == 1)"})},
                       {SectionKind::Json, jsonWithCondition("== 1 $i/x")}}));
}

TEST_F(ConsolidatedFileWritingTest, EveryJsonEntryPreparesTheConditionsAgain) {
  EXPECT_EQ(rewritten(container({{SectionKind::Json, ""},
                                 {SectionKind::KernelRecords, recordsWithConditions({"(x == 1)"})},
                                 {SectionKind::Json, ""}})),
            container({{SectionKind::Json, jsonWithCondition("== 1 $i/x")},
                       {SectionKind::KernelRecords, recordsWithConditions({"== 1 $i/x"})},
                       {SectionKind::Json, jsonWithCondition("== $i/x 1")}}));
}

TEST_F(ConsolidatedFileWritingTest, EveryRecordsEntryHoldsAllKernels) {
  const std::string both = u32(2) + kernelRecord("a", 3) + kernelRecord("b", 3);
  const std::string bytes =
      rewritten(container({{SectionKind::KernelRecords, u32(1) + kernelRecord("a", 3)},
                           {SectionKind::KernelRecords, u32(1) + kernelRecord("b", 3)},
                           {SectionKind::ProjectName, "proj"}}));
  EXPECT_EQ(bytes.substr(112, both.size()), both);
  EXPECT_EQ(bytes.substr(112 + both.size(), both.size()), both);
  EXPECT_EQ(bytes.substr(16, 48),
            entry(SectionKind::KernelRecords, 112, static_cast<std::uint32_t>(both.size())) +
                entry(SectionKind::KernelRecords, 112 + both.size(),
                      static_cast<std::uint32_t>(both.size())));
}

TEST_F(ConsolidatedFileWritingTest, AnEntryOfUnknownKindGetsItsPlaceAndKeepsItsSize) {
  file_.openOrCreate(path_, true, false);
  SectionEntry unknown{SectionKind{7}, 123, 456};
  file_.writeSection(unknown);
  EXPECT_EQ(unknown, (SectionEntry{SectionKind{7}, 0, 456}));
}

TEST_F(ConsolidatedFileWritingTest, SizesCountOnlyWhatTheStreamTook) {
  // A stream for reading takes nothing.
  openForDump(container({{SectionKind::ProjectName, "proj"},
                         {SectionKind::Json, vaddJson()},
                         {SectionKind::KernelRecords, vaddRecords()}}));
  SectionEntry json{SectionKind::Json, 1, 2};
  SectionEntry records{SectionKind::KernelRecords, 1, 2};
  SectionEntry name{SectionKind::ProjectName, 1, 2};
  file_.writeSection(json);
  file_.writeSection(records);
  file_.writeSection(name);
  EXPECT_EQ(json.size, 0U);
  EXPECT_EQ(records.size, 0U);
  EXPECT_EQ(name.size, 4U) << "that of the name, whatever became of it";
}

// Bounds the size of the files that this process writes, as a full disk does.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handlerBefore_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }

  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handlerBefore_);
  }

 private:
  rlimit before_{};
  void (*handlerBefore_)(int);
};

TEST_F(ConsolidatedFileWritingTest, AJsonTextThatTheDiskTakesInPartHasSizeZero) {
  open(container(
      {{SectionKind::KernelRecords, u32(1) + kernelRecord(std::string(400'000, 'k'), 3)}}));
  SectionEntry json{SectionKind::Json, 1, 2};
  const FileSizeLimit limit(300'000);
  file_.writeSection(json);
  EXPECT_EQ(json, (SectionEntry{SectionKind::Json, 0, 0}));
  EXPECT_GT(folder_.read("file").size(), 100'000U) << "a part was taken";
}

// A pipe has no position. Neither has a section that would begin beyond 2 GiB: its position,
// taken as a signed 32-bit number, is negative.
TEST_F(ConsolidatedFileWritingTest, WithoutAPositionNothingIsWrittenAndTheEntryStays) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  file_.openOrCreate("/proc/self/fd/" + std::to_string(ends[1]), true, false);
  close(ends[1]);
  ASSERT_TRUE(file_.isOpen());
  file_.setProject("proj");
  for (const SectionKind kind : {SectionKind::ProjectName, SectionKind::Json,
                                 SectionKind::KernelRecords, SectionKind::Dwarf}) {
    SectionEntry section{kind, 123, 456};
    file_.writeSection(section);
    EXPECT_EQ(section, (SectionEntry{kind, 123, 456}));
  }
  file_.save();
  file_.close();
  char byte = 0;
  EXPECT_EQ(read(ends[0], &byte, 1), 0) << "a byte was written";
  close(ends[0]);
}

}  // namespace
}  // namespace consolidator
