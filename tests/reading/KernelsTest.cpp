#include "ReadingFixture.h"
#include "consolidated/Kernels.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace consolidated {
namespace {

using consolidator::SectionKind;

static_assert(std::forward_iterator<KernelIterator>);

constexpr SectionKind unknownKind{4};

class KernelsTest : public ReadingFixture {
 protected:
  const std::string two_ = u32(2) + kernelRecord("a", 0) + kernelRecord("b", 4);
};

TEST_F(KernelsTest, ComeInTheOrderOfTheFile) {
  const File& file = readRecords(two_);
  EXPECT_EQ(names(), (Names{"a", "b"}));
  EXPECT_EQ(fault(), "none");
  EXPECT_TRUE(file.complete());
}

TEST_F(KernelsTest, MayBeNone) {
  read(container({{SectionKind::Json, "x"}}));
  EXPECT_EQ(names(), Names{});
  readRecords(u32(0));
  EXPECT_EQ(names(), Names{});
  EXPECT_EQ(fault(), "none");
}

TEST_F(KernelsTest, AreGoneOverAsOftenAsWanted) {
  const Kernels kernels = readRecords(two_).kernels();
  auto at = kernels.begin();
  const auto first = at++;
  EXPECT_EQ(first->name().view(), "a");
  EXPECT_EQ((*at).name().view(), "b");
  EXPECT_TRUE(first == kernels.begin());
  EXPECT_TRUE(at != first);
  EXPECT_TRUE(++at == kernels.end());
  EXPECT_EQ(at.fault(), std::nullopt);
  EXPECT_EQ(at.offset(), recordsStart + two_.size());
}

TEST_F(KernelsTest, OfAllSectionsOfRecordsAreTaken) {
  const File& file = read(container({{SectionKind::KernelRecords, two_},
                                     {SectionKind::KernelRecords, u32(0)},
                                     {SectionKind::Json, "x"},
                                     {SectionKind::KernelRecords, u32(1) + kernelRecord("c", 0)}}));
  EXPECT_EQ(names(), (Names{"a", "b", "c"}));
  EXPECT_EQ(names(file.kernels(file.sections()[3])), Names{"c"});
  EXPECT_EQ(names(file.kernels(file.sections()[1])), Names{});
  EXPECT_EQ(file.findKernel("c")->section(), 3U);
}

TEST_F(KernelsTest, OfOneSectionAreReadWhateverStandsBeforeIt) {
  const File& file =
      read(container({{unknownKind, ""}, {SectionKind::KernelRecords, two_}, {unknownKind, ""}}));
  EXPECT_EQ(names(), Names{});
  EXPECT_EQ(fault(), "unknown-kind section 0 at 16");
  EXPECT_EQ(names(file.kernels(file.sections()[1])), (Names{"a", "b"}));
}

TEST_F(KernelsTest, AreNoneInOtherSections) {
  const File& file = read(container({{SectionKind::Dwarf, two_}}));
  EXPECT_EQ(names(file.kernels(file.sections()[0])), Names{});
  const Section stranger{1, consolidated::SectionKind::KernelRecords, recordsStart, 4};
  EXPECT_EQ(names(file.kernels(stranger)), Names{});
}

TEST_F(KernelsTest, AreReadBeyondTheEndOfTheirSection) {
  read(header(1) + entry(SectionKind::KernelRecords, 40, 4) + two_);
  EXPECT_EQ(names(), (Names{"a", "b"}));
  EXPECT_EQ(fault(), "none");
}

TEST_F(KernelsTest, BeforeTheDamageStay) {
  readRecords(two_.substr(0, two_.size() - 1));
  EXPECT_EQ(names(), Names{"a"});
  EXPECT_EQ(fault(), "records-short section 0 at 40");
}

TEST_F(KernelsTest, OfSectionsAfterTheDamageAreNotRead) {
  read(container(
      {{SectionKind::KernelRecords, two_}, {unknownKind, ""}, {SectionKind::KernelRecords, two_}}));
  EXPECT_EQ(names(), (Names{"a", "b"}));
  EXPECT_EQ(fault(), "unknown-kind section 1 at 40");
}

TEST_F(KernelsTest, AreNoneWhereTheTableIsCut) {
  const std::string table = entry(SectionKind::KernelRecords, 40, 37) + u32(1);
  read(header(3) + table + kernelRecord("a", 0));
  EXPECT_EQ(names(), Names{});
  EXPECT_EQ(fault(), "short-table section none at 64");
  read(header(1) + table + kernelRecord("a", 0));
  EXPECT_EQ(names(), Names{"a"});
}

TEST_F(KernelsTest, EndWhereAnOffsetIsNegative) {
  read(header(1) + entry(SectionKind::KernelRecords, 0x80000000, 4));
  EXPECT_EQ(fault(), "negative-offset section 0 at 16");
  read(header(1) + entry(SectionKind::Dwarf, 0x80000000, 0));
  EXPECT_EQ(fault(), "negative-offset section 0 at 16");
  read(header(1) + entry(SectionKind::ProjectName, 0x80000000, 0));
  EXPECT_EQ(fault(), "negative-offset section 0 at 16");
  read(header(1) + entry(SectionKind::Json, 0x80000000, 4));
  EXPECT_EQ(fault(), "none");
}

TEST_F(KernelsTest, EndWhereASectionIsCut) {
  read(header(2) + entry(SectionKind::Json, 0, 99) + entry(SectionKind::Dwarf, 64, 2) + "x");
  EXPECT_EQ(fault(), "section-outside section 1 at 40");
  read(header(1) + entry(SectionKind::ProjectName, 40, 1));
  EXPECT_EQ(fault(), "section-outside section 0 at 16");
  read(header(1) + entry(SectionKind::ProjectName, 1000, 0));
  EXPECT_EQ(fault(), "none");
}

// A kernel of which everything but the number of block RAMs is there, and what may be missing.
class RecordsShortTest : public ReadingFixture {
 protected:
  void expectFault(const std::string& records, std::uint64_t offset) {
    readRecords(records);
    EXPECT_EQ(names(), Names{});
    EXPECT_EQ(fault(), "records-short section 0 at " + std::to_string(recordsStart + offset));
  }

