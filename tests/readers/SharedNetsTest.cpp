#include "readers/SharedNets.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace consolidator {
namespace {

// The locations of a kernel's hardware variables in their order.
std::string shown(const KernelRecord& kernel) {
  std::string text;
  for (const HardwareVariable& variable : kernel.hardwareVariables) {
    text += variable.rtlName;
    for (const LogicLocation& location : variable.logicLocations) {
      text += " " + std::to_string(location.first) + ":" + std::to_string(location.second);
    }
    text += "\n";
  }
  return text;
}

TEST(SharedNets, SetsOnlyNetsThatWereAdded) {
  KernelSequence kernels(2);
  SharedNets nets(kernels);
  EXPECT_FALSE(nets.set("r", 0, {1, 2}));
  nets.add("/r", {0, 1}, 0, {3, 4});
  EXPECT_TRUE(nets.set("r", 0, {5, 6}));
  EXPECT_FALSE(nets.set("/r", 0, {7, 8}));
  EXPECT_FALSE(nets.set("s", 0, {7, 8}));
  nets.handOut();
  EXPECT_EQ(shown(kernels[0]), "/r 5:6\n");
  EXPECT_EQ(shown(kernels[1]), "/r 5:6\n");
}

TEST(SharedNets, GivesAllLocationsToTheKernelsOfTheNetOnly) {
  KernelSequence kernels(4);
  SharedNets nets(kernels);
  nets.add("/r", {1, 2, 3}, 2, {1, 1});
  nets.set("r", 0, {2, 2});
  nets.handOut();
  EXPECT_EQ(shown(kernels[0]), "");
  for (const std::size_t i : {1U, 2U, 3U}) EXPECT_EQ(shown(kernels[i]), "/r 2:2 0:0 1:1\n") << i;
}

TEST(SharedNets, VariablesComeWhereTheirNetsWereAdded) {
  KernelSequence kernels(3);
  SharedNets nets(kernels);
  nets.add("/r", {0, 1}, 0, {1, 1});
  kernels[1].setLogicLocation("/own", 0, 2, 2);
  nets.add("/s", {1, 2}, 0, {3, 3});
  nets.set("r", 0, {4, 4});
  nets.handOut();
  EXPECT_EQ(shown(kernels[1]), "/r 4:4\n/own 2:2\n/s 3:3\n");
}

TEST(SharedNets, KnownLocationsStayWhereNoneIsSet) {
  KernelSequence kernels(2);
  kernels[0].setLogicLocation("/r", 3, 7, 7);
  kernels[1].setLogicLocation("/r", 1, 8, 8);
  SharedNets nets(kernels);
  nets.add("/r", {0, 1}, 0, {1, 1});
  nets.set("r", 2, {2, 2});
  nets.handOut();
  EXPECT_EQ(shown(kernels[0]), "/r 1:1 0:0 2:2 7:7\n");
  EXPECT_EQ(shown(kernels[1]), "/r 1:1 8:8 2:2\n");
}

}  // namespace
}  // namespace consolidator
