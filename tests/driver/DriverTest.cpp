#include "driver/DriverRun.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace consolidator {
namespace {

std::string json(std::string_view kernels) {
  return "{  \"Kernels\" : [ " + std::string(kernels) + " ] }" + '\0';
}

std::string plainKernelJson(std::string_view name) {
  return R"({ "Name" : ")" + std::string(name) +
         R"(", "Instance Paths" : [  ], "Type" : "Unknown", "Arguments" : [ ], "Variables" : [ ], )"
         R"("Breakable Conditions" : [] })";
}

class DriverTest : public testing::Test {
 protected:
  std::string write(std::string_view name, std::string_view bytes) const {
    return folder_.write(name, bytes);
  }

  std::string consolidated() const { return folder_.read("file"); }

  TemporaryFolder folder_;
  std::string file_ = folder_.path("file");
  std::string out_ = folder_.path("out");
};

TEST_F(DriverTest, PrintsTwoLinesForTheVersion) {
  const Outcome expected{0, "Consolidated version: 1.1\nSupported hierarchy version: 1\n", ""};
  EXPECT_EQ(run({"--version"}), expected);
  EXPECT_EQ(run({"-v", "-f", file_, "-h", write("in", "k:"), "-p", "name"}), expected);
  EXPECT_FALSE(folder_.holds("file"));
}

TEST_F(DriverTest, HelpPrintsTheUsageAndWinsOverTheVersion) {
  EXPECT_EQ(run({"--help"}), (Outcome{0, usage, ""}));
  EXPECT_EQ(run({"--version", "--help", "-f", file_, "-h", write("in", "k:")}),
            (Outcome{0, usage, ""}));
  EXPECT_FALSE(folder_.holds("file"));
}

TEST_F(DriverTest, WhatFailsValidationPrintsItsReasonAndTheUsageAndEndsWithStatusZero) {
  EXPECT_EQ(run({"-f", file_}),
            (Outcome{0, "No input meta-data files specified\n" + std::string(usage), ""}));
  EXPECT_EQ(
      run({"-k", "in"}),
      (Outcome{0, "Error: A consolidated file must be specified\n" + std::string(usage), ""}));
  EXPECT_FALSE(folder_.holds("file"));
}

TEST_F(DriverTest, AddTogetherWithCreatePrintsTheUsageEvenWithVersionAndHelp) {
  const Outcome expected{0, "Error: Cannot specify both add and create\n" + std::string(usage), ""};
  EXPECT_EQ(run({"-a", "-c", "-f", file_, "-h", write("in", "k:")}), expected);
  EXPECT_EQ(run({"-a", "-c", "--version"}), expected);
  EXPECT_EQ(run({"-a", "-c", "--help"}), expected);
  EXPECT_FALSE(folder_.holds("file"));
}

TEST_F(DriverTest, AFileThatCannotBeOpenedEndsWithStatusOne) {
  const std::string path = folder_.path("no/such/folder");
  const Outcome expected{1, "", "Unable to open " + path + "\n"};
  EXPECT_EQ(run({"-f", path, "-h", "in"}), expected);
  EXPECT_EQ(run({"-c", "-f", path, "-h", "in"}), expected);
  EXPECT_EQ(run({"-f", folder_.path(""), "-h", "in"}),
            (Outcome{1, "", "Unable to open " + folder_.path("") + "\n"}));
}

TEST_F(DriverTest, ADumpOfAMissingFileEndsWithStatusOne) {
  EXPECT_EQ(run({"--dump-json", out_, "-f", file_}),
            (Outcome{1, "", "Unable to open " + file_ + "\n"}));
  EXPECT_EQ(run({"--dump-json", out_}), (Outcome{1, "", "Unable to open \n"}));
  EXPECT_FALSE(folder_.holds("file"));
  EXPECT_FALSE(folder_.holds("out"));
}

TEST_F(DriverTest, ConsolidatesProjectDwarfAndHierarchy) {
  EXPECT_EQ(run({"-f", file_, "-p", "proj", "-d", write("dwarf", "DWARF"), "-h",
                 write("in", "vadd: type: hls instance path: /top")}),
            quiet);
  EXPECT_EQ(consolidated(),
            container({{SectionKind::ProjectName, "proj"},
                       {SectionKind::Dwarf, "DWARF"},
                       {SectionKind::Json,
                        json(R"({ "Name" : "vadd", "Instance Paths" : [ "/top/inst" ], )"
                             R"("Type" : "HLS", "Arguments" : [ ], "Variables" : [ ], )"
                             R"("Breakable Conditions" : [] })")},
                       {SectionKind::KernelRecords, u32(1) + kernelRecord("vadd", 4, {"/top"})}}));
}

TEST_F(DriverTest, AnInputThatCannotBeOpenedLeavesSixtyTwoBytes) {
  EXPECT_EQ(run({"-f", file_, "-h", folder_.path("missing")}), quiet);
  EXPECT_EQ(consolidated(), container({{SectionKind::Json, emptyJson()}}));
}

