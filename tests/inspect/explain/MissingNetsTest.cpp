#include "inspect/explain/MissingNets.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

// What is missing of variables that all want the register "wanted".
Explanation missing(std::size_t instances, std::size_t variables,
                    const std::vector<std::string>& nets = {}) {
  KernelList kernels;
  KernelRecord kernel;
  for (std::size_t i = 0; i < instances; ++i) kernel.addInstancePath("/t/" + std::to_string(i));
  for (std::size_t i = 0; i < variables; ++i)
    kernel.addVariable(std::to_string(i), "wanted", "int");
  kernels.append(kernel);
  InstanceNets known(kernels);
  for (const std::string& net : nets) known.keep(net, known.around(net));
  Explanation explanation;
  MissingNets(kernels, known).find(explanation);
  return explanation;
}

std::string closest(const std::vector<std::string>& nets) {
  return missing(1, 1, nets).neverFound.at(0).closest.value_or("none");
}

TEST(MissingNets, ListsTenThousand) {
  const Explanation all = missing(100, 100);
  EXPECT_EQ(all.neverFound.size(), 10'000U);
  EXPECT_FALSE(all.isNeverFoundLimited);
  const Explanation more = missing(1, 10'001);
  EXPECT_EQ(more.neverFound.size(), 10'000U);
  EXPECT_TRUE(more.isNeverFoundLimited);
  EXPECT_FALSE(more.isClosestLimited);
}

TEST(MissingNets, NamesTheClosestNetUpToAThirdOfTheRegister) {
  EXPECT_EQ(closest({"/t/0/wabced", "/t/0/sub/wantex", "/t/0/w"}), "t/0/sub/wantex");
  EXPECT_EQ(closest({"/t/0/wabbad"}), "none");
  EXPECT_EQ(closest({"/t/0/wanxxd", "/t/0/waxxed"}), "t/0/wanxxd") << "the first of several";
}

}  // namespace
}  // namespace consolidator::inspect
