#include "inspect/verify/VerifyFixture.h"

#include <cstddef>

namespace consolidator::inspect {
namespace {

constexpr std::uint64_t entryAt(std::uint64_t index) { return 16 + 24 * index; }

// Replaces bytes of a file.
std::string with(std::string bytes, std::size_t position, std::string_view replacement) {
  return bytes.replace(position, replacement.size(), replacement);
}

TEST(TableChecksTest, FindsNothingInAPlainFile) {
  EXPECT_EQ(countsIn(container(plainSections())), Counts());
}

TEST(TableChecksTest, FindsVersionAboveSupported) {
  const std::string file = container(plainSections());
  EXPECT_TRUE(findsOnly(with(file, 4, u32(2)), FindingCode::UnsupportedVersion, 4));
  EXPECT_EQ(countsIn(with(file, 4, u32(0xFFFFFFFFU))), Counts());
  EXPECT_EQ(countsIn(with(file, 8, u32(99))), Counts());
}

TEST(TableChecksTest, FindsShortTable) {
  const std::string file = header(3) + entry(SectionKind::Json, 88, 0) + "part";
  const Findings findings = findingsIn(file);
  ASSERT_EQ(findings.count(FindingCode::ShortTable), 1U);
  EXPECT_EQ(findings.list(FindingCode::ShortTable)[0].offset, 40U);
  EXPECT_EQ(findings.list(FindingCode::ShortTable)[0].number, 2);
  EXPECT_EQ(findings.count(FindingCode::TrailingBytes), 0U);
}

TEST(TableChecksTest, FindsUnknownKind) {
  std::vector<Section> sections = plainSections();
  sections.push_back({static_cast<SectionKind>(4), "bytes"});
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::UnknownKind, entryAt(4)));
}

TEST(TableChecksTest, FindsSectionThatWasNeverWritten) {
  std::vector<Section> sections = plainSections();
  sections.push_back({SectionKind::ProjectName, ""});
  const std::string file = container(sections);
  const std::uint64_t tableEnd = entryAt(5);
  const auto withLast = [&](SectionKind kind, std::uint64_t offset, std::uint32_t size) {
    return with(file, entryAt(4), entry(kind, offset, size));
  };
  for (const SectionKind kind :
       {SectionKind::ProjectName, SectionKind::Dwarf, SectionKind::KernelRecords, SectionKind::Json,
        static_cast<SectionKind>(9)}) {
    EXPECT_TRUE(findsOnly(withLast(kind, 0, 5), FindingCode::SectionUnwritten, entryAt(4)));
    EXPECT_TRUE(
        findsOnly(withLast(kind, tableEnd - 1, 5), FindingCode::SectionUnwritten, entryAt(4)));
  }
  EXPECT_EQ(countsIn(withLast(SectionKind::ProjectName, tableEnd, 4)),
            (Counts{{"section-overlap", 2}, {"project-entries", 1}}));
}

TEST(TableChecksTest, TakesNoUnwrittenSectionForJson) {
  const std::string file = header(1) + entry(SectionKind::Json, 0, 5);
  EXPECT_EQ(countsIn(file), (Counts{{"section-unwritten", 1},
                                    {"json-missing", 1},
                                    {"no-kernels", 1},
                                    {"no-dwarf", 1},
                                    {"no-location", 1}}));
}

TEST(TableChecksTest, FindsSectionOutsideTheFile) {
  const std::vector<Section> sections = plainSections();
  const std::string file = container(sections);
  const std::uint64_t projectOffset = offsetOfSection(sections, 0);
  // A section may end where the file does, and one without bytes stand there.
  EXPECT_EQ(countsIn(with(file, entryAt(0), entry(SectionKind::ProjectName, file.size(), 0))),
            (Counts{{"gap", 1}}));
  for (const auto& [offset, size] :
       std::vector<std::pair<std::uint64_t, std::uint32_t>>{{file.size(), 1},
                                                            {file.size() + 1, 0},
                                                            {std::uint64_t{1} << 31U, 0},
                                                            {std::uint64_t{1} << 32U, 0},
                                                            {~std::uint64_t{0}, 0},
                                                            {~std::uint64_t{0}, 0xFFFFFFFFU}}) {
    const Findings findings =
        findingsIn(with(file, entryAt(0), entry(SectionKind::ProjectName, offset, size)));
    EXPECT_EQ(countsOf(findings), (Counts{{"section-outside", 1}, {"gap", 1}})) << offset;
    EXPECT_EQ(findings.list(FindingCode::SectionOutside)[0].offset, entryAt(0));
    EXPECT_EQ(findings.list(FindingCode::Gap)[0].offset, projectOffset);
  }
}

