#include "readers/HlsLocalRecord.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <random>
#include <string>
#include <string_view>

namespace consolidator {

static std::ostream& operator<<(std::ostream& out, const HlsLocalRecord& local) {
  return out << local.name << " in " << local.rtlName << ", " << local.width << " bits";
}

namespace {

HlsLocalRecord registerOf(std::string_view word) {
  HlsLocalRecord local;
  local.setRegister(word);
  return local;
}

HlsLocalRecord expected(std::string_view rtlName, std::int32_t width) {
  return {"", std::string(rtlName), width};
}

TEST(HlsLocalRecord, TakesNameAndWidthFromTheBitRange) {
  EXPECT_EQ(registerOf("q_reg[31:0]"), expected("q_reg", 32));
  EXPECT_EQ(registerOf("r[7:4]"), expected("r", 4));
}

TEST(HlsLocalRecord, APlainWordIsOneBitWide) {
  EXPECT_EQ(registerOf("flag"), expected("flag", 1));
  EXPECT_EQ(registerOf("12"), expected("12", 1));
  EXPECT_EQ(registerOf(""), expected("", 1));
}

TEST(HlsLocalRecord, WithoutAColonTheHighBoundIsTheIndexAndTheLowOneZero) {
  EXPECT_EQ(registerOf("r[3]"), expected("r", 4));
  EXPECT_EQ(registerOf("r[31"), expected("r", 32));
}

TEST(HlsLocalRecord, WithoutABracketTheHighBoundStartsTheWord) {
  EXPECT_EQ(registerOf("7:4]"), expected("7:4]", 4));
  EXPECT_EQ(registerOf("7:4"), expected("7:4", 4));
  EXPECT_EQ(registerOf("r:4]"), expected("r:4]", -3));
}

TEST(HlsLocalRecord, WithoutAClosingBracketTheLowBoundEndsTheWord) {
  EXPECT_EQ(registerOf("r[7:4"), expected("r", 4));
}

TEST(HlsLocalRecord, AColonBeforeTheBracketEndsTheHighBoundNowhere) {
  EXPECT_EQ(registerOf("2:a[9]"), expected("2:a", 10));
  EXPECT_EQ(registerOf(":[9]"), expected(":", 10));
}

TEST(HlsLocalRecord, AClosingBracketBeforeTheColonEndsTheLowBoundNowhere) {
  EXPECT_EQ(registerOf("]r[9:2"), expected("]r", 8));
}

TEST(HlsLocalRecord, TheFirstOfSeveralMarksCounts) {
  EXPECT_EQ(registerOf("m[3:0][7:1]"), expected("m", 4));
  EXPECT_EQ(registerOf("a:1[2:0]"), expected("a:1", 2));
}

TEST(HlsLocalRecord, BoundsThatDoNotParseAreZero) {
  EXPECT_EQ(registerOf("r[x:y]"), expected("r", 1));
  EXPECT_EQ(registerOf("r[-1:+2]"), expected("r", 1));
  EXPECT_EQ(registerOf("r[7q:4z]"), expected("r", 4));
}

TEST(HlsLocalRecord, WidthsAreCutTo32Bits) {
  EXPECT_EQ(registerOf("r[0:7]"), expected("r", -6));
  EXPECT_EQ(registerOf("r[2147483647:0]"), expected("r", INT32_MIN));
  EXPECT_EQ(registerOf("r[4294967296:0]"), expected("r", 1));
  EXPECT_EQ(registerOf("r[99999999999999999999:0]"), expected("r", 0)) << "2^63 - 1, low 32 bits";
}

TEST(HlsLocalRecord, ALaterRegisterReplacesAnEarlierOne) {
  HlsLocalRecord local{"sum", "", 0};
  local.setRegister("first[7:0]");
  local.setRegister("second[1:0]");
  EXPECT_EQ(local, (HlsLocalRecord{"sum", "second", 2}));
}

// The rule in the words of std::string, whose substr() throws beyond the end.
HlsLocalRecord plainRegister(const std::string& word) {
  const auto number = [](const std::string& text) -> std::int64_t {
    const bool hasDigits = !text.empty() && text[0] >= '0' && text[0] <= '9';
    return hasDigits ? std::strtoll(text.c_str(), nullptr, 10) : 0;
  };
  const std::size_t b = word.find('[');
  const std::size_t c = word.find(':');
  const std::size_t e = word.find(']');
  const std::int64_t high = number(word.substr(b + 1, c - b - 1));
  const std::int64_t low = number(word.substr(c + 1, e - c - 1));
  return expected(word.substr(0, b), static_cast<std::int32_t>(high - low + 1));
}

TEST(HlsLocalRecord, EveryOrderOfTheMarksIsCutAsTextsOfTheStandardLibraryAre) {
  constexpr std::string_view characters = "[[::]]019-ab";
  std::mt19937 random(2);
  for (int round = 0; round < 20'000 && !testing::Test::HasFailure(); ++round) {
    std::string word(random() % 9, ' ');
    for (char& c : word) c = characters[random() % characters.size()];
    EXPECT_EQ(registerOf(word), plainRegister(word)) << word;
  }
}

}  // namespace
}  // namespace consolidator
