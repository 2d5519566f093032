// Files that an enemy makes, and files in numbers.

#include "consolidated/FileHeader.h"
#include "inspect/diff/Differences.h"
#include "model/RandomKernels.h"
#include "support/Growth.h"
#include "support/RandomText.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

using TextLines = std::vector<std::string>;

constexpr ComparisonOptions strictest{ConditionMatch::Exact, true};

std::vector<KernelRecord> randomKernels(RandomKernels& random) {
  std::vector<KernelRecord> kernels(random.below(5));
  for (KernelRecord& kernel : kernels) kernel = random.next(5);
  return kernels;
}

// Compares a file with itself: as it is, and with a byte after its end, so that the bytes alone do
// not tell.
void expectEqualToItself(const std::string& file) {
  EXPECT_TRUE(compared(file, file, strictest).result.isEqual);
  const Compared found = compared(file, withTrailingByte(file), strictest);
  if (found.result.isComplete()) {
    EXPECT_TRUE(found.result.isEqual);
    EXPECT_EQ(found.changes, TextLines());
  }
}

TEST(FileComparisonLimitsTest, FindsEveryFileEqualToItself) {
  std::mt19937 random(3);
  int files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(CONSOLIDATOR_CORPORA)) {
    if (!entry.is_regular_file()) continue;
    std::string bytes = readFile(entry.path().string());
    for (int i = 0; i < 20; ++i, bytes = mutated(std::move(bytes), random)) {
      if (!consolidated::File::fromBytes(bytes)) break;
      SCOPED_TRACE(entry.path().string());
      expectEqualToItself(bytes);
      ++files;
    }
  }
  EXPECT_GT(files, 500);
}

// Stored zero bytes make all records differ that are read as the same.
TEST(FileComparisonLimitsTest, FindsRandomKernelsEqualToThemselves) {
  RandomKernels random(11);
  for (int i = 0; i < 300; ++i) {
    std::vector<KernelRecord> kernels = randomKernels(random);
    const std::string file = fileOf(kernels);
    for (KernelRecord& kernel : kernels) {
      kernel.name += std::string("\0x", 2);
    }
    const Compared found = compared(file, fileOf(kernels), strictest);
    const auto isOfItems = [](const std::string& line) { return !line.starts_with("section"); };
    EXPECT_EQ(std::count_if(found.changes.begin(), found.changes.end(), isOfItems), 0);
  }
}

std::size_t countOf(const TextLines& lines, std::string_view end) {
  return static_cast<std::size_t>(std::count_if(
      lines.begin(), lines.end(), [&](const std::string& line) { return line.ends_with(end); }));
}

// Whatever differs, forwards and backwards must tell the same.
TEST(FileComparisonLimitsTest, FindsTheSameInEitherDirection) {
  RandomKernels random(12);
  for (int i = 0; i < 300; ++i) {
    const std::string before = fileOf(randomKernels(random));
    const std::string after = fileOf(randomKernels(random));
    const Compared there = compared(before, after);
    const Compared back = compared(after, before);
    EXPECT_EQ(there.result.isEqual, back.result.isEqual);
    EXPECT_EQ(countOf(there.changes, " added"), countOf(back.changes, " removed"));
    EXPECT_EQ(countOf(there.changes, " removed"), countOf(back.changes, " added"));
    EXPECT_EQ(countOf(there.changes, " changed"), countOf(back.changes, " changed"));
  }
}

TEST(FileComparisonLimitsTest, HoldsDamagedFilesForEqualOnlyIfTheyAreComplete) {
  RandomKernels random(13);
  std::mt19937 damage(13);
  for (int i = 0; i < 300; ++i) {
    const std::string before = fileOf(randomKernels(random));
    std::string after = mutated(before, damage);
    if (after.size() < FileHeader::encodedSize || !consolidated::File::fromBytes(after)) continue;
    const Compared found = compared(before, after, strictest);
    EXPECT_EQ(found.result.isEqual, found.result.isComplete() && found.changes.empty());
  }
}

