// A file with every kind of section is damaged in every place, one place at a time, and run through
// all that a run does with it. A plain reader and writer of the format say what must come out.

#include "consolidated/ConsolidatedFile.h"
#include "consolidated/Samples.h"
#include "support/AllocationGauge.h"
#include "support/FullContainer.h"
#include "support/MemoryFile.h"
#include "support/PlainContainer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace consolidator {
namespace {

class ConsolidatedFileDamageTest : public testing::Test {
 protected:
  // Reads and saves the damaged file; every difference from the plain model is a failure.
  void rewrite(const std::string& damaged) {
    PlainContainer plain(damaged);
    stored_.write(damaged);
    const AllocationGauge gauge;
    file_.openOrCreate(stored_.path(), false, false);
    compareModels(plain);
    file_.save();
    file_.close();
    EXPECT_EQ(stored_.read(), plain.save());
    EXPECT_LE(gauge.largest(), damaged.size() + blocksAndBuffers);
  }

  // Dumps from the damaged file.
  void dump(const std::string& damaged) {
    const PlainContainer plain(damaged);
    stored_.write(damaged);
    const AllocationGauge gauge;
    file_.openOrCreate(stored_.path(), false, true);
    file_.dumpDwarf(dumped_.path());
    EXPECT_EQ(dumped_.read(), plain.dump(SectionKind::Dwarf));
    file_.dumpJson(dumped_.path());
    EXPECT_EQ(dumped_.read(), plain.dump(SectionKind::Json));
    EXPECT_LE(gauge.largest(), damaged.size() + blocksAndBuffers);
    EXPECT_EQ(file_.projectName(), plain.projectName);
  }

  std::string withBitFlipped(std::size_t bit) const {
    std::string damaged = intact_;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ static_cast<char>(1U << bit % 8));
    return damaged;
  }

  const std::string intact_ = fullContainer();

 private:
  static constexpr std::size_t blocksAndBuffers = std::size_t{260} * 1024;

  void compareModels(const PlainContainer& plain) {
    const FileHeader::Bytes header = file_.header().encode();
    EXPECT_EQ(std::string(header.data(), header.size()), plain.header);
    EXPECT_EQ(file_.table(), plain.table);
    EXPECT_EQ(file_.projectName(), plain.projectName);
    ASSERT_EQ(file_.kernels().size(), plain.kernels.size());
    for (std::size_t i = 0; i < plain.kernels.size(); ++i) {
      EXPECT_TRUE(file_.kernels()[i] == plain.kernels[i])
          << describe(file_.kernels()[i]) << "must be\n"
          << describe(plain.kernels[i]);
    }
  }

  MemoryFile stored_;
  MemoryFile dumped_;
  ConsolidatedFile file_;
};

TEST_F(ConsolidatedFileDamageTest, TheIntactFileIsReadWhole) {
  const PlainContainer plain(intact_);
  EXPECT_TRUE(plain.complete());
  EXPECT_EQ(plain.kernels.size(), 2U);
  rewrite(intact_);
  dump(intact_);
}

TEST_F(ConsolidatedFileDamageTest, CutAtEveryByte) {
  for (std::size_t size = 0; size < intact_.size() && !HasFailure(); ++size) {
    SCOPED_TRACE(testing::Message() << "cut to " << size << " bytes");
    rewrite(intact_.substr(0, size));
    dump(intact_.substr(0, size));
  }
}

TEST_F(ConsolidatedFileDamageTest, EveryBitFlipped) {
  for (std::size_t bit = 0; bit < 8 * intact_.size() && !HasFailure(); ++bit) {
    SCOPED_TRACE(testing::Message() << "byte " << bit / 8 << ", bit " << bit % 8);
    rewrite(withBitFlipped(bit));
    dump(withBitFlipped(bit));
  }
}

// Every number of the file is among the four bytes at some position, whatever its meaning is.
TEST_F(ConsolidatedFileDamageTest, EveryNumberSetToItsLimits) {
  for (std::size_t at = 0; at + 4 <= intact_.size() && !HasFailure(); ++at) {
    const auto rest = static_cast<std::uint32_t>(intact_.size() - at - 4);
    for (const std::uint32_t value :
         {0U, 1U, rest - 1, rest, rest + 1, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
      SCOPED_TRACE(testing::Message() << "byte " << at << " set to " << value);
      std::string damaged = intact_;
      rewrite(damaged.replace(at, 4, u32(value)));
      dump(damaged);
    }
  }
}

// What is left of the file behind the beginning of a section, and one byte more.
TEST_F(ConsolidatedFileDamageTest, EverySizeAndOffsetOfTheTableSetToTheRestOfTheFile) {
  const auto size = static_cast<std::uint32_t>(intact_.size());
  for (std::size_t at = 16; at < fullContainerTableEnd; at += 24) {
    const auto offset = static_cast<std::uint32_t>(numberAt(intact_, at + 8, 8));
    const auto length = static_cast<std::uint32_t>(numberAt(intact_, at + 16, 4));
    for (const std::uint32_t beyond : {0U, 1U}) {
      SCOPED_TRACE(testing::Message() << "entry at " << at << ", " << beyond << " beyond");
      std::string longer = intact_;
      rewrite(longer.replace(at + 16, 4, u32(size - offset + beyond)));
      dump(longer);
      std::string later = intact_;
      rewrite(later.replace(at + 8, 8, u64(size - length + beyond)));
      dump(later);
      std::string atEnd = intact_;
      rewrite(atEnd.replace(at + 8, 8, u64(size + beyond)));
      dump(atEnd);
    }
  }
}

TEST_F(ConsolidatedFileDamageTest, EveryEntryOfEveryKind) {
  for (std::size_t at = 16; at < fullContainerTableEnd; at += 24) {
    for (const std::uint32_t kind : {0U, 1U, 2U, 3U, 4U, 7U, 0xFFFFFFFFU}) {
      SCOPED_TRACE(testing::Message() << "entry at " << at << " of kind " << kind);
      std::string damaged = intact_;
      rewrite(damaged.replace(at, 4, u32(kind)));
    }
  }
}

TEST_F(ConsolidatedFileDamageTest, EverySectionCount) {
  for (const std::uint32_t count : {0U, 1U, 2U, 3U, 4U, 6U, 7U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    SCOPED_TRACE(testing::Message() << count << " sections");
    std::string damaged = intact_;
    rewrite(damaged.replace(12, 4, u32(count)));
  }
}

}  // namespace
}  // namespace consolidator
