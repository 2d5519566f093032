#include "inspect/explain/EditDistance.h"
#include "inspect/explain/LetterCounts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>

namespace consolidator::inspect {
namespace {

std::size_t leastDistance(const std::string& a, const std::string& b) {
  return LetterCounts(a).leastDistance(LetterCounts(b));
}

TEST(LetterCounts, CountWhatOneTextHasMoreOf) {
  EXPECT_EQ(leastDistance("", ""), 0U);
  EXPECT_EQ(leastDistance("product", "product"), 0U);
  EXPECT_EQ(leastDistance("product", "prodcut"), 0U);
  EXPECT_EQ(leastDistance("product_reg", "product_req"), 1U);
  EXPECT_EQ(leastDistance("product_reg", "product"), 4U);
  EXPECT_EQ(leastDistance("sum", "addr_0"), 6U);
  EXPECT_EQ(leastDistance("aaab", "abbb"), 2U);
}

TEST(LetterCounts, AreNeverBeyondTheDistance) {
  std::mt19937 random(5);
  const auto text = [&](std::size_t longest) {
    std::string made(random() % (longest + 1), 'a');
    for (char& c : made) c = static_cast<char>(random() % 256);
    return made;
  };
  EditDistance distance;
  for (int round = 0; round < 3000; ++round) {
    const std::size_t longest = round % 10 == 0 ? 100 : 8;
    const std::string a = text(longest);
    const std::string b = text(longest);
    distance.from(a);
    EXPECT_LE(leastDistance(a, b), distance.to(b, longest).value()) << a << " " << b;
  }
}

TEST(LetterCounts, AreNeverBeyondTheDistanceOfLongTexts) {
  const std::string letters(1000, 'a');
  EXPECT_EQ(leastDistance(letters, letters), 0U);
  EXPECT_EQ(leastDistance(letters, letters + "b"), 1U);
  EXPECT_LE(leastDistance(letters, letters + letters), 1000U);
  EXPECT_LE(leastDistance(letters, std::string(1000, 'b')), 1000U);
}

}  // namespace
}  // namespace consolidator::inspect
