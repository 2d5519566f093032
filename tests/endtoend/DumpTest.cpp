#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"
#include "endtoend/UsageText.h"

#include <string>

namespace consolidator {
namespace {

using namespace std::string_literals;

class DumpTest : public ExecutableTest {
 protected:
  void SetUp() override {
    write("full", full_);
    write("bare", emptyFile());
  }

  // Expects that the consolidated files are as they were, and these files beside them.
  void expectFiles(Files others) const {
    others["full"] = full_;
    others["bare"] = emptyFile();
    EXPECT_TRUE(folderHolds(others));
  }

  const std::string dwarf_ = "DW\0ARF\n"s;
  const std::string full_ = container({projectSection("name"), dwarfSection(dwarf_),
                                       jsonSection(kernelJson("k", "HLS", {"/top"})),
                                       recordsSection({kernelRecord("k", 4, {"/top"})})});
};

TEST_F(DumpTest, JsonEndsWithAZeroByte) {
  EXPECT_EQ(run({"-f", "full", "--dump-json", "json"}), silence());
  expectFiles({{"json",
                "{  \"Kernels\" : [ { \"Name\" : \"k\", \"Instance Paths\" : [ \"/top/inst\" ], "
                "\"Type\" : \"HLS\", \"Arguments\" : [ ], \"Variables\" : [ ], "
                "\"Breakable Conditions\" : [] } ] }\0"s}});
}

TEST_F(DumpTest, JsonWithoutKernelsIsADocument) {
  EXPECT_EQ(run({"-f", "bare", "--dump-json", "json"}), silence());
  expectFiles({{"json", "{  \"Kernels\" : [  ] }\0"s}});
}

TEST_F(DumpTest, JsonIsCopiedAsItIsStored) {
  write("foreign", container({section(3, "not a document")}));
  EXPECT_EQ(run({"-f", "foreign", "--dump-json", "json"}), silence());
  EXPECT_EQ(read("json"), "not a document");
}

TEST_F(DumpTest, DwarfIsCopiedByteForByte) {
  EXPECT_EQ(run({"-f", "full", "--dump-dwarf", "dwarf"}), silence());
  expectFiles({{"dwarf", dwarf_}});
}

TEST_F(DumpTest, DwarfThatIsNotThereGivesAnEmptyFile) {
  write("dwarf", "old");
  EXPECT_EQ(run({"-f", "bare", "--dump-dwarf", "dwarf"}), silence());
  expectFiles({{"dwarf", ""}});
}

TEST_F(DumpTest, OutputReplacesWhatWasThere) {
  write("dwarf", std::string(1000, 'x'));
  EXPECT_EQ(run({"-f", "full", "--dump-dwarf", "dwarf"}), silence());
  expectFiles({{"dwarf", dwarf_}});
}

TEST_F(DumpTest, OfBothOnlyDwarfIsWritten) {
  EXPECT_EQ(run({"-f", "full", "--dump-json", "json", "--dump-dwarf", "dwarf"}), silence());
  expectFiles({{"dwarf", dwarf_}});
}

TEST_F(DumpTest, EmptyDwarfPathLeavesTheJsonDump) {
  EXPECT_EQ(run({"-f", "bare", "--dump-dwarf", "", "--dump-json", "json"}), silence());
  expectFiles({{"json", "{  \"Kernels\" : [  ] }\0"s}});
}

TEST_F(DumpTest, MissingFileIsAnError) {
  EXPECT_EQ(run({"-f", "missing", "--dump-json", "json"}), failed("Unable to open missing\n"));
  EXPECT_EQ(run({"-c", "-f", "missing", "-u", "dwarf"}), failed("Unable to open missing\n"));
  expectFiles({});
}

TEST_F(DumpTest, WithoutAConsolidatedFileNothingCanBeOpened) {
  EXPECT_EQ(run({"--dump-json", "json"}), failed("Unable to open \n"));
  EXPECT_EQ(run({"--dump-dwarf", "dwarf", "-h", "missing"}), failed("Unable to open \n"));
  expectFiles({});
}

TEST_F(DumpTest, InputsAreIgnored) {
  write("hierarchy", "version: 2.0");
  write("dwarf", "other");
  EXPECT_EQ(run({"-f", "bare", "-j", "json", "-h", "hierarchy", "-d", "dwarf"}), silence());
  expectFiles(
      {{"hierarchy", "version: 2.0"}, {"dwarf", "other"}, {"json", "{  \"Kernels\" : [  ] }\0"s}});
}

TEST_F(DumpTest, ProjectIsNotRecorded) {
  EXPECT_EQ(run({"-f", "full", "-p", "name", "-u", "dwarf"}), silence());
  expectFiles({{"dwarf", dwarf_}});
}

TEST_F(DumpTest, FolderGivesAnEmptyFile) {
  EXPECT_EQ(run({"-f", ".", "--dump-json", "json"}), silence());
  expectFiles({{"json", ""}});
}

TEST_F(DumpTest, ForeignFileGivesAnEmptyFile) {
  const std::string foreign = header(1, 1, 1, 0) + entry(3, 40, 4) + "text";
  write("foreign", foreign);
  EXPECT_EQ(run({"-f", "foreign", "--dump-json", "json"}), silence());
  expectFiles({{"foreign", foreign}, {"json", ""}});
}

TEST_F(DumpTest, CreateReadsNothingToDump) {
  EXPECT_EQ(run({"-c", "-f", "full", "--dump-json", "json"}), silence());
  expectFiles({{"json", ""}});
}

TEST_F(DumpTest, OutputThatCannotBeWrittenIsSkipped) {
  EXPECT_EQ(run({"-f", "full", "--dump-json", "missing/json"}), silence());
  EXPECT_EQ(run({"-f", "full", "--dump-dwarf", "."}), silence());
  EXPECT_EQ(run({"-f", "full", "--dump-dwarf", "/dev/full"}), silence());
  expectFiles({});
}

TEST_F(DumpTest, OntoTheConsolidatedFileItselfEmptiesIt) {
  write("out", full_);
  EXPECT_EQ(run({"-f", "out", "--dump-json", "out"}), silence());
  expectFiles({{"out", ""}});
  write("out", full_);
  EXPECT_EQ(run({"-f", "out", "--dump-dwarf", "out"}), silence());
  expectFiles({{"out", ""}});
}

TEST_F(DumpTest, OfSeveralSectionsTheFirstIsCopied) {
  write("foreign",
        container({jsonSection(""), section(3, "second"), dwarfSection("D1"), dwarfSection("D2")}));
  EXPECT_EQ(run({"-f", "foreign", "-u", "dwarf"}), silence());
  EXPECT_EQ(run({"-f", "foreign", "-j", "json"}), silence());
  EXPECT_EQ(read("dwarf"), "D1");
  EXPECT_EQ(read("json"), "{  \"Kernels\" : [  ] }\0"s);
}

TEST_F(DumpTest, SectionBehindAnUnknownOneIsFound) {
  write("foreign", container({section(7, "unknown"), section(3, "text")}));
  EXPECT_EQ(run({"-f", "foreign", "-j", "json"}), silence());
  EXPECT_EQ(read("json"), "text");
}

TEST_F(DumpTest, SectionThatIsNotAllThereGivesAnEmptyFile) {
  const std::string cut = full_.substr(0, full_.find(dwarf_) + dwarf_.size() - 1);
  write("cut", cut);
  EXPECT_EQ(run({"-f", "cut", "-u", "dwarf"}), silence());
  EXPECT_EQ(run({"-f", "cut", "-j", "json"}), silence());
  expectFiles({{"cut", cut}, {"dwarf", ""}, {"json", ""}});
}

// An empty path opens the file for reading as every dump does, but then there is nothing to dump:
// the inputs are read, and the save goes nowhere.
TEST_F(DumpTest, EmptyPathReadsTheInputsAndSavesNothing) {
  write("hierarchy", "version: 2.0");
  EXPECT_EQ(run({"-f", "full", "--dump-json", "", "-h", "hierarchy", "-p", "name"}),
            complained("Unsupported hierarchy file: hierarchy\n"
                       "Version: 2\n"
                       "Supported Version: 1\n"));
  EXPECT_EQ(run({"-f", "full", "--dump-dwarf", "", "-d", "hierarchy", "-h", "missing"}), silence());
  expectFiles({{"hierarchy", "version: 2.0"}});
}

TEST_F(DumpTest, EmptyPathNeedsAnExistingFile) {
  EXPECT_EQ(run({"-f", "missing", "--dump-json", "", "-h", "missing"}),
            failed("Unable to open missing\n"));
  expectFiles({});
}

TEST_F(DumpTest, EmptyPathIsNoReasonToGoOnWithoutInputs) {
  EXPECT_EQ(run({"-f", "full", "--dump-json", ""}),
            printed("No input meta-data files specified\n" + usageText()));
  EXPECT_EQ(run({"--dump-json", "", "-h", "missing"}),
            printed("Error: A consolidated file must be specified\n" + usageText()));
  expectFiles({});
}

}  // namespace
}  // namespace consolidator
