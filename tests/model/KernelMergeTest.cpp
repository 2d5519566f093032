#include "model/Describe.h"
#include "model/KernelMerge.h"
#include "model/PlainKernel.h"
#include "model/RandomKernels.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

KernelRecord named(std::string_view name, KernelType type = KernelType::Unknown) {
  KernelRecord kernel;
  kernel.name = name;
  kernel.type = type;
  return kernel;
}

// Something in every list, bits, locations and BRAMs included.
KernelRecord kernelToMerge() {
  KernelRecord kernel = named("k", KernelType::HLS);
  kernel.addInstancePath("top/k");
  kernel.addArgument("a", "p", "int*");
  kernel.arguments.find("a")->instanceBits = {{{1, 2}, {3, 4}}};
  kernel.addVariable("v", "w", "char");
  kernel.variables.find("v")->instanceBits = {{{5, 6}}};
  kernel.setLogicLocation("r", 2, 7, 8);
  kernel.addBreakableCondition(ConditionKind::Start, "(a == 1)");
  kernel.addBRAM("m");
  kernel.addBRAM("m");
  return kernel;
}

KernelList listOf(const KernelSequence& kernels) {
  KernelList list;
  for (const KernelRecord& kernel : kernels) list.append(kernel);
  return list;
}

template <typename List>
std::string describeAll(const List& kernels) {
  std::string text;
  for (const auto& kernel : kernels) text += describe(kernel);
  return text;
}

// The list that merging one record after the other gives.
std::string merged(const KernelSequence& kernels) {
  KernelList list;
  for (const KernelRecord& kernel : kernels) mergeKernel(list, kernel);
  return describeAll(list);
}

TEST(KernelMerge, AppendsAnUnknownKernelUnchanged) {
  EXPECT_EQ(merged({kernelToMerge()}), describe(kernelToMerge()));
  EXPECT_EQ(merged({named("other"), kernelToMerge()}),
            describe(named("other")) + describe(kernelToMerge()));
}

TEST(KernelMerge, AppendsAnUnknownKernelWithItsEqualElements) {
  KernelRecord kernel = named("k");
  kernel.instancePaths.append("p");
  kernel.instancePaths.append("p");
  kernel.arguments.append({"a", "1", "int"});
  kernel.arguments.append({"a", "2", "int"});
  EXPECT_EQ(merged({kernel}), describe(kernel));
}

TEST(KernelMerge, KeepsTheFirstKnownType) {
  EXPECT_EQ(merged({named("k"), named("k", KernelType::HLS)}),
            describe(named("k", KernelType::HLS)));
  EXPECT_EQ(merged({named("k"), named("k", KernelType::HLS), named("k", KernelType::RTL)}),
            describe(named("k", KernelType::HLS)));
  EXPECT_EQ(merged({named("k", KernelType::OpenCL), named("k")}),
            describe(named("k", KernelType::OpenCL)));
  EXPECT_EQ(merged({named("k"), named("k")}), describe(named("k")));
}

TEST(KernelMerge, TakesATypeThatHasNoNameForKnown) {
  const auto strange = static_cast<KernelType>(7);
  EXPECT_EQ(merged({named("k", strange), named("k", KernelType::HLS)}),
            describe(named("k", strange)));
  EXPECT_EQ(merged({named("k"), named("k", strange)}), describe(named("k", strange)));
}

TEST(KernelMerge, AppendsNewInstancePaths) {
  KernelRecord first = named("k");
  first.addInstancePath("b");
  KernelRecord second = named("k");
  for (const char* path : {"c", "b", "a"}) second.addInstancePath(path);
  KernelRecord expected = named("k");
  for (const char* path : {"b", "c", "a"}) expected.addInstancePath(path);
  EXPECT_EQ(merged({first, second}), describe(expected));
}

// The bits are lost on purpose: they reach a kernel only through the record that created it.
TEST(KernelMerge, AppendsNewArgumentsAndVariablesWithoutTheirBits) {
  KernelRecord expected = named("k", KernelType::HLS);
  expected.addInstancePath("top/k");
  expected.addArgument("a", "p", "int*");
  expected.addVariable("v", "w", "char");
  expected.setLogicLocation("r", 2, 7, 8);
  expected.addBreakableCondition(ConditionKind::Start, "(a == 1)");
  EXPECT_EQ(merged({named("k"), kernelToMerge()}), describe(expected));
}

