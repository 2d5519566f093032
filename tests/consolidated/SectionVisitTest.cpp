#include "consolidated/Samples.h"
#include "consolidated/SectionVisit.h"
#include "support/AllocationGauge.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace consolidator {
namespace {

using Table = std::vector<SectionEntry>;

// Visits sections of the bytes "0123456789"; records can be read where a "5" stands.
class SectionVisitTest : public testing::Test {
 protected:
  bool visit(const Table& table) {
    table_ = table;
    return visit_.visit(table_);
  }

  const MemoryStream stream_{"0123456789"};
  std::vector<int> recordsAt_;
  SectionVisit visit_{stream_.get(), [this](std::FILE* in) {
                        recordsAt_.push_back(std::fgetc(in) - '0');
                        return recordsAt_.back() == 5;
                      }};
  Table table_;
};

TEST_F(SectionVisitTest, FindsTheLastNameAndTheLastDwarf) {
  EXPECT_TRUE(visit({{SectionKind::ProjectName, 0, 4},
                     {SectionKind::Dwarf, 1, 2},
                     {SectionKind::ProjectName, 2, 3},
                     {SectionKind::Dwarf, 3, 7}}));
  EXPECT_EQ(visit_.readProjectName(), "234");
  EXPECT_EQ(visit_.dwarf(), (SectionEntry{SectionKind::Dwarf, 3, 7}));
}

TEST_F(SectionVisitTest, FindsNothingInAnEmptyTable) {
  EXPECT_TRUE(visit({}));
  EXPECT_EQ(visit_.readProjectName(), std::nullopt);
  EXPECT_EQ(visit_.dwarf(), std::nullopt);
}

TEST_F(SectionVisitTest, EndsAtTheFirstSectionThatIsNotAllThere) {
  EXPECT_FALSE(visit({{SectionKind::ProjectName, 0, 1},
                      {SectionKind::ProjectName, 9, 2},
                      {SectionKind::ProjectName, 5, 1}}));
  EXPECT_EQ(visit_.readProjectName(), "0") << "the one before it";
}

TEST_F(SectionVisitTest, LosesTheDwarfToOneThatEndsEarlyAndNotToOneWithoutAPlace) {
  EXPECT_FALSE(visit({{SectionKind::Dwarf, 0, 1}, {SectionKind::Dwarf, 0x80000000U, 1}}));
  EXPECT_EQ(visit_.dwarf(), (SectionEntry{SectionKind::Dwarf, 0, 1}));
  EXPECT_FALSE(visit({{SectionKind::Dwarf, 9, 2}}));
  EXPECT_EQ(visit_.dwarf(), std::nullopt);
}

TEST_F(SectionVisitTest, HandsRecordsOverAtTheirStart) {
  EXPECT_FALSE(visit({{SectionKind::KernelRecords, 5, 0},
                      {SectionKind::Json, 0x80000000U, 1},
                      {SectionKind::KernelRecords, 4, 0},
                      {SectionKind::KernelRecords, 5, 0}}));
  EXPECT_EQ(recordsAt_, (std::vector<int>{5, 4}));
}

TEST_F(SectionVisitTest, CutsTheSizesOfVisitedEntriesAlone) {
  EXPECT_FALSE(visit({{SectionKind::Json, 0, 0xFFFFFFFFU},
                      {unknownKind, 0, 0xFFFFFFFFU},
                      {SectionKind::Json, 0, 0xFFFFFFFFU}}));
  EXPECT_EQ(table_, (Table{{SectionKind::Json, 0, 0xFFFFFFFEU},
                           {unknownKind, 0, 0xFFFFFFFEU},
                           {SectionKind::Json, 0, 0xFFFFFFFFU}}));
}

TEST_F(SectionVisitTest, HoldsNoNameBeforeItIsAskedFor) {
  const MemoryStream stream(std::string(1'000'000, 'n'));
  Table table(50, {SectionKind::ProjectName, 0, 1'000'000});
  const AllocationGauge gauge;
  SectionVisit visit(stream.get(), [](std::FILE* /*in*/) { return false; });
  EXPECT_TRUE(visit.visit(table));
  EXPECT_LT(gauge.total(), 100'000U);
  EXPECT_EQ(visit.readProjectName()->size(), 1'000'000U);
}

}  // namespace
}  // namespace consolidator
