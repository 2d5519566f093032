#include "inspect/verify/Findings.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator::inspect {
namespace {

Finding at(std::optional<std::uint64_t> offset, std::int64_t number = 0) {
  return {FindingCode::Gap, {}, offset, {}, {}, number};
}

TEST(FindingsTest, KeepsTheLowestOffsetsAndCountsAll) {
  Findings findings;
  for (std::uint64_t i = 0; i < 100; ++i) findings.add(at(i * 37 % 100));
  EXPECT_EQ(findings.count(FindingCode::Gap), 100U);
  ASSERT_EQ(findings.list(FindingCode::Gap).size(), Findings::kept);
  for (std::size_t i = 0; i < Findings::kept; ++i) {
    EXPECT_EQ(findings.list(FindingCode::Gap)[i].offset, i);
  }
  EXPECT_EQ(findings.count(FindingCode::NoDwarf), 0U);
}

TEST(FindingsTest, KeepsTheOrderOfEqualOffsets) {
  Findings findings;
  for (std::int64_t i = 0; i < 50; ++i) findings.add(at(5, i));
  findings.add(at(std::nullopt, 99));
  EXPECT_EQ(findings.list(FindingCode::Gap)[0].number, 99);
  EXPECT_EQ(findings.list(FindingCode::Gap)[1].number, 0);
  EXPECT_EQ(findings.list(FindingCode::Gap)[19].number, 18);
}

std::string kernelName(std::string_view stored) {
  Finding finding;
  finding.kernel = consolidated::Text(stored, 0);
  return kernelNameOf(finding);
}

TEST(FindingTest, ShortensLongKernelNames) {
  const std::string longest(256, 'n');
  EXPECT_EQ(kernelName(longest), longest);
  EXPECT_EQ(kernelName(longest + "n"), longest + "...");
  EXPECT_EQ(kernelName(longest + '\0' + "n"), longest);
  EXPECT_EQ(kernelName("a" + std::string(1, '\0') + longest), "a");
  const std::string prefix(254, 'n');
  EXPECT_EQ(kernelName(prefix + "\xE2\x82\xAC" + longest), prefix + "...");
  EXPECT_EQ(kernelName(prefix + "\xC3\xA4" + longest), prefix + "\xC3\xA4...");
}

TEST(FindingTest, NamesCodesInBothDirections) {
  for (std::size_t i = 0; i < findingCodeCount; ++i) {
    const auto code = static_cast<FindingCode>(i);
    EXPECT_EQ(findingCodeOf(nameOf(code)), code);
    EXPECT_FALSE(sentenceOf({code, {}, {}, {}, "it"}).empty());
  }
  EXPECT_EQ(findingCodeOf("json"), std::nullopt);
}

}  // namespace
}  // namespace consolidator::inspect
