#include "inspect/records/LocationText.h"

#include <gtest/gtest.h>

#include <string_view>

namespace consolidator::inspect {
namespace {

using consolidated::Location;

TEST(LocationText, ReadsDecimalAndHexadecimalNumbers) {
  EXPECT_EQ(parseLocation("12:34"), (Location{12, 34}));
  EXPECT_EQ(parseLocation("0x1aF:0X10"), (Location{0x1AF, 16}));
  EXPECT_EQ(parseLocation("4294967295:0xFFFFFFFF"), (Location{4294967295U, 4294967295U}));
  EXPECT_EQ(parseLocation("0:007"), (Location{0, 7}));
}

TEST(LocationText, TakesNothingElseForALocation) {
  for (const std::string_view text :
       {"", ":", "1", "1:", ":1", "1:2:3", "-1:2", "+1:2", " 1:2", "1:2 ", "0x:1", "x1:2", "1:a",
        "4294967296:0", "0:0x100000000", "k::f", "/t/k:i"}) {
    EXPECT_EQ(parseLocation(text), std::nullopt) << text;
  }
}

TEST(LocationText, WritesWhatItReads) {
  EXPECT_EQ(textOf({0x401F80, 96}), "0x401f80:96");
  EXPECT_EQ(parseLocation(textOf({0xFFFFFFFF, 1})), (Location{0xFFFFFFFF, 1}));
}

}  // namespace
}  // namespace consolidator::inspect
