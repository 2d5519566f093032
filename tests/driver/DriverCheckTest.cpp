// The checks of project and version, and the dumps.

#include "driver/DriverRun.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

class DriverCheckTest : public testing::Test {
 protected:
  // Runs with "-f <file>" and these words; returns the status and keeps what was said.
  int run(std::vector<std::string> words) {
    words.insert(words.begin(), {"-f", file_});
    const Outcome outcome = consolidator::run(std::move(words));
    EXPECT_EQ(outcome.out, "");
    err_ = outcome.err;
    return outcome.status;
  }

  std::string stored() const { return folder_.read("file"); }

  TemporaryFolder folder_;
  std::string file_ = folder_.path("file");
  std::string out_ = folder_.path("out");
  std::string input_ = folder_.write("in", "k:");
  std::string err_;
};

std::string projectFile(std::string_view name) {
  return container({{SectionKind::ProjectName, std::string(name)},
                    {SectionKind::Dwarf, "DWARF"},
                    {SectionKind::Json, emptyJson()}});
}

TEST_F(DriverCheckTest, TheStreamIsClosedHoweverTheRunEnds) {
  const auto isClosed = [&](const std::string& stored, std::vector<std::string> words, int status) {
    writeFile(file_, stored);
    words.insert(words.begin(), {"-f", file_});
    const Arguments arguments(std::move(words));
    const StreamCapture capture;
    ConsolidatedFile file;
    EXPECT_EQ(runConsolidation(arguments.count(), arguments.values(), file), status);
    return !file.isOpen();
  };
  EXPECT_TRUE(isClosed(projectFile("a"), {"-h", input_}, 0));
  EXPECT_TRUE(isClosed(projectFile("a"), {"-j", out_}, 0));
  EXPECT_TRUE(isClosed(projectFile("a"), {"-p", "b", "-h", input_}, 1));
  EXPECT_TRUE(isClosed(projectFile("a"), {"-p", "b", "-j", out_}, 1));
  EXPECT_TRUE(isClosed(header(0, 2), {"-h", input_}, 1));
}

using DriverProjectTest = DriverCheckTest;

TEST_F(DriverProjectTest, AnotherProjectIsRefusedLeavesTheFileEmptyAndReadsNoInput) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"-p", "b", "-h", folder_.write("bad", "instance x")}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " has meta-data for project a, not specified project b\n");
  EXPECT_EQ(stored(), "");
}

TEST_F(DriverProjectTest, NamesAreComparedByteForByte) {
  for (const char* const name : {"A", "a ", "ab", " a"}) {
    writeFile(file_, projectFile("a"));
    EXPECT_EQ(run({"-p", name, "-h", input_}), 1) << name;
  }
}

TEST_F(DriverProjectTest, TheSameProjectOrNoneIsAccepted) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"-p", "a", "-d", input_}), 0);
  EXPECT_EQ(run({"-d", input_}), 0);
  EXPECT_EQ(run({"-p", "", "-d", input_}), 0);
  EXPECT_EQ(err_, "");
  EXPECT_EQ(stored(), container({{SectionKind::ProjectName, "a"},
                                 {SectionKind::Dwarf, "DWARF"},
                                 {SectionKind::Json, emptyJson()},
                                 {SectionKind::ProjectName, "a"}}));
}

TEST_F(DriverProjectTest, AFileWithoutProjectTakesAnyName) {
  writeFile(file_, container({{SectionKind::Json, emptyJson()}}));
  EXPECT_EQ(run({"-p", "a", "-d", folder_.path("missing")}), 0);
  EXPECT_EQ(stored(),
            container({{SectionKind::Json, emptyJson()}, {SectionKind::ProjectName, "a"}}));
}

TEST_F(DriverProjectTest, AnEmptyStoredNameIsNone) {
  writeFile(file_, projectFile(""));
  EXPECT_EQ(run({"-p", "b", "-d", input_}), 0);
  EXPECT_EQ(err_, "");
}

TEST_F(DriverProjectTest, CreateModeAsksForNoProject) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"-c", "-p", "b", "-d", folder_.path("missing")}), 0);
  EXPECT_EQ(err_, "");
  EXPECT_EQ(stored(),
            container({{SectionKind::ProjectName, "b"}, {SectionKind::Json, emptyJson()}}));
}

