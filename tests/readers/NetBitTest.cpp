#include "readers/NetBit.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

// Net, register and index with bars between them.
std::string split(std::string_view text) {
  const NetBit bit(text);
  const std::optional<std::uint32_t> index = bit.index();
  return std::string(bit.net()) + "|" + std::string(bit.registerName()) + "|" +
         (index ? std::to_string(*index) : "none");
}

TEST(NetBit, SplitsOffTheIndexInBrackets) {
  EXPECT_EQ(split("top/u0/acc_reg[5]"), "top/u0/acc_reg|acc_reg|5");
}

TEST(NetBit, AWholeNameIsBitZero) {
  EXPECT_EQ(split("top/u0/done_reg"), "top/u0/done_reg|done_reg|0");
}

TEST(NetBit, OnlyAClosingBracketAtTheEndEndsAnIndex) {
  EXPECT_EQ(split("top/a]"), "top/a]|a]|0");
  EXPECT_EQ(split("top/a[5"), "top/a[5|a[5|0");
  EXPECT_EQ(split("top/a[5]/b"), "top/a[5]/b|b|0");
}

TEST(NetBit, TheLastOpeningBracketStartsTheIndex) {
  EXPECT_EQ(split("a[4][1]"), "a[4]|a[4]|1");
  EXPECT_EQ(split("a[4]]"), "a|a|4");
  EXPECT_EQ(split("a[[4]"), "a[|a[|4");
}

TEST(NetBit, TheIndexIsTheDigitsAfterTheBracket) {
  EXPECT_EQ(split("a[007]"), "a|a|7");
  EXPECT_EQ(split("a[12x]"), "a|a|12");
  EXPECT_EQ(split("a[1/2]"), "a|a|1");
  EXPECT_EQ(split("a[]"), "a|a|0");
  EXPECT_EQ(split("a[-1]"), "a|a|0");
  EXPECT_EQ(split("a[+1]"), "a|a|0");
}

TEST(NetBit, IndicesEndBelowTwoToThe28) {
  EXPECT_EQ(split("a[268435455]"), "a|a|268435455");
  EXPECT_EQ(split("a[268435456]"), "a|a|none");
  EXPECT_EQ(split("a[4294967295]"), "a|a|none");
  EXPECT_EQ(split("a[4294967296]"), "a|a|none");
  EXPECT_EQ(split("a[18446744073709551616]"), "a|a|none");
}

TEST(NetBit, TheRegisterIsWhatFollowsTheLastSlash) {
  EXPECT_EQ(split("a"), "a|a|0");
  EXPECT_EQ(split("a/"), "a/||0");
  EXPECT_EQ(split("//a"), "//a|a|0");
  EXPECT_EQ(split(""), "||0");
  EXPECT_EQ(split("[3]"), "||3");
}

}  // namespace
}  // namespace consolidator
