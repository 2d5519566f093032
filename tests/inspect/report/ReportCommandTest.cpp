#include "inspect/InspectRun.h"
#include "inspect/verify/VerifyFixture.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace consolidator::inspect {
namespace {

Outcome report(const std::string& bytes) {
  return inspectBytes(bytes, {"report", "FILE", "-o", "-"});
}

// The page without its style sheet and its script.
std::string pageOf(const std::string& bytes) {
  std::string page = report(bytes).out;
  for (const std::string_view tag : {"style>", "script>"}) {
    const std::size_t begin = page.find("<" + std::string(tag));
    page.erase(begin, page.find("</" + std::string(tag)) - begin);
  }
  return page;
}

bool has(const std::string& page, std::string_view text) {
  return page.find(text) != std::string::npos;
}

std::size_t countIn(const std::string& page, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = page.find(text); at != std::string::npos; at = page.find(text, at + 1)) {
    ++count;
  }
  return count;
}

std::string recordsWith(std::uint32_t registers) {
  std::string record = text("k") + u32(0) + u32(0) + u32(0) + u32(0) + u32(registers);
  for (std::uint32_t i = 0; i < registers; ++i) {
    record += text("/t/r" + std::to_string(i)) + u32(1) + u32(i) + u32(5);
  }
  return record + u32(0) + u32(0);
}

std::string fileHolding(const std::string& records) {
  return container({{SectionKind::KernelRecords, records}});
}

TEST(ReportCommand, ShowsAllThatIsInAFile) {
  const std::string page = pageOf(fullContainer());
  for (const std::string_view shown :
       {"<bdi>name</bdi>", "<bdi>first</bdi>", "<bdi>second</bdi>", "/top/first_1",
        "<bdi>a_r</bdi>", "int*", "0x1:2 0x3:4; ", "<bdi>reg</bdi>", "0x5:6 0x7:8", "(x == 1)",
        "k.c:42", "<bdi>bram</bdi>", "DWARF", "json-mismatch",
        "<dt>Arguments and variables</dt><dd>3 <"}) {
    EXPECT_TRUE(has(page, shown)) << shown;
  }
}

TEST(ReportCommand, SaysThatThereAreNoInstances) {
  const std::string none = "No kernel has an instance.";
  EXPECT_TRUE(has(pageOf(fileHolding(u32(1) + kernelRecord("k", 0))), none));
  const std::string page = pageOf(fileHolding(u32(1) + kernelRecord("k", 0, {"/top/k_1"})));
  EXPECT_FALSE(has(page, none));
  EXPECT_EQ(countIn(page, "<ul class=\"tree\">"), 1);
}

TEST(ReportCommand, HasNoStatusForWhatItShows) {
  EXPECT_EQ(report(fullContainer()).status, 0) << "unsound, but whole";
  EXPECT_TRUE(has(pageOf(fullContainer()), "<strong>Unsound</strong>"));
}

TEST(ReportCommand, CallsOnlyAllVariablesAWholeHundredPercent) {
  const std::uint32_t names = 10'000;
  std::string variables;
  for (std::uint32_t i = 0; i < names; ++i) {
    variables += text("v") + text(i == 0 ? "none" : "r") + text("int") + u32(0);
  }
  const std::string record = text("k") + u32(1) + text("/t") + u32(0) + u32(0) + u32(names) +
                             variables + u32(1) + text("/t/r") + u32(1) + u32(1) + u32(1) + u32(0) +
                             u32(0);
  EXPECT_TRUE(has(pageOf(fileHolding(u32(1) + record)), "99.9 % located"));
}

TEST(ReportCommand, FailsForAFileThatIsNotComplete) {
  const std::string bytes = fullContainer();
  const Outcome outcome = report(bytes.substr(0, bytes.size() - 30));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(has(outcome.out, "Not complete."));
  EXPECT_TRUE(outcome.out.ends_with("</html>\n"));
}

TEST(ReportCommand, LetsBrowsersRunNothingButItsOwnScript) {
  const std::string page = report(fullContainer()).out;
  EXPECT_EQ(countIn(page, "<script"), 1);
  EXPECT_EQ(countIn(page, "default-src 'none'; script-src 'sha256-"), 1);
  EXPECT_FALSE(has(page, "unsafe"));
  EXPECT_LT(page.find("Content-Security-Policy"), page.find("<style>"));
}

TEST(ReportCommand, FoldsALongListIntoBlocks) {
  const std::string few = pageOf(fileHolding(u32(1) + recordsWith(200)));
  EXPECT_EQ(countIn(few, "<tr data-kind=\"register\">"), 200);
  const std::string many = pageOf(fileHolding(u32(1) + recordsWith(1001)));
  EXPECT_EQ(countIn(many, "<tr data-kind=\"register\">"), 0);
  EXPECT_TRUE(has(many, "Folded, since there are many"));
  EXPECT_EQ(countIn(many, "<details class=\"block\">"), 3);
  EXPECT_TRUE(has(many, "<summary>1,001 to 1,001</summary>"));
  EXPECT_TRUE(has(many, "/t/r1000\t\t\t1\t0x3e8:5\n"));
}

