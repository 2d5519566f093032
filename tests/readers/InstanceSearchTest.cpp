#include "readers/InstanceSearch.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using Positions = std::set<std::uint32_t>;

Positions find(InstanceSearch& search, std::string_view name) {
  const std::vector<std::uint32_t>& found = search.findIn(name);
  return {found.begin(), found.end()};
}

TEST(InstanceSearch, FindsPathsInTheScopeInTheLastNameAndAcross) {
  const std::vector<std::string_view> paths{"/top/u0", "acc", "u0/a", "/top/u1", "/u0/acc_", "reg"};
  InstanceSearch search(paths);
  EXPECT_EQ(find(search, "/top/u0/acc_reg"), (Positions{0, 1, 2, 4, 5}));
  EXPECT_EQ(find(search, "/top/u1/acc"), (Positions{1, 3}));
  EXPECT_EQ(find(search, "/acc/"), (Positions{1}));
  EXPECT_EQ(find(search, "/"), Positions());
}

TEST(InstanceSearch, FindsTheSameInAScopeThatItRemembers) {
  const std::vector<std::string_view> paths{"/top/u0", "u0/a"};
  InstanceSearch search(paths);
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(find(search, "/top/u0/a"), (Positions{0, 1})) << round;
    EXPECT_EQ(find(search, "/top/u0/b"), (Positions{0})) << round;
    EXPECT_EQ(find(search, "/top/u1/a"), Positions()) << round;
  }
}

TEST(InstanceSearch, FindsTheSameInMoreScopesThanItRemembers) {
  constexpr int scopeCount = 20'000;
  const std::vector<std::string_view> paths{"/scope_7/", "_77/", "r"};
  InstanceSearch search(paths);
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < scopeCount && !HasFailure(); ++i) {
      const std::string scope = "/scope_" + std::to_string(i) + "/";
      Positions expected{2};
      if (i == 7) expected.insert(0);
      if (i == 77) expected.insert(1);
      EXPECT_EQ(find(search, scope + "r"), expected) << scope;
    }
  }
}

TEST(InstanceSearch, FindsTheSameInLongScopesAndWhereManyPathsOccur) {
  const std::string scope = "/" + std::string(1000, 'a') + "/";
  std::vector<std::string> texts;
  Positions all;
  for (std::size_t length = 1; length <= 100; ++length) texts.emplace_back(length, 'a');
  for (std::uint32_t i = 0; i < texts.size(); ++i) all.insert(i);
  const std::vector<std::string_view> paths(texts.begin(), texts.end());
  InstanceSearch search(paths);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(find(search, scope + "b"), all) << round;
    EXPECT_EQ(find(search, "/" + texts[49] + "/b").size(), 50U) << round;
    EXPECT_EQ(find(search, "/b/" + texts[9]).size(), 10U) << round;
  }
}

}  // namespace
}  // namespace consolidator
