#include "inspect/output/Utf8.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

// The mended text, in which "?" stands for U+FFFD.
std::string mended(std::string_view text) {
  std::string result = wellFormed(text);
  for (std::size_t at = result.find(replacementCharacter); at != std::string::npos;
       at = result.find(replacementCharacter)) {
    result.replace(at, replacementCharacter.size(), "?");
  }
  return result;
}

TEST(Utf8, KeepsCharactersOfEachLength) {
  const std::vector<std::pair<std::string, char32_t>> characters = {
      {"\0"s, 0},
      {"\x7F", 0x7F},
      {"\xC2\x80", 0x80},
      {"\xDF\xBF", 0x7FF},
      {"\xE0\xA0\x80", 0x800},
      {"\xED\x9F\xBF", 0xD7FF},
      {"\xEE\x80\x80", 0xE000},
      {"\xEF\xBF\xBF", 0xFFFF},
      {"\xF0\x90\x80\x80", 0x10000},
      {"\xF1\x80\x80\x80", 0x40000},
      {"\xF4\x8F\xBF\xBF", 0x10FFFF},
  };
  for (const auto& [text, codePoint] : characters) {
    const Utf8Sequence sequence = firstSequence(text + "more");
    EXPECT_TRUE(sequence.isWellFormed);
    EXPECT_EQ(sequence.size, text.size());
    EXPECT_EQ(sequence.codePoint, codePoint);
    EXPECT_EQ(findIllFormed(text), std::string_view::npos);
    EXPECT_EQ(wellFormed(text), text);
  }
}

// The second column is what Python's bytes.decode(errors="replace") makes of the first.
TEST(Utf8, ReplacesEachMaximalIllFormedSequenceByOneCharacter) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", ""},
      {"\x80", "?"},
      {"\xBF\xBF", "??"},
      {"\xC0\x80", "??"},
      {"\xC1\xBF", "??"},
      {"\xC2", "?"},
      {"\xC2"
       "A",
       "?A"},
      {"\xC2\xC2\x80", "?\xC2\x80"},
      {"\xE0\x9F\xBF", "???"},
      {"\xE0\xA0", "?"},
      {"\xE0\xA0"
       "A",
       "?A"},
      {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF"
       "A",
       "????A"},
      {"\xE2\x82", "?"},
      {"\xED\xA0\x80", "???"},
      {"\xED\xBF\xBF\xED\xAF"
       "A",
       "?????A"},
      {"\xF0\x8F\xBF\xBF", "????"},
      {"\xF0\x90\x80", "?"},
      {"\xF0\x90\x80"
       "A",
       "?A"},
      {"\xF1\x80\x80\xE1\x80\xC2"
       "b\x80",
       "???b?"},
      {"\xF4\x90\x80\x80", "????"},
      {"\xF4\x91\x92\x93\xFF"
       "A\x80\xBF"
       "B",
       "?????A??B"},
      {"\xF5\x80\x80\x80", "????"},
      {"\xFC\x80\x80\x80\x80\x80", "??????"},
      {"\xFE\xFF", "??"},
      {"A\xC0\xAF\xE0\x80\xBF\xF0\x81\x82"
       "A",
       "A????????A"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(mended(text), expected);
}

TEST(Utf8, FindsTheFirstIllFormedByteAtAnyPlace) {
  for (std::size_t before = 0; before < 40; ++before) {
    for (std::size_t after = 0; after < 20; ++after) {
      const std::string text = std::string(before, 'x') + '\xFF' + std::string(after, 'y');
      EXPECT_EQ(findIllFormed(text), before);
      EXPECT_EQ(mended(text), std::string(before, 'x') + '?' + std::string(after, 'y'));
    }
  }
}

TEST(Utf8, FindsAnIllFormedByteBetweenLongCharacters) {
  EXPECT_EQ(findIllFormed("\xE2\x82\xAC\xE2\x82\xAC 123456789\xC3\xA4\xA4"), 18U);
}

TEST(Utf8, EndsASequenceWithTheText) {
  const Utf8Sequence sequence = firstSequence("\xF0\x9F\x98");
  EXPECT_FALSE(sequence.isWellFormed);
  EXPECT_EQ(sequence.size, 3U);
  EXPECT_EQ(firstSequence("").size, 0U);
}

}  // namespace
}  // namespace consolidator::inspect
