#include "inspect/InspectRun.h"
#include "inspect/verify/VerifyFixture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace consolidator::inspect {
namespace {

// A source with code in the lines 2 to 41, of which a compiler makes line tables.
class SourceListingTest : public testing::Test {
 protected:
  SourceListingTest() {
    std::string source = "int k(int a) {\n";
    for (int line = 2; line <= 41; ++line) source += "  a += " + std::to_string(line) + ";\n";
    folder_.write("k.c", source + "  return a;\n}\n");
    EXPECT_EQ(startInspectScript("gcc -O0 -g -c k.c", folder_.path("")).outcome(), holds(""));
  }

  // The page about a file with conditions for these lines.
  std::string pageWith(const std::vector<std::uint32_t>& lines) const {
    KernelRecord kernel = plainKernel();
    for (const std::uint32_t line : lines) {
      BreakableCondition condition(ConditionKind::SourceLine,
                                   "== $i condition_" + std::to_string(line));
      condition.file = "k.c";
      condition.line = line;
      kernel.addBreakableCondition(condition);
    }
    const std::string bytes = container({{SectionKind::Dwarf, folder_.read("k.o")},
                                         {SectionKind::KernelRecords, recordsOf({kernel})}});
    return inspectBytes(bytes, {"report", "FILE", "-o", "-", "--source", folder_.path("")}).out;
  }

  static bool shows(const std::string& page, int line) {
    return page.find("  a += " + std::to_string(line) + ";") != std::string::npos;
  }

  TemporaryFolder folder_;
};

TEST_F(SourceListingTest, ShowsLinesAroundThoseOfConditions) {
  const std::string page = pageWith({10, 30});
  for (const int line : {7, 10, 13, 27, 30, 33}) EXPECT_TRUE(shows(page, line)) << line;
  for (const int line : {6, 14, 26, 34}) EXPECT_FALSE(shows(page, line)) << line;
}

TEST_F(SourceListingTest, ShowsEachLineOnceWhereConditionsAreNear) {
  const std::string page = pageWith({10, 12});
  for (int line = 7; line <= 15; ++line) {
    const std::string text = "  a += " + std::to_string(line) + ";";
    const std::size_t at = page.find(text);
    ASSERT_NE(at, std::string::npos) << line;
    EXPECT_EQ(page.find(text, at + 1), std::string::npos) << line;
  }
}

TEST_F(SourceListingTest, BeginsAndEndsWithTheFile) {
  const std::string page = pageWith({2, 41});
  EXPECT_NE(page.find("int k(int a) {"), std::string::npos);
  EXPECT_NE(page.find("  return a;"), std::string::npos);
}

TEST_F(SourceListingTest, ShowsNothingOfLinesThatTheFileDoesNotHave) {
  const std::string source = folder_.read("k.c");
  folder_.write("k.c", source.substr(0, source.find("  a += 20;")));
  const std::string page = pageWith({30});
  EXPECT_EQ(page.find("int k(int a)"), std::string::npos);
  EXPECT_FALSE(shows(page, 19));
}

TEST_F(SourceListingTest, ShowsNothingOfFilesThatCannotBeRead) {
  folder_.write("other", "");
  std::filesystem::remove(folder_.path("k.c"));
  EXPECT_FALSE(shows(pageWith({10}), 10));
}

}  // namespace
}  // namespace consolidator::inspect
