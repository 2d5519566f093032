#include "inspect/InspectRun.h"
#include "inspect/diff/DiffCommand.h"
#include "support/Bytes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {
namespace {

using namespace std::string_literals;

// The record of a kernel with an element in each list.
std::string record(std::uint32_t type, std::string_view place, std::uint32_t location,
                   std::string_view condition) {
  return text("k") + u32(1) + text(place) + u32(type) + u32(1) + text("a") + text("a_r") +
         text("int*") + u32(0) + u32(1) + text("v") + text("v_r") + text("int") + u32(1) + u32(1) +
         u32(location) + u32(2) + u32(1) + text("/t/v_r") + u32(1) + u32(location) + u32(2) +
         u32(1) + u32(2) + text(condition) + u32(7) + text("k.c") + u32(1) + text("ram");
}

std::string file(const std::string& dwarf, const std::vector<std::string>& records) {
  std::string kernels = u32(static_cast<std::uint32_t>(records.size()));
  for (const std::string& kernel : records) kernels += kernel;
  return container({{SectionKind::Dwarf, dwarf}, {SectionKind::KernelRecords, kernels}});
}

const std::string& before() {
  static const std::string bytes =
      file("ELF", {record(3, "/t/k_1", 0x1A, "== 1 $i/x"), kernelRecord("gone", 0)});
  return bytes;
}

const std::string& after() {
  static const std::string bytes =
      file("elf", {kernelRecord("new", 0), record(4, "/t/k_2", 0x1B, "== 2 $i/x")});
  return bytes;
}

class DiffCommandTest : public testing::Test {
 protected:
  // The outcome for files with these bytes, which are named A and B in what is printed.
  Outcome diff(std::string_view bytesA, std::string_view bytesB,
               const std::vector<std::string>& options = {}) const {
    folder_.write("A", bytesA);
    folder_.write("B", bytesB);
    std::vector<std::string> words{"diff", folder_.path("A"), folder_.path("B")};
    words.insert(words.end(), options.begin(), options.end());
    Outcome outcome = inspect(words);
    for (std::size_t at = outcome.err.find(folder_.path("")); at != std::string::npos;
         at = outcome.err.find(folder_.path(""))) {
      outcome.err.erase(at, folder_.path("").size());
    }
    return outcome;
  }

  std::string path(std::string_view name) const { return folder_.path(name); }