TEST(KernelMerge, LeavesKnownArgumentsAndVariablesAsTheyAre) {
  KernelRecord incoming = named("k");
  for (const char* name : {"a", "v"}) {
    VariableRecord variable(name, "other", "float");
    variable.instanceBits = {{{9, 9}}, {{9, 9}}};
    incoming.arguments.append(variable);
    incoming.variables.append(variable);
  }
  KernelRecord expected = kernelToMerge();
  expected.addArgument("v", "other", "float");
  expected.addVariable("a", "other", "float");
  EXPECT_EQ(merged({kernelToMerge(), incoming}), describe(expected));
}

TEST(KernelMerge, IgnoresAKnownHardwareVariableWithItsLocations) {
  KernelRecord first = named("k");
  first.setLogicLocation("r", 0, 1, 2);
  KernelRecord second = named("k");
  second.setLogicLocation("r", 2, 3, 4);
  EXPECT_EQ(merged({first, second}), describe(first));
}

TEST(KernelMerge, AppendsANewHardwareVariableWithItsLocations) {
  KernelRecord first = named("k");
  first.setLogicLocation("r", 0, 1, 2);
  KernelRecord second = named("k");
  second.setLogicLocation("s", 1, 3, 4);
  KernelRecord expected = first;
  expected.setLogicLocation("s", 1, 3, 4);
  EXPECT_EQ(merged({first, second}), describe(expected));
}

TEST(KernelMerge, TakesTheFirstOfSeveralNewHardwareVariablesOfAName) {
  KernelRecord incoming = named("k");
  for (const std::uint32_t first : {1U, 2U}) {
    HardwareVariable variable("r");
    variable.logicLocations = {{first, 0}};
    incoming.hardwareVariables.append(variable);
  }
  KernelRecord expected = named("k");
  expected.setLogicLocation("r", 0, 1, 0);
  EXPECT_EQ(merged({named("k"), incoming}), describe(expected));
}

TEST(KernelMerge, MovesTheLocationsOfARecordThatIsNotNeededAnyMore) {
  KernelList list = listOf({named("k")});
  for (const std::string name : {"r", "s"}) {
    KernelRecord incoming = named("k");
    incoming.setLogicLocation(name, 31, 1, 2);
    const LogicLocation* const locations = incoming.hardwareVariables.front().logicLocations.data();
    mergeKernel(list, std::move(incoming));
    EXPECT_EQ(list.front().hardwareVariables.back().logicLocations.data(), locations) << name;
  }
  EXPECT_EQ(list.front().hardwareVariables.size(), 2U);
}

TEST(KernelMerge, AppendsConditionsThatDifferInAnyField) {
  BreakableCondition condition(ConditionKind::SourceLine, "x");
  condition.line = 1;
  condition.file = "a.c";
  KernelRecord first = named("k");
  first.addBreakableCondition(condition);
  KernelRecord second = first;
  condition.line = 2;
  second.addBreakableCondition(condition);
  second.addBreakableCondition(ConditionKind::SourceLine, "x");
  second.addBreakableCondition(ConditionKind::Stop, "x");
  EXPECT_EQ(merged({first, second}), describe(second));
}

TEST(KernelMerge, CompletesTheConditionsItAppends) {
  KernelRecord incoming = named("k");
  BreakableCondition condition;
  condition.condition = "x";
  incoming.addBreakableCondition(condition);
  KernelRecord expected = named("k");
  expected.addBreakableCondition(ConditionKind::Start, "x");
  EXPECT_EQ(merged({named("k"), incoming}), describe(expected));
}

// A rule of the format: a kernel's BRAMs come only from the record that created it.
TEST(KernelMerge, NeverMergesBRAMs) {
  KernelRecord withBrams = named("k");
  withBrams.addBRAM("m");
  EXPECT_EQ(merged({named("k"), withBrams}), describe(named("k")));
  EXPECT_EQ(merged({withBrams, named("k")}), describe(withBrams));
  KernelRecord withOthers = named("k");
  withOthers.addBRAM("n");
  EXPECT_EQ(merged({withBrams, withOthers}), describe(withBrams));
}

