#include "inspect/explain/EditDistance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

// The whole table, as textbooks have it.
std::size_t plainDistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> table(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        table[i][j] = i + j;
        continue;
      }
      const std::size_t replaced = table[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      table[i][j] = std::min({replaced, table[i - 1][j] + 1, table[i][j - 1] + 1});
    }
  }
  return table[a.size()][b.size()];
}

TEST(EditDistance, CountsInsertionsRemovalsAndReplacements) {
  EditDistance distance;
  distance.from("product_reg");
  EXPECT_EQ(distance.to("product_reg", 0), 0U);
  EXPECT_EQ(distance.to("product_req", 3), 1U);
  EXPECT_EQ(distance.to("prodcut_reg", 3), 2U);
  EXPECT_EQ(distance.to("roduct_regs", 3), 2U);
  EXPECT_EQ(distance.to("prodcut_reg", 1), std::nullopt);
  EXPECT_EQ(distance.to("", 11), 11U);
  EXPECT_EQ(distance.to("", 10), std::nullopt);
  distance.from("");
  EXPECT_EQ(distance.to("ab", 2), 2U);
}

TEST(EditDistance, IsThatOfTheWholeTable) {
  std::mt19937 random(7);
  const auto text = [&](std::size_t longest) {
    std::string made(random() % (longest + 1), 'a');
    for (char& c : made) c = "ab\xFF"[random() % 3];
    return made;
  };
  EditDistance distance;
  for (int round = 0; round < 5000; ++round) {
    const std::size_t longest = round % 10 == 0 ? 100 : 12;
    const std::string a = text(longest);
    const std::string b = text(longest);
    const std::size_t expected = plainDistance(a, b);
    const std::size_t limit = random() % (longest + 1);
    distance.from(a);
    EXPECT_EQ(distance.to(b, limit), expected > limit ? std::nullopt : std::optional(expected))
        << a << " " << b << " " << limit;
  }
}

}  // namespace
}  // namespace consolidator::inspect