TEST(TableChecksTest, FindsBothSectionsThatOverlap) {
  const std::vector<Section> sections = plainSections();
  const std::string file = container(sections);
  // The DWARF section takes the last byte of the project's name.
  const std::string overlapping =
      with(file, entryAt(1), entry(SectionKind::Dwarf, offsetOfSection(sections, 1) - 1, 5));
  const Findings findings = findingsIn(overlapping);
  EXPECT_EQ(countsOf(findings), (Counts{{"section-overlap", 2}}));
  EXPECT_EQ(findings.list(FindingCode::SectionOverlap)[0].offset, entryAt(0));
  EXPECT_EQ(findings.list(FindingCode::SectionOverlap)[1].offset, entryAt(1));
}

TEST(TableChecksTest, FindsAllSectionsInsideAnother) {
  const std::string bytes(100, 'x');
  const std::uint64_t start = entryAt(4);
  const std::string file = header(4) + entry(SectionKind::ProjectName, start, 90) +
                           entry(SectionKind::ProjectName, start + 10, 20) +
                           entry(SectionKind::ProjectName, start + 40, 20) +
                           entry(SectionKind::ProjectName, start + 90, 10) + bytes;
  EXPECT_EQ(findingsIn(file).count(FindingCode::SectionOverlap), 3U);
}

TEST(TableChecksTest, LetsSectionsWithoutBytesLieAnywhere) {
  const std::vector<Section> sections = plainSections();
  std::vector<Section> more = sections;
  more.push_back({SectionKind::Dwarf, ""});
  const std::string inside =
      with(container(more), entryAt(4), entry(SectionKind::Dwarf, offsetOfSection(more, 2) + 3, 0));
  EXPECT_EQ(countsIn(inside), (Counts{{"duplicate-section", 1}}));
}

TEST(TableChecksTest, FindsMissingJson) {
  std::vector<Section> sections = plainSections();
  sections.erase(sections.begin() + 2);
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::JsonMissing, std::nullopt));
}

TEST(TableChecksTest, FindsSecondSectionOfMostKinds) {
  for (const std::size_t index : {1U, 2U, 3U}) {
    std::vector<Section> sections = plainSections();
    sections.push_back(sections[index]);
    const Findings findings = findingsIn(container(sections));
    EXPECT_EQ(findings.count(FindingCode::DuplicateSection), 1U);
    EXPECT_EQ(findings.list(FindingCode::DuplicateSection)[0].offset, entryAt(4));
    EXPECT_EQ(findings.list(FindingCode::DuplicateSection)[0].section, 4U);
  }
}

TEST(TableChecksTest, CountsEqualProjectNames) {
  std::vector<Section> sections = plainSections();
  sections.push_back(sections[0]);
  sections.push_back(sections[0]);
  const std::string file = container(sections);
  EXPECT_TRUE(findsOnly(file, FindingCode::ProjectEntries, entryAt(0)));
  EXPECT_EQ(findingsIn(file).list(FindingCode::ProjectEntries)[0].number, 3);
}

TEST(TableChecksTest, FindsProjectNameThatDiffers) {
  std::vector<Section> sections = plainSections();
  sections.push_back(sections[0]);
  sections.push_back({SectionKind::ProjectName, "other"});
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::DuplicateSection, entryAt(5)));
}

TEST(TableChecksTest, FindsJsonThatFollowsTheRecords) {
  KernelRecord kernel = plainKernel();
  std::vector<Section> sections = plainSections({kernel});
  kernel.prepareBreakableConditions();
  sections[2].bytes = jsonOf({kernel});
  std::swap(sections[2], sections[3]);
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::JsonAfterRecords, entryAt(3)));
}

TEST(TableChecksTest, FindsBytesThatBelongToNothing) {
  const std::vector<Section> sections = plainSections();
  const std::string file = container(sections);
  EXPECT_TRUE(findsOnly(file + "more", FindingCode::TrailingBytes, file.size()));
  // The project's name loses its last two bytes.
  const std::uint64_t start = offsetOfSection(sections, 0);
  const std::string shorter = with(file, entryAt(0), entry(SectionKind::ProjectName, start, 2));
  EXPECT_TRUE(findsOnly(shorter, FindingCode::Gap, start + 2));
  EXPECT_EQ(findingsIn(shorter).list(FindingCode::Gap)[0].number, 2);
}

TEST(TableChecksTest, FindsGapAfterTheTable) {
  const std::string file = header(1) + entry(SectionKind::Json, 43, 22) + "gap" + emptyJson();
  EXPECT_EQ(countsIn(file),
            (Counts{{"gap", 1}, {"no-kernels", 1}, {"no-dwarf", 1}, {"no-location", 1}}));
  EXPECT_EQ(findingsIn(file).list(FindingCode::Gap)[0].offset, 40U);
}

}  // namespace
}  // namespace consolidator::inspect
