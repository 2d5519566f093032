#include "inspect/output/PlainText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

TEST(PlainText, LeavesWhatIsHarmless) {
  for (const std::string_view text :
       {"", "vadd", "a \"b\" \\ '~", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"}) {
    EXPECT_EQ(plain(text), text);
  }
}

TEST(PlainText, ShowsControlCharactersByTheirNumber) {
  EXPECT_EQ(plain("a\x1B[31m\n\r\t\x07\x7Fz"s), "a\\x1B[31m\\x0A\\x0D\\x09\\x07\\x7Fz");
  EXPECT_EQ(plain("\0"s), "\\x00");
  EXPECT_EQ(plain("\xC2\x9B"
                  "31m"),
            "\\u{009B}31m");  // introduces what ESC [ does
}

TEST(PlainText, ShowsWhatTurnsOrHidesText) {
  EXPECT_EQ(plain("\xE2\x80\xAE"), "\\u{202E}");
  EXPECT_EQ(plain("\xE2\x81\xA6"), "\\u{2066}");
  EXPECT_EQ(plain("\xE2\x80\xA8"), "\\u{2028}");
  EXPECT_EQ(plain("\xE2\x80\x8B"), "\\u{200B}");
  EXPECT_EQ(plain("\xD8\x9C"), "\\u{061C}");
  EXPECT_EQ(plain("\xEF\xBB\xBF"), "\\u{FEFF}");
  EXPECT_EQ(plain("\xF3\xA0\x81\x81"), "\\u{E0041}");
}

TEST(PlainText, ReplacesWhatIsNotUtf8) {
  EXPECT_EQ(plain("a\xFF\xE2\x82z"), "a\xEF\xBF\xBD\xEF\xBF\xBDz");
}

}  // namespace
}  // namespace consolidator::inspect