// A list with all that may be hard to match: as it is before, and as it is after.
struct HardLists {
  std::function<void(KernelRecord&, std::size_t number)> add;
  bool isReversed;
};

double growthOf(const HardLists& lists) {
  const auto prepare = [&lists](std::size_t size) {
    KernelRecord before;
    KernelRecord after;
    for (std::size_t i = 0; i < size; ++i) {
      lists.add(before, i);
      lists.add(after, lists.isReversed ? size - 1 - i : i + 1);
    }
    return [first = fileOf({before}), second = fileOf({after})] { compared(first, second); };
  };
  return Growth(prepare, 512).perDoubling();
}

void addPath(KernelRecord& kernel, std::size_t number) {
  kernel.instancePaths.append(std::to_string(number));
}

void addCondition(KernelRecord& kernel, std::size_t number) {
  kernel.breakableConditions.append(
      BreakableCondition(ConditionKind::Start, "== 1 $i/" + std::to_string(number)));
}

TEST(FileComparisonLimitsTest, TakesLinearTimeForHardLists) {
  EXPECT_LT(growthOf({addPath, true}), Growth::limit());
  EXPECT_LT(growthOf({addPath, false}), Growth::limit());
  EXPECT_LT(growthOf({addCondition, true}), Growth::limit());
  EXPECT_LT(growthOf({addCondition, false}), Growth::limit());
}

TEST(FileComparisonLimitsTest, TakesLinearTimeForEqualKeys) {
  const auto addEqual = [](KernelRecord& kernel, std::size_t number) {
    kernel.addBRAM(number == 0 ? "first" : "ram");
    kernel.breakableConditions.append(
        BreakableCondition(ConditionKind::Stop, number == 0 ? "first" : "other"));
  };
  EXPECT_LT(growthOf({addEqual, true}), Growth::limit());
}

// Entries of the table that all name the same records.
std::string overlapping(std::uint32_t entries, const std::string& records, std::string_view first) {
  std::string table;
  const std::uint64_t position = FileHeader::encodedSize + 24 * (std::uint64_t{entries} + 1);
  const std::string start = u32(1) + kernelRecord(first, 0);
  table += entry(SectionKind::KernelRecords, position, static_cast<std::uint32_t>(start.size()));
  for (std::uint32_t i = 0; i < entries; ++i) {
    table += entry(SectionKind::KernelRecords, position + start.size(),
                   static_cast<std::uint32_t>(records.size()));
  }
  return header(entries + 1) + table + start + records;
}

TEST(FileComparisonLimitsTest, DoesNotHoldTheKernelsOfOverlappingSections) {
  std::string records = u32(1000);
  for (int i = 0; i < 1000; ++i) records += kernelRecord("k", 0);
  const Compared found =
      compared(overlapping(100, records, "first"), overlapping(100, records, "other"));
  EXPECT_EQ(found.result.after.whyIncomplete,
            "Its sections hold the same kernels again and again.");
  EXPECT_FALSE(found.result.isEqual);
  EXPECT_LT(found.result.after.kernels, 10'000U);
}

// Of two files of 12,500 bytes with so many sections that all have the same 10,000.
Compared comparedSharingBytes(std::uint32_t sections) {
  const auto file = [sections](char last) {
    std::string bytes = header(sections);
    for (std::uint32_t i = 0; i < sections; ++i) {
      bytes += entry(SectionKind::Json, 2'499, 10'000);
    }
    bytes.resize(12'499, 'x');
    return bytes + last;
  };
  return compared(file('1'), file('2'), strictest);
}

TEST(FileComparisonLimitsTest, ComparesBytesOfSectionsUpToFourTimesTheFile) {
  EXPECT_EQ(comparedSharingBytes(5).result.after.whyIncomplete, "");
  const Compared found = comparedSharingBytes(6);
  EXPECT_EQ(found.result.after.whyIncomplete, "Its sections hold the same bytes again and again.");
  EXPECT_FALSE(found.result.isEqual);
}

}  // namespace
}  // namespace consolidator::inspect
