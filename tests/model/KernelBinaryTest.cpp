// The binary form of whole kernel records.

#include "model/Describe.h"
#include "model/KernelRecord.h"
#include "model/RandomKernels.h"
#include "support/AllocationGauge.h"
#include "support/Bytes.h"
#include "support/FullStream.h"
#include "support/HexBytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace consolidator {
namespace {

KernelRecord namedKernel() {
  KernelRecord kernel;
  kernel.name = "k";
  kernel.type = KernelType::HLS;
  return kernel;
}

// 33 bytes.
std::string namedKernelBytes() {
  return hexBytes(
      "01 00 00 00 6B  00 00 00 00  04 00 00 00"
      "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00");
}

// Something in every list, and equal elements where lists may hold them.
KernelRecord fullKernel() {
  KernelRecord kernel = namedKernel();
  kernel.instancePaths.append("p");
  kernel.instancePaths.append("p");
  kernel.addArgument("a", "b", "int*");
  kernel.arguments.find("a")->instanceBits = {{{1, 2}}};
  kernel.addVariable("v", "w", "char");
  kernel.setLogicLocation("r", 0, 3, 4);
  kernel.addBreakableCondition(ConditionKind::Stop, "x");
  BreakableCondition condition(ConditionKind::SourceLine, "y");
  condition.line = 7;
  condition.file = "f";
  kernel.addBreakableCondition(condition);
  kernel.addBRAM("m");
  kernel.addBRAM("m");
  return kernel;
}

std::string fullKernelBytes() {
  return hexBytes(
      "01 00 00 00 6B"                                                         // name
      "02 00 00 00  01 00 00 00 70  01 00 00 00 70"                            // instance paths
      "04 00 00 00"                                                            // type
      "01 00 00 00  01 00 00 00 61  01 00 00 00 62  04 00 00 00 69 6E 74 2A"   // arguments
      "             01 00 00 00  01 00 00 00  01 00 00 00 02 00 00 00"         //   and their bits
      "01 00 00 00  01 00 00 00 76  01 00 00 00 77  04 00 00 00 63 68 61 72"   // variables
      "             00 00 00 00"                                               //   without bits
      "01 00 00 00  01 00 00 00 72  01 00 00 00  03 00 00 00 04 00 00 00"      // hardware
      "02 00 00 00  01 00 00 00  01 00 00 00 78"                               // conditions
      "             02 00 00 00  01 00 00 00 79  07 00 00 00  01 00 00 00 66"  //
      "02 00 00 00  01 00 00 00 6D  01 00 00 00 6D");                          // BRAMs
}

TEST(KernelBinary, WritesANamedRecordIn33Bytes) {
  EXPECT_EQ(encode(namedKernel()), namedKernelBytes());
  EXPECT_EQ(encode(namedKernel()).size(), 33U);
}

TEST(KernelBinary, ReadsANamedRecordOf33Bytes) {
  KernelRecord kernel;
  EXPECT_TRUE(decode(namedKernelBytes(), kernel));
  EXPECT_EQ(describe(kernel), describe(namedKernel()));
}

TEST(KernelBinary, WritesEveryListInItsPlace) {
  EXPECT_EQ(encode(fullKernel()), fullKernelBytes());
}

TEST(KernelBinary, ReadsEveryListInItsPlace) {
  KernelRecord kernel;
  EXPECT_TRUE(decode(fullKernelBytes(), kernel));
  EXPECT_EQ(describe(kernel), describe(fullKernel()));
}

TEST(KernelBinary, RoundTripsAnyRecordWithoutZeroBytes) {
  RandomKernels kernels(20240105);
  for (int i = 0; i < 5'000; ++i) {
    const KernelRecord kernel = kernels.next(i % 50 == 0 ? 60 : 6);
    KernelRecord read;
    ASSERT_TRUE(decode(encode(kernel), read)) << i;
    ASSERT_EQ(describe(read), describe(kernel)) << i;
    ASSERT_EQ(read, kernel) << i;
  }
}

TEST(KernelBinary, ReadsRecordsBackToBack) {
  const MemoryStream stream(fullKernelBytes() + namedKernelBytes() + fullKernelBytes());
  ByteReader in(stream.get());
  for (const KernelRecord& expected : {fullKernel(), namedKernel(), fullKernel()}) {
    KernelRecord kernel;
    EXPECT_TRUE(kernel.readBinary(in));
    EXPECT_EQ(kernel, expected);
  }
  EXPECT_EQ(in.remaining(), 0U);
}

TEST(KernelBinary, CutsTextsAtTheirFirstZeroByteWhenReading) {
  KernelRecord kernel;
  EXPECT_TRUE(decode(hexBytes("05 00 00 00 61 62 00 63 64"  // "ab", 0, "cd"
                              "02 00 00 00  05 00 00 00 61 62 00 63 64  01 00 00 00 00"
                              "02 00 00 00"
                              "00 00 00 00  00 00 00 00  00 00 00 00  00 00 00 00"
                              "01 00 00 00  03 00 00 00 78 00 79"),
                     kernel));
  KernelRecord expected;
  expected.name = "ab";
  expected.addInstancePath("ab");
  expected.addInstancePath("");
  expected.type = KernelType::RTL;
  expected.addBRAM("x");
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelBinary, WritesTextsWithTheirZeroBytes) {
  KernelRecord kernel = namedKernel();
  kernel.name = std::string("a\0b", 3);
  EXPECT_EQ(encode(kernel), hexBytes("03 00 00 00 61 00 62") + namedKernelBytes().substr(5));
}

TEST(KernelBinary, ReadsTheInstancePathsAfterAnEmptyName) {
  KernelRecord kernel;
  EXPECT_TRUE(decode(
      hexBytes("00 00 00 00  01 00 00 00  01 00 00 00 70") + namedKernelBytes().substr(9), kernel));
  KernelRecord expected;
  expected.addInstancePath("p");
  expected.type = KernelType::HLS;
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelBinary, AddsLineAndFileToSourceLinesOnly) {
  const auto sizeWith = [](ConditionKind kind) {
    KernelRecord kernel = namedKernel();
    BreakableCondition condition(kind, "cond");
    condition.line = 5;
    condition.file = "file.c";
    kernel.addBreakableCondition(condition);
    return encode(kernel).size();
  };
  EXPECT_EQ(sizeWith(ConditionKind::Stop), 33U + 8 + 4);
  EXPECT_EQ(sizeWith(ConditionKind::SourceLine), 33U + 8 + 4 + 8 + 6);
}

TEST(KernelBinary, KeepsATypeThatHasNoName) {
  std::string bytes = namedKernelBytes();
  bytes[9] = 7;
  KernelRecord kernel;
  EXPECT_TRUE(decode(bytes, kernel));
  EXPECT_EQ(kernel.type, static_cast<KernelType>(7));
  EXPECT_EQ(encode(kernel), bytes);
}

TEST(KernelBinary, ReadsListsWithoutLookingForEqualElements) {
  const std::string variables = hexBytes("02 00 00 00") + std::string(2 * 16, '\0');
  const std::string hardware = hexBytes("02 00 00 00") + std::string(2 * 8, '\0');
  const std::string conditions = hexBytes("02 00 00 00") + std::string(2 * 8, '\0');
  const std::string bytes = namedKernelBytes().substr(0, 13) + variables + variables + hardware +
                            conditions + hexBytes("00 00 00 00");
  KernelRecord kernel;
  EXPECT_TRUE(decode(bytes, kernel));
  EXPECT_EQ(kernel.arguments.size(), 2U);
  EXPECT_EQ(kernel.variables.size(), 2U);
  EXPECT_EQ(kernel.hardwareVariables.size(), 2U);
  EXPECT_EQ(kernel.breakableConditions.size(), 2U);
  EXPECT_EQ(encode(kernel), bytes);
}

TEST(KernelBinary, FillsAllEarlierListsWhenItEndsInsideTheBRAMs) {
  for (std::size_t cut = 1; cut <= 4; ++cut) {
    KernelRecord kernel;
    EXPECT_FALSE(decode(fullKernelBytes().substr(0, fullKernelBytes().size() - cut), kernel));
    KernelRecord expected = fullKernel();
    expected.brams = {"m"};
    EXPECT_EQ(describe(kernel), describe(expected)) << cut;
  }
}

TEST(KernelBinary, KeepsTheHalfReadArgumentItEndsIn) {
  const std::string argument = hexBytes("01 00 00 00 61  00 00 00 00  00 00 00 00  00 00 00 00");
  const std::string bytes = namedKernelBytes().substr(0, 13) + hexBytes("05 00 00 00") + argument +
                            argument + argument.substr(0, 10);
  KernelRecord kernel;
  EXPECT_FALSE(decode(bytes, kernel));
  ASSERT_EQ(kernel.arguments.size(), 3U);
  EXPECT_TRUE(kernel.arguments[0].valid);
  EXPECT_TRUE(kernel.arguments[1].valid);
  EXPECT_FALSE(kernel.arguments[2].valid);
  EXPECT_EQ(kernel.arguments[2].name, "a");
  EXPECT_TRUE(kernel.variables.empty());
}

TEST(KernelBinary, KeepsNoHalfReadText) {
  KernelRecord kernel;
  EXPECT_FALSE(decode(hexBytes("01 00 00 00 6B  02 00 00 00  01 00 00 00 70  04 00 00 00 71 71 71"),
                      kernel));
  KernelRecord expected;
  expected.name = "k";
  expected.addInstancePath("p");
  EXPECT_EQ(describe(kernel), describe(expected));
}

TEST(KernelBinary, AcceptsAFileThatEndsAfterAnEmptyBRAMList) {
  KernelRecord kernel;
  EXPECT_TRUE(decode(namedKernelBytes(), kernel));
  EXPECT_FALSE(decode(namedKernelBytes().substr(0, 32), kernel));
}

TEST(KernelBinary, ClearsTheRecordButItsHardwareVariablesBeforeReading) {
  KernelRecord kernel = fullKernel();
  EXPECT_TRUE(decode(namedKernelBytes(), kernel));
  KernelRecord expected = namedKernel();
  expected.setLogicLocation("r", 0, 3, 4);
  EXPECT_EQ(describe(kernel), describe(expected));
}

// A long last name lets a list or text of a damaged size stand out from what the file holds. Every
// length and count is among the four bytes at some position.
TEST(KernelBinary, NeverAsksForMoreMemoryThanTheFileHolds) {
  KernelRecord record = fullKernel();
  record.addBRAM(std::string(std::size_t{1} << 18U, 'A'));
  const std::string intact = encode(record);
  for (std::size_t at = 0; at < fullKernelBytes().size(); ++at) {
    const auto rest = static_cast<std::uint32_t>(intact.size() - at - 4);
    for (const std::uint32_t value : {rest - 1, rest, rest + 1, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      const MemoryStream stream(std::string(intact).replace(at, 4, u32(value)));
      const AllocationGauge gauge;
      KernelRecord kernel;
      ByteReader in(stream.get());
      kernel.readBinary(in);
      EXPECT_LE(gauge.largest(), intact.size()) << value << " at byte " << at;
      EXPECT_LE(gauge.total(), 4 * intact.size()) << value << " at byte " << at;
    }
  }
}

TEST(KernelBinary, SkippingTakesABlockOfMemory) {
  KernelRecord record = fullKernel();
  record.addBRAM(std::string(std::size_t{1} << 20U, 'A'));
  const MemoryStream stream(encode(record));
  const AllocationGauge gauge;
  ByteReader in(stream.get());
  EXPECT_TRUE(KernelRecord::skipBinary(in));
  EXPECT_EQ(in.remaining(), 0U);
  EXPECT_LE(gauge.total(), 300'000U);
}

TEST(KernelBinary, ReadsNothingFromANullStream) {
  KernelRecord kernel = namedKernel();
  ByteReader in(nullptr);
  EXPECT_FALSE(kernel.readBinary(in));
  EXPECT_EQ(describe(kernel), describe(namedKernel())) << "which is not reset either";
}

TEST(KernelBinary, ReturnsTheNumberOfBytesOfEachRecord) {
  const MemoryStream stream;
  ByteWriter out(stream.get());
  EXPECT_EQ(namedKernel().writeBinary(out), 33U);
  EXPECT_EQ(fullKernel().writeBinary(out), fullKernelBytes().size());
  EXPECT_EQ(namedKernel().writeBinary(out), 33U);
}

TEST(KernelBinary, ReturnsTheNumberOfBytesOfEachNestedRecord) {
  const MemoryStream stream;
  ByteWriter out(stream.get());
  VariableRecord variable("a", "aa", "int");
  EXPECT_EQ(variable.writeBinary(out), 22U);
  variable.instanceBits = {{{1, 2}}, {}};
  EXPECT_EQ(variable.writeBinary(out), 38U);
  HardwareVariable hardware("r");
  hardware.logicLocations = {{1, 2}, {3, 4}};
  EXPECT_EQ(hardware.writeBinary(out), 25U);
  EXPECT_EQ(BreakableCondition(ConditionKind::Stop, "abc").writeBinary(out), 11U);
  EXPECT_EQ(BreakableCondition(ConditionKind::SourceLine, "abc").writeBinary(out), 19U);
}

TEST(KernelBinary, WritesNothingToANullStream) {
  ByteWriter out(nullptr);
  EXPECT_EQ(fullKernel().writeBinary(out), 0U);
  EXPECT_EQ(VariableRecord().writeBinary(out), 0U);
  EXPECT_EQ(HardwareVariable().writeBinary(out), 0U);
}

TEST(KernelBinary, ReturnsTheNumberOfBytesThatAFullStreamTook) {
  KernelRecord kernel = namedKernel();
  kernel.name = std::string(2'000'000, 'k');
  const FullStream stream(1'000'000);
  ByteWriter out(stream.get());
  EXPECT_EQ(kernel.writeBinary(out), 1'000'000U);
  EXPECT_EQ(kernel.writeBinary(out), 0U);
}

// The first record waits in the block, is counted, and is lost together with the second one.
TEST(KernelBinary, ReturnsNoBytesWhereMoreAreTakenBackThanAreWritten) {
  KernelRecord kernel = namedKernel();
  kernel.name = std::string(200'000, 'k');
  const FullStream stream(0);
  ByteWriter out(stream.get());
  EXPECT_EQ(kernel.writeBinary(out), 200'032U);
  EXPECT_EQ(kernel.writeBinary(out), 0U);
}

}  // namespace
}  // namespace consolidator