TEST_F(DriverTest, ReadsFilesOfAKindInTheOrderGiven) {
  EXPECT_EQ(run({"-h", write("second", "b:"), "-f", file_, "-h", write("first", "a: b: type: c")}),
            quiet);
  EXPECT_EQ(
      consolidated(),
      container(
          {{SectionKind::Json, json(R"({ "Name" : "b", "Instance Paths" : [  ], "Type" : "C", )"
                                    R"("Arguments" : [ ], "Variables" : [ ], )"
                                    R"("Breakable Conditions" : [] }, )" +
                                    plainKernelJson("a"))},
           {SectionKind::KernelRecords, u32(2) + kernelRecord("b", 1) + kernelRecord("a", 3)}}));
}

// Kernels stand in the order of the kinds that tell of them, not in that of the command line, and a
// logic location file is read for the registers of all of them.
TEST_F(DriverTest, ReadsOneKindAfterTheOther) {
  EXPECT_EQ(run({"-l", write("ll", "Bit 1 a 2 die0 0 Net=top/x\n"), "-x",
                 write("aux",
                       "<ak:acceleratorMap ak:functionName=\"h\" \n"
                       "<ak:arg ak:originalName=\"x\"\n"),
                 "-s", write("s.dbg", ""), "-k",
                 write("xml",
                       "<project><platform><device><core><kernel name='k'/></core></device>"
                       "</platform></project>"),
                 "-h", write("h", "h: instance path: /top"), "-f", file_}),
            quiet);
  ConsolidatedFile file;
  ASSERT_TRUE(file.readExisting(file_));
  ASSERT_EQ(file.kernels().size(), 3U);
  EXPECT_EQ(file.kernels()[0].name, "h");
  EXPECT_EQ(file.kernels()[0].hardwareVariables.size(), 1U);
  EXPECT_EQ(file.kernels()[1].name, "k");
  EXPECT_EQ(file.kernels()[2].name, "s");
}

// The conditions that are stored by then stand in another order, so they are not the same.
TEST_F(DriverTest, KernelXmlThatALaterRunReadsAgainAddsItsConditionsAgain) {
  const std::string xml = write("xml",
                                "<project><platform><device><core><kernel name='k'/></core>"
                                "</device></platform></project>");
  const std::string once = R"({ "Start":true, "Cond":"== 1'b1 $i/bq_start"}, )"
                           R"({ "Stop":true, "Cond":"== 1'b1 $i/bq_done"})";
  const std::string swapped = R"({ "Start":true, "Cond":"== $i/bq_start 1'b1"}, )"
                              R"({ "Stop":true, "Cond":"== $i/bq_done 1'b1"})";
  const auto storedConditions = [&] {
    EXPECT_EQ(run({"-f", file_, "-j", out_}), quiet);
    const std::string text = folder_.read("out");
    const std::size_t start = text.find("\"Breakable Conditions\" : [") + 26;
    return text.substr(start, text.rfind(']', text.rfind(']') - 1) - start);
  };
  EXPECT_EQ(run({"-f", file_, "-k", xml, "-k", xml}), quiet);
  EXPECT_EQ(storedConditions(), once);
  EXPECT_EQ(run({"-f", file_, "-k", xml}), quiet);
  EXPECT_EQ(storedConditions(), swapped + ", " + once);
}

TEST_F(DriverTest, AReaderThatFailsDoesNotChangeTheStatus) {
  EXPECT_EQ(run({"-f", file_, "-h", write("bad", "a: b: instance x"), "-h", write("good", "k:")}),
            (Outcome{0, "", "Parse error\n"}));
  EXPECT_EQ(consolidated(),
            container({{SectionKind::Json, json(plainKernelJson("k"))},
                       {SectionKind::KernelRecords, u32(1) + kernelRecord("k", 3)}}));
}

TEST_F(DriverTest, AddModeAddsAndCreateModeStartsAnew) {
  const std::string a = write("a", "a:");
  const std::string b = write("b", "b:");
  EXPECT_EQ(run({"-f", file_, "-h", a}), quiet);
  EXPECT_EQ(run({"-a", "-f", file_, "-h", b}), quiet);
  EXPECT_EQ(
      consolidated(),
      container(
          {{SectionKind::Json, json(plainKernelJson("a") + ", " + plainKernelJson("b"))},
           {SectionKind::KernelRecords, u32(2) + kernelRecord("a", 3) + kernelRecord("b", 3)}}));
  EXPECT_EQ(run({"-c", "-f", file_, "-h", b}), quiet);
  EXPECT_EQ(consolidated(),
            container({{SectionKind::Json, json(plainKernelJson("b"))},
                       {SectionKind::KernelRecords, u32(1) + kernelRecord("b", 3)}}));
}

TEST_F(DriverTest, KindsWithoutAnOpenableFileAreAccepted) {
  const std::string missing = folder_.path("missing");
  EXPECT_EQ(run({"-f", file_, "-k", missing, "-s", missing, "-x", missing, "-l", missing, "-r",
                 missing, "-d", missing, "-k", ""}),
            quiet);
  EXPECT_EQ(consolidated(), container({{SectionKind::Json, emptyJson()}}));
}

}  // namespace
}  // namespace consolidator
