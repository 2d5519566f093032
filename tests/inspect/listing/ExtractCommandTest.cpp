#include "inspect/InspectRun.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace consolidator::inspect {
namespace {

Outcome extract(const std::string& bytes, const std::string& section) {
  return inspectBytes(bytes, {"extract", "FILE", section, "-o", "-"});
}

TEST(ExtractCommand, WritesTheBytesOfEachSection) {
  const std::string bytes = fullContainer();
  EXPECT_EQ(extract(bytes, "project"), holds("name"));
  EXPECT_EQ(extract(bytes, "dwarf"), holds("\177ELF with more"));
  EXPECT_EQ(extract(bytes, "json"), holds("as it was rendered"));
  EXPECT_EQ(extract(bytes, "records"), holds(fullRecords()));
}

TEST(ExtractCommand, CutsTheProjectAtAZeroByte) {
  EXPECT_EQ(extract(container({{SectionKind::ProjectName, std::string("a\0b", 3)}}), "project"),
            holds("a"));
}

TEST(ExtractCommand, WritesAnEmptySection) {
  EXPECT_EQ(extract(container({{SectionKind::ProjectName, ""}}), "project"), holds(""));
}

TEST(ExtractCommand, FailsForWhatIsNotThereAndLeavesTheOutput) {
  const TemporaryFolder folder;
  const std::string output = folder.write("out", "before");
  EXPECT_EQ(inspectBytes(header(0), {"extract", "FILE", "dwarf", "-o", output}),
            (Outcome{1, "", said("FILE: the DWARF section is not there")}));
  EXPECT_EQ(folder.read("out"), "before");
}

TEST(ExtractCommand, FailsForASectionThatIsNotThereAsAWhole) {
  const std::string bytes = header(1) + entry(SectionKind::Dwarf, 40, 5) + "ELF";
  EXPECT_EQ(extract(bytes, "dwarf"),
            (Outcome{1, "",
                     said("FILE: the DWARF section cannot be read: not all of its bytes are "
                          "there")}));
}

TEST(ExtractCommand, WritesASectionOfAnIncompleteFileButFails) {
  const std::string bytes =
      container({{SectionKind::Dwarf, "ELF"}, {SectionKind::ProjectName, ""}});
  const TemporaryFolder folder;
  const std::string output = folder.path("out");
  const std::string damaged = header(3) + bytes.substr(16);
  EXPECT_EQ(inspectBytes(damaged, {"extract", "FILE", "dwarf", "-o", output}).status, 1);
  EXPECT_EQ(folder.read("out"), "ELF");
}

TEST(ExtractCommand, RefusesToReplaceTheFileItReads) {
  const TemporaryFolder folder;
  const std::string file = folder.write("file", fullContainer());
  EXPECT_EQ(inspect({"extract", file, "dwarf", "-o", file}),
            (Outcome{2, "", said(file + ": is an input, so it cannot be the output")}));
  EXPECT_EQ(folder.read("file"), fullContainer());
}

TEST(ExtractCommand, KnowsTheFileItReadsByAnyName) {
  const TemporaryFolder folder;
  const std::string file = folder.write("file", fullContainer());
  const std::string link = folder.path("link");
  const std::string second = folder.path("second");
  std::filesystem::create_symlink("file", link);
  std::filesystem::create_hard_link(file, second);
  for (const std::string& output : {link, second}) {
    EXPECT_EQ(inspect({"extract", file, "dwarf", "-o", output}).status, 2);
    EXPECT_EQ(inspect({"extract", output, "dwarf", "-o", file}).status, 2);
  }
  EXPECT_EQ(startInspectScript("$INSPECT extract - dwarf -o file <link", folder.path("")).outcome(),
            (Outcome{2, "", said("file: is an input, so it cannot be the output")}));
  EXPECT_EQ(startInspectScript("mkfifo pipe; cat file >pipe & $INSPECT extract pipe dwarf -o pipe",
                               folder.path(""))
                .outcome(),
            (Outcome{2, "", said("pipe: is an input, so it cannot be the output")}));
  EXPECT_EQ(folder.read("file"), fullContainer());
}

TEST(ExtractCommand, SaysWhyItCannotWrite) {
  EXPECT_EQ(inspectBytes(fullContainer(), {"extract", "FILE", "dwarf", "-o", "/dev/full"}),
            (Outcome{2, "", said("/dev/full: No space left on device")}));
}

TEST(ExtractCommand, RefusesAnUnknownSection) {
  const Outcome outcome = extract(fullContainer(), "kernels");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
}

}  // namespace
}  // namespace consolidator::inspect
