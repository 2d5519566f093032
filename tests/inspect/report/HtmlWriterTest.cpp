#include "inspect/report/HtmlWriter.h"
#include "support/Bytes.h"
#include "support/MemoryFile.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

template <typename Write>
std::string written(Write write) {
  const MemoryFile file;
  OutputSink out(file.descriptor());
  HtmlWriter html(out);
  write(html);
  out.flush();
  return file.read();
}

std::string textOf(std::string_view text) {
  return written([&](HtmlWriter& html) { html.text(text); });
}

std::string locationsOf(std::initializer_list<std::uint32_t> numbers) {
  std::string bytes;
  for (const std::uint32_t number : numbers) bytes += u32(number);
  return written([&](HtmlWriter& html) { html.text(consolidated::Locations(bytes, 0)); });
}

TEST(HtmlWriter, FillsHolesInTheirOrder) {
  constexpr PagePart<3> part{"<p title=\"{title}\">{text}, {number}</p>"};
  EXPECT_EQ(written([&](HtmlWriter& html) { html.add(part, "a", std::string("b"), 3U); }),
            "<p title=\"a\">b, 3</p>");
}

TEST(HtmlWriter, EscapesWhatMarkupIsMadeOf) {
  EXPECT_EQ(textOf("<b a='1' c=\"2\">&amp;{hole}"),
            "&lt;b a=&#39;1&#39; c=&quot;2&quot;&gt;&amp;amp;{hole}");
}

TEST(HtmlWriter, ShowsControlCharactersAndMarksOfDirection) {
  EXPECT_EQ(textOf("a\tb\n\xE2\x80\xAE"
                   "c\xFF"),
            "a\\x09b\\x0A\\u{202E}c\xEF\xBF\xBD");
}

TEST(HtmlWriter, CutsATextThatIsTooLongBeforeACharacter) {
  const std::string longest(HtmlWriter::longestText, 'x');
  EXPECT_EQ(textOf(longest), longest);
  EXPECT_EQ(textOf(longest + "y"), longest + "… (4097 bytes)");
  const std::string shorter = longest.substr(1);
  EXPECT_EQ(textOf(shorter + "\xC3\xA4"), shorter + "… (4097 bytes)");
}

TEST(HtmlWriter, WritesLocationsInTheirOrder) {
  EXPECT_EQ(locationsOf({}), "");
  EXPECT_EQ(locationsOf({0, 0}), "0x0:0");
  EXPECT_EQ(locationsOf({0x1A2F, 77, 0x1A2F, 78, 0x1A30, 5, 0x1A2F, 1}),
            "0x1a2f:77,78 0x1a30:5 0x1a2f:1");
  EXPECT_EQ(locationsOf({0xFFFFFFFF, 0xFFFFFFFF, 0, 4294967294}),
            "0xffffffff:4294967295 0x0:4294967294");
}

TEST(HtmlWriter, SeparatesCellsOfLines) {
  EXPECT_EQ(written([](HtmlWriter& html) { html.text("a").tab().text("b").endLine(); }), "a\tb\n");
}

}  // namespace
}  // namespace consolidator::inspect
