#include "endtoend/ExecutableTest.h"
#include "endtoend/Expected.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_literals;

// The kernel records that a file holds, read and written by runs that add nothing to them unless
// the test says otherwise.
class KernelRecordsTest : public ExecutableTest {
 protected:
  // A file with these records that a run finds.
  void writeRecords(const std::vector<std::string>& records) const {
    write("out", container({section(3, ""), recordsSection(records)}));
  }

  // Expects that the run on the file "out" leaves these kernels in it.
  void expectKernels(const Arguments& arguments, const std::string& kernels,
                     const std::vector<std::string>& records) const {
    EXPECT_EQ(run(arguments), silence());
    EXPECT_EQ(read("out"), container({jsonSection(kernels), recordsSection(records)}));
  }

  const Arguments addNothing_{"-f", "out", "-h", "missing"};
};

TEST_F(KernelRecordsTest, EveryFieldIsKeptAndShown) {
  const std::string locations = u32(2) + u32(1) + u32(2) + u32(4294967295) + u32(0);
  const std::string record = text("k") + u32(2) + text("/p") + text("/p") + u32(4) +            //
                             u32(2) + text("a") + text("s") + text("unsigned char") + u32(0) +  //
                             text("b") + text("") + text("double*") + u32(2) + locations +
                             u32(0) +                                                            //
                             u32(1) + text("v") + text("t") + text("int") + u32(1) + u32(0) +    //
                             u32(2) + text("r") + u32(0) + text("q") + locations +               //
                             u32(4) + u32(0) + text("$1") + u32(1) + text("$2") +                //
                             u32(2) + text("$3") + u32(7) + text("f.c") + u32(9) + text("$4") +  //
                             u32(2) + text("m") + text("m");
  const std::string shown =
      R"({ "Name" : "k", "Instance Paths" : [ "/p/U0", "/p/U0" ], "Type" : "HLS", )"
      R"("Arguments" : [ [ "a", "s", "unsigned char", 8], [ "b", "", "double*", 64, )"
      R"([ { "Instance" : 0, "Bits" : [{ 1, 2}, { 4294967295, 0}]}, )"
      R"({ "Instance" : 1, "Bits" : []}]]], )"
      R"("Variables" : [ [ "v", "t", "int", 32, [ { "Instance" : 0, "Bits" : []}]]], )"
      R"("Hardware Variables" : [ { "RTLName" : "r", "Logic Locations" : [ ] } , )"
      R"({ "RTLName" : "q", "Logic Locations" : [ [ 1, 2], [ 4294967295, 0]] } ], )"
      R"("Breakable Conditions" : [{ "Start":true, "Cond":"$1"}, { "Stop":true, "Cond":"$2"}, )"
      R"({ "File":"f.c", "Line":7, "Cond":"$3"}, { "Error":1, "Cond":"$4"}], )"
      R"("BRAMs" : [ "m", "m"] })";
  writeRecords({record});
  expectKernels(addNothing_, shown, {record});
}

TEST_F(KernelRecordsTest, UnknownTypeIsKept) {
  writeRecords({kernelRecord("k", 7), kernelRecord("l", 3)});
  expectKernels(addNothing_, kernelJson("k", "Unknown") + ", " + kernelJson("l", "Unknown"),
                {kernelRecord("k", 7), kernelRecord("l", 3)});
}

TEST_F(KernelRecordsTest, TextsEndAtAZeroByte) {
  writeRecords({kernelRecord("ab\0cd"s, 1, {"\0x"s, "/y"}), kernelRecord("", 0)});
  expectKernels(addNothing_, kernelJson("ab", "C", {"", "/y"}) + ", " + kernelJson("", "OpenCL"),
                {kernelRecord("ab", 1, {"", "/y"}), kernelRecord("", 0)});
}

