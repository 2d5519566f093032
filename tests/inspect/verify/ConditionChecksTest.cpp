#include "inspect/verify/ConditionChecks.h"
#include "inspect/verify/VerifyFixture.h"
#include "model/ConditionPreparer.h"

#include <utility>

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

BreakableCondition sourceLine(std::string_view text, std::uint32_t line, std::string_view file) {
  BreakableCondition condition(ConditionKind::SourceLine, text);
  condition.line = line;
  condition.file = file;
  return condition;
}

KernelRecord kernelWith(std::vector<BreakableCondition> conditions) {
  KernelRecord kernel = plainKernel();
  kernel.breakableConditions = BreakableConditionList(std::move(conditions));
  return kernel;
}

Counts countsWith(std::vector<BreakableCondition> conditions) {
  return countsIn(container(plainSections({kernelWith(std::move(conditions))})));
}

Counts countsWith(std::string_view condition) {
  return countsWith({BreakableCondition(ConditionKind::Start, condition)});
}

// Where the n-th condition of such a kernel begins in its record.
std::uint64_t conditionOffset(const std::vector<BreakableCondition>& conditions, std::size_t n) {
  KernelRecord kernel = kernelWith(conditions);
  const std::size_t whole = encode(kernel).size();
  std::size_t rest = 0;
  for (std::size_t i = n; i < conditions.size(); ++i) rest += encode(conditions[i]).size();
  return whole - (4 + 4 + "ram"s.size()) - rest;
}

TEST(ConditionChecksTest, TakesWholePrefixFormsOnly) {
  for (const std::string_view whole : {"1", "$i/a", "$i/a ", "name", "== 1 $i/a", "== 1 $i/a  ",
                                       "== 0 && $i/b == 1 $i/a", "&& == 1 2 == 3 4", "\t+\n1 2"}) {
    EXPECT_TRUE(isPrefixForm(whole)) << whole;
  }
  for (const std::string_view partial : {"", " ", "==", "== 1", "1 2", "== 1 2 3", "1 == 2",
                                         "$i/a $i/b", "&& == 1 2 == 3", "! $i/a"}) {
    EXPECT_FALSE(isPrefixForm(partial)) << partial;
  }
}

TEST(ConditionChecksTest, FindsConditionOfUnknownKind) {
  for (const auto kind : {ConditionKind::Error, static_cast<ConditionKind>(77)}) {
    const std::vector<BreakableCondition> conditions{{ConditionKind::Stop, "== 1 2"},
                                                     {kind, "== 1 2"}};
    EXPECT_TRUE(findsOnlyInKernel(kernelWith(conditions), FindingCode::UnknownCondition,
                                  conditionOffset(conditions, 1)));
  }
}

TEST(ConditionChecksTest, FindsConditionThatSaysTheSameAsAnEarlierOne) {
  const std::vector<BreakableCondition> conditions{{ConditionKind::Start, "== $i/a 1"},
                                                   {ConditionKind::Start, "==  1 $i/a"}};
  EXPECT_TRUE(findsOnlyInKernel(kernelWith(conditions), FindingCode::DuplicateCondition,
                                conditionOffset(conditions, 1)));
}

TEST(ConditionChecksTest, TellsConditionsApartByAllTheirFields) {
  EXPECT_EQ(countsWith({{ConditionKind::Start, "== $i/a 1"},
                        {ConditionKind::Stop, "== $i/a 1"},
                        {ConditionKind::Start, "== $i/b 1"},
                        sourceLine("== $i/a 1", 1, "k.c"),
                        sourceLine("== $i/a 1", 2, "k.c"),
                        sourceLine("== $i/a 1", 1, "l.c")}),
            Counts());
}

TEST(ConditionChecksTest, LetsKernelsHaveTheSameConditions) {
  EXPECT_EQ(countsIn(container(plainSections({plainKernel("k"), plainKernel("l")}))), Counts());
}

TEST(ConditionChecksTest, FindsConditionThatTheNextSaveChanges) {
  const std::vector<BreakableCondition> conditions{{ConditionKind::Start, "== $i/a (1"},
                                                   {ConditionKind::Start, "== a $i/b"}};
  EXPECT_EQ(countsWith("== a $i/b"), (Counts{{"condition-decays", 1}}));
  EXPECT_EQ(countsWith("(1'b1 == 1'b1)"),
            (Counts{{"condition-decays", 1}, {"malformed-condition", 1}}));
  EXPECT_EQ(countsWith("&& == 1 $i/a == 2 $i/b)"), (Counts{{"condition-decays", 1}}));
  EXPECT_EQ(findingsIn(container(plainSections({kernelWith(conditions)})))
                .list(FindingCode::ConditionDecays)
                .back()
                .offset,
            offsetOfSection(plainSections({kernelWith(conditions)}), 3) + 4 +
                conditionOffset(conditions, 1));
}

TEST(ConditionChecksTest, LetsSavesSwapTwoOperands) {
  EXPECT_NE(ConditionPreparer().prepare("== $i/a 1'b1"), "== $i/a 1'b1");
  EXPECT_EQ(countsWith("== $i/a 1'b1"), Counts());
  EXPECT_EQ(countsWith("$i/flag"), Counts());
}

TEST(ConditionChecksTest, FindsMalformedCondition) {
  const std::vector<BreakableCondition> conditions{{ConditionKind::Start, "$i/a "},
                                                   {ConditionKind::Start, "! $i/a "}};
  EXPECT_TRUE(findsOnlyInKernel(kernelWith(conditions), FindingCode::MalformedCondition,
                                conditionOffset(conditions, 1)));
}

TEST(ConditionChecksTest, JudgesConditionsAsTheToolReadsThem) {
  EXPECT_EQ(countsWith("== $i/a 1\0 == (x"s),
            (Counts{{"zero-byte-in-text", 1}, {"json-not-strict", 1}}));
}

}  // namespace
}  // namespace consolidator::inspect