 private:
  TemporaryFolder folder_;
};

// Reads strictly.
void expectDocument(const std::string& text) {
  rapidjson::Document document;
  document.Parse<rapidjson::kParseValidateEncodingFlag>(text.c_str());
  EXPECT_FALSE(document.HasParseError()) << text;
}

constexpr std::string_view summaryOfBoth =
    "                            before       after\n"
    "kernels                          2           2\n"
    "instance_paths                   1           1\n"
    "arguments                        1           1\n"
    "variables                        1           1\n"
    "hardware_variables               1           1\n"
    "logic_locations                  1           1\n"
    "breakable_conditions             1           1\n"
    "brams                            1           1\n";

TEST_F(DiffCommandTest, WritesTheSummaryAloneForEqualFiles) {
  EXPECT_EQ(diff(before(), before()), holds(std::string(summaryOfBoth) + "equal\n"));
}

TEST_F(DiffCommandTest, WritesEachSideOfAChangeBelowAHeadingAndTheSummaryLast) {
  const std::string changes =
      "file\n"
      "- dwarf 3 bytes\n"
      "+ dwarf 3 bytes, other bytes\n"
      "kernel k\n"
      "- instance_path /t/k_1\n"
      "+ instance_path /t/k_2\n"
      "- type Unknown (3)\n"
      "+ type HLS (4)\n"
      "- variable v: int, register v_r, instance bits 0x1a:2\n"
      "+ variable v: int, register v_r, instance bits 0x1b:2\n"
      "- hardware_variable /t/v_r: 0x1a:2\n"
      "+ hardware_variable /t/v_r: 0x1b:2\n"
      "- breakable_condition source_line k.c:7: == 1 $i/x\n"
      "+ breakable_condition source_line k.c:7: == 2 $i/x\n"
      "kernel gone\n"
      "- kernel instance_paths 0, arguments 0, variables 0, hardware_variables 0, "
      "logic_locations 0, breakable_conditions 0, brams 0\n"
      "kernel new\n"
      "+ kernel instance_paths 0, arguments 0, variables 0, hardware_variables 0, "
      "logic_locations 0, breakable_conditions 0, brams 0\n";
  EXPECT_EQ(diff(before(), after()),
            (Outcome{1, changes + std::string(summaryOfBoth) + "different\n", ""}));
}

TEST_F(DiffCommandTest, WritesTheSummaryAloneWhereAsked) {
  EXPECT_EQ(diff(before(), after(), {"--stat"}),
            (Outcome{1, std::string(summaryOfBoth) + "different\n", ""}));
}

constexpr std::string_view documentOfBoth =
    R"({"format":"consolidator-diff/1","equal":false,"counts":{"kernels":[2,2],)"
    R"("instance_paths":[1,1],"arguments":[1,1],"variables":[1,1],"hardware_variables":[1,1],)"
    R"("logic_locations":[1,1],"breakable_conditions":[1,1],"brams":[1,1]},)";

TEST_F(DiffCommandTest, WritesADocument) {
  constexpr std::string_view noCounts =
      R"({"instance_paths":0,"arguments":0,"variables":0,"hardware_variables":0,)"
      R"("logic_locations":0,"breakable_conditions":0,"brams":0})";
  const std::string changes =
      R"("changes":[)"
      R"({"what":"dwarf","kernel":null,"name":null,"change":"changed",)"
      R"("before":{"offset":64,"size":3},"after":{"offset":64,"size":3},"bytes_differ":true},)"
      R"({"what":"instance_path","kernel":"k","name":"/t/k_1","change":"removed",)"
      R"("before":"/t/k_1","after":null},)"
      R"({"what":"instance_path","kernel":"k","name":"/t/k_2","change":"added",)"
      R"("before":null,"after":"/t/k_2"},)"
      R"({"what":"type","kernel":"k","name":null,"change":"changed",)"
      R"("before":"Unknown","after":"HLS","type_numbers":[3,4]},)"
      R"({"what":"variable","kernel":"k","name":"v","change":"changed",)"
      R"("before":{"name":"v","second":"v_r","c_type":"int","bit_width":32,)"
      R"("instance_bits":[[[26,2]]]},)"
      R"("after":{"name":"v","second":"v_r","c_type":"int","bit_width":32,)"
      R"("instance_bits":[[[27,2]]]}},)"
      R"({"what":"hardware_variable","kernel":"k","name":"/t/v_r","change":"changed",)"
      R"("before":{"rtl_name":"/t/v_r","logic_locations":[[26,2]]},)"
      R"("after":{"rtl_name":"/t/v_r","logic_locations":[[27,2]]}},)"
      R"({"what":"breakable_condition","kernel":"k","name":"== 1 $i/x","change":"changed",)"
      R"("before":{"kind":"source_line","kind_number":2,"condition":"== 1 $i/x",)"
      R"("file":"k.c","line":7},)"
      R"("after":{"kind":"source_line","kind_number":2,"condition":"== 2 $i/x",)"
      R"("file":"k.c","line":7}},)"
      R"({"what":"kernel","kernel":"gone","name":"gone","change":"removed","before":)" +
      std::string(noCounts) + R"(,"after":null},)" +
      R"({"what":"kernel","kernel":"new","name":"new","change":"added","before":null,"after":)" +
      std::string(noCounts) + R"(}],)";
  const Outcome outcome = diff(before(), after(), {"--format", "json"});
  EXPECT_EQ(outcome, (Outcome{1,
                              std::string(documentOfBoth) + changes +
                                  R"("complete":true,"lossy_texts":0})" + "\n",
                              ""}));
  expectDocument(outcome.out);
}

TEST_F(DiffCommandTest, LeavesTheChangesOutOfADocumentWhereTheSummaryIsAskedFor) {
  EXPECT_EQ(
      diff(before(), after(), {"--stat", "--format=json"}),
      (Outcome{1, std::string(documentOfBoth) + R"("complete":true,"lossy_texts":0})" + "\n", ""}));
}

TEST_F(DiffCommandTest, ListsTheKeysOfAnOrder) {
  const auto withConditions = [](std::string_view first, std::string_view second) {
    return container({{SectionKind::KernelRecords,
                       u32(1) + text("k") + u32(2) + text(first) + text(second) + u32(0) + u32(0) +
                           u32(0) + u32(0) + u32(2) + u32(first == "p" ? 0 : 1) + text("== 2 1") +
                           u32(first == "p" ? 1 : 0) + text("== 1 2") + u32(0)}});
  };
  const Outcome outcome =
      diff(withConditions("p", "q"), withConditions("q", "p"), {"--format=json"});
  EXPECT_NE(
      outcome.out.find(
          R"({"what":"order","kernel":"k","name":"instance_paths","change":"changed",)"
          R"("before":["p","q"],"after":["q","p"]},)"
          R"({"what":"order","kernel":"k","name":"breakable_conditions","change":"changed",)"
          R"("before":["start == 1 2","stop == 1 2"],"after":["stop == 1 2","start == 1 2"]})"),
      std::string::npos)
      << outcome.out;
  EXPECT_TRUE(diff(withConditions("p", "q"), withConditions("q", "p"))
                  .out.starts_with(
                      "kernel k\n- order of instance_paths p, q\n+ order of instance_paths q, p\n"
                      "- order of breakable_conditions start == 1 2, stop == 1 2\n"));
}

TEST_F(DiffCommandTest, ListsTheKindsOfSectionsInOrder) {
  const auto file = [](SectionKind first, SectionKind second) {
    return container({{first, ""}, {second, ""}});
  };
  EXPECT_NE(diff(file(SectionKind::Json, SectionKind::ProjectName),
                 file(SectionKind::ProjectName, SectionKind::Json), {"--format=json", "--sections"})
                .out.find(R"({"what":"order","kernel":null,"name":"sections","change":"changed",)"
                          R"("before":["json","project_name"],"after":["project_name","json"]})"),
            std::string::npos);
}

TEST_F(DiffCommandTest, WritesKernelsInOrder) {
  const std::string one = file("", {kernelRecord("a", 0), kernelRecord("b", 0)});
  const std::string other = file("", {kernelRecord("b", 0), kernelRecord("a", 0)});
  EXPECT_TRUE(
      diff(one, other).out.starts_with("file\n- order of kernels a, b\n+ order of kernels b, a\n"));
}

TEST_F(DiffCommandTest, GivesKernelsOfOneNameAHeadingEach) {
  const std::string one = file("", {kernelRecord("a", 0), kernelRecord("a", 0)});
  const std::string other = file("", {kernelRecord("a", 1), kernelRecord("a", 2)});
  EXPECT_TRUE(diff(one, other)
                  .out.starts_with("kernel a\n- type OpenCL (0)\n+ type C (1)\n"
                                   "kernel a\n- type OpenCL (0)\n+ type RTL (2)\n"));
}

TEST_F(DiffCommandTest, ShowsSectionsProjectAndDwarf) {
  EXPECT_TRUE(diff(container({{SectionKind::ProjectName, "p"}, {SectionKind::Json, "x"}}),
                   container({{SectionKind::Dwarf, "ELF"}, {SectionKind::Json, "y"}}),
                   {"--sections"})
                  .out.starts_with("file\n"
                                   "- project p\n"
                                   "+ dwarf 3 bytes\n"
                                   "- section project_name: 0x40, 1 bytes\n"
                                   "- section json: 0x41, 1 bytes\n"
                                   "+ section json: 0x43, 1 bytes, other bytes\n"
                                   "+ section dwarf: 0x40, 3 bytes\n"));
}

TEST_F(DiffCommandTest, ComparesConditionsExactlyWhereAsked) {
  const std::string one = file("", {record(4, "p", 1, "== 1 $i/x")});
  const std::string other = file("", {record(4, "p", 1, "== $i/x 1")});
  EXPECT_EQ(diff(one, other).status, 0);
  const Outcome outcome = diff(one, other, {"--exact"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(
      outcome.out.starts_with("kernel k\n"
                              "- breakable_condition source_line k.c:7: == 1 $i/x\n"
                              "+ breakable_condition source_line k.c:7: == $i/x 1\n"
                              "      "))
      << outcome.out;
}

TEST_F(DiffCommandTest, LetsNoTextReachATerminalOrADocumentRaw) {
  const std::string one = file("", {kernelRecord("k", 0, {"\x1B[31m\xFF"})});
  const std::string other = file("", {kernelRecord("k", 0)});
  EXPECT_TRUE(diff(one, other)
                  .out.starts_with("kernel k\n"
                                   "- instance_path \\x1B[31m\xEF\xBF\xBD\n"));
  const Outcome outcome = diff(one, other, {"--format=json"});
  expectDocument(outcome.out);
  EXPECT_TRUE(outcome.out.ends_with("\"lossy_texts\":2}\n")) << outcome.out;
}

TEST_F(DiffCommandTest, PaintsWhatWasAndWhatIs) {
  diff(file("", {kernelRecord("k", 0)}), file("", {kernelRecord("k", 1)}));
  EXPECT_TRUE(inspect({"diff", path("A"), path("B")}, true)
                  .out.starts_with("\x1B[1mkernel k\x1B[0m\n"
                                   "\x1B[31m- type\x1B[0m OpenCL (0)\n"
                                   "\x1B[32m+ type\x1B[0m C (1)\n"));
}

TEST_F(DiffCommandTest, EndsWithStatus1ForAFileThatIsNotComplete) {
  const std::string cut = before().substr(0, before().size() - 1);
  const std::string message = ": not complete: The kernel records go beyond the end of the file.";
  const Outcome itself = diff(cut, cut);
  EXPECT_EQ(itself.status, 1);
  EXPECT_EQ(itself.err, said("A" + message) + said("B" + message));
  EXPECT_TRUE(itself.out.ends_with("equal: the same bytes, but not complete\n"));
  const Outcome document = diff(cut, cut, {"--format=json"});
  EXPECT_EQ(document.status, 1);
  EXPECT_TRUE(document.out.starts_with(R"({"format":"consolidator-diff/1","equal":true,)"));
  EXPECT_TRUE(document.out.ends_with("\"complete\":false,\"lossy_texts\":0}\n"));
}

TEST_F(DiffCommandTest, HoldsAFileThatIsNotCompleteForDifferentFromAnyOther) {
  const std::string cut = before().substr(0, before().size() - 1);
  const Outcome outcome = diff(cut, cut.substr(0, cut.size() - 1), {"--format=json", "--stat"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.out.starts_with(R"({"format":"consolidator-diff/1","equal":false,)"));
}

TEST_F(DiffCommandTest, CannotBeAskedOfOtherFiles) {
  const std::string message = "B: The file is shorter than the header of a consolidated file.";
  EXPECT_EQ(diff(before(), "no"), (Outcome{2, "", said(message)}));
  const Outcome outcome = diff("no", before(), {"--format=json"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_TRUE(outcome.out.starts_with(
      R"({"format":"consolidator-diff/1","error":{"code":"no-consolidated-file","message":")"));
  expectDocument(outcome.out);
}

TEST_F(DiffCommandTest, TakesTwoFiles) {
  EXPECT_EQ(inspect({"diff", "A"}).status, 2);
  EXPECT_EQ(inspect({"diff", "A", "B", "C"}).status, 2);
}

}  // namespace
}  // namespace consolidator::inspect
