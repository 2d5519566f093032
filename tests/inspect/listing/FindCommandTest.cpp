#include "inspect/InspectRun.h"
#include "support/Bytes.h"
#include "support/FullContainer.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {
namespace {

std::string list(const std::vector<std::string>& records) {
  std::string bytes = u32(static_cast<std::uint32_t>(records.size()));
  for (const std::string& record : records) bytes += record;
  return bytes;
}

std::string variable(std::string_view name, std::string_view second) {
  return text(name) + text(second) + text("int") + u32(0);
}

std::string hardware(std::string_view name, std::uint32_t first, std::uint32_t second) {
  return text(name) + u32(1) + u32(first) + u32(second);
}

std::string fileWith(const std::vector<std::string>& paths,
                     const std::vector<std::string>& variables,
                     const std::vector<std::string>& registers) {
  return container(
      {{SectionKind::KernelRecords, u32(1) + text("k") + list(paths) + u32(1) + u32(0) +
                                        list(variables) + list(registers) + u32(0) + u32(0)}});
}

std::string twoInstances() {
  return fileWith({text("/t/k_1"), text("/t/k_10")}, {variable("i", "i_r"), variable("j", "j_r")},
                  {hardware("/t/k_1/i_r", 1, 2), hardware("/t/k_10/i_r", 3, 4),
                   hardware("/t/k_1/j_r", 1, 2), hardware("/u/i_r", 5, 6)});
}

Outcome find(const std::string& bytes, const std::string& wanted) {
  return inspectBytes(bytes, {"find", "FILE", wanted});
}

TEST(FindCommand, FindsAVariableInEachInstance) {
  EXPECT_EQ(find(twoInstances(), "i"), holds("Kernel k\n"
                                             "  variable i: int, 32 bits, register i_r\n"
                                             "  register /t/k_1/i_r\n"
                                             "    in instance /t/k_1\n"
                                             "    1 bit\n"
                                             "           0: 0x1:2\n"
                                             "  register /t/k_10/i_r\n"
                                             "    in instance /t/k_1 (doubtful)\n"
                                             "    in instance /t/k_10\n"
                                             "    1 bit\n"
                                             "           0: 0x3:4\n"
                                             "  register /u/i_r\n"
                                             "    1 bit\n"
                                             "           0: 0x5:6\n"));
}

TEST(FindCommand, FindsARegisterByAnyOfItsNames) {
  const Outcome whole = find(twoInstances(), "/t/k_1/j_r");
  EXPECT_EQ(whole, holds("Kernel k\n"
                         "  variable j: int, 32 bits, register j_r\n"
                         "  register /t/k_1/j_r\n"
                         "    in instance /t/k_1\n"
                         "    1 bit\n"
                         "           0: 0x1:2\n"));
  EXPECT_EQ(find(twoInstances(), "t/k_1/j_r"), whole);
  EXPECT_EQ(find(twoInstances(), "j_r"), whole);
}

TEST(FindCommand, TellsWhoIsAtALocation) {
  EXPECT_EQ(find(twoInstances(), "0x1:2"), holds("Kernel k\n"
                                                 "  variable i: int, 32 bits, register i_r\n"
                                                 "  variable j: int, 32 bits, register j_r\n"
                                                 "  register /t/k_1/i_r\n"
                                                 "    in instance /t/k_1\n"
                                                 "    bit 0 at 0x1:2\n"
                                                 "  register /t/k_1/j_r\n"
                                                 "    in instance /t/k_1\n"
                                                 "    bit 0 at 0x1:2\n"));
}

TEST(FindCommand, FindsBitsThatAreStoredForAnInstance) {
  EXPECT_EQ(find(fullContainer(), "3:4"), holds("Kernel second\n"
                                                "  argument a: int*, 64 bits, register a_r\n"
                                                "    bit 1 in instance 0 at 0x3:4\n"
                                                "  variable a: int*, 64 bits, register a_r\n"
                                                "    bit 1 in instance 0 at 0x3:4\n"));
}

TEST(FindCommand, FindsAKernel) {
  EXPECT_EQ(find(fullContainer(), "first"),
            holds("Kernel first\n  type HLS, 2 instances\n    /top/first_1\n    /top/first_2\n"));
}

TEST(FindCommand, FailsWhereNothingIsFound) {
  EXPECT_EQ(find(twoInstances(), "n"), (Outcome{1, "", said("FILE: there is no \"n\"")}));
  EXPECT_EQ(find(twoInstances(), "9:9"), (Outcome{1, "", said("FILE: nothing is at \"9:9\"")}));
}

TEST(FindCommand, WritesADocument) {
  EXPECT_EQ(
      inspectBytes(twoInstances(), {"find", "--format", "json", "FILE", "3:4"}),
      holds("{\"format\":\"consolidator-find/1\",\"path\":\"FILE\",\"query\":{\"location\":[3,4]},"
            "\"kernels\":[{\"kernel\":\"k\",\"matches\":[{\"what\":\"variable\",\"offset\":86,"
            "\"name\":\"i\",\"second\":\"i_r\",\"c_type\":\"int\",\"bit_width\":32,"
            "\"instance_bits\":[],\"bits\":[]},{\"what\":\"hardware_variable\",\"offset\":162,"
            "\"rtl_name\":\"/t/k_10/i_r\",\"logic_locations\":[[3,4]],\"register\":\"i_r\","
            "\"instances\":[{\"path\":\"/t/k_1\",\"belonging\":\"doubtful\"},"
            "{\"path\":\"/t/k_10\",\"belonging\":\"certain\"}],\"all_instances\":true,"
            "\"bits\":[0]}]}],\"matches\":2,\"complete\":true,\"lossy_texts\":0}\n"));
}

TEST(FindCommand, ClosesTheDocumentOfNothing) {
  const Outcome outcome = inspectBytes(header(1), {"find", "--format=json", "FILE", "n"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out,
            "{\"format\":\"consolidator-find/1\",\"path\":\"FILE\",\"query\":{\"name\":\"n\"},"
            "\"kernels\":[],\"matches\":0,\"complete\":false,\"lossy_texts\":0}\n");
}

TEST(FindCommand, StopsAtSixtyFourInstancesOfOneRegister) {
  std::vector<std::string> paths;
  for (std::size_t i = 1; i <= 100; ++i) paths.push_back(text(std::string(i, 'p')));
  const Outcome outcome = find(
      fileWith(paths, {variable("i", "i_r")}, {hardware(std::string(100, 'p') + "/i_r", 1, 2)}),
      "i");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("    maybe in more instances\n"), std::string::npos);
}

// Pair by pair this would take minutes.
TEST(FindCommand, IsLinearInInstancesAndRegisters) {
  std::vector<std::string> paths;
  std::vector<std::string> registers;
  for (int i = 0; i < 100'000; ++i) {
    const std::string path = "/t/k_" + std::to_string(i) + "x";
    paths.push_back(text(path));
    registers.push_back(hardware(path + "/i_r", 1, 2));
  }
  const TemporaryFolder folder;
  folder.write("file", fileWith(paths, {variable("i", "i_r")}, registers));
  for (const std::string wanted : {"i", "1:2"}) {
    const ExecutableRun run =
        startInspect({"find", "--format=json", "file", wanted}, folder.path(""));
    EXPECT_EQ(run.outcome().status, 0);
    EXPECT_LT(run.processorTime(), 10);
  }
}

}  // namespace
}  // namespace consolidator::inspect
