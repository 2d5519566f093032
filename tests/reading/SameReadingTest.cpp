// The tool's own model is the measure of the library, and the other way round: both read the same
// damaged files, and must find the same in them.

#include "support/BothReadings.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace consolidator {
namespace {

class SameReadingTest : public testing::Test {
 protected:
  void expectSame(const std::string& bytes) { EXPECT_EQ(readings_.difference(bytes), ""); }

  const std::string intact_ = fullContainer();
  BothReadings readings_;
};

TEST_F(SameReadingTest, OfTheIntactFile) { expectSame(intact_); }

TEST_F(SameReadingTest, OfTheFileCutAtEveryByte) {
  for (std::size_t size = 0; size < intact_.size() && !HasFailure(); ++size) {
    SCOPED_TRACE(testing::Message() << "cut to " << size << " bytes");
    expectSame(intact_.substr(0, size));
  }
}

TEST_F(SameReadingTest, OfTheFileWithEveryBitFlipped) {
  for (std::size_t bit = 0; bit < 8 * intact_.size() && !HasFailure(); ++bit) {
    SCOPED_TRACE(testing::Message() << "byte " << bit / 8 << ", bit " << bit % 8);
    std::string damaged = intact_;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ static_cast<char>(1U << bit % 8));
    expectSame(damaged);
  }
}

// Every number of the file is among the four bytes at some position, whatever its meaning is.
TEST_F(SameReadingTest, OfTheFileWithEveryNumberSetToItsLimits) {
  for (std::size_t at = 0; at + 4 <= intact_.size() && !HasFailure(); ++at) {
    const auto rest = static_cast<std::uint32_t>(intact_.size() - at - 4);
    for (const std::uint32_t value :
         {0U, 1U, rest, rest + 1, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
      SCOPED_TRACE(testing::Message() << "byte " << at << " set to " << value);
      std::string damaged = intact_;
      expectSame(damaged.replace(at, 4, u32(value)));
    }
  }
}

TEST_F(SameReadingTest, OfEveryFileOfTheFuzzCorpora) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(CONSOLIDATOR_CORPORA)) {
    if (!entry.is_regular_file()) continue;
    SCOPED_TRACE(entry.path());
    expectSame(readFile(entry.path()));
    ++count;
  }
  EXPECT_GT(count, 100U);
}

}  // namespace
}  // namespace consolidator
