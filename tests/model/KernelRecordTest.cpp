#include "model/Describe.h"
#include "model/KernelRecord.h"
#include "model/SourceLine.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace consolidator {
namespace {

std::vector<std::string> texts(const TextList& list) { return {list.begin(), list.end()}; }

std::vector<BreakableCondition> conditions(const KernelRecord& kernel) {
  return {kernel.breakableConditions.begin(), kernel.breakableConditions.end()};
}

KernelRecord fullKernel() {
  KernelRecord kernel;
  kernel.name = "k";
  kernel.addInstancePath("top/k");
  kernel.type = KernelType::HLS;
  kernel.addArgument("a", "p", "int*");
  kernel.addVariable("v", "w", "char");
  kernel.setLogicLocation("reg", 1, 2, 3);
  kernel.addBreakableCondition(ConditionKind::Start, "(a == 1)");
  kernel.addBRAM("ram");
  return kernel;
}

TEST(KernelRecord, IsEmptyAndOfUnknownTypeWhenNew) {
  const KernelRecord kernel;
  EXPECT_EQ(kernel.name, "");
  EXPECT_TRUE(kernel.instancePaths.empty());
  EXPECT_EQ(kernel.type, KernelType::Unknown);
  EXPECT_TRUE(kernel.arguments.empty());
  EXPECT_TRUE(kernel.variables.empty());
  EXPECT_TRUE(kernel.hardwareVariables.empty());
  EXPECT_TRUE(kernel.breakableConditions.empty());
  EXPECT_TRUE(kernel.brams.empty());
}

TEST(KernelRecord, NumbersItsTypes) {
  EXPECT_EQ(static_cast<std::uint32_t>(KernelType::OpenCL), 0U);
  EXPECT_EQ(static_cast<std::uint32_t>(KernelType::C), 1U);
  EXPECT_EQ(static_cast<std::uint32_t>(KernelType::RTL), 2U);
  EXPECT_EQ(static_cast<std::uint32_t>(KernelType::Unknown), 3U);
  EXPECT_EQ(static_cast<std::uint32_t>(KernelType::HLS), 4U);
}

// Hardware variables are kept on purpose: decoding resets fresh records only.
TEST(KernelRecord, ResetClearsAllButHardwareVariables) {
  KernelRecord kernel = fullKernel();
  kernel.reset();
  KernelRecord expected;
  expected.setLogicLocation("reg", 1, 2, 3);
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, CopiesAreDeep) {
  const KernelRecord kernel = fullKernel();
  KernelRecord copy = kernel;
  EXPECT_EQ(copy, kernel);
  copy.name = "other";
  copy.addInstancePath("top/other");
  copy.arguments.find("a")->instanceBits = {{{1, 2}}};
  copy.addVariable("other", "", "");
  copy.setLogicLocation("reg", 1, 9, 9);
  copy.prepareBreakableConditions();
  copy.addBRAM("other");
  EXPECT_EQ(describe(kernel), describe(fullKernel()));
  copy = kernel;
  EXPECT_EQ(describe(copy), describe(fullKernel()));
}

TEST(KernelRecord, EqualityComparesEveryField) {
  const KernelRecord kernel = fullKernel();
  KernelSequence others(8, kernel);
  others[0].name = "K";
  others[1].addInstancePath("x");
  others[2].type = KernelType::RTL;
  others[3].addArgument("x", "", "");
  others[4].addVariable("x", "", "");
  others[5].setLogicLocation("reg", 0, 0, 1);
  others[6].addBreakableCondition(ConditionKind::Stop, "x");
  others[7].addBRAM("ram");
  for (const KernelRecord& other : others) EXPECT_NE(other, kernel) << describe(other);
}

TEST(KernelRecord, AddsAnInstancePathOnce) {
  KernelRecord kernel;
  for (const char* path : {"b", "a", "b", "A", "a", "ab"}) kernel.addInstancePath(path);
  EXPECT_EQ(texts(kernel.instancePaths), (std::vector<std::string>{"b", "a", "A", "ab"}));
}

TEST(KernelRecord, AddsAnEmptyInstancePathOnce) {
  KernelRecord kernel;
  kernel.addInstancePath("");
  kernel.addInstancePath("");
  EXPECT_EQ(texts(kernel.instancePaths), (std::vector<std::string>{""}));
}

TEST(KernelRecord, KeepsZeroBytesOfAnInstancePath) {
  KernelRecord kernel;
  kernel.addInstancePath(std::string("a\0b", 3));
  kernel.addInstancePath("a");
  EXPECT_EQ(texts(kernel.instancePaths), (std::vector<std::string>{std::string("a\0b", 3), "a"}));
}

TEST(KernelRecord, KeepsTheFirstArgumentOfAName) {
  KernelRecord kernel;
  kernel.addArgument("a", "p", "int");
  kernel.arguments.find("a")->instanceBits = {{{1, 2}}};
  kernel.addArgument("a", "q", "float");
  kernel.addArgument("A", "q", "float");
  KernelRecord expected;
  VariableRecord first("a", "p", "int");
  first.instanceBits = {{{1, 2}}};
  expected.arguments.append(first);
  expected.arguments.append({"A", "q", "float"});
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, KeepsTheFirstVariableOfAName) {
  KernelRecord kernel;
  kernel.addVariable("v", "p", "int");
  kernel.variables.find("v")->instanceBits = {{{1, 2}}};
  kernel.addVariable("v", "q", "float");
  kernel.addVariable("V", "q", "float");
  KernelRecord expected;
  VariableRecord first("v", "p", "int");
  first.instanceBits = {{{1, 2}}};
  expected.variables.append(first);
  expected.variables.append({"V", "q", "float"});
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, KeepsArgumentsAndVariablesApart) {
  KernelRecord kernel;
  kernel.addArgument("a", "p", "int");
  kernel.addVariable("a", "q", "char");
  ASSERT_EQ(kernel.arguments.size(), 1U);
  ASSERT_EQ(kernel.variables.size(), 1U);
  EXPECT_EQ(kernel.arguments[0], VariableRecord("a", "p", "int"));
  EXPECT_EQ(kernel.variables[0], VariableRecord("a", "q", "char"));
}

TEST(KernelRecord, KeepsTheFirstHardwareVariableOfAName) {
  HardwareVariable first("reg");
  first.logicLocations = {{1, 2}};
  HardwareVariable second("reg");
  second.logicLocations = {{3, 4}, {5, 6}};
  KernelRecord kernel;
  kernel.addHardwareVariable(first);
  kernel.addHardwareVariable(second);
  kernel.addHardwareVariable(HardwareVariable("Reg"));
  KernelRecord expected;
  expected.hardwareVariables.append(first);
  expected.hardwareVariables.append(HardwareVariable("Reg"));
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, SetLogicLocationFillsANewVariableUpToTheBit) {
  KernelRecord kernel;
  kernel.setLogicLocation("reg", 5, 11, 22);
  KernelRecord expected;
  expected.hardwareVariables.append(HardwareVariable("reg")).logicLocations = {
      {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {11, 22}};
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, SetLogicLocationOverwritesAPresentBit) {
  KernelRecord kernel;
  kernel.setLogicLocation("reg", 2, 1, 2);
  kernel.setLogicLocation("reg", 2, 5, 6);
  kernel.setLogicLocation("reg", 0, 3, 4);
  ASSERT_EQ(kernel.hardwareVariables.size(), 1U);
  EXPECT_EQ(kernel.hardwareVariables[0].logicLocations,
            (std::vector<LogicLocation>{{3, 4}, {0, 0}, {5, 6}}));
}

TEST(KernelRecord, SetLogicLocationExtendsAPresentVariable) {
  KernelRecord kernel;
  kernel.setLogicLocation("reg", 0, 1, 2);
  kernel.setLogicLocation("other", 0, 7, 8);
  kernel.setLogicLocation("reg", 2, 3, 4);
  ASSERT_EQ(kernel.hardwareVariables.size(), 2U);
  EXPECT_EQ(kernel.hardwareVariables[0].logicLocations,
            (std::vector<LogicLocation>{{1, 2}, {0, 0}, {3, 4}}));
  EXPECT_EQ(kernel.hardwareVariables[1].logicLocations, (std::vector<LogicLocation>{{7, 8}}));
}

TEST(KernelRecord, SetLogicLocationTakesTheFirstOfEqualNames) {
  KernelRecord kernel;
  for (int i = 0; i < 20; ++i) kernel.hardwareVariables.append(HardwareVariable("reg"));
  kernel.setLogicLocation("reg", 0, 1, 2);
  EXPECT_EQ(kernel.hardwareVariables.size(), 20U);
  EXPECT_EQ(kernel.hardwareVariables[0].logicLocations, (std::vector<LogicLocation>{{1, 2}}));
  EXPECT_TRUE(kernel.hardwareVariables[1].logicLocations.empty());
}

TEST(KernelRecord, AddsAConditionOfAKindAndTextOnce) {
  KernelRecord kernel;
  kernel.addBreakableCondition(ConditionKind::Start, "x");
  kernel.addBreakableCondition(ConditionKind::Stop, "x");
  kernel.addBreakableCondition(ConditionKind::Start, "x");
  kernel.addBreakableCondition(ConditionKind::Start, "X");
  KernelRecord expected;
  expected.breakableConditions.append({ConditionKind::Start, "x"});
  expected.breakableConditions.append({ConditionKind::Stop, "x"});
  expected.breakableConditions.append({ConditionKind::Start, "X"});
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, AddsAConditionRecordUnlessAllItsFieldsArePresent) {
  KernelRecord kernel;
  const std::vector<BreakableCondition> different{
      sourceLine("x", 1, "a.c"), sourceLine("x", 2, "a.c"), sourceLine("x", 1, "b.c"),
      sourceLine("y", 1, "a.c"), sourceLine("x", 0, "")};
  for (const BreakableCondition& condition : different) kernel.addBreakableCondition(condition);
  for (const BreakableCondition& condition : different) kernel.addBreakableCondition(condition);
  kernel.addBreakableCondition(ConditionKind::SourceLine, "x");
  EXPECT_EQ(conditions(kernel), different);
}

TEST(KernelRecord, AddsEveryBRAM) {
  KernelRecord kernel;
  for (const char* bram : {"ram", "b", "ram", "", ""}) kernel.addBRAM(bram);
  EXPECT_EQ(kernel.brams, (std::vector<std::string>{"ram", "b", "ram", "", ""}));
}

TEST(KernelRecord, AddsElementsOfItsOwn) {
  KernelRecord kernel = fullKernel();
  kernel.addInstancePath(kernel.instancePaths[0]);
  kernel.addArgument(kernel.arguments[0].second, kernel.arguments[0].name, kernel.name);
  kernel.addHardwareVariable(kernel.hardwareVariables[0]);
  kernel.addBreakableCondition(kernel.breakableConditions[0]);
  kernel.addBRAM(kernel.brams[0]);
  KernelRecord expected = fullKernel();
  expected.addArgument("p", "a", "k");
  expected.addBRAM("ram");
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, PreparingRemovesEveryTriviallyTrueCondition) {
  KernelRecord kernel;
  kernel.addBreakableCondition(ConditionKind::Start, "(1'b1 == 1'b1)");
  kernel.addBreakableCondition(ConditionKind::Start, "(x == 1)");
  kernel.addBreakableCondition(ConditionKind::Stop, "(1'b1 == 1'b1)");
  kernel.prepareBreakableConditions();
  EXPECT_EQ(conditions(kernel),
            (std::vector<BreakableCondition>{{ConditionKind::Start, "== 1 $i/x"}}));
}

TEST(KernelRecord, PreparingMayLeaveNoCondition) {
  KernelRecord kernel;
  kernel.addBreakableCondition(sourceLine("(1'b1 == 1'b1)", 1, "a.c"));
  kernel.addBreakableCondition(sourceLine("(1'b1 == 1'b1)", 2, "a.c"));
  kernel.prepareBreakableConditions();
  EXPECT_TRUE(kernel.breakableConditions.empty());
  kernel.prepareBreakableConditions();
  EXPECT_TRUE(kernel.breakableConditions.empty());
}

TEST(KernelRecord, PreparingKeepsKindLineFileAndOrder) {
  KernelRecord kernel;
  kernel.addBreakableCondition(sourceLine("(a & b)", 12, "a.c"));
  kernel.addBreakableCondition(ConditionKind::Stop, "(1'b1 == 1'b1)");
  kernel.addBreakableCondition(ConditionKind::Stop, "flag");
  kernel.addBreakableCondition(static_cast<ConditionKind>(9), "==");
  kernel.prepareBreakableConditions();
  KernelRecord expected;
  expected.addBreakableCondition(sourceLine("& $i/b $i/a", 12, "a.c"));
  expected.addBreakableCondition(ConditionKind::Stop, "$i/flag");
  expected.addBreakableCondition(static_cast<ConditionKind>(9), "== ");
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelRecord, PreparingMayLeaveEqualConditions) {
  KernelRecord kernel;
  kernel.addBreakableCondition(ConditionKind::Start, "(a & b)");
  kernel.addBreakableCondition(ConditionKind::Start, "a & b");
  kernel.prepareBreakableConditions();
  EXPECT_EQ(conditions(kernel),
            (std::vector<BreakableCondition>(2, {ConditionKind::Start, "& $i/b $i/a"})));
}

// With so many conditions that they are found through an index.
TEST(KernelRecord, FindsConditionsByTheirPreparedTexts) {
  KernelRecord kernel;
  for (int i = 0; i < 40; ++i) {
    kernel.addBreakableCondition(ConditionKind::Start, "(a == " + std::to_string(i) + ")");
  }
  kernel.prepareBreakableConditions();
  kernel.addBreakableCondition(ConditionKind::Start, "== 7 $i/a");
  EXPECT_EQ(kernel.breakableConditions.size(), 40U);
  kernel.addBreakableCondition(ConditionKind::Start, "(a == 7)");
  EXPECT_EQ(kernel.breakableConditions.size(), 41U);
}

}  // namespace
}  // namespace consolidator
