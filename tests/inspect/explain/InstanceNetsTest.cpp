#include "inspect/explain/InstanceNets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {
namespace {

using Names = std::vector<std::string>;

KernelList kernelIn(const Names& paths) {
  KernelList kernels;
  KernelRecord kernel;
  kernel.name = "k";
  for (const std::string& path : paths) kernel.addInstancePath(path);
  kernels.append(kernel);
  return kernels;
}

// Instances that are inside one another.
Names nested(std::size_t count) {
  Names paths;
  for (std::string path = "/n"; paths.size() < count; path += "/n") paths.push_back(path);
  return paths;
}

Names pathsAround(InstanceNets& nets, std::string_view net) {
  Names paths;
  for (const std::uint32_t path : nets.around(net)) {
    paths.emplace_back(nets.paths().texts()[path]);
  }
  std::ranges::sort(paths);
  return paths;
}

void keep(InstanceNets& nets, const std::string& net) { nets.keep(net, nets.around(net)); }

Names kept(const InstanceNets& nets, std::string_view path) {
  Names names;
  for (const std::uint32_t net : nets.netsOf(nets.paths().positionOf(path))) {
    names.push_back(nets.net(net));
  }
  return names;
}

TEST(InstanceNets, LieInsideInstancesWhosePathsTheyContain) {
  const KernelList kernels = kernelIn({"/t/a", "/t/a/b", "/b"});
  InstanceNets nets(kernels);
  EXPECT_EQ(pathsAround(nets, "/t/a/b/r"), (Names{"/b", "/t/a", "/t/a/b"}));
  EXPECT_EQ(pathsAround(nets, "/t/a/r"), Names{"/t/a"});
  EXPECT_EQ(pathsAround(nets, "/t/ab/r"), Names());
  EXPECT_EQ(pathsAround(nets, "/t/a"), Names());
}

TEST(InstanceNets, AreKeptOnceForEachLastComponentInAnInstance) {
  const KernelList kernels = kernelIn({"/t/a", "/t/b"});
  InstanceNets nets(kernels);
  for (const char* const net : {"/t/a/r", "/t/a/sub/r", "/t/a/s", "/t/b/r"}) keep(nets, net);
  EXPECT_EQ(kept(nets, "/t/a"), (Names{"/t/a/r", "/t/a/s"}));
  EXPECT_EQ(kept(nets, "/t/b"), Names{"/t/b/r"});
  EXPECT_FALSE(nets.isLimited());
}

TEST(InstanceNets, LieInsideSixtyFourInstancesAtMost) {
  for (const std::size_t count : {64U, 65U}) {
    const Names paths = nested(count);
    const KernelList kernels = kernelIn(paths);
    InstanceNets nets(kernels);
    EXPECT_EQ(nets.around(paths.back() + "/r").size(), 64U);
    EXPECT_EQ(nets.isLimited(), count == 65);
  }
}

TEST(InstanceNets, AreKeptUpToAMillion) {
  const Names paths = nested(64);
  const KernelList kernels = kernelIn(paths);
  InstanceNets nets(kernels);
  for (int i = 0; i < 1'000'000 / 64; ++i) keep(nets, paths.back() + "/" + std::to_string(i));
  EXPECT_FALSE(nets.isLimited());
  EXPECT_EQ(kept(nets, "/n").size(), 15'625U);
  keep(nets, paths.back() + "/other");
  EXPECT_TRUE(nets.isLimited());
  EXPECT_EQ(kept(nets, "/n").size(), 15'625U);
}

}  // namespace
}  // namespace consolidator::inspect
