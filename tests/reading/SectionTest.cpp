#include "consolidated/Section.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace consolidated {
namespace {

using consolidator::entry;

static_assert(std::forward_iterator<Sections::Iterator>);

TEST(SectionTest, OffsetIsCutToSigned32Bits) {
  const auto seekOffset = [](std::uint64_t offset) {
    return Section{0, consolidated::SectionKind::Json, offset, 0}.seekOffset();
  };
  EXPECT_EQ(seekOffset(0x7FFFFFFF), 0x7FFFFFFFU);
  EXPECT_EQ(seekOffset(0x80000000), std::nullopt);
  EXPECT_EQ(seekOffset(0xFFFFFFFF), std::nullopt);
  EXPECT_EQ(seekOffset(0x100000010), 0x10U);
  EXPECT_EQ(seekOffset(0xFFFFFFFF80000000), std::nullopt);
}

TEST(SectionTest, GreatestSizeStandsForTheOneBelow) {
  const auto clampedSize = [](std::uint32_t size) {
    return Section{0, consolidated::SectionKind::Json, 0, size}.clampedSize();
  };
  EXPECT_EQ(clampedSize(0), 0U);
  EXPECT_EQ(clampedSize(0xFFFFFFFE), 0xFFFFFFFEU);
  EXPECT_EQ(clampedSize(0xFFFFFFFF), 0xFFFFFFFEU);
}

TEST(SectionTest, EntriesFollowTheHeader) {
  EXPECT_EQ((Section{0, consolidated::SectionKind::Json, 0, 0}.entryOffset()), 16U);
  EXPECT_EQ((Section{0xFFFFFFFF, consolidated::SectionKind::Json, 0, 0}.entryOffset()),
            103079215096U);
}

TEST(SectionsTest, AreAsStored) {
  const std::string table = entry(1, 0x123456789ABCDEF0, 0xFFFFFFFF, 9) + entry(77, 5, 6);
  std::vector<Section> sections;
  for (const Section& section : Sections(table)) sections.push_back(section);
  ASSERT_EQ(sections.size(), 2U);
  EXPECT_EQ(sections[0].index, 0U);
  EXPECT_EQ(sections[0].kind, consolidated::SectionKind::Dwarf);
  EXPECT_EQ(sections[0].offset, 0x123456789ABCDEF0U);
  EXPECT_EQ(sections[0].size, 0xFFFFFFFFU);
  EXPECT_EQ(sections[1].index, 1U);
  EXPECT_EQ(static_cast<std::uint32_t>(sections[1].kind), 77U);
  EXPECT_EQ(sections[1].offset, 5U);
  EXPECT_EQ(sections[1].size, 6U);
}

TEST(SectionsTest, AreGoneOverAsOftenAsWanted) {
  const std::string table = entry(1, 2, 3) + entry(4, 5, 6);
  const Sections sections(table);
  auto at = sections.begin();
  EXPECT_EQ((*at++).offset, 2U);
  EXPECT_EQ((*at).offset, 5U);
  EXPECT_TRUE(at != sections.begin());
  EXPECT_TRUE(++at == sections.end());
  EXPECT_FALSE(sections.empty());
  EXPECT_TRUE(Sections().empty());
}

}  // namespace
}  // namespace consolidated
