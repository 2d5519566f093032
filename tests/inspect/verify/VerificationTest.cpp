#include "inspect/verify/VerifyFixture.h"
#include "model/RandomKernels.h"
#include "support/FullContainer.h"

#include <algorithm>

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

std::vector<Section> withJson(std::vector<Section> sections, std::string text) {
  sections[2].bytes = std::move(text) + '\0';
  return sections;
}

bool isSound(std::string_view bytes) {
  const Findings findings = findingsIn(bytes);
  for (std::size_t i = 0; i < findingCodeCount; ++i) {
    const auto code = static_cast<FindingCode>(i);
    if (findings.count(code) > 0 && severityOf(code) == Severity::Error) return false;
  }
  return true;
}

TEST(VerificationTest, FindsRecordsThatAskForTooMuch) {
  std::vector<Section> sections = plainSections();
  const std::string records = sections[3].bytes;
  const std::uint64_t start = offsetOfSection(sections, 3);
  sections[3].bytes = u32(2) + records.substr(4);
  const Findings findings = findingsIn(container(sections));
  EXPECT_EQ(countsOf(findings), (Counts{{"records-short", 1}}));
  EXPECT_EQ(findings.list(FindingCode::RecordsShort)[0].offset, start);
  EXPECT_EQ(findings.list(FindingCode::RecordsShort)[0].section, 3U);
}

TEST(VerificationTest, FindsTheLengthThatCannotBeSatisfied) {
  const std::vector<Section> sections = plainSections({plainKernel("k"), plainKernel("l")});
  std::string file = container(sections);
  // The length of the last text, the name of a block RAM.
  const std::size_t length = file.size() - 3 - 4;
  file.replace(length, 4, u32(4));
  EXPECT_TRUE(findsOnly(file, FindingCode::RecordsShort, length));
}

TEST(VerificationTest, FindsRecordsThatEndElsewhereThanTheirSection) {
  std::vector<Section> sections = plainSections();
  sections[3].bytes += "more";
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::RecordsSize, 16 + 3 * 24));
  sections = plainSections();
  std::string file = container(sections);
  file.replace(16 + 3 * 24 + 16, 4, u32(static_cast<std::uint32_t>(sections[3].bytes.size() - 1)));
  EXPECT_EQ(countsIn(file), (Counts{{"records-size", 1}, {"trailing-bytes", 1}}));
}

TEST(VerificationTest, FindsJsonWithoutZeroByte) {
  std::vector<Section> sections = plainSections();
  sections[2].bytes.pop_back();
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::JsonUnterminated,
                        offsetOfSection(sections, 3) - 1));
}

TEST(VerificationTest, FindsJsonWithoutBytes) {
  std::vector<Section> sections = plainSections();
  sections[2].bytes.clear();
  const std::uint64_t start = offsetOfSection(sections, 2);
  const Findings findings = findingsIn(container(sections));
  EXPECT_EQ(countsOf(findings),
            (Counts{{"json-unterminated", 1}, {"json-mismatch", 1}, {"json-not-strict", 1}}));
  EXPECT_EQ(findings.list(FindingCode::JsonUnterminated)[0].offset, start);
  EXPECT_EQ(findings.list(FindingCode::JsonMismatch)[0].offset, start);
}

TEST(VerificationTest, FindsTheFirstByteOfJsonThatDiffers) {
  const std::vector<Section> sections = plainSections();
  const std::string text = sections[2].bytes.substr(0, sections[2].bytes.size() - 1);
  const std::uint64_t start = offsetOfSection(sections, 2);
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::string changed = text;
    changed[i] = changed[i] == 'x' ? 'y' : 'x';
    const Findings findings = findingsIn(container(withJson(sections, changed)));
    ASSERT_EQ(findings.count(FindingCode::JsonMismatch), 1U) << i;
    EXPECT_EQ(findings.list(FindingCode::JsonMismatch)[0].offset, start + i);
    EXPECT_EQ(findings.list(FindingCode::JsonMismatch)[0].section, 2U);
  }
}

TEST(VerificationTest, FindsJsonThatIsTooShortOrTooLong) {
  const std::vector<Section> sections = plainSections();
  const std::string text = sections[2].bytes.substr(0, sections[2].bytes.size() - 1);
  const std::uint64_t start = offsetOfSection(sections, 2);
  for (const std::string& other : {text.substr(0, text.size() - 1), text + "\n"}) {
    const Findings findings = findingsIn(container(withJson(sections, other)));
    ASSERT_EQ(findings.count(FindingCode::JsonMismatch), 1U);
    EXPECT_EQ(findings.list(FindingCode::JsonMismatch)[0].offset,
              start + std::min(text.size(), other.size()));
  }
}

