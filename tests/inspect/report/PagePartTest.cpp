#include "inspect/report/PagePart.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator::inspect {
namespace {

TEST(PagePart, CountsHoles) {
  EXPECT_EQ(holesIn("<p>none</p>"), 0);
  EXPECT_EQ(holesIn("{a}{b} <p>{c}</p>"), 3);
}

TEST(PagePart, TakesHolesInTextsAndPlainAttributes) {
  EXPECT_TRUE(isSafePart("<p>{text}</p>"));
  EXPECT_TRUE(isSafePart("</p>{text}"));
  EXPECT_TRUE(isSafePart("<p title=\"a {text}\" id=\"{other}\">"));
  EXPECT_TRUE(isSafePart("<a href=\"#k{number}\">"));
}

TEST(PagePart, RefusesHolesWhereATextWouldBeMoreThanAText) {
  EXPECT_FALSE(isSafePart("<p {name}=\"\">"));
  EXPECT_FALSE(isSafePart("<p title={text}>"));
  EXPECT_FALSE(isSafePart("<p title='{text}'>"));
  EXPECT_FALSE(isSafePart("<{tag}>"));
  EXPECT_FALSE(isSafePart("<p onclick=\"{code}\">"));
  EXPECT_FALSE(isSafePart("<p style=\"{code}\">"));
  EXPECT_FALSE(isSafePart("<img src=\"{address}\">"));
  EXPECT_FALSE(isSafePart("<a href=\"{address}\">"));
  EXPECT_FALSE(isSafePart("<script>{code}</script>"));
  EXPECT_FALSE(isSafePart("<style>{code}</style>"));
}

TEST(PagePart, RefusesPiecesThatEndInsideATag) {
  EXPECT_FALSE(isSafePart("<p>{text}<p title=\""));
  EXPECT_FALSE(isSafePart("<p "));
}

TEST(PagePart, RefusesTextsInAllAttributesThatLoadOrRun) {
  for (const char* const name :
       {"style", "src", "srcdoc", "action", "formaction", "onclick", "onload"}) {
    const std::string part = std::string("<p title=\"a\" ") + name + "=\"{text}\">";
    EXPECT_FALSE(isSafePart(part)) << part;
  }
}

}  // namespace
}  // namespace consolidator::inspect
