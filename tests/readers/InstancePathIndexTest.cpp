#include "readers/InstancePathIndex.h"
#include "support/AllocationGauge.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using Names = std::vector<std::string>;

constexpr std::size_t longestName = 16;

// A kernel whose paths are not checked for duplicates, as one from a file may be.
void add(KernelList& kernels, std::string_view name,
         std::initializer_list<std::string_view> paths) {
  KernelRecord kernel;
  kernel.name = name;
  for (const std::string_view path : paths) kernel.instancePaths.append(std::string(path));
  kernels.append(kernel);
}

Names namesIn(InstancePathIndex& index, std::string_view name) {
  Names names;
  for (const KernelRecord* kernel : index.kernelsIn(name)) names.push_back(kernel->name);
  return names;
}

Names find(const KernelList& kernels, std::string_view name) {
  InstancePathIndex index(kernels, longestName);
  return namesIn(index, name);
}

TEST(InstancePathIndex, FindsPathsAnywhereInTheName) {
  KernelList kernels;
  add(kernels, "k", {"/top/u0"});
  EXPECT_EQ(find(kernels, "/top/u0"), Names{"k"});
  EXPECT_EQ(find(kernels, "x/top/u0"), Names{"k"});
  EXPECT_EQ(find(kernels, "/top/u01/ram"), Names{"k"});
  EXPECT_EQ(find(kernels, "/top/u"), Names());
  EXPECT_EQ(find(kernels, ""), Names());
}

TEST(InstancePathIndex, HandsOutKernelsInTheirOrderOnceForEachPath) {
  KernelList kernels;
  add(kernels, "a", {"/y", "/x/y", "/z"});
  add(kernels, "b", {"/nowhere"});
  add(kernels, "c", {"x", "/y"});
  EXPECT_EQ(find(kernels, "/x/y"), (Names{"a", "a", "c", "c"}));
}

TEST(InstancePathIndex, APathThatOccursTwiceInTheNameCountsOnce) {
  KernelList kernels;
  add(kernels, "k", {"ab"});
  EXPECT_EQ(find(kernels, "abababab"), Names{"k"});
}

TEST(InstancePathIndex, PathsLongerThanANameTakeNoMemory) {
  const std::string tooLong(1'000'000, 'p');
  KernelList kernels;
  add(kernels, "a", {tooLong});
  add(kernels, "b", {tooLong, "/instance/of/16B"});
  const AllocationGauge gauge;
  EXPECT_EQ(find(kernels, "/instance/of/16B"), Names{"b"});
  EXPECT_LT(gauge.total(), 10'000U);
}

TEST(InstancePathIndex, EqualPathsOfOneKernelCountEach) {
  KernelList kernels;
  add(kernels, "k", {"/u", "/u"});
  EXPECT_EQ(find(kernels, "/u"), (Names{"k", "k"}));
}

TEST(InstancePathIndex, AnEmptyPathOccursInEveryName) {
  KernelList kernels;
  add(kernels, "k", {""});
  EXPECT_EQ(find(kernels, "anything"), Names{"k"});
  EXPECT_EQ(find(kernels, ""), Names{"k"});
}

TEST(InstancePathIndex, NothingIsFoundWithoutKernelsOrPaths) {
  KernelList kernels;
  EXPECT_EQ(find(kernels, "/top"), Names());
  add(kernels, "k", {});
  EXPECT_EQ(find(kernels, "/top"), Names());
}

std::string randomName(std::mt19937& random, std::size_t longest) {
  std::string name(random() % (longest + 1), ' ');
  for (char& c : name) c = "ab/"[random() % 3];
  return name;
}

Names plainly(const KernelList& kernels, std::string_view name) {
  Names names;
  for (const KernelRecord& kernel : kernels) {
    for (const std::string& path : kernel.instancePaths) {
      if (name.find(path) != std::string_view::npos) names.push_back(kernel.name);
    }
  }
  return names;
}

TEST(InstancePathIndex, FindsWhatAPlainSearchForEveryPathFinds) {
  std::mt19937 random(50);
  for (int round = 0; round < 10'000 && !HasFailure(); ++round) {
    KernelList kernels;
    for (std::size_t kernel = random() % 5; kernel > 0; --kernel) {
      add(kernels, "k" + std::to_string(kernel),
          {randomName(random, 6), randomName(random, 3), randomName(random, 9)});
    }
    InstancePathIndex index(kernels, longestName);
    for (int search = 0; search < 8; ++search) {
      const std::string name = randomName(random, 30);
      EXPECT_EQ(namesIn(index, name), plainly(kernels, name)) << name;
    }
  }
}

}  // namespace
}  // namespace consolidator