  // Two elements may fit into twice the bytes of the shortest one, so that it is their first text
  // which is too long, but not into a byte less.
  void expectTwoMayFit(const std::string& before, std::uint32_t leastSize,
                       std::uint32_t firstText = 0) {
    const std::string start = before + u32(2) + std::string(firstText, '\0');
    const std::uint32_t rest = 2 * leastSize - firstText - 4;
    expectFault(start + u32(rest + 1) + std::string(rest, 'x'), start.size());
    expectFault(start + u32(rest) + std::string(rest - 1, 'x'), before.size());
  }
};

TEST_F(RecordsShortTest, AtTheNumberOfKernelsThatIsMissing) {
  expectFault("", 0);
  expectFault("abc", 0);
  read(header(1) + entry(SectionKind::KernelRecords, 1000, 4));
  EXPECT_EQ(fault(), "records-short section 0 at 1000");
}

TEST_F(RecordsShortTest, AtTheNumberOfKernelsThatCannotFit) {
  readRecords(u32(0xFFFFFFFF) + kernelRecord("a", 0) + u32(0xFFFFFFFF));
  EXPECT_EQ(names(), Names{"a"});
  EXPECT_EQ(fault(), "records-short section 0 at 40");
}

TEST_F(RecordsShortTest, AtTheLengthOfATextThatIsCut) {
  const std::string filling(32, 'x');
  expectFault(u32(1) + u32(33) + filling, 4);
  expectFault(u32(1) + text("k") + u32(2) + text("a") + u32(30) + filling.substr(3), 4 + 5 + 4 + 5);
}

TEST_F(RecordsShortTest, AtTheInnermostCountWhoseElementsAreMissing) {
  const std::string before = u32(1) + text("kernel") + u32(0) + u32(4);
  const std::string variable = text("a") + text("b") + text("c");
  // The list of arguments, two variables that fit as far as anybody can tell.
  expectFault(before + u32(2) + variable + u32(0) + text("next") + text("one"), before.size());
  // Instances of the first argument.
  expectFault(before + u32(1) + variable + u32(2) + u32(1) + u32(5) + u32(6),
              before.size() + 4 + variable.size());
  // Its locations.
  expectFault(before + u32(1) + variable + u32(1) + u32(2) + u32(5) + u32(6) + u32(7),
              before.size() + 4 + variable.size() + 4);
}

TEST_F(RecordsShortTest, AtEachCountThatCannotFit) {
  std::string record = u32(1) + text("k") + u32(0) + u32(4);
  expectFault(u32(1) + text("a kernel of a long name") + u32(0x7FFFFFFF) + u32(0), 4 + 27);
  for (int list = 0; list < 5; ++list) {
    expectFault(record + u32(0xFFFFFFFF) + std::string(24, '\0'), record.size());
    record += u32(0);
  }
}

TEST_F(RecordsShortTest, AtCountsWhoseShortestElementsNeedOneByteMore) {
  expectTwoMayFit("", 32);
  std::string record = u32(1) + text("a kernel of a long name");
  expectTwoMayFit(record, 4);  // instance paths
  record += u32(0) + u32(4);
  expectTwoMayFit(record, 16);  // arguments
  record += u32(0);
  expectTwoMayFit(record, 16);  // variables
  record += u32(0);
  expectTwoMayFit(record, 8);  // hardware variables
  record += u32(0);
  expectTwoMayFit(record, 8, 4);  // conditions
  record += u32(0);
  expectTwoMayFit(record, 4);  // block RAMs
}

}  // namespace
}  // namespace consolidated
