#include "readers/UsualNumbers.h"
#include "support/RandomText.h"
#include "support/Rounds.h"
#include "text/FieldReader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::string_view usualLine = "Bit     1234 0x00401f80   17 die0 0 Block=X1Y2 Net=a[1]";

std::optional<std::string_view> afterNumbersPlainly(std::string_view line) {
  FieldReader fields(line);
  std::uint64_t number = 0;
  std::uint32_t offset = 0;
  const bool isRead = fields.readWord() == "Bit" && fields.readNumber(number) &&
                      fields.readNumber(number, 16) && fields.readNumber(offset);
  fields.readWord();
  if (!isRead || !fields.readNumber(offset)) return std::nullopt;
  fields.readWord();
  return line.substr(line.size() - fields.rest().size());
}

// Up to the end of the first word.
std::string_view wordsOf(std::string_view rest) {
  FieldReader fields(rest);
  fields.readWord();
  return fields.rest();
}

TEST(UsualNumbers, EndWhereTheWordsStart) {
  EXPECT_EQ(afterUsualNumbers(usualLine), "Block=X1Y2 Net=a[1]");
}

TEST(UsualNumbers, AreNotThoseThatMayBeTooLarge) {
  EXPECT_EQ(afterUsualNumbers("Bit 1 0x2 4294967296 die0 0 Net=a"), std::nullopt);
}

TEST(UsualNumbers, CanAlwaysBeRead) {
  std::mt19937 random(33);
  int usual = 0;
  for (int round = 0; round < rounds(100'000) && !HasFailure(); ++round) {
    const std::string line = mutated(std::string(usualLine), random);
    const auto words = afterUsualNumbers(line);
    if (!words) continue;
    ++usual;
    const auto expected = afterNumbersPlainly(line);
    ASSERT_TRUE(expected) << testing::PrintToString(line);
    EXPECT_EQ(wordsOf(*words), *expected) << testing::PrintToString(line);
  }
  EXPECT_GT(usual, rounds(10'000)) << "too few of the lines are usual";
}

}  // namespace
}  // namespace consolidator