TEST(ReportCommand, FoldsListsOnceThereAreManyRows) {
  std::string records = u32(50);
  for (int i = 0; i < 50; ++i) records += recordsWith(150);
  const std::string page = pageOf(fileHolding(records));
  EXPECT_EQ(countIn(page, "<tr data-kind=\"register\">"), 4950);
  EXPECT_EQ(countIn(page, "0x95:5"), 50) << "nothing is left out";
}

TEST(ReportCommand, CountsWhatItDoesNotName) {
  const auto pageWith = [](std::uint32_t kernels) {
    std::string records = u32(kernels);
    for (std::uint32_t i = 0; i < kernels; ++i) records += kernelRecord("k", 0);
    return pageOf(fileHolding(records));
  };
  EXPECT_FALSE(has(pageWith(200), "class=\"more\""));
  const std::string page = pageWith(300);
  EXPECT_TRUE(has(page, "and 100 more"));
  EXPECT_EQ(countIn(page, "class=\"kernel\""), 300);
  EXPECT_EQ(countIn(page, " open>"), 0) << "so many are folded";
}

TEST(ReportCommand, ShowsSectionsOfAnyPlaceAndSize) {
  const std::string bytes = header(3) + entry(9, ~std::uint64_t{0}, ~0U) +
                            entry(SectionKind::Dwarf, 50, ~0U) + entry(SectionKind::Json, 0, 0) +
                            "xyz";
  const Outcome outcome = report(bytes);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(has(outcome.out, "0xffffffffffffffff"));
  EXPECT_FALSE(has(outcome.out, "width=\"-"));
}

TEST(ReportCommand, WritesTheFileWholeOrNotAtAll) {
  const TemporaryFolder folder;
  const std::string file = folder.write("file", fullContainer());
  const std::string output = folder.write("out.html", "before");
  EXPECT_EQ(inspect({"report", folder.path("missing"), "-o", output}).status, 2);
  EXPECT_EQ(folder.read("out.html"), "before");
  EXPECT_EQ(inspect({"report", file, "-o", output}), holds(""));
  EXPECT_TRUE(folder.read("out.html").ends_with("</html>\n"));
}

TEST(ReportCommand, RefusesToReplaceTheFileItShows) {
  const TemporaryFolder folder;
  const std::string file = folder.write("file", fullContainer());
  EXPECT_EQ(inspect({"report", file, "-o", file}),
            (Outcome{2, "", said(file + ": is an input, so it cannot be the output")}));
  EXPECT_EQ(folder.read("file"), fullContainer());
}

TEST(ReportCommand, SaysWhyItCannotWrite) {
  EXPECT_EQ(inspectBytes(fullContainer(), {"report", "FILE", "-o", "/dev/full"}),
            (Outcome{2, "", said("/dev/full: No space left on device")}));
}

TEST(ReportCommand, WantsAnOutput) {
  EXPECT_EQ(inspectBytes(fullContainer(), {"report", "FILE"}).status, 2);
}

TEST(ReportCommand, TellsThatTheLineTablesCannotBeRead) {
  const TemporaryFolder folder;
  const Outcome outcome =
      inspectBytes(fullContainer(), {"report", "FILE", "-o", "-", "--source", folder.path("")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.err.starts_with(said("FILE: DWARF: ").substr(0, 34))) << outcome.err;
}

TEST(ReportCommand, CountsSectionsThatItDoesNotShow) {
  const auto pageWith = [](std::uint32_t sections) {
    std::string bytes = header(sections);
    for (std::uint32_t i = 0; i < sections; ++i) bytes += entry(SectionKind::Dwarf, 0x10000 + i, 1);
    return pageOf(bytes);
  };
  const std::string all = pageWith(100);
  EXPECT_TRUE(has(all, "0x10063"));
  EXPECT_FALSE(has(all, "more sections"));
  const std::string some = pageWith(1350);
  EXPECT_TRUE(has(some, "0x10063"));
  EXPECT_FALSE(has(some, "0x10064"));
  EXPECT_TRUE(has(some, "1,250 more"));
}

TEST(ReportCommand, TellsLocationsWithGapsAndDoubtfulOnes) {
  KernelRecord kernel;
  kernel.name = "k";
  kernel.addInstancePath("/t/k_1");
  kernel.addInstancePath("/t/k_10");
  for (const char* const name : {"whole", "gap", "none"}) kernel.addVariable(name, name, "int");
  kernel.setLogicLocation("/t/k_10/whole", 0, 1, 1);
  kernel.setLogicLocation("/t/k_10/gap", 1, 1, 1);
  const std::string page = pageOf(fileHolding(recordsOf({kernel})));
  EXPECT_TRUE(has(page, "2 of 3 located, 1 with gaps"));
  EXPECT_TRUE(has(page, "0 of 3 located, 2 doubtful"));
}

}  // namespace
}  // namespace consolidator::inspect