TEST_F(KernelRecordsTest, StoredKernelsOfOneNameAreNotMerged) {
  writeRecords({kernelRecord("k", 3, {"/x"}), kernelRecord("k", 1, {"/x"})});
  expectKernels(addNothing_,
                kernelJson("k", "Unknown", {"/x"}) + ", " + kernelJson("k", "C", {"/x"}),
                {kernelRecord("k", 3, {"/x"}), kernelRecord("k", 1, {"/x"})});
}

TEST_F(KernelRecordsTest, InputGoesToTheFirstKernelOfItsName) {
  write("hierarchy", "k: type: ip instance path: /z K:");
  writeRecords({kernelRecord("k", 3, {"/x"}), kernelRecord("k", 1, {"/x"})});
  expectKernels(
      {"-f", "out", "-h", "hierarchy"},
      kernelJson("k", "RTL", {"/x", "/z"}) + ", " + kernelJson("k", "C", {"/x"}) + ", " +
          kernelJson("K", "Unknown"),
      {kernelRecord("k", 2, {"/x", "/z"}), kernelRecord("k", 1, {"/x"}), kernelRecord("K", 3)});
}

TEST_F(KernelRecordsTest, FirstKnownTypeWins) {
  write("hierarchy", "k: type: ip l: type: ip m: type: ip");
  writeRecords({kernelRecord("k", 1), kernelRecord("l", 3), kernelRecord("m", 9)});
  expectKernels(
      {"-f", "out", "-h", "hierarchy"},
      kernelJson("k", "C") + ", " + kernelJson("l", "RTL") + ", " + kernelJson("m", "Unknown"),
      {kernelRecord("k", 1), kernelRecord("l", 2), kernelRecord("m", 9)});
}

TEST_F(KernelRecordsTest, RecordThatIsCutEndsTheReading) {
  const std::string records = kernelRecord("first", 1, {"/x"}) + kernelRecord("second", 2, {"/y"});
  const std::string whole = container({section(3, ""), section(2, u32(2) + records)});
  for (std::size_t cut = 1; cut <= kernelRecord("second", 2, {"/y"}).size(); ++cut) {
    SCOPED_TRACE(cut);
    write("out", whole.substr(0, whole.size() - cut));
    expectKernels(addNothing_, kernelJson("first", "C", {"/x"}),
                  {kernelRecord("first", 1, {"/x"})});
  }
}

TEST_F(KernelRecordsTest, CountBeyondTheRecordsKeepsThoseThatAreThere) {
  write("out", container({section(3, ""), section(2, u32(0xFFFFFFFF) + kernelRecord("k", 1))}));
  expectKernels(addNothing_, kernelJson("k", "C"), {kernelRecord("k", 1)});
}

TEST_F(KernelRecordsTest, CountBelowTheRecordsDropsTheRest) {
  write("out", container({section(3, ""), section(2, u32(1) + kernelRecord("k", 1) + "rest")}));
  expectKernels(addNothing_, kernelJson("k", "C"), {kernelRecord("k", 1)});
}

TEST_F(KernelRecordsTest, SizeOfTheirEntryMeansNothing) {
  write("out", header(2) + entry(3, 0, 0) + entry(2, 64, 1) + u32(1) + kernelRecord("k", 1));
  expectKernels(addNothing_, kernelJson("k", "C"), {kernelRecord("k", 1)});
}

TEST_F(KernelRecordsTest, SectionWithoutKernelsIsKept) {
  writeRecords({});
  expectKernels(addNothing_, "", {});
}

TEST_F(KernelRecordsTest, SeveralSectionsAddUpAndEachIsWrittenWithAll) {
  write("out", container({recordsSection({kernelRecord("a", 1)}), jsonSection(""),
                          recordsSection({kernelRecord("b", 2)})}));
  EXPECT_EQ(run(addNothing_), silence());
  const Section both = recordsSection({kernelRecord("a", 1), kernelRecord("b", 2)});
  EXPECT_EQ(
      read("out"),
      container({both, jsonSection(kernelJson("a", "C") + ", " + kernelJson("b", "RTL")), both}));
}

}  // namespace
}  // namespace consolidator
