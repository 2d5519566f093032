#include "model/ConditionPreparer.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ctime>
#include <ostream>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_literals;

struct Preparation {
  std::string claim;
  std::string before;
  std::string after;
};

void PrintTo(const Preparation& preparation, std::ostream* out) { *out << preparation.claim; }

std::string claimOf(const testing::TestParamInfo<Preparation>& test) { return test.param.claim; }

class ConditionTexts : public testing::TestWithParam<Preparation> {};

TEST_P(ConditionTexts, ArePrepared) {
  EXPECT_EQ(ConditionPreparer().prepare(GetParam().before), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    WellFormed, ConditionTexts,
    testing::Values(
        Preparation{"PutsTheOperatorFirst", "(x == 1'b1)", "== 1'b1 $i/x"},
        Preparation{"PutsTheLaterOperandFirst", "(a & b)", "& $i/b $i/a"},
        Preparation{"KnowsNoPrecedence", "(a == 1 && b == 0)", "== 0 && $i/b == 1 $i/a"},
        Preparation{"ReordersPrefixForm", "== $i/bq_start 1'b1", "== 1'b1 $i/bq_start"},
        Preparation{"SwapsBackTheSecondTime", "== 1'b1 $i/bq_start", "== $i/bq_start 1'b1"},
        Preparation{"QualifiesASingleName", "flag", "$i/flag"},
        Preparation{"LeavesASingleNumber", "1'b0", "1'b0"},
        Preparation{"LeavesASingleQualifiedName", "$i/flag", "$i/flag"},
        Preparation{"ReadsPostfixForm", "a b ==", "== $i/b $i/a"},
        Preparation{"KeepsTheLastOfSeveralOperands", "a b c", "$i/c"},
        Preparation{"DropsOperandsLeftOver", "a b == c", "== $i/c $i/b"},
        Preparation{"NestsToTheRight", "a b c & |", "| & $i/c $i/b $i/a"}),
    claimOf);

INSTANTIATE_TEST_SUITE_P(
    Parentheses, ConditionTexts,
    testing::Values(Preparation{"CutTheSpaceAfterThem", "(1'b1 == 1'b1) ", "== 1'b1) 1'b1"},
                    Preparation{"MayLackTheClosingOne", "(x == 1", "== 1 $i/x"},
                    Preparation{"MayLackTheOpeningOne", "x == f)", "== $i/f $i/x"},
                    Preparation{"CutTheLastCharacterWhateverItIs", "(a) == bc", "== $i/b $i/a)"},
                    Preparation{"AreCutOnceOnly", "((1 == b))", "(1 == $i/b) "},
                    Preparation{"StayInsideTheText", "1 (== b", "(== $i/b 1"},
                    Preparation{"StayAfterASpace", " (a == b", "(a == $i/b "},
                    Preparation{"MayBeAbsent", "x==1", "$i/x==1"}),
    claimOf);

INSTANTIATE_TEST_SUITE_P(
    Malformed, ConditionTexts,
    testing::Values(Preparation{"KeepsAnEmptyText", "", ""},
                    Preparation{"EmptiesAnOpeningParenthesis", "(", ""},
                    Preparation{"EmptiesAClosingParenthesis", ")", ""},
                    Preparation{"EmptiesAPairOfParentheses", "()", ""},
                    Preparation{"EmptiesWhiteSpace", " \t ", ""},
                    Preparation{"KeepsOperatorsOnly", "==", "== "},
                    Preparation{"KeepsSeveralOperatorsOnly", "( == \t && )", "== && "},
                    Preparation{"KeepsAMissingRightOperand", "(a ==)", "$i/a == "},
                    Preparation{"KeepsAMissingLeftOperand", "== a", "== $i/a "},
                    Preparation{"KeepsAnOperatorAfterAnOperator", "a  == &", "$i/a == & "},
                    Preparation{"KeepsANestedPrefixForm", "== 0 && $i/b == 1 $i/a",
                                "== 0 && $i/b == 1 $i/a "},
                    Preparation{"KeepsTheWholeTextOfALateFault", "& a b |", "& $i/a $i/b | "},
                    Preparation{"KeepsTheWholeTextOfAnEarlyFault", "& | a b", "& | $i/a $i/b "}),
    claimOf);

INSTANTIATE_TEST_SUITE_P(
    Tokens, ConditionTexts,
    testing::Values(
        Preparation{"AreSeparatedByAllWhiteSpace", "\ta\v==\f\r\n1  &  2 ", "& 2 == 1 $i/a"},
        Preparation{"AreNotSeparatedByOtherBlanks", "1 \xA0\x85\x1F 2", "\xA0\x85\x1F 2 1"},
        Preparation{"HoldZeroBytes", "a\0b == 1"s, "== 1 $i/a\0b"s},
        Preparation{"AreOperatorsWithALeadingZeroByte", "1 \0x 2"s, "\0x 2 1"s},
        Preparation{"AreNamesFromAToZ", "A + Z", "+ $i/Z $i/A"},
        Preparation{"AreNamesFromSmallAToZ", "a + z", "+ $i/z $i/a"},
        Preparation{"AreNumbersFromDigits", "0x + 9x", "+ 9x 0x"},
        Preparation{"AreOperandsWithADollar", "$ + $1", "+ $1 $"},
        Preparation{"AreOperatorsNextToUpperCase", "1 @a 2 [b 3", "[b 3 @a 2 1"},
        Preparation{"AreOperatorsNextToLowerCase", "1 `a 2 {b 3", "{b 3 `a 2 1"},
        Preparation{"AreOperatorsNextToDigits", "1 /a 2 :b 3", ":b 3 /a 2 1"},
        Preparation{"AreOperatorsNextToADollar", "1 #a 2 %b 3", "%b 3 #a 2 1"},
        Preparation{"AreOperatorsWithAnUnderscore", "1 _a 2", "_a 2 1"},
        Preparation{"AreOperatorsBeyondAscii", "1 \xC3\xA9 2", "\xC3\xA9 2 1"}),
    claimOf);

TEST(ConditionText, IsTriviallyTrueByteForByteOnly) {
  EXPECT_TRUE(isTriviallyTrue("(1'b1 == 1'b1)"));
  for (const std::string& text :
       {""s, "(1'b1 == 1'b1) "s, " (1'b1 == 1'b1)"s, "1'b1 == 1'b1"s, "(1'b1  == 1'b1)"s,
        "(1'b1==1'b1)"s, "(1'B1 == 1'b1)"s, "(1'b1 == 1'b1"s, "(1'b1 == 1'b1)\0"s}) {
    EXPECT_FALSE(isTriviallyTrue(text)) << text;
  }
}

std::string repeated(std::string_view piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (std::size_t i = 0; i < count; ++i) text += piece;
  return text;
}

struct Chain {
  std::string claim;
  std::string before;
  std::string after;
};

void PrintTo(const Chain& chain, std::ostream* out) { *out << chain.claim; }

// Texts of about 1 MB.
class ConditionChains : public testing::TestWithParam<Chain> {};

TEST_P(ConditionChains, TakeLinearTimeAndMemory) {
  const Chain& chain = GetParam();
  ASSERT_GE(chain.before.size(), 1'000'000U);
  const AllocationGauge gauge;
  const std::clock_t start = std::clock();
  const std::string prepared(ConditionPreparer().prepare(chain.before));
  const auto ticks = std::clock() - start;
  // Compared without printing megabytes.
  EXPECT_TRUE(prepared == chain.after) << prepared.substr(0, 200);
  // A text that is copied for each of its operators comes to hundreds of gigabytes.
  EXPECT_LE(gauge.total(), 200 * chain.before.size());
  // Tens of milliseconds are usual; quadratic work takes minutes.
  EXPECT_LT(ticks, 5 * CLOCKS_PER_SEC);
}

INSTANTIATE_TEST_SUITE_P(
    OneMegabyte, ConditionChains,
    testing::Values(
        Chain{"OfInfixOperators", "(" + repeated("a & ", 250'000) + "b)",
              "& $i/b" + repeated(" & $i/a", 249'999) + " $i/a"},
        Chain{"OfPrefixOperators", repeated("& 1 ", 250'000) + "1",
              repeated("& 1 ", 250'000) + "1 "},
        Chain{"OfPostfixOperators", repeated("1 ", 250'001) + repeated("& ", 250'000),
              repeated("& ", 250'000) + repeated("1 ", 250'000) + "1"},
        Chain{"OfOperands", repeated("a ", 500'000) + "b", "$i/b"},
        Chain{"OfOperatorsWithoutOperands", repeated("& ", 500'000), repeated("& ", 500'000)},
        Chain{"OfOneName", std::string(1'000'000, 'a'), "$i/" + std::string(1'000'000, 'a')},
        Chain{"OfWhiteSpace", std::string(1'000'000, ' '), ""}),
    [](const testing::TestParamInfo<Chain>& test) { return test.param.claim; });

}  // namespace
}  // namespace consolidator