TEST_F(DriverProjectTest, ADumpIsCheckedAndKeepsTheFile) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"-p", "b", "--dump-dwarf", out_}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " has meta-data for project a, not specified project b\n");
  EXPECT_FALSE(folder_.holds("out"));
  EXPECT_EQ(stored(), projectFile("a"));
  EXPECT_EQ(run({"-p", "a", "--dump-dwarf", out_}), 0);
  EXPECT_EQ(folder_.read("out"), "DWARF");
  EXPECT_EQ(stored(), projectFile("a")) << "a dump saves nothing, the project name included";
}

// A dump does not read all of the file, but it goes by the name that a whole reading would give:
// the last one before the first section that cannot be read.
TEST_F(DriverProjectTest, ADumpGoesByTheNameBeforeAnyDamage) {
  const Section damaged{SectionKind::KernelRecords, u32(1)};
  const std::string stored = container({{SectionKind::ProjectName, "a"},
                                        {SectionKind::ProjectName, "b"},
                                        damaged,
                                        {SectionKind::ProjectName, "c"},
                                        {SectionKind::Json, "json"}});
  writeFile(file_, stored);
  EXPECT_EQ(run({"-p", "c", "--dump-json", out_}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " has meta-data for project b, not specified project c\n");
  EXPECT_EQ(run({"-p", "b", "--dump-json", out_}), 0);
  EXPECT_EQ(folder_.read("out"), "json");
}

TEST_F(DriverProjectTest, ADumpFindsTheNameAfterSoundSections) {
  writeFile(file_, container({{SectionKind::Json, "json"},
                              {SectionKind::Dwarf, "DWARF"},
                              {SectionKind::KernelRecords, u32(1) + kernelRecord("k", 3)},
                              {SectionKind::ProjectName, "a"}}));
  EXPECT_EQ(run({"-p", "b", "--dump-json", out_}), 1);
  EXPECT_EQ(run({"-p", "a", "--dump-json", out_}), 0);
}

using DriverVersionTest = DriverCheckTest;

std::string versionFile(std::int32_t major, std::int32_t minor) {
  return header(1, major, minor) + entry(SectionKind::Json, 40, 22) + emptyJson();
}

TEST_F(DriverVersionTest, AMajorVersionAboveOneIsRefusedAndLeavesTheFileEmpty) {
  writeFile(file_, versionFile(2, 7));
  EXPECT_EQ(run({"-h", input_}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " is version 2.7 and only versions up to 1.1 are supported.\n");
  EXPECT_EQ(stored(), "");
}

TEST_F(DriverVersionTest, TheMinorVersionIsNotChecked) {
  writeFile(file_, versionFile(1, 0x7FFFFFFF));
  EXPECT_EQ(run({"-d", folder_.path("missing")}), 0);
  EXPECT_EQ(err_, "");
  EXPECT_EQ(stored(), versionFile(1, 0x7FFFFFFF));
}

TEST_F(DriverVersionTest, TheMajorVersionIsSigned) {
  for (const std::int32_t version : {0, -1, std::int32_t{-0x7FFFFFFF} - 1}) {
    writeFile(file_, versionFile(version, 0));
    EXPECT_EQ(run({"-d", folder_.path("missing")}), 0) << version;
    EXPECT_EQ(stored(), versionFile(version, 0)) << version;
  }
}

TEST_F(DriverVersionTest, NegativeMinorVersionsAreShownWithTheirSign) {
  writeFile(file_, versionFile(3, -4));
  EXPECT_EQ(run({"-h", input_}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " is version 3.-4 and only versions up to 1.1 are supported.\n");
}

TEST_F(DriverVersionTest, TheVersionsOfAForeignFileCount) {
  writeFile(file_, header(0, 2, 0, 0x04030201U));
  EXPECT_EQ(run({"-h", input_}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " is version 2.0 and only versions up to 1.1 are supported.\n");
}

TEST_F(DriverVersionTest, TheVersionsOfAFileThatIsCutCountWithTheBytesThatThereAre) {
  for (const auto& [stored, version] :
       {std::pair{header(0, 2).substr(0, 5), "2.1"}, {header(0, 2, 0x107).substr(0, 9), "2.7"}}) {
    writeFile(file_, stored);
    EXPECT_EQ(run({"-h", input_}), 1);
    EXPECT_EQ(err_, "Error: consolidated file " + file_ + " is version " + version +
                        " and only versions up to 1.1 are supported.\n");
  }
}

TEST_F(DriverVersionTest, AForeignFileOfAnOlderVersionIsRewrittenWithItsMagic) {
  writeFile(file_, header(0, 1, 5, 0x04030201U));
  EXPECT_EQ(run({"-d", folder_.path("missing")}), 0);
  EXPECT_EQ(stored(),
            header(1, 1, 5, 0x04030201U) + entry(SectionKind::Json, 40, 22) + emptyJson());
}

TEST_F(DriverVersionTest, CreateModeAsksForNoVersion) {
  writeFile(file_, versionFile(2, 7));
  EXPECT_EQ(run({"-c", "-d", folder_.path("missing")}), 0);
  EXPECT_EQ(stored(), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(DriverVersionTest, ADumpIsCheckedAndKeepsTheFile) {
  writeFile(file_, versionFile(2, 7));
  EXPECT_EQ(run({"--dump-json", out_}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " is version 2.7 and only versions up to 1.1 are supported.\n");
  EXPECT_FALSE(folder_.holds("out"));
  EXPECT_EQ(stored(), versionFile(2, 7));
}

TEST_F(DriverVersionTest, TheProjectIsCheckedBeforeTheVersion) {
  writeFile(file_, header(1, 2, 7) + entry(SectionKind::ProjectName, 40, 1) + "a");
  EXPECT_EQ(run({"-p", "b", "-h", input_}), 1);
  EXPECT_EQ(err_, "Error: consolidated file " + file_ +
                      " has meta-data for project a, not specified project b\n");
}

using DriverDumpTest = DriverCheckTest;

TEST_F(DriverDumpTest, BothDumpsTogetherWriteOnlyTheDwarf) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"--dump-json", folder_.path("json"), "--dump-dwarf", out_}), 0);
  EXPECT_EQ(folder_.read("out"), "DWARF");
  EXPECT_FALSE(folder_.holds("json"));
}

TEST_F(DriverDumpTest, AnEmptyDwarfPathLeavesTheJsonDump) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"--dump-json", out_, "--dump-dwarf", ""}), 0);
  EXPECT_EQ(folder_.read("out"), emptyJson());
}

