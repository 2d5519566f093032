#include "lmx60/ReadDocument.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>

namespace lmx {
namespace {

// A document made of a start, a part many times over and an end. It notes the most memory that was
// in use whenever it was asked for bytes.
class RepeatingSource final : public c_byte_source {
 public:
  RepeatingSource(std::string_view start, std::string_view part, std::size_t count,
                  std::string_view end, std::size_t& memoryInUse)
      : rest_(start), part_(part), count_(count), end_(end), memoryInUse_(memoryInUse) {}

  std::size_t read(char* bytes, std::size_t size) override {
    memoryInUse_ = std::max(memoryInUse_, mallinfo2().uordblks + mallinfo2().hblkhd);
    std::size_t filled = 0;
    while (filled < size && (!rest_.empty() || advance())) {
      const std::size_t copied = rest_.copy(bytes + filled, size - filled);
      rest_.remove_prefix(copied);
      filled += copied;
    }
    return filled;
  }

 private:
  bool advance() {
    if (count_ > 0) {
      --count_;
      rest_ = part_;
      return true;
    }
    rest_ = end_;
    end_ = {};
    return !rest_.empty();
  }

  std::string_view rest_;
  std::string_view part_;
  std::size_t count_;
  std::string_view end_;
  std::size_t& memoryInUse_;
};

class JunkTest : public testing::TestWithParam<std::string_view> {};

TEST_P(JunkTest, TakesNoMemory) {
  constexpr std::size_t documentSize = std::size_t{8} * 1024 * 1024;
  constexpr std::size_t enough = std::size_t{1024} * 1024;
  std::size_t inUse = 0;
  const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
  const consolidator::AllocationGauge gauge;
  EXPECT_EQ(recorded(std::make_unique<RepeatingSource>(
                "<e>", GetParam(), documentSize / GetParam().size(), "<t/></e>", inUse)),
            "e { t; }; ");
  EXPECT_LE(inUse, before + enough);
  EXPECT_LE(gauge.largest(), enough);
}

INSTANTIATE_TEST_SUITE_P(Parts, JunkTest,
                         testing::Values("<x a='1' b='2'/>", "<x><y><z>text</z></y></x>", "text ",
                                         "\n", "<!-- c -->", "<?p i?>", "<![CDATA[data]]>", "&amp;",
                                         "<x>text</x>"));

std::int64_t cpuMilliseconds() { return std::clock() * 1000 / CLOCKS_PER_SEC; }

// Tokens over many blocks: quadratic time would be more than a minute for each of these.
TEST(XmlReaderSizeTest, TimeForALongTokenIsLinearInItsLength) {
  constexpr std::size_t size = std::size_t{48} * 1024 * 1024;
  const std::string filler(1024, 'a');
  std::size_t ignored = 0;
  for (const std::string_view start : {"<e b='", "<e><!--", "<e><?p ", "<e"}) {
    const std::int64_t before = cpuMilliseconds();
    EXPECT_EQ(recorded(std::make_unique<RepeatingSource>(start, filler, size / filler.size(), "",
                                                         ignored)),
              "line 1: document not well-formed (unclosed token)")
        << start;
    EXPECT_LT(cpuMilliseconds() - before, 10000) << start;
  }
}

// Without end, as far as the reader can tell: it is refused before it takes all memory.
TEST(XmlReaderSizeTest, RefusesATokenBeyondTheLimit) {
  const std::string filler(std::size_t{1024} * 1024, 'a');
  std::size_t inUse = 0;
  EXPECT_EQ(recorded(std::make_unique<RepeatingSource>(
                "<e><!--", filler, 4 * c_xml_reader::max_token / filler.size(), "", inUse)),
            "line 1: token too long");
  EXPECT_LE(inUse, 5 * c_xml_reader::max_token);
}

TEST(XmlReaderSizeTest, ReadsALongAttributeWhole) {
  const std::string value(1000000, 'v');
  EXPECT_EQ(recorded("<e a='" + value + "'/>"), "e a='" + value + "' { }; ");
}

TEST(XmlReaderSizeTest, ReadsALongTextWhole) {
  const std::string value(1000000, 'v');
  EXPECT_EQ(recorded("<e><v>" + value + "</v></e>"), "e { v \"" + value + "\"; }; ");
}

// Every position of the boundary between two blocks within a short stretch of a document.
TEST(XmlReaderSizeTest, BlockBoundariesMakeNoDifference) {
  constexpr std::size_t block = std::size_t{64} * 1024;
  constexpr std::string_view stretch = "<e a='&lt;\xE2\x82\xAC'><t b='c'/><v>d&#10;<x/>e</v></e>";
  for (std::size_t before = 0; before <= stretch.size(); ++before) {
    constexpr std::string_view frame = "<!---->";
    const std::string padding(block - before - frame.size(), 'x');
    EXPECT_EQ(recorded("<!--" + padding + "-->" + std::string(stretch)),
              "e a='<\xE2\x82\xAC' { t b='c'; v \"d\ne\"; }; ")
        << before;
  }
}

TEST(XmlReaderSizeTest, ADocumentMayFillItsBlocksExactly) {
  constexpr std::size_t block = std::size_t{64} * 1024;
  for (const std::size_t size : {block, 2 * block}) {
    const std::string document = "<e/>" + std::string(size - 4, '\n');
    EXPECT_EQ(recorded(document), "e { }; ") << size;
  }
}

struct EncodingCase {
  std::string_view name;
  std::string_view document;
  std::string_view expected;
};

class EncodingTest : public testing::TestWithParam<EncodingCase> {};

TEST_P(EncodingTest, ComesOutAsUtf8OrIsRefused) {
  EXPECT_EQ(recorded(GetParam().document), GetParam().expected) << GetParam().name;
}

constexpr std::string_view utf16Little("\xFF\xFE<\0e\0 \0a\0=\0'\0\xAC\x20'\0/\0>\0", 22);
constexpr std::string_view utf16Big("\xFE\xFF\0<\0e\0 \0a\0=\0'\x20\xAC\0'\0/\0>", 22);

INSTANTIATE_TEST_SUITE_P(
    Encodings, EncodingTest,
    testing::Values(
        EncodingCase{"UTF-8", "<e a='\xE2\x82\xAC'/>", "e a='\xE2\x82\xAC' { }; "},
        EncodingCase{"UTF-16LE", utf16Little, "e a='\xE2\x82\xAC' { }; "},
        EncodingCase{"UTF-16BE", utf16Big, "e a='\xE2\x82\xAC' { }; "},
        EncodingCase{"ISO-8859-1", "<?xml version='1.0' encoding='ISO-8859-1'?><e a='\xE9'/>",
                     "e a='\xC3\xA9' { }; "},
        EncodingCase{"US-ASCII", "<?xml version='1.0' encoding='US-ASCII'?><e a='b'/>",
                     "e a='b' { }; "},
        EncodingCase{"US-ASCII with other bytes",
                     "<?xml version='1.0' encoding='US-ASCII'?><e a='\xE9'/>",
                     "line 1: document not well-formed (not well-formed (invalid token))"},
        EncodingCase{"windows-1252", "<?xml version='1.0' encoding='windows-1252'?><e/>",
                     "line 1: document not well-formed (unknown encoding)"},
        EncodingCase{"UTF-16 declared in bytes", "<?xml version='1.0' encoding='UTF-16'?><e/>",
                     "line 1: document not well-formed"
                     " (encoding specified in XML declaration is incorrect)"},
        EncodingCase{"Latin-1 without a declaration", "<e a='\xE9'/>",
                     "line 1: document not well-formed (not well-formed (invalid token))"},
        EncodingCase{"overlong UTF-8", "<e a='\xC0\xAF'/>",
                     "line 1: document not well-formed (not well-formed (invalid token))"},
        EncodingCase{"surrogate in UTF-8", "<e a='\xED\xA0\x80'/>",
                     "line 1: document not well-formed (not well-formed (invalid token))"}));

}  // namespace
}  // namespace lmx
