#include "inspect/coverage/KernelCoverage.h"
#include "inspect/diff/Differences.h"
#include "model/RandomKernels.h"
#include "support/Growth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace consolidator::inspect {
namespace {

using consolidated::Belonging;

constexpr auto argument = VariableKind::Argument;
constexpr auto variable = VariableKind::Variable;

// The first kernel of a file, which it holds.
class OneKernel {
 public:
  explicit OneKernel(const KernelRecord& record)
      : bytes_(fileOf({record})), file_(std::move(*consolidated::File::fromBytes(bytes_))) {}

  consolidated::Kernel operator*() const { return *file_.kernels().begin(); }

 private:
  std::string bytes_;
  consolidated::File file_;
};

KernelRecord kernelWith(const std::vector<std::string>& paths) {
  KernelRecord kernel;
  kernel.name = "k";
  for (const std::string& path : paths) kernel.addInstancePath(path);
  kernel.addVariable("i", "i_r", "int");
  return kernel;
}

// What is known of the only variable in an instance.
BitCoverage coverageIn(const KernelRecord& record, std::uint32_t instance = 0) {
  const OneKernel kernel(record);
  return KernelCoverage(*kernel).at(variable, 0, instance);
}

BitCoverage known(CoverageState state, std::uint32_t bits, std::uint32_t highest) {
  return {state, bits, highest};
}

TEST(KernelCoverageTest, KnowsNothingWithoutLocations) {
  KernelRecord kernel = kernelWith({"/t/k_1"});
  EXPECT_EQ(coverageIn(kernel), BitCoverage());
  kernel.setLogicLocation("/t/k_1/i_r", 0, 0, 0);
  EXPECT_EQ(coverageIn(kernel), BitCoverage());
  kernel.setLogicLocation("/t/k_1/other_r", 0, 1, 2);
  kernel.setLogicLocation("/t/other/i_r", 0, 1, 2);
  EXPECT_EQ(coverageIn(kernel), BitCoverage());
}

TEST(KernelCoverageTest, CountsBitsThatHaveLocations) {
  KernelRecord kernel = kernelWith({"/t/k_1"});
  kernel.setLogicLocation("/t/k_1/i_r", 0, 0, 1);
  kernel.setLogicLocation("/t/k_1/i_r", 1, 1, 0);
  EXPECT_EQ(coverageIn(kernel), known(CoverageState::WithoutGap, 2, 1));
  kernel.setLogicLocation("/t/k_1/i_r", 4, 1, 1);
  EXPECT_EQ(coverageIn(kernel), known(CoverageState::WithGap, 3, 4));
}

TEST(KernelCoverageTest, SeesGapAtTheTop) {
  KernelRecord kernel = kernelWith({"/t/k_1"});
  kernel.setLogicLocation("/t/k_1/i_r", 0, 1, 1);
  kernel.setLogicLocation("/t/k_1/i_r", 1, 0, 0);
  EXPECT_EQ(coverageIn(kernel), known(CoverageState::WithGap, 1, 0));
}

TEST(KernelCoverageTest, DoubtsRegisterWhosePathIsNotWhole) {
  KernelRecord kernel = kernelWith({"/t/k_1", "/t/k_10"});
  kernel.setLogicLocation("/t/k_10/i_r", 0, 1, 1);
  EXPECT_EQ(coverageIn(kernel, 0), known(CoverageState::Doubtful, 1, 0));
  EXPECT_EQ(coverageIn(kernel, 1), known(CoverageState::WithoutGap, 1, 0));
}

TEST(KernelCoverageTest, TakesTheBestOfSeveralRegisters) {
  KernelRecord kernel = kernelWith({"/t/k_1"});
  kernel.setLogicLocation("/t/k_10/i_r", 31, 1, 1);
  kernel.setLogicLocation("/t/k_10/i_r", 30, 1, 1);
  kernel.setLogicLocation("/t/k_1/a/i_r", 7, 1, 1);
  EXPECT_EQ(coverageIn(kernel), known(CoverageState::WithGap, 1, 7));
  kernel.setLogicLocation("/t/k_1/b/i_r", 0, 1, 1);
  kernel.setLogicLocation("/t/k_1/c/i_r", 0, 1, 1);
  kernel.setLogicLocation("/t/k_1/c/i_r", 1, 1, 1);
  EXPECT_EQ(coverageIn(kernel), known(CoverageState::WithoutGap, 2, 1));
}

TEST(KernelCoverageTest, CountsStoredBitsOfTheInstance) {
  KernelRecord kernel = kernelWith({"/t/k_1", "/t/k_2"});
  VariableRecord stored("i", "i_r", "int");
  stored.instanceBits = {{{0, 0}, {1, 2}}, {{1, 2}}, {{3, 4}}};
  kernel.variables = VariableList({stored});
  kernel.setLogicLocation("/t/k_1/i_r", 0, 1, 1);
  EXPECT_EQ(coverageIn(kernel, 0), known(CoverageState::WithoutGap, 1, 0));
  EXPECT_EQ(coverageIn(kernel, 1), known(CoverageState::WithoutGap, 1, 0));
  const OneKernel one(kernel);
  const KernelCoverage coverage(*one);
  EXPECT_EQ(coverage.instances(), 2U);
  EXPECT_EQ(coverage.counts(variable, 1)[CoverageState::WithoutGap], 1U);
  EXPECT_EQ(coverage.counts(variable, 1).total(), 1U);
}

TEST(KernelCoverageTest, VisitsNamesInTheirOrder) {
  KernelRecord kernel = kernelWith({"/t/k_1"});
  kernel.addVariable("j", "i_r", "int");
  kernel.addVariable("k", "k_r", "int");
  kernel.addArgument("a", "a_r", "int*");
  kernel.setLogicLocation("/t/k_1/i_r", 0, 1, 1);
  const OneKernel one(kernel);
  std::string seen;
  KernelCoverage(*one).forEach(variable, 0, [&](const auto& item, const BitCoverage& coverage) {
    seen.append(item.name).append(" ").append(item.registerName).append(" ");
    seen.append(nameOf(coverage.state)).append(" ");
  });
  EXPECT_EQ(seen, "i i_r without_gap j i_r without_gap k k_r none ");
}

// The same pair by pair, as the rule is written.
BitCoverage plainCoverage(const consolidated::Kernel& kernel, const consolidated::Variable& name,
                          std::uint32_t instance, std::string_view path) {
  BitCoverage best;
  for (const auto& hardware : kernel.hardwareVariables()) {
    const BitCoverage coverage = coverageOf(hardware.logicLocations());
    const Belonging kind = belonging(hardware, name, path);
    if (kind == Belonging::Certain) best = std::max(best, coverage);
    if (kind == Belonging::Doubtful) best = std::max(best, doubtful(coverage));
  }
  for (const auto& bits : name.instanceBits()) {
    if (instance-- == 0) best = std::max(best, coverageOf(bits));
  }
  return best;
}

// Adds short names, so that much belongs together by chance.
void addChances(KernelRecord& kernel, RandomKernels& random) {
  const auto name = [&] {
    std::string text;
    for (std::size_t i = random.below(4); i-- > 0;) text += "/a"[random.below(2)];
    return text;
  };
  for (std::size_t i = random.below(4); i-- > 0;) kernel.instancePaths.append(name());
  for (std::size_t i = random.below(4); i-- > 0;) kernel.addArgument(name(), name(), "int");
  for (std::size_t i = random.below(8); i-- > 0;) {
    kernel.setLogicLocation("/" + name() + name() + name(),
                            static_cast<std::uint32_t>(random.below(3)), 1, 1);
  }
}

TEST(KernelCoverageTest, TellsOfEachPairWhatTheRuleSays) {
  RandomKernels random(5);
  std::array<int, 4> states{};
  for (int round = 0; round < 2000; ++round) {
    KernelRecord record = random.next(5);
    addChances(record, random);
    const OneKernel one(record);
    const consolidated::Kernel kernel = *one;
    const KernelCoverage coverage(kernel);
    EXPECT_TRUE(coverage.isAll());
    for (const VariableKind kind : {argument, variable}) {
      std::uint32_t instance = 0;
      for (const consolidated::Text& path : kernel.instancePaths()) {
        CoverageCounts counts;
        const auto names = kind == argument ? kernel.arguments() : kernel.variables();
        auto name = names.begin();
        coverage.forEach(kind, instance, [&](const auto& /*name*/, const BitCoverage& found) {
          EXPECT_EQ(found, plainCoverage(kernel, *name++, instance, path.view()));
          ++counts[found.state];
          ++states.at(static_cast<std::size_t>(found.state));
        });
        EXPECT_EQ(coverage.counts(kind, instance), counts);
        ++instance;
      }
    }
  }
  EXPECT_TRUE(std::ranges::all_of(states, [](int count) { return count > 100; }));
}

TEST(KernelCoverageTest, SaysThatNameHoldsTooManyPaths) {
  KernelRecord kernel = kernelWith({});
  const std::string name = "/abcdefghijklmnopqrstuvwxyz/i_r";
  for (std::size_t first = 0; first < name.size(); ++first) {
    for (std::size_t size = 1; first + size <= name.size(); ++size) {
      kernel.instancePaths.append(name.substr(first, size));
    }
  }
  kernel.setLogicLocation(name, 0, 1, 1);
  const OneKernel one(kernel);
  EXPECT_FALSE(KernelCoverage(*one).isAll());
}

// As many instances, names and registers as there is room for, all of which have to do with one
// another.
Work coverCrowd(std::size_t size, const std::function<std::string(std::size_t)>& path,
                const std::function<std::string(std::size_t)>& reg) {
  KernelRecord record;
  for (std::size_t i = 0; i < size; ++i) record.instancePaths.append(path(i));
  for (std::size_t i = 0; i < size; ++i) {
    record.addVariable("v" + std::to_string(i), reg(i), "int");
    record.setLogicLocation("/t/k/" + std::to_string(i) + "/" + reg(i), 0, 1, 1);
  }
  const auto one = std::make_shared<OneKernel>(record);
  return [one] { static_cast<void>(KernelCoverage(**one).isAll()); };
}

std::string always(std::size_t /*number*/) { return "r"; }

std::string numbered(std::size_t number) { return "r" + std::to_string(number); }

TEST(KernelCoverageTest, TakesLinearTime) {
  const auto same = [](std::size_t size) { return coverCrowd(size, always, always); };
  const auto others = [](std::size_t size) { return coverCrowd(size, numbered, numbered); };
  const auto samePaths = [](std::size_t size) {
    return coverCrowd(
        size, [](std::size_t) { return std::string("/t/k"); }, numbered);
  };
  EXPECT_LE(Growth(same, 500).perDoubling(), Growth::limit());
  EXPECT_LE(Growth(others, 500).perDoubling(), Growth::limit());
  EXPECT_LE(Growth(samePaths, 500).perDoubling(), Growth::limit());
}

// In the record, a variable is as long as the bits that it has in all instances.
TEST(KernelCoverageTest, VisitsNamesInLinearTimeWhateverBitsTheyHave) {
  const auto visitAll = [](std::size_t size) -> Work {
    VariableRecord name("i", "i_r", "int");
    name.instanceBits.resize(size);
    KernelRecord record;
    for (std::size_t i = 0; i < size; ++i) record.instancePaths.append("");
    record.variables.append(name);
    const auto one = std::make_shared<OneKernel>(record);
    return [one] {
      const KernelCoverage coverage(**one);
      std::size_t bytes = 0;
      for (std::uint32_t instance = 0; instance < coverage.instances(); ++instance) {
        coverage.forEach(variable, instance, [&](const auto& item, const auto& /*bits*/) {
          bytes += item.name.size();
        });
      }
      EXPECT_EQ(bytes, coverage.instances());
    };
  };
  EXPECT_LE(Growth(visitAll, 500).perDoubling(), Growth::limit());
}

}  // namespace
}  // namespace consolidator::inspect
