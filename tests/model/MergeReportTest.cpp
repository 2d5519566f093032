// What a merge tells of itself. The merge's own rules are held elsewhere.

#include "model/KernelMerge.h"
#include "observer/RunObserver.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

using ToldTexts = std::vector<std::string>;

std::string itemText(Item item) {
  constexpr std::array names{"kernel", "type",     "path",     "argument",  "variable",
                             "bits",   "register", "location", "condition", "bram"};
  return names[static_cast<std::size_t>(item)];
}

struct Told {
  ToldTexts given;
  ToldTexts dropped;
};

class ListeningObserver final : public RunObserver {
 public:
  const Told& heard() const { return heard_; }

  void onGiven(std::string_view kernel, Item what, std::string_view name,
               std::uint64_t count) override {
    heard_.given.push_back(text(kernel, what, name, count));
  }

  void onDropped(std::string_view kernel, Item what, std::string_view name, std::uint64_t count,
                 std::string_view reason) override {
    heard_.dropped.push_back(text(kernel, what, name, count) + ": " + std::string(reason));
  }

 private:
  static std::string text(std::string_view kernel, Item what, std::string_view name,
                          std::uint64_t count) {
    return std::string(kernel) + " " + std::to_string(count) + " " + itemText(what) + " " +
           std::string(name);
  }

  Told heard_;
};

KernelRecord kernelNamed(const char* name) {
  KernelRecord kernel;
  kernel.name = name;
  return kernel;
}

KernelRecord withBits(std::vector<InstanceBits> bits) {
  KernelRecord kernel = kernelNamed("k");
  kernel.addVariable("v", "v_r", "int");
  kernel.variables.find("v")->instanceBits = std::move(bits);
  return kernel;
}

// What is told of the second of two records when they are merged one after the other.
Told told(const KernelRecord& known, const KernelRecord& incoming) {
  KernelList kernels;
  mergeKernel(kernels, known);
  ListeningObserver observer;
  mergeKernel(kernels, incoming, &observer);
  return observer.heard();
}

TEST(MergeReport, CountsWhatANewKernelBrings) {
  KernelRecord kernel = kernelNamed("k");
  kernel.type = KernelType::HLS;
  kernel.addInstancePath("/t/k");
  kernel.addArgument("a", "a_r", "int");
  kernel.setLogicLocation("/t/k/a_r", 1, 2, 3);
  kernel.addBreakableCondition(ConditionKind::Start, "x");
  kernel.addBRAM("m");
  EXPECT_EQ(told(kernelNamed("other"), kernel).given,
            (ToldTexts{"k 1 kernel ", "k 1 type HLS", "k 1 path ", "k 1 argument ", "k 1 register ",
                       "k 2 location ", "k 1 condition ", "k 1 bram "}));
}

TEST(MergeReport, CountsOnlyWhatAKnownKernelGets) {
  KernelRecord known = kernelNamed("k");
  known.addInstancePath("/t/k");
  KernelRecord incoming = known;
  incoming.addInstancePath("/t/k_2");
  EXPECT_EQ(told(known, incoming).given, ToldTexts{"k 1 path "});
  EXPECT_EQ(told(known, known).given, ToldTexts());
}

TEST(MergeReport, SaysThatBitsOfAKnownKernelAreDropped) {
  const ToldTexts dropped{"k 1 bits v: bits come only with the record that first names the kernel"};
  EXPECT_EQ(told(kernelNamed("k"), withBits({{{1, 2}}})).dropped, dropped);
  EXPECT_EQ(told(withBits({{{1, 2}}}), withBits({{{1, 3}}})).dropped, dropped);
  EXPECT_EQ(told(withBits({{{1, 2}}}), withBits({{{1, 2}}})).dropped, ToldTexts());
  EXPECT_EQ(told(withBits({{{1, 2}}}), withBits({})).dropped, ToldTexts());
}

TEST(MergeReport, SaysThatBlockRamsOfAKnownKernelAreDropped) {
  KernelRecord incoming = kernelNamed("k");
  incoming.addBRAM("m");
  incoming.addBRAM("n");
  EXPECT_EQ(
      told(kernelNamed("k"), incoming).dropped,
      ToldTexts{"k 2 bram : block RAMs come only with the record that first names the kernel"});
  EXPECT_EQ(told(incoming, incoming).dropped, ToldTexts());
}

TEST(MergeReport, SaysThatVariablesOfAKnownNameAreDropped) {
  KernelRecord known = kernelNamed("k");
  known.addArgument("a", "a_r", "int");
  known.addVariable("v", "v_r", "int");
  KernelRecord incoming = kernelNamed("k");
  incoming.addArgument("a", "b_r", "int");
  incoming.addVariable("v", "v_r", "char");
  EXPECT_EQ(told(known, incoming).dropped,
            (ToldTexts{"k 1 argument a: known with another register or type",
                       "k 1 variable v: known with another register or type"}));
}

TEST(MergeReport, SaysThatAnotherTypeIsDropped) {
  KernelRecord known = kernelNamed("k");
  known.type = KernelType::C;
  KernelRecord incoming = kernelNamed("k");
  incoming.type = KernelType::HLS;
  EXPECT_EQ(told(known, incoming).dropped,
            ToldTexts{"k 1 type HLS: the kernel has another type already"});
  EXPECT_EQ(told(known, kernelNamed("k")).dropped, ToldTexts());
}

TEST(MergeReport, SaysThatOtherLocationsOfARegisterAreDropped) {
  KernelRecord known = kernelNamed("k");
  known.setLogicLocation("/t/k/r", 1, 2, 3);
  KernelRecord incoming = kernelNamed("k");
  incoming.setLogicLocation("/t/k/r", 1, 2, 4);
  EXPECT_EQ(told(known, incoming).dropped,
            ToldTexts{"k 2 register /t/k/r: known with other locations"});
  EXPECT_EQ(told(known, known).dropped, ToldTexts());
}

}  // namespace
}  // namespace consolidator
