#include "inspect/verify/TextChecks.h"
#include "inspect/verify/VerifyFixture.h"

#include <random>

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

std::vector<std::pair<FindingCode, std::uint64_t>> found(std::string_view bytes,
                                                         bool isInJson = true) {
  Findings findings;
  checkText({bytes, 1000}, {5, std::nullopt, isInJson}, "a text", findings);
  std::vector<std::pair<FindingCode, std::uint64_t>> places;
  for (const FindingCode code :
       {FindingCode::ZeroByteInText, FindingCode::TextNotUtf8, FindingCode::TextBreaksJson}) {
    for (const Finding& finding : findings.list(code)) {
      EXPECT_EQ(finding.section, 5U);
      places.emplace_back(code, *finding.offset - 1000);
    }
  }
  return places;
}

using Places = std::vector<std::pair<FindingCode, std::uint64_t>>;

TEST(TextChecksTest, FindsNothingInPlainText) {
  EXPECT_EQ(found(""), Places());
  EXPECT_EQ(found("plain ASCII from blank to tilde: ~ and DEL \x7F"), Places());
  EXPECT_EQ(found("na\xC3\xAFve \xF0\x9F\x99\x82"), Places());
}

TEST(TextChecksTest, FindsEachNotableByteAtEachPlace) {
  for (std::size_t size = 1; size < 20; ++size) {
    for (std::size_t position = 0; position < size; ++position) {
      std::string text(size, 'x');
      const auto withByte = [&](int byte) {
        text[position] = static_cast<char>(byte);
        return text;
      };
      EXPECT_EQ(found(withByte(0)), (Places{{FindingCode::ZeroByteInText, position}}));
      EXPECT_EQ(found(withByte(0xFF)), (Places{{FindingCode::TextNotUtf8, position}}));
      for (const int byte : {1, 9, 10, 0x1F, int{'"'}, int{'\\'}}) {
        EXPECT_EQ(found(withByte(byte)), (Places{{FindingCode::TextBreaksJson, position}}));
      }
    }
  }
}

TEST(TextChecksTest, ReportsTheFirstPlaceOfEachKind) {
  EXPECT_EQ(found("a\"\"\0\0\xFF\xFF"s), (Places{{FindingCode::ZeroByteInText, 3},
                                                 {FindingCode::TextNotUtf8, 5},
                                                 {FindingCode::TextBreaksJson, 1}}));
}

TEST(TextChecksTest, LetsTextsOutsideTheJsonBreakIt) {
  EXPECT_EQ(found("\"\0"s, false), (Places{{FindingCode::ZeroByteInText, 1}}));
}

TEST(TextChecksTest, ChecksTheProjectsName) {
  std::vector<Section> sections = plainSections();
  sections[0].bytes = "a\"\\\n";
  EXPECT_EQ(countsIn(container(sections)), Counts());
  sections[0].bytes = "a\0b"s;
  const std::uint64_t start = offsetOfSection(sections, 0);
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::ZeroByteInText, start + 1));
  sections[0].bytes = "ab\xC3";
  EXPECT_TRUE(findsOnly(container(sections), FindingCode::TextNotUtf8, start + 2));
}

// Every text of a kernel that has a name of its own.
TEST(TextChecksTest, ChecksEveryTextOfAKernel) {
  KernelRecord kernel = plainKernel();
  const std::string marked = "\xFF";
  kernel.name = marked;
  kernel.instancePaths = TextList({marked});
  kernel.arguments = VariableList({{marked, marked, marked}});
  kernel.variables = VariableList({{marked, marked, marked}});
  HardwareVariable hardware(marked);
  hardware.logicLocations = {{1, 2}};
  kernel.hardwareVariables = HardwareVariableList({hardware});
  BreakableCondition condition(ConditionKind::SourceLine, "== \xFF 1 $i/a");
  condition.file = marked;
  kernel.breakableConditions = BreakableConditionList({condition});
  kernel.brams = {marked};
  EXPECT_EQ(findingsIn(container(plainSections({kernel}))).count(FindingCode::TextNotUtf8), 12U);
}

TEST(TextChecksTest, NamesTheKernelOfAText) {
  KernelRecord kernel = plainKernel("krnl");
  kernel.brams = {"r\xFF"};
  const std::vector<Section> sections = plainSections({kernel});
  const std::string file = container(sections);
  const Findings findings = findingsIn(file);
  ASSERT_EQ(findings.list(FindingCode::TextNotUtf8).size(), 1U);
  const Finding& finding = findings.list(FindingCode::TextNotUtf8)[0];
  EXPECT_EQ(finding.section, 3U);
  EXPECT_EQ(finding.offset, file.size() - 1);
  EXPECT_EQ(kernelNameOf(finding), "krnl");
  EXPECT_EQ(sentenceOf(finding), "the name of a block RAM is not UTF-8");
}

}  // namespace
}  // namespace consolidator::inspect