TEST(VerificationTest, ComparesTextsOfSeveralBlocks) {
  KernelRecord kernel = plainKernel();
  for (std::uint32_t i = 0; i < 100'000; ++i) kernel.setLogicLocation("/t/k_1/r", i, 1, i);
  const std::vector<Section> sections = plainSections({kernel});
  EXPECT_EQ(countsIn(container(sections)), Counts());
  for (const std::size_t position :
       {std::size_t{262'143}, std::size_t{262'144}, sections[2].bytes.size() - 2}) {
    std::string text = sections[2].bytes.substr(0, sections[2].bytes.size() - 1);
    text[position] = 'x';
    EXPECT_EQ(findingsIn(container(withJson(sections, text)))
                  .list(FindingCode::JsonMismatch)
                  .at(0)
                  .number,
              static_cast<std::int64_t>(position));
  }
}

TEST(VerificationTest, ComparesStoredTextsWithTheirZeroBytes) {
  KernelRecord kernel = plainKernel("k\0l"s);
  kernel.arguments = VariableList({{"a", "b", "x\0float*"s}});
  EXPECT_EQ(countsIn(container(plainSections({kernel}))),
            (Counts{{"zero-byte-in-text", 2}, {"json-not-strict", 1}}));
}

TEST(VerificationTest, PreparesOnceMoreWhereTheRecordsStandFirst) {
  KernelRecord kernel = plainKernel();
  kernel.addBreakableCondition(ConditionKind::Stop, "(1'b1 == 1'b1)");
  kernel.addBreakableCondition(ConditionKind::Stop, "(a == 1 && b == 0)");
  std::vector<Section> sections = plainSections({kernel});
  kernel.prepareBreakableConditions();
  sections[2].bytes = jsonOf({kernel});
  EXPECT_EQ(findingsIn(container(sections)).count(FindingCode::JsonMismatch), 1U);
  std::swap(sections[2], sections[3]);
  EXPECT_EQ(findingsIn(container(sections)).count(FindingCode::JsonMismatch), 0U);
}

TEST(VerificationTest, TakesNoRecordsForTheEmptyList) {
  std::vector<Section> sections = plainSections();
  sections.pop_back();
  EXPECT_EQ(findingsIn(container(sections)).count(FindingCode::JsonMismatch), 1U);
  EXPECT_TRUE(isSound(container({{SectionKind::Json, emptyJson()}})));
}

TEST(VerificationTest, ComparesNothingWhereThereAreSeveral) {
  for (const std::size_t index : {2U, 3U}) {
    std::vector<Section> sections = withJson(plainSections(), "other");
    sections.push_back(sections[index]);
    EXPECT_EQ(findingsIn(container(sections)).count(FindingCode::JsonMismatch), 0U);
  }
}

// What of the text belongs to records that cannot be read is not compared.
TEST(VerificationTest, ComparesTheKernelsThatCanBeRead) {
  std::vector<Section> sections = plainSections({plainKernel("k"), plainKernel("l")});
  sections[3].bytes.pop_back();
  EXPECT_EQ(countsIn(container(sections)), (Counts{{"records-short", 1}}));
  sections[2].bytes[30] = '?';
  EXPECT_EQ(findingsIn(container(sections)).count(FindingCode::JsonMismatch), 1U);
}

TEST(VerificationTest, FindsWhereJsonIsNotStrict) {
  KernelRecord kernel = plainKernel();
  VariableRecord variable("v", "v_r", "int");
  variable.instanceBits = {{{1, 2}}};
  kernel.variables = VariableList({variable});
  const std::vector<Section> sections = plainSections({kernel});
  const std::string file = container(sections);
  EXPECT_TRUE(findsOnly(file, FindingCode::JsonNotStrict, file.find("{ 1, 2}") + 2));
}

TEST(VerificationTest, KnowsWhatIsRequired) {
  const std::string empty = container({{SectionKind::Json, emptyJson()}});
  Requirements all{true, true, true, true, "proj"};
  EXPECT_EQ(countsIn(container(plainSections()), all), Counts());
  EXPECT_EQ(countsIn(empty, all), (Counts{{"no-kernels", 1},
                                          {"no-dwarf", 1},
                                          {"no-location", 1},
                                          {"missing-kernels", 1},
                                          {"missing-instances", 1},
                                          {"missing-dwarf", 1},
                                          {"missing-locations", 1},
                                          {"missing-project", 1}}));
  all.project = "other";
  EXPECT_EQ(countsIn(container(plainSections()), all), (Counts{{"missing-project", 1}}));
}

TEST(VerificationTest, FindsEveryCutUnsound) {
  const std::string file = container(plainSections({plainKernel("a"), plainKernel("b")}));
  ASSERT_TRUE(isSound(file));
  for (std::size_t size = 16; size < file.size(); ++size) {
    EXPECT_FALSE(isSound(file.substr(0, size))) << size;
  }
}

TEST(VerificationTest, FindsWhatTheToolSavesSound) {
  RandomKernels random(5);
  for (int i = 0; i < 200; ++i) {
    KernelList list;
    for (std::size_t left = random.below(4); left > 0; --left) list.append(random.next(5));
    const std::string text = json(list);
    const std::vector<KernelRecord> kernels(list.begin(), list.end());
    EXPECT_TRUE(isSound(container(
        {{SectionKind::Json, text + '\0'}, {SectionKind::KernelRecords, recordsOf(kernels)}})));
  }
}

TEST(VerificationTest, SurvivesEveryChangedByte) {
  std::string file = fullContainer();
  for (std::size_t i = 16; i < file.size(); ++i) {
    const char before = file[i];
    for (const int byte : {0, 1, 2, 0x7F, 0x80, 0xFF}) {
      file[i] = static_cast<char>(byte);
      EXPECT_FALSE(isSound(file)) << i;  // its JSON section holds something else
    }
    file[i] = before;
  }
}

TEST(VerificationTest, LooksAtEachSectionBesideOthers) {
  const std::string name = "\xFF";
  const std::string records = u32(1) + kernelRecord("", 0);
  const Findings findings = findingsIn(container({{SectionKind::ProjectName, name},
                                                  {SectionKind::ProjectName, name},
                                                  {SectionKind::KernelRecords, records},
                                                  {SectionKind::KernelRecords, records}}));
  EXPECT_EQ(findings.count(FindingCode::TextNotUtf8), 2U);
  EXPECT_EQ(findings.count(FindingCode::UnnamedKernel), 2U);
}

// Looking at each of them would take hours.
TEST(VerificationTest, LooksOnceAtSectionsOnTheSameBytes) {
  const std::string name(1'000'000, 'n');
  const std::string records = u32(100'000) + std::string(3'200'000, '\0');
  const std::uint32_t count = 30'000;
  std::string table;
  const std::uint64_t start = 16 + std::uint64_t{24} * 4 * count;
  for (std::uint32_t i = 0; i < count; ++i) {
    table += entry(SectionKind::ProjectName, start + i % 7, 900'000);
    table += entry(SectionKind::KernelRecords, start + name.size(), 5);
    table += entry(SectionKind::Json, start + i, 900'000);
    table += entry(SectionKind::Dwarf, start, 900'000);
  }
  const Findings findings = findingsIn(header(4 * count) + table + name + records);
  EXPECT_EQ(findings.count(FindingCode::SectionOverlap), std::uint64_t{4} * count);
  EXPECT_EQ(findings.count(FindingCode::UnnamedKernel), 100'000U);
}

// Each list begins inside another one, and all of them go on to the end of the file.
TEST(VerificationTest, LooksOnceAtRecordsInsideOthers) {
  const std::uint32_t lists = 20'000;
  const std::uint32_t kernels = 50'000;
  std::string table;
  std::string heads;
  const std::uint64_t start = 16 + std::uint64_t{24} * lists;
  for (std::uint32_t i = 0; i < lists; ++i) {
    table += entry(SectionKind::KernelRecords, start + std::uint64_t{8} * i, 5);
    heads += u32(kernels) + u32(8 * (lists - i - 1));  // the first kernel's name
  }
  const std::string file =
      header(lists) + table + heads + std::string(std::size_t{32} * kernels, '\0');
  EXPECT_EQ(findingsIn(file).count(FindingCode::NoInstance), kernels);
}

}  // namespace
}  // namespace consolidator::inspect
