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
