#include "support/Rounds.h"
#include "text/FieldReader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iomanip>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

// The number and the word after it, or "failed".
template <typename T>
std::string extracted(std::string_view line, int base) {
  FieldReader fields(line);
  T number = 0;
  if (!fields.readNumber(number, base)) return "failed";
  return std::to_string(number) + "|" + std::string(fields.readWord());
}

template <typename T>
std::string extractedByStream(const std::string& line, int base) {
  std::istringstream in(line);
  T number = 0;
  if (!(in >> std::setbase(base) >> number)) return "failed";
  std::string word;
  in >> word;
  return std::to_string(number) + "|" + word;
}

TEST(FieldReader, ReadsWordsBetweenAnyWhiteSpace) {
  FieldReader fields(" a\tbc \v\f\r\n d");
  EXPECT_EQ(fields.readWord(), "a");
  EXPECT_EQ(fields.readWord(), "bc");
  EXPECT_EQ(fields.readWord(), "d");
  EXPECT_EQ(fields.readWord(), "");
  EXPECT_EQ(fields.readWord(), "");
}

TEST(FieldReader, LeavesWhatFollowsTheDigits) {
  EXPECT_EQ(extracted<std::uint32_t>(" 12abc d", 10), "12|abc");
  EXPECT_EQ(extracted<std::uint32_t>("0x12", 10), "0|x12");
  EXPECT_EQ(extracted<std::uint32_t>("0x12g", 16), "18|g");
}

TEST(FieldReader, TakesSigns) {
  EXPECT_EQ(extracted<std::uint32_t>("-1", 10), "4294967295|");
  EXPECT_EQ(extracted<std::uint64_t>("-0x1", 16), "18446744073709551615|");
  EXPECT_EQ(extracted<std::uint32_t>("+7", 10), "7|");
  EXPECT_EQ(extracted<std::uint32_t>("+-7", 10), "failed");
}

TEST(FieldReader, FailsWithoutDigits) {
  for (const std::string_view text : {"", " ", "x", "-", "+", "0x", "0xg", "- 1"}) {
    EXPECT_EQ(extracted<std::uint64_t>(text, 16), "failed") << text;
  }
}

TEST(FieldReader, FailsBeyondTheGreatestNumber) {
  EXPECT_EQ(extracted<std::uint32_t>("4294967295", 10), "4294967295|");
  EXPECT_EQ(extracted<std::uint32_t>("4294967296", 10), "failed");
  EXPECT_EQ(extracted<std::uint32_t>("-4294967296", 10), "failed");
  EXPECT_EQ(extracted<std::uint64_t>("ffffffffffffffff", 16), "18446744073709551615|");
  EXPECT_EQ(extracted<std::uint64_t>("10000000000000000", 16), "failed");
}

TEST(FieldReader, ExtractsNumbersAsAStreamDoes) {
  constexpr std::string_view characters = "000123456789abcdefABCDEFxX+-+-. \t,g";
  std::mt19937 random(40);
  for (int round = 0; round < rounds(200'000) && !HasFailure(); ++round) {
    std::string text;
    for (std::size_t count = random() % (round % 2 == 0 ? 8 : 24); count > 0; --count) {
      text += characters[random() % characters.size()];
    }
    for (const int base : {10, 16}) {
      EXPECT_EQ(extracted<std::uint32_t>(text, base), extractedByStream<std::uint32_t>(text, base))
          << text << " in base " << base;
      EXPECT_EQ(extracted<std::uint64_t>(text, base), extractedByStream<std::uint64_t>(text, base))
          << text << " in base " << base;
    }
  }
}

}  // namespace
}  // namespace consolidator