TEST_F(DriverDumpTest, DwarfOfAFileWithoutDwarfIsAnEmptyFile) {
  writeFile(file_, container({{SectionKind::Json, emptyJson()}}));
  EXPECT_EQ(run({"--dump-dwarf", out_}), 0);
  EXPECT_TRUE(folder_.holds("out"));
  EXPECT_EQ(folder_.read("out"), "");
}

TEST_F(DriverDumpTest, InputsGivenWithADumpAreIgnored) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"--dump-json", out_, "-h", folder_.write("bad", "instance x"), "-d", input_}), 0);
  EXPECT_EQ(err_, "");
  EXPECT_EQ(folder_.read("out"), emptyJson());
  EXPECT_EQ(stored(), projectFile("a"));
}

TEST_F(DriverDumpTest, OfADirectoryIsEmpty) {
  EXPECT_EQ(consolidator::run({"-f", folder_.path(""), "-j", out_}), quiet);
  EXPECT_TRUE(folder_.holds("out"));
  EXPECT_EQ(folder_.read("out"), "");
}

// Asked for a dump, so the file is open for reading; without a path, so the inputs are read.
TEST_F(DriverDumpTest, ToAnEmptyPathReadsTheInputsAndChangesNothing) {
  writeFile(file_, projectFile("a"));
  EXPECT_EQ(run({"--dump-json", "", "-h", folder_.write("bad", "instance x"), "-h", input_}), 0);
  EXPECT_EQ(err_, "Parse error\n");
  EXPECT_EQ(stored(), projectFile("a"));
  EXPECT_EQ(run({"--dump-dwarf", "", "-h", input_}), 0);
  EXPECT_EQ(stored(), projectFile("a"));
}

TEST_F(DriverDumpTest, ToAnEmptyPathOfAMissingFileCannotOpenIt) {
  EXPECT_EQ(run({"--dump-json", "", "-h", input_}), 1);
  EXPECT_EQ(err_, "Unable to open " + file_ + "\n");
  EXPECT_FALSE(folder_.holds("file"));
}

}  // namespace
}  // namespace consolidator
