#include "text/LeadingDecimal.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace consolidator {
namespace {

constexpr std::uint64_t largest = 9223372036854775807U;

TEST(LeadingDecimal, IsTheNumberOfTheDigitsAtTheStart) {
  EXPECT_EQ(leadingDecimal("0"), 0U);
  EXPECT_EQ(leadingDecimal("31"), 31U);
  EXPECT_EQ(leadingDecimal("007x8"), 7U);
  EXPECT_EQ(leadingDecimal("12:34"), 12U);
}

TEST(LeadingDecimal, IsZeroWithoutDigitsAtTheStart) {
  for (const char* const text : {"", "x1", "-1", "+1", " 1", "\t1", ":1", "]"}) {
    EXPECT_EQ(leadingDecimal(text), 0U) << text;
  }
}

TEST(LeadingDecimal, IsNotHexadecimal) { EXPECT_EQ(leadingDecimal("0x1F"), 0U); }

TEST(LeadingDecimal, SaturatesBeyond63Bits) {
  EXPECT_EQ(leadingDecimal("9223372036854775806"), largest - 1);
  EXPECT_EQ(leadingDecimal("9223372036854775807"), largest);
  EXPECT_EQ(leadingDecimal("9223372036854775808"), largest);
  EXPECT_EQ(leadingDecimal("9223372036854775809"), largest);
  EXPECT_EQ(leadingDecimal("92233720368547758070"), largest);
  EXPECT_EQ(leadingDecimal("18446744073709551616"), largest) << "2^64";
  EXPECT_EQ(leadingDecimal(std::string(1000, '9')), largest);
  EXPECT_EQ(leadingDecimal(std::string(1000, '0') + "5"), 5U);
}

TEST(LeadingDecimal, ReadsDigitsAsTheStandardLibraryDoes) {
  std::mt19937_64 random(1);
  for (int round = 0; round < 10'000; ++round) {
    std::string digits(1 + random() % 22, '0');
    for (char& digit : digits) digit = static_cast<char>('0' + random() % 10);
    EXPECT_EQ(leadingDecimal(digits + "x"),
              static_cast<std::uint64_t>(std::strtoll(digits.c_str(), nullptr, 10)))
        << digits;
  }
}

}  // namespace
}  // namespace consolidator
