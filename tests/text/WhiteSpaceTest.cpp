#include "text/WhiteSpace.h"

#include <gtest/gtest.h>

#include <locale>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

TEST(WhiteSpace, IsThatOfTheCLocale) {
  for (int code = 0; code < 256; ++code) {
    const char c = static_cast<char>(code);
    EXPECT_EQ(isWhiteSpace(c), std::isspace(c, std::locale::classic())) << code;
  }
}

// Every byte at every place of words of every length around that of the blocks that are looked at
// together, with every byte after it.
TEST(WhiteSpace, LengthsEndAtTheFirstByteOfTheirKind) {
  for (std::size_t length = 0; length < 20; ++length) {
    for (std::size_t at = 0; at < length; ++at) {
      for (int code = 0; code < 256; ++code) {
        std::string text(length, '\xFF');
        text[at] = static_cast<char>(code);
        EXPECT_EQ(plainLength(text), code <= ' ' ? at : length) << length << " " << code;
        EXPECT_EQ(wordLength(text), isWhiteSpace(text[at]) ? at : length) << length << " " << code;
      }
    }
  }
}

TEST(WhiteSpace, TheFirstOfSeveralEndsTheLength) {
  for (std::size_t second = 4; second < 20; ++second) {
    std::string text(20, '!');
    text[3] = ' ';
    text[second] = '\0';
    EXPECT_EQ(plainLength(text), 3U) << second;
    EXPECT_EQ(wordLength(text), 3U) << second;
    text[3] = '\0';
    text[second] = '\n';
    EXPECT_EQ(plainLength(text), 3U) << second;
    EXPECT_EQ(wordLength(text), second) << second;
  }
}

TEST(WhiteSpace, LengthsDoNotReachBeyondTheText) {
  const std::string_view text = "abcdefghijklmnop qrs";
  EXPECT_EQ(plainLength(text.substr(0, 11)), 11U);
  EXPECT_EQ(wordLength(text.substr(0, 16)), 16U);
  EXPECT_EQ(wordLength(text), 16U);
  EXPECT_EQ(plainLength(""), 0U);
  EXPECT_EQ(wordLength(""), 0U);
}

}  // namespace
}  // namespace consolidator
