#include "lmx60/Conversion.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace lmx {
namespace {

struct IntegerCase {
  std::string_view text;
  std::string_view max;
  bool valid;
};

class IntegerTest : public testing::TestWithParam<IntegerCase> {};

TEST_P(IntegerTest, IsDecimalDigitsUpToTheMaximum) {
  const IntegerCase& param = GetParam();
  EXPECT_EQ(is_valid_integer(param.text, param.max), param.valid) << '"' << param.text << '"';
}

INSTANTIATE_TEST_SUITE_P(
    Texts, IntegerTest,
    testing::Values(
        IntegerCase{"0", max_unsigned_int, true}, IntegerCase{"1", max_unsigned_int, true},
        IntegerCase{"4294967295", max_unsigned_int, true},
        IntegerCase{"4294967296", max_unsigned_int, false},
        IntegerCase{"9999999999", max_unsigned_int, false},
        IntegerCase{"10000000000", max_unsigned_int, false},
        IntegerCase{"00000000004294967295", max_unsigned_int, true},
        IntegerCase{"00000000004294967296", max_unsigned_int, false},
        IntegerCase{"0000000000000000000000", max_unsigned_int, true},
        IntegerCase{"18446744073709551615", max_unsigned_long, true},
        IntegerCase{"18446744073709551616", max_unsigned_long, false},
        IntegerCase{"", max_unsigned_int, false}, IntegerCase{"-1", max_unsigned_int, false},
        IntegerCase{"+1", max_unsigned_int, false}, IntegerCase{" 1", max_unsigned_int, false},
        IntegerCase{"1 ", max_unsigned_int, false}, IntegerCase{"1.0", max_unsigned_int, false},
        IntegerCase{"1e3", max_unsigned_int, false}, IntegerCase{"0x10", max_unsigned_int, false},
        IntegerCase{"\xD9\xA1", max_unsigned_int, false},
        IntegerCase{std::string_view("1\0", 2), max_unsigned_int, false}));

TEST(ConversionTest, UnsignedIntConverterGivesTheValueOrNothing) {
  const c_unsigned_int_converter convert;
  EXPECT_EQ(convert("0"), std::optional<std::uint32_t>(0));
  EXPECT_EQ(convert("4294967295"), std::optional<std::uint32_t>(4294967295U));
  EXPECT_EQ(convert("00000000000000000017"), std::optional<std::uint32_t>(17));
  EXPECT_EQ(convert("4294967296"), std::nullopt);
  EXPECT_EQ(convert("x"), std::nullopt);
}

TEST(ConversionTest, StringConverterTakesEveryText) {
  const c_string_converter convert;
  EXPECT_EQ(convert(""), std::optional<std::string_view>(""));
  EXPECT_EQ(convert(" a b "), std::optional<std::string_view>(" a b "));
}

TEST(ConversionTest, ValuesBecomeText) {
  EXPECT_EQ(vtostring(std::uint32_t{0}), "0");
  EXPECT_EQ(vtostring(std::uint32_t{4294967295U}), "4294967295");
  EXPECT_EQ(vtostring("a<b"), "a<b");
}

std::string converted(std::string_view text, xml_position position) {
  std::string output = "before ";
  output_convert_to_xml(output, text, position);
  return output;
}

TEST(ConversionTest, EscapesInAttributesWhatReadingWouldTakeForSomethingElse) {
  EXPECT_EQ(converted("a&b<c>d\"e'f\rg\nh\ti", xml_position::attribute),
            "before a&amp;b&lt;c&gt;d&quot;e'f&#13;g&#10;h&#9;i");
}

TEST(ConversionTest, KeepsLineFeedsAndTabsInContent) {
  EXPECT_EQ(converted("a&b<c>d\"e'f\rg\nh\ti]]>", xml_position::content),
            "before a&amp;b&lt;c&gt;d&quot;e'f&#13;g\nh\ti]]&gt;");
}

TEST(ConversionTest, LeavesOtherTextsAlone) {
  EXPECT_EQ(converted("", xml_position::attribute), "before ");
  EXPECT_EQ(converted("plain \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80", xml_position::attribute),
            "before plain \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace lmx
