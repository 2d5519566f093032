#include "inspect/diff/Differences.h"
#include "inspect/diff/FileComparison.h"
#include "model/SourceLine.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace consolidator::inspect {
namespace {

using TextLines = std::vector<std::string>;

constexpr ComparisonOptions exact{ConditionMatch::Exact, false};
constexpr ComparisonOptions withSections{ConditionMatch::NormalForm, true};

KernelRecord named(std::string_view name) {
  KernelRecord kernel;
  kernel.name = name;
  return kernel;
}

// A kernel that uses every list, with two elements in each.
KernelRecord fullKernel() {
  KernelRecord kernel = named("k");
  kernel.type = KernelType::HLS;
  for (const char* const path : {"/t/k_1", "/t/k_2"}) kernel.addInstancePath(path);
  kernel.addArgument("a", "a_r", "int*");
  kernel.addArgument("b", "b_r", "int");
  kernel.addVariable("i", "i_r", "int");
  kernel.addVariable("j", "j_r", "char");
  kernel.setLogicLocation("/t/k_1/i_r", 1, 5, 6);
  kernel.setLogicLocation("/t/k_1/j_r", 0, 7, 8);
  kernel.addBreakableCondition(ConditionKind::Start, "== 1'b1 $i/bq_start");
  kernel.addBreakableCondition(sourceLine("== 3 $i/state", 11, "k.c"));
  kernel.addBRAM("ram_1");
  kernel.addBRAM("ram_2");
  return kernel;
}

using Edit = std::function<void(KernelRecord&)>;

// The changes from a full kernel to one that is edited.
TextLines changesBy(const Edit& edit, const ComparisonOptions& options = {}) {
  KernelRecord edited = fullKernel();
  edit(edited);
  const Compared found = compared(fileOf({fullKernel()}), fileOf({edited}), options);
  EXPECT_EQ(found.result.isEqual, found.changes.empty());
  return found.changes;
}

template <typename List>
void swapFirstTwo(List& list) {
  list.edit([](auto& items) { std::swap(items[0], items[1]); });
}

template <typename List>
void removeFirst(List& list) {
  list.edit([](auto& items) { items.erase(items.begin()); });
}

TEST(FileComparisonTest, FindsNothingInEqualRecords) {
  const std::string file = fileOf({fullKernel()});
  const Compared found = compared(file, withTrailingByte(file));
  EXPECT_EQ(found.changes, TextLines());
  EXPECT_TRUE(found.result.isEqual);
  EXPECT_TRUE(found.result.isComplete());
}

TEST(FileComparisonTest, FindsInstancePaths) {
  EXPECT_EQ(changesBy([](auto& k) { k.addInstancePath("/t/k_3"); }),
            TextLines{"k: instance_path /t/k_3 added"});
  EXPECT_EQ(changesBy([](auto& k) { removeFirst(k.instancePaths); }),
            TextLines{"k: instance_path /t/k_1 removed"});
  EXPECT_EQ(changesBy([](auto& k) { swapFirstTwo(k.instancePaths); }),
            TextLines{"k: order instance_paths changed"});
}

TEST(FileComparisonTest, FindsTheType) {
  EXPECT_EQ(changesBy([](auto& k) { k.type = KernelType::C; }), TextLines{"k: type changed"});
  EXPECT_EQ(changesBy([](auto& k) { k.type = static_cast<KernelType>(9); }),
            TextLines{"k: type changed"});
}

TEST(FileComparisonTest, FindsArguments) {
  EXPECT_EQ(changesBy([](auto& k) { k.addArgument("c", "c_r", "int"); }),
            TextLines{"k: argument c added"});
  EXPECT_EQ(changesBy([](auto& k) { removeFirst(k.arguments); }),
            TextLines{"k: argument a removed"});
  EXPECT_EQ(changesBy([](auto& k) { swapFirstTwo(k.arguments); }),
            TextLines{"k: order arguments changed"});
  const auto edit = [](auto change) {
    return [change](auto& k) { k.arguments.edit([&](auto& items) { change(items[1]); }); };
  };
  EXPECT_EQ(changesBy(edit([](auto& argument) { argument.second = "other"; })),
            TextLines{"k: argument b changed"});
  EXPECT_EQ(changesBy(edit([](auto& argument) { argument.cType = "char"; })),
            TextLines{"k: argument b changed"});
  EXPECT_EQ(changesBy(edit([](auto& argument) { argument.instanceBits.push_back({}); })),
            TextLines{"k: argument b changed"});
}

TEST(FileComparisonTest, FindsVariables) {
  EXPECT_EQ(changesBy([](auto& k) { k.addVariable("v", "v_r", "int"); }),
            TextLines{"k: variable v added"});
  EXPECT_EQ(changesBy([](auto& k) { removeFirst(k.variables); }),
            TextLines{"k: variable i removed"});
  EXPECT_EQ(changesBy([](auto& k) { swapFirstTwo(k.variables); }),
            TextLines{"k: order variables changed"});
  EXPECT_EQ(changesBy([](auto& k) {
              k.variables.edit([](auto& items) { items[0].instanceBits = {{{1, 2}}}; });
            }),
            TextLines{"k: variable i changed"});
}

TEST(FileComparisonTest, FindsOtherInstanceBits) {
  KernelRecord before = named("k");
  before.addVariable("v", "v_r", "int");
  before.variables.edit([](auto& items) { items[0].instanceBits = {{{1, 2}, {3, 4}}, {}}; });
  KernelRecord after = before;
  after.variables.edit([](auto& items) { items[0].instanceBits[0][1].second = 5; });
  EXPECT_EQ(compared(fileOf({before}), fileOf({after})).changes,
            TextLines{"k: variable v changed"});
  after = before;
  after.variables.edit([](auto& items) { items[0].instanceBits[1].push_back({0, 0}); });
  EXPECT_EQ(compared(fileOf({before}), fileOf({after})).changes,
            TextLines{"k: variable v changed"});
}

TEST(FileComparisonTest, FindsHardwareVariables) {
  EXPECT_EQ(changesBy([](auto& k) { k.setLogicLocation("/t/k_2/i_r", 0, 1, 1); }),
            TextLines{"k: hardware_variable /t/k_2/i_r added"});
  EXPECT_EQ(changesBy([](auto& k) { removeFirst(k.hardwareVariables); }),
            TextLines{"k: hardware_variable /t/k_1/i_r removed"});
  EXPECT_EQ(changesBy([](auto& k) { swapFirstTwo(k.hardwareVariables); }),
            TextLines{"k: order hardware_variables changed"});
  EXPECT_EQ(changesBy([](auto& k) { k.setLogicLocation("/t/k_1/i_r", 0, 0, 1); }),
            TextLines{"k: hardware_variable /t/k_1/i_r changed"});
  EXPECT_EQ(changesBy([](auto& k) { k.setLogicLocation("/t/k_1/i_r", 2, 0, 0); }),
            TextLines{"k: hardware_variable /t/k_1/i_r changed"});
}

TEST(FileComparisonTest, FindsBrams) {
  EXPECT_EQ(changesBy([](auto& k) { k.addBRAM("ram_1"); }), TextLines{"k: bram ram_1 added"});
  EXPECT_EQ(changesBy([](auto& k) { k.brams.erase(k.brams.begin()); }),
            TextLines{"k: bram ram_1 removed"});
  EXPECT_EQ(changesBy([](auto& k) { std::swap(k.brams[0], k.brams[1]); }),
            TextLines{"k: order brams changed"});
}

TEST(FileComparisonTest, FindsKernels) {
  const std::string both = fileOf({named("a"), named("b")});
  EXPECT_EQ(compared(fileOf({named("a")}), both).changes, TextLines{"b: kernel b added"});
  EXPECT_EQ(compared(fileOf({named("b")}), both).changes, TextLines{"a: kernel a added"});
  EXPECT_EQ(compared(both, fileOf({named("a")})).changes, TextLines{"b: kernel b removed"});
  EXPECT_EQ(compared(both, fileOf({named("b")})).changes, TextLines{"a: kernel a removed"});
  EXPECT_EQ(compared(both, fileOf({named("b"), named("a")})).changes,
            TextLines{"order kernels changed"});
}

TEST(FileComparisonTest, ComparesKernelsThatAreNotWhereTheyWere) {
  KernelRecord changed = named("b");
  changed.type = KernelType::C;
  EXPECT_EQ(compared(fileOf({named("a"), named("b")}), fileOf({changed, named("c")})).changes,
            (TextLines{"a: kernel a removed", "b: type changed", "c: kernel c added"}));
}

TEST(FileComparisonTest, MatchesTheNthOfANameWithTheNth) {
  KernelRecord second = named("k");
  second.type = KernelType::C;
  KernelRecord changed = second;
  changed.type = KernelType::RTL;
  EXPECT_EQ(
      compared(fileOf({named("k"), second}), fileOf({named("x"), named("k"), changed})).changes,
      (TextLines{"k: type changed", "x: kernel x added"}));
}

TEST(FileComparisonTest, ReportsAnOrderOnceWhateverElseChanges) {
  EXPECT_EQ(
      changesBy([](auto& k) {
        swapFirstTwo(k.arguments);
        k.arguments.edit([](auto& items) { items[0].cType = "char"; });
        k.addArgument("c", "", "");
      }),
      (TextLines{"k: argument b changed", "k: argument c added", "k: order arguments changed"}));
}

TEST(FileComparisonTest, FindsTheProject) {
  const auto file = [](const std::vector<std::string>& names) {
    std::vector<Section> sections;
    for (const std::string& name : names) sections.push_back({SectionKind::ProjectName, name});
    return container(sections);
  };
  EXPECT_EQ(compared(file({}), file({""})).changes, TextLines{"project added"});
  EXPECT_EQ(compared(file({"p"}), file({})).changes, TextLines{"project removed"});
  EXPECT_EQ(compared(file({"p"}), file({"q"})).changes, TextLines{"project changed"});
  EXPECT_EQ(compared(file({"q"}), file({"p", "q"})).changes, TextLines());
}

TEST(FileComparisonTest, FindsTheDwarf) {
  const auto file = [](const std::string& bytes) {
    return container({{SectionKind::Dwarf, bytes}});
  };
  EXPECT_EQ(compared(header(0), file("ELF")).changes, TextLines{"dwarf added"});
  EXPECT_EQ(compared(file("ELF"), header(0)).changes, TextLines{"dwarf removed"});
  EXPECT_EQ(compared(file("ELF"), file("ELf")).changes, TextLines{"dwarf changed"});
  EXPECT_EQ(compared(file("ELF"), file("ELFF")).changes, TextLines{"dwarf changed"});
  EXPECT_EQ(compared(file("ELF"), withTrailingByte(file("ELF"))).changes, TextLines());
}

TEST(FileComparisonTest, FindsSectionsWhereAsked) {
  const auto file = [](const std::string& json) {
    return container({{SectionKind::Json, json}, {SectionKind::ProjectName, "p"}});
  };
  EXPECT_EQ(compared(file("one"), file("two")).changes, TextLines());
  EXPECT_EQ(compared(file("one"), file("two"), withSections).changes,
            TextLines{"section json changed"});
  EXPECT_EQ(compared(file("one"), file("three"), withSections).changes,
            (TextLines{"section json changed", "section project_name changed"}));
  EXPECT_EQ(compared(file("one"), withTrailingByte(file("one")), withSections).changes,
            TextLines());
  EXPECT_EQ(compared(header(0), file("x"), withSections).changes,
            (TextLines{"project added", "section json added", "section project_name added"}));
  EXPECT_EQ(
      compared(container({{SectionKind::Json, ""}, {SectionKind::ProjectName, ""}}),
               container({{SectionKind::ProjectName, ""}, {SectionKind::Json, ""}}), withSections)
          .changes,
      TextLines{"order sections changed"});
}

TEST(FileComparisonTest, MatchesConditionsByTheirNormalForm) {
  const Edit swap = [](KernelRecord& k) { k.prepareBreakableConditions(); };
  EXPECT_EQ(changesBy(swap), TextLines());
  EXPECT_EQ(changesBy(swap, exact), (TextLines{"k: breakable_condition == 1'b1 $i/bq_start changed",
                                               "k: breakable_condition == 3 $i/state changed"}));
}

TEST(FileComparisonTest, MatchesOtherConditionsByKindFileAndLine) {
  const auto edit = [](auto change) {
    return
        [change](auto& k) { k.breakableConditions.edit([&](auto& items) { change(items[1]); }); };
  };
  EXPECT_EQ(changesBy(edit([](auto& c) { c.condition = "!= 3 $i/state"; })),
            TextLines{"k: breakable_condition == 3 $i/state changed"});
  const TextLines another{"k: breakable_condition == 3 $i/state removed",
                          "k: breakable_condition == 3 $i/state added"};
  EXPECT_EQ(changesBy(edit([](auto& c) { c.line = 12; })), another);
  EXPECT_EQ(changesBy(edit([](auto& c) { c.file = "l.c"; })), another);
  EXPECT_EQ(changesBy(edit([](auto& c) { c = {ConditionKind::Stop, c.condition}; })), another);
}

TEST(FileComparisonTest, TellsTheFirstConditionsApartByTheirFile) {
  const auto fileWith = [](const char* source) {
    KernelRecord kernel = named("k");
    kernel.addBreakableCondition(sourceLine("a", 1, source));
    return fileOf({kernel});
  };
  EXPECT_EQ(compared(fileWith("k.c"), fileWith("l.c")).changes,
            (TextLines{"k: breakable_condition a removed", "k: breakable_condition a added"}));
}

TEST(FileComparisonTest, FindsConditions) {
  EXPECT_EQ(changesBy([](auto& k) { k.addBreakableCondition(ConditionKind::Stop, "x"); }),
            TextLines{"k: breakable_condition x added"});
  EXPECT_EQ(changesBy([](auto& k) { removeFirst(k.breakableConditions); }),
            TextLines{"k: breakable_condition == 1'b1 $i/bq_start removed"});
  EXPECT_EQ(changesBy([](auto& k) { swapFirstTwo(k.breakableConditions); }),
            TextLines{"k: order breakable_conditions changed"});
}

// What has changed must not take the partner of what has not.
TEST(FileComparisonTest, MatchesEqualConditionsFirst) {
  KernelRecord before = named("k");
  before.addBreakableCondition(sourceLine("a", 1, "k.c"));
  before.addBreakableCondition(sourceLine("b", 1, "k.c"));
  before.addBreakableCondition(sourceLine("c", 1, "k.c"));
  KernelRecord after = named("k");
  after.addBreakableCondition(sourceLine("x", 1, "k.c"));
  after.addBreakableCondition(sourceLine("b", 1, "k.c"));
  after.addBreakableCondition(sourceLine("a", 1, "k.c"));
  after.addBreakableCondition(sourceLine("y", 1, "k.c"));
  EXPECT_EQ(compared(fileOf({before}), fileOf({after})).changes,
            (TextLines{"k: breakable_condition c changed", "k: breakable_condition y added",
                       "k: order breakable_conditions changed"}));
}

TEST(FileComparisonTest, FindsThatConditionsDecayByParentheses) {
  KernelRecord before = named("k");
  before.addBreakableCondition(ConditionKind::Start, "== $i/f(x) $i/y");
  KernelRecord after = before;
  after.prepareBreakableConditions();
  EXPECT_EQ(compared(fileOf({before}), fileOf({after})).changes,
            TextLines{"k: breakable_condition == $i/f(x) $i/y changed"});
}

TEST(FileComparisonTest, TakesTextsAsTheToolReadsThem) {
  KernelRecord before = named("k");
  before.addArgument("a", "", "int");
  KernelRecord after = named(std::string("k\0more", 6));
  after.addArgument(std::string_view("a\0b", 3), std::string_view("\0", 1), "int");
  EXPECT_EQ(compared(fileOf({before}), fileOf({after})).changes, TextLines());
}

TEST(FileComparisonTest, CountsBothFiles) {
  const Compared found = compared(fileOf({named("x")}), fileOf({fullKernel(), fullKernel()}));
  EXPECT_EQ(found.result.before.kernels, 1U);
  EXPECT_EQ(found.result.before.counts.arguments, 0U);
  const KernelCounts& counts = found.result.after.counts;
  EXPECT_EQ(found.result.after.kernels, 2U);
  EXPECT_EQ(counts.instancePaths, 4U);
  EXPECT_EQ(counts.arguments, 4U);
  EXPECT_EQ(counts.variables, 4U);
  EXPECT_EQ(counts.hardwareVariables, 4U);
  EXPECT_EQ(counts.logicLocations, 6U);
  EXPECT_EQ(counts.breakableConditions, 4U);
  EXPECT_EQ(counts.brams, 4U);
}

TEST(FileComparisonTest, HoldsAFileThatIsNotCompleteForEqualOnlyToItsOwnBytes) {
  const std::string whole = fileOf({fullKernel()});
  const std::string cut = whole.substr(0, whole.size() - 1);
  const Compared itself = compared(cut, cut);
  EXPECT_TRUE(itself.result.isEqual);
  EXPECT_FALSE(itself.result.isComplete());
  const std::string cutMore = whole.substr(0, whole.size() - 2);
  const Compared other = compared(cut, cutMore);
  EXPECT_EQ(other.changes, TextLines());
  EXPECT_FALSE(other.result.isEqual);
  EXPECT_NE(other.result.before.whyIncomplete, "");
  EXPECT_NE(other.result.after.whyIncomplete, "");
}

}  // namespace
}  // namespace consolidator::inspect