TEST(KernelMerge, ChangesNothingTheSecondTime) {
  EXPECT_EQ(merged({kernelToMerge(), kernelToMerge()}), merged({kernelToMerge()}));
  EXPECT_EQ(merged({named("k"), kernelToMerge(), kernelToMerge()}),
            merged({named("k"), kernelToMerge()}));
}

TEST(KernelMerge, ComparesNamesExactly) {
  EXPECT_EQ(merged({named("K"), named("k"), named("k "), named("K", KernelType::C)}),
            describe(named("K", KernelType::C)) + describe(named("k")) + describe(named("k ")));
}

TEST(KernelMerge, MatchesEmptyNames) {
  EXPECT_EQ(merged({named(""), named("k"), named("", KernelType::C)}),
            describe(named("", KernelType::C)) + describe(named("k")));
}

TEST(KernelMerge, LooksAtTheFirstOfEqualNamesOnly) {
  KernelList list = listOf({named("k", KernelType::C), named("k"), named("k")});
  KernelRecord incoming = named("k", KernelType::HLS);
  incoming.addInstancePath("p");
  mergeKernel(list, incoming);
  KernelRecord expected = named("k", KernelType::C);
  expected.addInstancePath("p");
  EXPECT_EQ(describeAll(list), describeAll(listOf({expected, named("k"), named("k")})));
}

TEST(KernelMerge, OnlyReadsTheIncomingRecord) {
  const KernelRecord incoming = kernelToMerge();
  KernelList list;
  mergeKernel(list, incoming);
  list.find("k")->addInstancePath("other");
  list.find("k")->prepareBreakableConditions();
  mergeKernel(list, incoming);
  EXPECT_EQ(describe(incoming), describe(kernelToMerge()));
}

TEST(KernelMerge, MergesARecordOfTheListItself) {
  KernelRecord later = kernelToMerge();
  later.addInstancePath("later");
  KernelList list = listOf({kernelToMerge(), later});
  mergeKernel(list, list[1]);
  KernelRecord expected = kernelToMerge();
  expected.addInstancePath("later");
  EXPECT_EQ(describeAll(list), describe(expected) + describe(later));
}

TEST(KernelMerge, OfManyRecordsIsThatOfOneAfterTheOther) {
  RandomKernels kernels(20240108);
  for (int round = 0; round < 400; ++round) {
    KernelList list;
    KernelSequence incoming;
    for (std::size_t left = kernels.below(3); left > 0; --left) list.append(kernels.next(5));
    for (std::size_t left = kernels.below(40); left > 0; --left)
      incoming.push_back(kernels.next(5));
    KernelList expected = list;
    for (const KernelRecord& record : incoming) mergeKernel(expected, record);
    mergeKernels(list, std::move(incoming));
    ASSERT_EQ(describeAll(list), describeAll(expected)) << "round " << round;
  }
}

TEST(KernelMerge, OfDistinctRecordsIntoAnEmptyListTakesThemAsTheyAre) {
  const KernelSequence incoming{kernelToMerge(), named("a"), named("")};
  KernelList list;
  mergeKernels(list, KernelSequence(incoming));
  EXPECT_EQ(describeAll(list), describeAll(listOf(incoming)));
}

TEST(KernelMerge, AgreesWithLinearSearches) {
  RandomKernels kernels(20240107);
  for (int round = 0; round < 400; ++round) {
    KernelList list;
    std::vector<PlainKernel> plain;
    const std::size_t longest = round % 10 == 0 ? 40 : 5;
    for (std::size_t left = kernels.below(40); left > 0; --left) {
      const KernelRecord incoming = kernels.next(longest);
      if (kernels.below(8) == 0) {
        list.append(incoming);
        plain.emplace_back(incoming);
      } else {
        mergeKernel(list, incoming);
        mergePlainly(plain, incoming);
      }
    }
    ASSERT_EQ(describeAll(list), describeAll(plain)) << "round " << round;
  }
}

}  // namespace
}  // namespace consolidator
