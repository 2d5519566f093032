#include "readers/RamRow.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string_view>

namespace consolidator {

static std::ostream& operator<<(std::ostream& out, const RamRow& row) {
  return out << '<' << row.instanceName << "> of type <" << row.primitiveType << '>';
}

namespace {

using namespace std::string_view_literals;

TEST(RamRow, TakesTheFirstTwoFieldsUntrimmed) {
  EXPECT_EQ(RamRow::split("|bram_a|RAMB36E2|"), (RamRow{"bram_a", "RAMB36E2"}));
  EXPECT_EQ(RamRow::split("| bram_a\t| RAMB36E2 | 1 | 2 |"), (RamRow{" bram_a\t", " RAMB36E2 "}));
  EXPECT_EQ(RamRow::split("|||"), (RamRow{"", ""}));
}

TEST(RamRow, TheFirstCharacterCountsAsASeparatorWhateverItIs) {
  EXPECT_EQ(RamRow::split("xbram_a|RAMB36E2|"), (RamRow{"bram_a", "RAMB36E2"}));
  EXPECT_EQ(RamRow::split("+|RAMB36E2|"), (RamRow{"", "RAMB36E2"}));
}

TEST(RamRow, TheTextBehindTheLastSeparatorIsNoField) {
  EXPECT_EQ(RamRow::split("|bram_a|RAMB36E2"), std::nullopt);
  EXPECT_EQ(RamRow::split("|bram_a|RAMB36E2|rest"), (RamRow{"bram_a", "RAMB36E2"}));
}

TEST(RamRow, ALineWithFewerFieldsIsNoRow) {
  for (const std::string_view line : {""sv, "|"sv, "||"sv, "a|"sv, "|a|"sv, "+---+---+"sv, "x"sv}) {
    EXPECT_EQ(RamRow::split(line), std::nullopt) << line;
  }
}

TEST(RamRow, ABlockRamHasRambAnywhereInItsType) {
  EXPECT_TRUE((RamRow{"a", "RAMB36E2"}).isBlockRam());
  EXPECT_TRUE((RamRow{"a", " 2xRAMB "}).isBlockRam());
  EXPECT_FALSE((RamRow{"RAMB", "URAM288"}).isBlockRam());
  EXPECT_FALSE((RamRow{"a", "ramb36"}).isBlockRam());
  EXPECT_FALSE((RamRow{"a", "RAM B"}).isBlockRam());
  EXPECT_FALSE((RamRow{"a", ""}).isBlockRam());
}

}  // namespace
}  // namespace consolidator
