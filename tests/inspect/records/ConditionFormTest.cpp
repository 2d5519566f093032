#include "inspect/records/ConditionForm.h"
#include "model/ConditionPreparer.h"
#include "support/RandomText.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

using namespace std::string_view_literals;

std::string prepared(std::string_view condition) {
  ConditionPreparer preparer;
  return std::string(preparer.prepare(condition));
}

TEST(ConditionFormTest, IsTheSameForEitherOrderOfTwoOperands) {
  EXPECT_EQ(normalForm("== 1'b1 $i/x"), normalForm("== $i/x 1'b1"));
  EXPECT_EQ(normalForm("$i/x == 1'b1"), normalForm("1'b1 == $i/x"));
  EXPECT_EQ(normalForm("$i/x 1'b1 =="), normalForm("1'b1 $i/x =="));
}

TEST(ConditionFormTest, KeepsThePlaceOfTheOperator) {
  EXPECT_NE(normalForm("== $i/x 1"), normalForm("$i/x == 1"));
  EXPECT_NE(normalForm("== $i/x 1"), normalForm("$i/x 1 =="));
}

TEST(ConditionFormTest, DiffersWithAnyWord) {
  EXPECT_NE(normalForm("== 1 $i/x"), normalForm("== 0 $i/x"));
  EXPECT_NE(normalForm("== 1 $i/x"), normalForm("!= 1 $i/x"));
  EXPECT_NE(normalForm("== 1 $i/x"), normalForm("== 1 x"));
  EXPECT_NE(normalForm("== 1 $i/x"), normalForm("== 1$i/x"));
}

TEST(ConditionFormTest, SwapsNothingElse) {
  EXPECT_NE(normalForm("$i/a $i/b"), normalForm("$i/b $i/a"));
  EXPECT_NE(normalForm("$i/a $i/b $i/c"), normalForm("$i/c $i/b $i/a"));
  EXPECT_NE(normalForm("== ! $i/a"), normalForm("== $i/a !"));
  EXPECT_NE(normalForm("== 0 && $i/b 1"), normalForm("== 1 && $i/b 0"));
  EXPECT_NE(normalForm("== 0 1 2"), normalForm("== 1 0 2"));
}

TEST(ConditionFormTest, LooksAtWordsAndNotAtWhatSeparatesThem) {
  EXPECT_EQ(normalForm("\t== \n 1 \v\f\r$i/x "), "== $i/x 1");
  EXPECT_EQ(normalForm(" a  &&\tb == c && d "), "a && b == c && d");
  EXPECT_EQ(normalForm(" flag "), "flag");
  EXPECT_EQ(normalForm(" \t "), "");
}

TEST(ConditionFormTest, DiffersAfterASaveThatCutsParenthesesOff) {
  for (const std::string_view condition : {"== $i/f(x) $i/y", "== 1) $i/x", "( $i/a $i/b"}) {
    EXPECT_NE(normalForm(prepared(condition)), normalForm(condition)) << condition;
  }
}

constexpr std::array operands = {"a"sv, "b"sv, "$i/x"sv, "1'b1"sv, "0"sv, "$"sv, "m[3]"sv, "q=="sv};
constexpr std::array operators = {"=="sv, "&&"sv, "|"sv, "_x"sv, "\xC3\xA9"sv};
constexpr std::array blanks = {" "sv, "  "sv, "\t"sv, "\r\n"sv, "\v \f"sv};

std::string randomCondition(std::mt19937& random) {
  std::string condition;
  for (std::size_t words = random() % 8; words > 0; --words) {
    condition += random() % 2 == 0 ? pick(random, operands) : pick(random, operators);
    condition += pick(random, blanks);
  }
  return condition;
}

TEST(ConditionFormTest, StaysWhenAConditionWithoutParenthesesIsSavedAgain) {
  std::mt19937 random(7);
  int swapped = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::string saved = prepared(randomCondition(random));
    const std::string savedAgain = prepared(saved);
    ASSERT_EQ(normalForm(savedAgain), normalForm(saved)) << saved;
    swapped += savedAgain != saved ? 1 : 0;
  }
  EXPECT_GT(swapped, 1000);
}

}  // namespace
}  // namespace consolidator::inspect
