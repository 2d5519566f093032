#include "model/BreakableCondition.h"
#include "support/HexBytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace consolidator {
namespace {

BreakableCondition conditionAtALine() {
  BreakableCondition condition(ConditionKind::SourceLine, "x");
  condition.line = 0x01020304U;
  condition.file = "a.c";
  return condition;
}

std::string sourceLineBytes() {
  return hexBytes("02 00 00 00  01 00 00 00 78  04 03 02 01  03 00 00 00 61 2E 63");
}

ConditionKind kindOf(std::uint32_t number) { return static_cast<ConditionKind>(number); }

TEST(BreakableCondition, IsAnEmptyIncompleteStartWhenNew) {
  const BreakableCondition condition;
  EXPECT_EQ(condition.kind, ConditionKind::Start);
  EXPECT_EQ(condition.condition, "");
  EXPECT_EQ(condition.line, 0U);
  EXPECT_EQ(condition.file, "");
  EXPECT_FALSE(condition.valid);
}

TEST(BreakableCondition, IsCompleteWhenMadeOfKindAndText) {
  const BreakableCondition condition(ConditionKind::Stop, "a == 1");
  EXPECT_EQ(condition.kind, ConditionKind::Stop);
  EXPECT_EQ(condition.condition, "a == 1");
  EXPECT_EQ(condition.line, 0U);
  EXPECT_EQ(condition.file, "");
  EXPECT_TRUE(condition.valid);
}

TEST(BreakableCondition, NumbersItsKinds) {
  EXPECT_EQ(ConditionKind::Start, kindOf(0));
  EXPECT_EQ(ConditionKind::Stop, kindOf(1));
  EXPECT_EQ(ConditionKind::SourceLine, kindOf(2));
}

// Line and file count for the kinds that do not store them, too.
TEST(BreakableCondition, ComparesAllFieldsOfEveryKindButNotTheFlag) {
  for (const std::uint32_t kind : {0U, 1U, 2U, 9U}) {
    BreakableCondition condition = conditionAtALine();
    condition.kind = kindOf(kind);
    BreakableCondition other = condition;
    other.valid = false;
    EXPECT_EQ(condition, other) << kind;
    EXPECT_EQ(BreakableConditionKey{}(condition), BreakableConditionKey{}(other)) << kind;
    const auto expectDifferent = [&] {
      EXPECT_NE(condition, other) << kind;
      EXPECT_NE(BreakableConditionKey{}(condition), BreakableConditionKey{}(other)) << kind;
    };
    other = condition;
    other.kind = kindOf(kind + 1);
    expectDifferent();
    other = condition;
    other.condition = "X";
    expectDifferent();
    other = condition;
    other.line = 5;
    expectDifferent();
    other = condition;
    other.file = "b.c";
    expectDifferent();
  }
}

TEST(BreakableCondition, HashesEqualKeysAlike) {
  const BreakableCondition condition = conditionAtALine();
  const BreakableCondition copy = condition;
  EXPECT_EQ(BreakableConditionKey::hash(BreakableConditionKey{}(condition)),
            BreakableConditionKey::hash(BreakableConditionKey{}(copy)));
}

// Each takes what it has from its neighbour in the other one.
TEST(BreakableCondition, HashesKeysOfOtherPartsApart) {
  const BreakableConditionKey::Key key{ConditionKind::Start, "ab", 2, "c"};
  for (const BreakableConditionKey::Key& other :
       {BreakableConditionKey::Key{ConditionKind::Stop, "ab", 2, "c"},
        {ConditionKind::Start, "ab", 3, "c"},
        {ConditionKind::Start, "b", 2, "ca"},
        {ConditionKind::Start, "c", 2, "ab"},
        {ConditionKind::SourceLine, "ab", 0, "c"}}) {
    EXPECT_NE(BreakableConditionKey::hash(other), BreakableConditionKey::hash(key));
  }
}

TEST(BreakableCondition, IsWrittenWithLineAndFileAsASourceLine) {
  EXPECT_EQ(encode(conditionAtALine()), sourceLineBytes());
}

TEST(BreakableCondition, IsWrittenWithoutLineAndFileAsAnyOtherKind) {
  BreakableCondition condition = conditionAtALine();
  condition.kind = ConditionKind::Start;
  EXPECT_EQ(encode(condition), hexBytes("00 00 00 00  01 00 00 00 78"));
  condition.kind = ConditionKind::Stop;
  EXPECT_EQ(encode(condition), hexBytes("01 00 00 00  01 00 00 00 78"));
  condition.kind = kindOf(3);
  EXPECT_EQ(encode(condition), hexBytes("03 00 00 00  01 00 00 00 78"));
}

TEST(BreakableCondition, IsReadWithLineAndFileAsASourceLine) {
  BreakableCondition condition;
  EXPECT_TRUE(decode(sourceLineBytes(), condition));
  EXPECT_EQ(condition, conditionAtALine());
  EXPECT_TRUE(condition.valid);
}

TEST(BreakableCondition, IsReadWithoutLineAndFileAsAnyOtherKind) {
  for (const char* kind : {"00 00 00 00", "01 00 00 00", "03 00 00 00", "FF FF FF FF"}) {
    BreakableCondition condition;
    EXPECT_TRUE(decode(hexBytes(kind) + hexBytes("01 00 00 00 78"), condition)) << kind;
    EXPECT_EQ(encode(condition), hexBytes(kind) + hexBytes("01 00 00 00 78"));
    EXPECT_EQ(condition.line, 0U) << kind;
    EXPECT_EQ(condition.file, "") << kind;
    EXPECT_TRUE(condition.valid) << kind;
  }
}

TEST(BreakableCondition, AcceptsASourceLineWithoutFile) {
  BreakableCondition condition;
  EXPECT_TRUE(decode(hexBytes("02 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"), condition));
  EXPECT_EQ(condition, BreakableCondition(ConditionKind::SourceLine, ""));
}

TEST(BreakableCondition, KeepsWhatAShortReadGave) {
  const std::string bytes = sourceLineBytes();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    BreakableCondition condition;
    EXPECT_FALSE(decode(bytes.substr(0, size), condition)) << size;
    EXPECT_FALSE(condition.valid) << size;
    EXPECT_EQ(condition.kind, size < 4 ? ConditionKind::Start : ConditionKind::SourceLine) << size;
    EXPECT_EQ(condition.condition, size < 9 ? "" : "x") << size;
    EXPECT_EQ(condition.line, size < 13 ? 0 : 0x01020304U) << size;
    EXPECT_EQ(condition.file, "") << size;
  }
}

}  // namespace
}  // namespace consolidator
