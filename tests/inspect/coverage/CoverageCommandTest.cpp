#include "inspect/InspectRun.h"
#include "inspect/verify/VerifyFixture.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {
namespace {

BreakableCondition atLine(std::uint32_t line) {
  BreakableCondition condition(ConditionKind::SourceLine, "$i/state");
  condition.file = "k.c";
  condition.line = line;
  return condition;
}

KernelRecord coveredKernel() {
  KernelRecord kernel;
  kernel.name = "k";
  kernel.addInstancePath("/t/k_1");
  kernel.addInstancePath("/t/k_10");
  kernel.addArgument("a", "a_r", "int*");
  kernel.addVariable("i", "i_r", "int");
  kernel.setLogicLocation("/t/k_10/a_r", 0, 7, 9);
  kernel.setLogicLocation("/t/k_1/i_r", 2, 7, 9);
  kernel.setLogicLocation("/t/k_10/i_r", 0, 7, 9);
  kernel.addBreakableCondition(ConditionKind::Start, "== $i/bq_start 1'b1");
  kernel.addBreakableCondition(ConditionKind::Stop, "== $i");
  kernel.addBreakableCondition(atLine(4));
  return kernel;
}

std::string fileWith(const std::vector<KernelRecord>& kernels) {
  return container({{SectionKind::KernelRecords, recordsOf(kernels)}});
}

std::string coveredFile() { return fileWith({coveredKernel()}); }

constexpr std::string_view notSeen =
    "  Bits missing at the top of a register are not seen: its width is not stored.\n";

TEST(CoverageCommandTest, WritesDocument) {
  EXPECT_EQ(
      inspectBytes(coveredFile(), {"coverage", "--format", "json", "FILE"}),
      holds(R"({"format":"consolidator-coverage/1","kernels":[{"kernel":"k","instances":[)"
            R"({"path":"/t/k_1",)"
            R"("arguments":{"total":1,"without_gap":0,"with_gap":0,"none":0,"doubtful":1,"names":[)"
            R"({"name":"a","register":"a_r","state":"doubtful","bits":1,"highest":0}]},)"
            R"("variables":{"total":1,"without_gap":0,"with_gap":1,"none":0,"doubtful":0,"names":[)"
            R"({"name":"i","register":"i_r","state":"with_gap","bits":1,"highest":2}]}},)"
            R"({"path":"/t/k_10",)"
            R"("arguments":{"total":1,"without_gap":1,"with_gap":0,"none":0,"doubtful":0,"names":[)"
            R"({"name":"a","register":"a_r","state":"without_gap","bits":1,"highest":0}]},)"
            R"("variables":{"total":1,"without_gap":1,"with_gap":0,"none":0,"doubtful":0,"names":[)"
            R"({"name":"i","register":"i_r","state":"without_gap","bits":1,"highest":0}]}}],)"
            R"("conditions":{"total":3,"well_formed":2,"source_lines":1,"in_line_table":null}}],)"
            R"("total":{"arguments":{"total":2,"without_gap":1,"with_gap":0,"none":0,"doubtful":1,)"
            R"("percent":50.0},"variables":{"total":2,"without_gap":1,"with_gap":1,"none":0,)"
            R"("doubtful":0,"percent":50.0}},"dwarf":"none","complete":true,"lossy_texts":0})"
            "\n"));
}

TEST(CoverageCommandTest, WritesText) {
  EXPECT_EQ(inspectBytes(coveredFile(), {"coverage", "FILE"}),
            holds("Kernel k\n"
                  "  /t/k_1\n"
                  "    arguments: 0 of 1 (0.0 %)\n"
                  "      a (a_r): 1 bit up to 0, doubtful\n"
                  "    variables: 0 of 1 (0.0 %)\n"
                  "      i (i_r): 1 bit up to 2, with a gap\n"
                  "  /t/k_10\n"
                  "    arguments: 1 of 1 (100.0 %)\n"
                  "      a (a_r): 1 bit\n"
                  "    variables: 1 of 1 (100.0 %)\n"
                  "      i (i_r): 1 bit\n"
                  "  conditions: 3, 2 well-formed; 1 for source lines\n"
                  "Total\n"
                  "  arguments: 1 of 2 (50.0 %)\n"
                  "  variables: 1 of 2 (50.0 %)\n"
                  "  DWARF: none\n" +
                  std::string(notSeen)));
}

TEST(CoverageCommandTest, WritesNullWithoutPairs) {
  const Outcome found = inspectBytes(fileWith({}), {"coverage", "--format=json", "FILE"});
  EXPECT_NE(found.out.find(R"("doubtful":0,"percent":null},"variables")"), std::string::npos);
}

TEST(CoverageCommandTest, SaysWhyDwarfCannotBeRead) {
  const std::string file = container(
      {{SectionKind::Dwarf, "no ELF"}, {SectionKind::KernelRecords, recordsOf({coveredKernel()})}});
  const Outcome found = inspectBytes(file, {"coverage", "--format=json", "FILE"});
  EXPECT_EQ(found.status, 0);
  EXPECT_NE(found.out.find(R"("in_line_table":null)"), std::string::npos);
  EXPECT_NE(found.out.find(R"("dwarf":"unreadable")"), std::string::npos);
  EXPECT_TRUE(found.err.starts_with("consolidator-inspect: FILE: no DWARF can be read: "));
}

TEST(CoverageCommandTest, CountsSourceLinesThatHaveCode) {
  const TemporaryFolder folder;
  const std::string script =
      "printf 'int k(int a)\\n{\\n  a += 3;\\n  return a;\\n}\\n' >k.c; gcc -O0 -g -c k.c";
  ASSERT_EQ(startInspectScript(script, folder.path("")).outcome(), holds(""));
  KernelRecord kernel = coveredKernel();
  kernel.addBreakableCondition(atLine(400));
  const std::string file = container({{SectionKind::Dwarf, folder.read("k.o")},
                                      {SectionKind::KernelRecords, recordsOf({kernel})}});
  const Outcome found = inspectBytes(file, {"coverage", "--format=json", "FILE"});
  EXPECT_NE(found.out.find(R"("source_lines":2,"in_line_table":1)"), std::string::npos);
  EXPECT_NE(found.out.find(R"("dwarf":"read")"), std::string::npos);
}

// A C++ source of this system, optimised as it is installed; what binutils read is the measure.
TEST(CoverageCommandTest, FindsExactlyTheLinesOfTheOwnDwarf) {
  const TemporaryFolder folder;
  const std::string script =
      "g++ -std=c++20 -O2 -g -c -I" CONSOLIDATOR_SOURCES " " CONSOLIDATOR_SOURCES
      "/text/TextSearch.cpp -o own.o && objdump --dwarf=decodedline own.o | "
      "awk '$1 == \"TextSearch.cpp\" && $2 ~ /^[0-9]+$/ { print $2 }' >lines";
  ASSERT_EQ(startInspectScript(script, folder.path("")).outcome(), holds(""));
  std::istringstream lines(folder.read("lines"));
  const std::set<std::uint32_t> coded{std::istream_iterator<std::uint32_t>(lines), {}};
  ASSERT_GT(coded.size(), 10U);
  std::vector<KernelRecord> kernels(*coded.rbegin() + 10);
  std::string wanted;
  for (std::uint32_t line = 1; line <= kernels.size(); ++line) {
    BreakableCondition condition = atLine(line);
    condition.file = "text/TextSearch.cpp";
    kernels[line - 1].addBreakableCondition(condition);
    wanted += coded.contains(line) ? "1" : "0";
  }
  const std::string file = container({{SectionKind::Dwarf, folder.read("own.o")},
                                      {SectionKind::KernelRecords, recordsOf(kernels)}});
  const Outcome found = inspectBytes(file, {"coverage", "--format=json", "FILE"});
  EXPECT_EQ((Outcome{found.status, "", found.err}), holds(""));
  std::string told;
  constexpr std::string_view key = R"("in_line_table":)";
  for (std::size_t at = found.out.find(key); at != std::string::npos;
       at = found.out.find(key, at + 1)) {
    told += found.out[at + key.size()];
  }
  EXPECT_EQ(told, wanted);
}

TEST(CoverageCommandTest, FailsUnderGoal) {
  const auto statusWith = [](const std::string& goal) {
    return inspectBytes(coveredFile(), {"coverage", "--fail-under", goal, "FILE"}).status;
  };
  for (const char* const goal : {"0", "50", "50.0", "variables=50", "arguments=50"}) {
    EXPECT_EQ(statusWith(goal), 0) << goal;
  }
  for (const char* const goal : {"50.1", "100", "variables=51", "arguments=51"}) {
    EXPECT_EQ(statusWith(goal), 1) << goal;
  }
  for (const char* const goal :
       {"", "101", "-1", "50.", ".5", "50.55", "x", "registers=50", "=5"}) {
    EXPECT_EQ(statusWith(goal), 2) << goal;
  }
}

// Two of three variables, 66.67 %, are printed as 66.7 %.
TEST(CoverageCommandTest, ComparesGoalWithWhatIsPrinted) {
  KernelRecord kernel;
  kernel.addInstancePath("/t/k");
  for (const char* const name : {"a", "b", "c"}) kernel.addVariable(name, name, "int");
  kernel.setLogicLocation("/t/k/a", 0, 7, 9);
  kernel.setLogicLocation("/t/k/b", 0, 7, 9);
  const auto statusWith = [&](const std::string& goal) {
    return inspectBytes(fileWith({kernel}), {"coverage", "--fail-under", goal, "FILE"}).status;
  };
  EXPECT_EQ(statusWith("66.7"), 0);
  EXPECT_EQ(statusWith("66.8"), 1);
}

TEST(CoverageCommandTest, SaysWhichGoalIsMissed) {
  const Outcome found = inspectBytes(
      coveredFile(), {"coverage", "--fail-under=20", "--fail-under", "arguments=80", "FILE"});
  EXPECT_EQ(found.status, 1);
  EXPECT_EQ(found.err,
            said("FILE: 50.0 % of the arguments have locations without a gap; wanted: 80.0 %"));
}

TEST(CoverageCommandTest, FailsAnyGoalWithoutPairs) {
  const Outcome found = inspectBytes(fileWith({}), {"coverage", "--fail-under=0", "FILE"});
  EXPECT_EQ(found.status, 1);
  EXPECT_EQ(found.err, said("FILE: there are no variables in any instance; wanted: 0.0 %"));
}

TEST(CoverageCommandTest, TellsWhatWasLost) {
  const TemporaryFolder folder;
  const std::string old = folder.write("old", coveredFile());
  KernelRecord kernel = coveredKernel();
  kernel.hardwareVariables = {};
  kernel.setLogicLocation("/t/k_1/i_r", 2, 7, 9);
  const Outcome found = inspectBytes(fileWith({kernel}), {"coverage", "--baseline", old, "FILE"});
  EXPECT_EQ(found.status, 1);
  EXPECT_NE(found.out.find("Lost locations\n"
                           "  k argument a (a_r) in /t/k_10: 1 bit before, no location\n"
                           "  k variable i (i_r) in /t/k_10: 1 bit before, no location\n"
                           "  2 in all\n"),
            std::string::npos);
  const Outcome document =
      inspectBytes(fileWith({}), {"coverage", "--format=json", "--baseline", old, "FILE"});
  EXPECT_EQ(document.status, 1);
  EXPECT_NE(
      document.out.find(
          R"("lost":[{"kernel":"k","instance":"/t/k_1","what":"variable","name":"i",)"
          R"("register":"i_r","before":{"state":"with_gap","bits":1,"highest":2},"after":null},)"),
      std::string::npos);
  EXPECT_NE(document.out.find(R"("after":null}],"not_compared":0,"complete":true)"),
            std::string::npos);
}

TEST(CoverageCommandTest, HoldsWhereNothingWasLost) {
  const TemporaryFolder folder;
  const std::string old = folder.write("old", coveredFile());
  KernelRecord kernel = coveredKernel();
  kernel.setLogicLocation("/t/k_10/i_r", 1, 7, 9);
  EXPECT_EQ(inspectBytes(fileWith({kernel}), {"coverage", "--baseline", old, "FILE"}).status, 0);
}

TEST(CoverageCommandTest, RefusesBaselineThatCannotBeRead) {
  for (const char* const old : {"/nonexistent", ""}) {
    const Outcome found =
        inspectBytes(coveredFile(), {"coverage", "--format=json", "--baseline", old, "FILE"});
    EXPECT_EQ(found.status, 2);
    EXPECT_TRUE(found.out.starts_with(
        R"({"format":"consolidator-coverage/1","error":{"code":"cannot-open")"));
  }
}

TEST(CoverageCommandTest, FailsOnFileThatIsNotComplete) {
  std::string file = coveredFile();
  file.pop_back();
  const Outcome found = inspectBytes(file, {"coverage", "--format=json", "FILE"});
  EXPECT_EQ(found.status, 1);
  EXPECT_NE(found.out.find(R"("complete":false)"), std::string::npos);
  const TemporaryFolder folder;
  const std::string old = folder.write("old", file);
  const Outcome compared = inspectBytes(coveredFile(), {"coverage", "--baseline", old, "FILE"});
  EXPECT_EQ(compared.status, 1);
  EXPECT_EQ(compared.err,
            said(old + ": not complete: The kernel records go beyond the end of the file."));
}

// Of entries that all name one section, each kernel is held only so often.
TEST(CoverageCommandTest, SaysWhichFileRepeatsItsKernels) {
  constexpr std::uint32_t entries = 9;
  std::string records = u32(1000);
  for (int i = 0; i < 1000; ++i) records += kernelRecord("k", 0);
  std::string file = header(entries);
  for (std::uint32_t i = 0; i < entries; ++i) {
    file += entry(SectionKind::KernelRecords, header(0).size() + entries * entry(0, 0, 0).size(),
                  static_cast<std::uint32_t>(records.size()));
  }
  file += records;
  const TemporaryFolder folder;
  const std::string later = folder.write("later", file);
  const std::string earlier = folder.write("earlier", coveredFile());
  const Outcome compared = inspect({"coverage", "--baseline", earlier, later});
  EXPECT_EQ(compared.status, 1);
  EXPECT_EQ(compared.err,
            said(later + ": not complete: Its sections hold the same kernels again and again."));
  EXPECT_EQ(inspect({"coverage", "--baseline", later, earlier}).err, "");
}

// A small file of a million pairs and more.
KernelRecord crowdedKernel() {
  KernelRecord kernel;
  for (int i = 0; i < 3000; ++i) {
    kernel.instancePaths.append("/t");
    kernel.addVariable("v" + std::to_string(i), "r", "int");
  }
  kernel.setLogicLocation("/t/r", 0, 1, 1);
  return kernel;
}

TEST(CoverageCommandTest, ListsOnlyAsManyPairsAsAreInProportion) {
  const std::string file = fileWith({crowdedKernel(), coveredKernel()});
  const Outcome found = inspectBytes(file, {"coverage", "--format=json", "FILE"});
  EXPECT_EQ(found.status, 0);
  EXPECT_LT(found.out.size(), 100 * file.size());
  EXPECT_NE(found.out.find(R"("names_listed":false)"), std::string::npos);
  EXPECT_NE(found.out.find(R"("variables":{"total":9000002,"without_gap":9000001,)"),
            std::string::npos);
  EXPECT_NE(found.out.find(R"("name":"i")"), std::string::npos);
}

TEST(CoverageCommandTest, SaysThatKernelHasTooManyPairsToCompare) {
  const TemporaryFolder folder;
  const std::string file = fileWith({crowdedKernel()});
  const std::string old = folder.write("old", file);
  const Outcome found = inspectBytes(file, {"coverage", "--baseline", old, "FILE"});
  EXPECT_EQ(found.status, 1);
  EXPECT_TRUE(found.out.ends_with(
      "  0 in all\n  not compared: 1 kernel with too many instances and names\n"));
}

// Each once, in however many instances it is, and none of the file before.
TEST(CoverageCommandTest, CountsLossyTextsOfTheFile) {
  KernelRecord kernel = coveredKernel();
  kernel.name = "k\xFF";
  kernel.addInstancePath("/t/\xFF");
  kernel.addVariable("v\xFF", "r\xFF", "int");
  const TemporaryFolder folder;
  const std::string file = fileWith({kernel});
  kernel.setLogicLocation("/t/\xFF/r\xFF", 0, 7, 9);
  const std::string old = folder.write("old", fileWith({kernel}));
  const Outcome found =
      inspectBytes(file, {"coverage", "--format=json", "--baseline", old, "FILE"});
  EXPECT_NE(found.out.find(R"("lost":[{"kernel":"k)"), std::string::npos);
  EXPECT_TRUE(found.out.ends_with("\"lossy_texts\":4}\n")) << found.out;
}

TEST(CoverageCommandTest, ExplainsWhatCannotBeSeen) {
  EXPECT_NE(inspect({"coverage", "--help"}).out.find("bits that are missing at its top"),
            std::string::npos);
}

TEST(CoverageCommandTest, SaysThatKernelHasTooManyPairsToList) {
  const Outcome found = inspectBytes(fileWith({crowdedKernel()}), {"coverage", "FILE"});
  EXPECT_EQ(found.status, 0);
  EXPECT_TRUE(found.out.starts_with("Kernel \n  too many instances and names to list each pair\n"));
  EXPECT_EQ(found.out.find("v0 ("), std::string::npos);
}

TEST(CoverageCommandTest, TellsWhatIsLeftOfALocation) {
  const TemporaryFolder folder;
  const std::string old = folder.write("old", coveredFile());
  KernelRecord kernel = coveredKernel();
  kernel.hardwareVariables = {};
  kernel.setLogicLocation("/t/k_1/i_r", 2, 7, 9);
  kernel.setLogicLocation("/t/k_10/i_r", 0, 7, 9);
  const Outcome document =
      inspectBytes(fileWith({kernel}), {"coverage", "--format=json", "--baseline", old, "FILE"});
  EXPECT_EQ(document.status, 1);
  EXPECT_NE(document.out.find(
                R"("lost":[{"kernel":"k","instance":"/t/k_10","what":"argument","name":"a",)"
                R"("register":"a_r","before":{"state":"without_gap","bits":1,"highest":0},)"
                R"("after":{"state":"none","bits":0,"highest":0}}],"not_compared":0,)"),
            std::string::npos)
      << document.out;
}

// Each part of a name is the path of an instance.
TEST(CoverageCommandTest, SaysThatRegistersMayBelongToMoreInstances) {
  const auto isSaidOf = [](const std::string& name) {
    KernelRecord kernel;
    kernel.name = "k";
    for (std::size_t begin = 0; begin < name.size(); ++begin) {
      for (std::size_t size = 1; begin + size <= name.size(); ++size) {
        kernel.addInstancePath(name.substr(begin, size));
      }
    }
    kernel.addVariable("v", "r", "int");
    kernel.setLogicLocation(name + "/r", 0, 1, 1);
    const std::string out = inspectBytes(fileWith({kernel}), {"coverage", "FILE"}).out;
    return out.find("  some registers may belong to more instances than are counted\n") !=
           std::string::npos;
  };
  EXPECT_FALSE(isSaidOf("abcdefghij"));
  EXPECT_TRUE(isSaidOf("abcdefghijklmnopqrstuvwxyz"));
}

TEST(CoverageCommandTest, ColoursStatesOfLocations) {
  const TemporaryFolder folder;
  KernelRecord kernel = coveredKernel();
  kernel.addVariable("none", "none_r", "int");
  const std::string file = folder.write("file", fileWith({kernel}));
  const std::string out = inspect({"coverage", file}, true).out;
  for (const char* const shown :
       {"i (i_r): \x1B[32m1 bit\x1B[0m\n", "i (i_r): \x1B[33m1 bit up to 2, with a gap\x1B[0m\n",
        "a (a_r): \x1B[33m1 bit up to 0, doubtful\x1B[0m\n",
        "none (none_r): \x1B[31mno location\x1B[0m\n"}) {
    EXPECT_NE(out.find(shown), std::string::npos) << out;
  }
}

}  // namespace
}  // namespace consolidator::inspect
