#include "readers/LLFile.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_literals;

KernelRecord kernelWith(std::string_view name, const std::vector<std::string>& paths,
                        const std::vector<std::string>& argumentRegisters,
                        const std::vector<std::string>& variableRegisters = {}) {
  KernelRecord kernel;
  kernel.name = name;
  for (const std::string& path : paths) kernel.addInstancePath(path);
  for (const std::string& text : argumentRegisters) kernel.addArgument("a_" + text, text, "int");
  for (const std::string& text : variableRegisters) kernel.addVariable("v_" + text, text, "int");
  return kernel;
}

KernelList listOf(const KernelSequence& kernels) {
  KernelList list;
  for (const KernelRecord& kernel : kernels) list.append(kernel);
  return list;
}

// The hardware variables of the kernels, one a line: kernel, name, locations.
std::string shown(const KernelSequence& kernels) {
  std::string text;
  for (const KernelRecord& kernel : kernels) {
    for (const HardwareVariable& variable : kernel.hardwareVariables) {
      text += kernel.name + " " + variable.rtlName + (variable.valid ? "" : " incomplete");
      for (const LogicLocation& location : variable.logicLocations) {
        text += " " + std::to_string(location.first) + ":" + std::to_string(location.second);
      }
      text += "\n";
    }
  }
  return text;
}

// What a file adds to the kernels.
std::string added(std::string_view file, const KernelSequence& kernels) {
  LLFile reader("in", file);
  reader.setKernels(listOf(kernels));
  EXPECT_TRUE(reader.parse());
  return shown(reader.kernels());
}

// What a file adds to a kernel k with the instance path /top/u0 and the registers acc and done.
std::string added(std::string_view file) {
  return added(file, {kernelWith("k", {"/top/u0"}, {"acc"}, {"done"})});
}

TEST(LLFile, SetsTheLocationOfANetThatIsTheRegisterOfAnArgument) {
  EXPECT_EQ(added("Bit 1234 0x00401f80 17 die0 0 Block=X1Y2 Latch=AQ Net=top/u0/acc\n"),
            "k /top/u0/acc 4202368:17\n");
}

TEST(LLFile, SetsTheLocationOfANetThatIsTheRegisterOfAVariableOnly) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/done\n"), "k /top/u0/done 2:3\n");
}

TEST(LLFile, AnEmptyFileLeavesTheKernels) {
  const KernelRecord kernel = kernelWith("k", {"/top"}, {"acc"});
  LLFile reader("in", "");
  reader.setKernels(listOf({kernel}));
  EXPECT_TRUE(reader.parse());
  EXPECT_EQ(reader.kernels(), KernelSequence{kernel});
}

TEST(LLFile, AFileOfCommentsLeavesTheKernels) {
  EXPECT_EQ(added("; Net=top/u0/acc\n;Bit 1 2 3 die0 0 Net=top/u0/acc\n\n;"), "");
}

TEST(LLFile, PrintsNothing) {
  const StreamCapture capture;
  added("Bit\nBit x\nnonsense\nBit 1 2 3 die0 0 Net=top/u0/acc[268435456]\n");
  EXPECT_EQ(capture.out(), "");
  EXPECT_EQ(capture.err(), "");
}

TEST(LLFile, SkipsALineThatHoldsRevisionAnywhere) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/acc Revision\n"
                  "Bit 1 2 3 die0 0 OldRevisions Net=top/u0/acc\n"
                  "Revision 3\n"
                  "Bit 1 2 3 die0 0 revision Net=top/u0/done\n"),
            "k /top/u0/done 2:3\n");
}

TEST(LLFile, ASemicolonStartsACommentAsTheFirstCharacterOnly) {
  EXPECT_EQ(added("; \nBit 1 2 3 die0 0 ; Net=top/u0/acc\n"), "k /top/u0/acc 2:3\n");
}

TEST(LLFile, IgnoresLinesWhoseFirstWordIsNotBit) {
  EXPECT_EQ(added("Bits 1 2 3 die0 0 Net=top/u0/acc\nbit 1 2 3 die0 0 Net=top/u0/acc\n"
                  "Info Bit 1 2 3 die0 0 Net=top/u0/acc\nBit1 2 3 die0 0 Net=top/u0/acc\n"),
            "");
}

TEST(LLFile, IgnoresBitLinesWithoutANet) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0\nBit 1 2 3 die0 0 Block=X1\nBit 1 2 3 die0 0 \n"), "");
}

TEST(LLFile, IgnoresNetsOutsideEveryInstance) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u1/acc\nBit 1 2 3 die0 0 Net=acc\n"), "");
}

TEST(LLFile, IgnoresNetsWhoseLastNameIsNoRegister) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/acc_reg\nBit 1 2 3 die0 0 Net=top/u0/my_acc\n"
                  "Bit 1 2 3 die0 0 Net=top/u0/ACC\nBit 1 2 3 die0 0 Net=top/u0/acc/q\n"),
            "");
}

TEST(LLFile, KeepsTheLowHalfOfTheFirstNumber) {
  EXPECT_EQ(added("Bit 1 123456789abcdef0 3 die0 0 Net=top/u0/acc\n"),
            "k /top/u0/acc 2596069104:3\n");
}

TEST(LLFile, ReadsTheFirstNumberWithAndWithoutPrefix) {
  EXPECT_EQ(added("Bit 1 0xFf 3 die0 0 Net=top/u0/acc[0]\nBit 1 0X10 3 die0 0 Net=top/u0/acc[1]\n"
                  "Bit 1 10 3 die0 0 Net=top/u0/acc[2]\n"),
            "k /top/u0/acc 255:3 16:3 16:3\n");
}

TEST(LLFile, TakesSignsAsAStreamDoes) {
  EXPECT_EQ(added("Bit -1 -1 -1 die0 -1 Net=top/u0/acc[0]\nBit +1 +0x2 +3 die0 +0 "
                  "Net=top/u0/acc[1]\n"),
            "k /top/u0/acc 4294967295:4294967295 2:3\n");
}

TEST(LLFile, RecordsNothingWhereANumberIsTooLarge) {
  for (const std::string_view fields :
       {"18446744073709551616 2 3 die0 0", "1 10000000000000000 3 die0 0", "1 2 4294967296 die0 0",
        "1 2 3 die0 4294967296", "-18446744073709551616 2 3 die0 0", "1 2 -4294967296 die0 0"}) {
    EXPECT_EQ(added("Bit " + std::string(fields) + " Net=top/u0/acc\n"), "") << fields;
  }
}

TEST(LLFile, RecordsTheGreatestNumbers) {
  EXPECT_EQ(added("Bit 18446744073709551615 ffffffffffffffff 4294967295 die0 4294967295 "
                  "Net=top/u0/acc\n"),
            "k /top/u0/acc 4294967295:4294967295\n");
}

TEST(LLFile, RecordsNothingWhereAFieldIsMissing) {
  for (const std::string_view fields : {"", "1", "1 2", "1 2 3", "1 2 3 die0", "1 2 die0 0",
                                        "x 2 3 die0 0", "1 0x 3 die0 0", "1 2 3 die0 x"}) {
    EXPECT_EQ(added("Bit " + std::string(fields) + " Net=top/u0/acc\n"), "") << fields;
  }
}

TEST(LLFile, LeavesWhatFollowsTheDigitsToTheNextField) {
  EXPECT_EQ(added("Bit 12ab 3die0 0 Net=top/u0/acc\n"), "k /top/u0/acc 171:3\n");
  EXPECT_EQ(added("Bit 1 2 0x3 0 Net=top/u0/acc\n"), "k /top/u0/acc 2:0\n");
}

TEST(LLFile, TheNetMayFollowTheDigitsOfTheLastNumber) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0Net=top/u0/acc\n"), "k /top/u0/acc 2:3\n");
}

TEST(LLFile, OnlyTheFirstNetOfALineCounts) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/acc Net=top/u0/done\n"
                  "Bit 1 2 3 die0 0 Net=top/u1/acc Net=top/u0/done\n"),
            "k /top/u0/acc 2:3\n");
}

TEST(LLFile, OnlyAWordThatStartsWithTheMarkIsANet) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 xNet=top/u0/acc\nBit 1 2 3 die0 0 net=top/u0/acc\n"
                  "Bit 1 2 3 die0 0 Net= top/u0/acc\nBit 1 2 3 die0 0 Net =top/u0/acc\n"),
            "");
}

TEST(LLFile, AWordInThePlaceOfAnotherFieldIsNoNet) {
  EXPECT_EQ(added("Bit 1 2 3 Net=top/u0/acc 0 \nBit 1 2 3 Net=top/u0/acc 0 Net=top/u0/done"),
            "k /top/u0/done 2:3\n");
}

TEST(LLFile, SeparatesFieldsAtEveryWhiteSpace) {
  EXPECT_EQ(added("\v\fBit\t1\v2\f3\rdie0 \t 0\tNet=top/u0/acc\r\n"), "k /top/u0/acc 2:3\n");
}

TEST(LLFile, SetsTheBitThatTheIndexNames) {
  EXPECT_EQ(added("Bit 1 c 34 die0 0 Net=a/b[12]\n", {kernelWith("k", {"/a"}, {"b"})}),
            "k /a/b 0:0 0:0 0:0 0:0 0:0 0:0 0:0 0:0 0:0 0:0 0:0 0:0 12:34\n");
}

TEST(LLFile, AnIndexThatNoFileCanHoldRecordsNothing) {
  for (const std::string_view index :
       {"[268435456]", "[4294967295]", "[4294967296]", "[99999999999999999999999]"}) {
    EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/acc" + std::string(index) + "\n"), "") << index;
  }
}

TEST(LLFile, ThePathIsLookedForInTheNameWithoutIndex) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=a/b[1]\n", {kernelWith("k", {"/a/b[1"}, {"b"})}), "");
}

TEST(LLFile, APathMayOccurAnywhereInTheName) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0_x/r\n", {kernelWith("k", {"/u0"}, {"r"})}),
            "k /top/u0_x/r 2:3\n");
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/acc\n", {kernelWith("k", {"p/ac"}, {"acc"})}),
            "k /top/acc 2:3\n");
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/acc\n", {kernelWith("k", {"/top/acc/"}, {"acc"})}), "");
}

TEST(LLFile, TheEmptyPathOccursInEveryName) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=r\n", {kernelWith("k", {""}, {"r"})}), "k /r 2:3\n");
}

TEST(LLFile, AKernelWithoutPathsGetsNothing) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/r\n", {kernelWith("k", {}, {"r"})}), "");
}

TEST(LLFile, AnEmptyRegisterIsThatOfANameThatEndsInASlash) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/\nBit 1 2 3 die0 0 Net=\nBit 1 2 3 die0 0 Net=[1]\n",
                  {kernelWith("k", {"/"}, {""})}),
            "k /top/ 2:3\nk / 2:3 2:3\n");
}

TEST(LLFile, TheNameIsThatOfTheFileWithASlashInFront) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=/top/u0/acc\n"), "k //top/u0/acc 2:3\n");
}

TEST(LLFile, OneRegisterInTwoInstancesGivesTwoVariables) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u1/r\nBit 1 4 5 die0 0 Net=top/u0/r\n",
                  {kernelWith("k", {"/top/u0", "/top/u1"}, {"r"})}),
            "k /top/u1/r 2:3\nk /top/u0/r 4:5\n");
}

TEST(LLFile, SeveralMatchesInOneKernelSetOneLocation) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/r\n",
                  {kernelWith("k", {"/top", "/top/u0", "u0", ""}, {"r"}, {"r"})}),
            "k /top/u0/r 2:3\n");
}

TEST(LLFile, EveryKernelThatMatchesGetsTheLocation) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/r\n",
                  {kernelWith("k", {"/top/u0"}, {"r"}), kernelWith("l", {"/top/u1"}, {"r"}),
                   kernelWith("m", {"/top"}, {"s"}), kernelWith("k", {"u0"}, {}, {"r"})}),
            "k /top/u0/r 2:3\nk /top/u0/r 2:3\n");
}

TEST(LLFile, VariablesStandInTheOrderOfTheirFirstLines) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/done\nBit 1 4 5 die0 0 Net=top/u0/acc[1]\n"
                  "Bit 1 6 7 die0 0 Net=top/u0/a/acc\nBit 1 8 9 die0 0 Net=top/u0/acc[0]\n"),
            "k /top/u0/done 2:3\nk /top/u0/acc 8:9 4:5\nk /top/u0/a/acc 6:7\n");
}

TEST(LLFile, ALaterLineForTheSameBitWins) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/acc\nBit 1 4 5 die0 0 Net=top/u0/acc[0]\n"),
            "k /top/u0/acc 4:5\n");
}

TEST(LLFile, AddsToTheFirstKnownVariableOfTheName) {
  KernelRecord kernel = kernelWith("k", {"/top"}, {"acc"});
  kernel.setLogicLocation("/other", 0, 1, 1);
  kernel.setLogicLocation("/top/acc", 1, 8, 9);
  kernel.hardwareVariables.append(HardwareVariable("/top/acc"));
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/acc[2]\n", {kernel}),
            "k /other 1:1\nk /top/acc 0:0 8:9 2:3\nk /top/acc\n");
}

TEST(LLFile, ReadsALastLineWithoutEnd) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/acc"), "k /top/u0/acc 2:3\n");
}

TEST(LLFile, BlankLinesAndLeadingWhiteSpaceVanish) {
  EXPECT_EQ(added("\n \t\n\r\n  Bit 1 2 3 die0 0 Net=top/u0/acc\n\n\n"), "k /top/u0/acc 2:3\n");
}

TEST(LLFile, ALineEndsAtItsFirstZeroByte) {
  EXPECT_EQ(added("Bit 1 2 3 die0 0 Net=top/u0/acc\0_x Revision\n\0Bit 1 2 3 die0 0 "
                  "Net=top/u0/done\nBit 1 2 3 die0 0\0 Net=top/u0/done\n"s),
            "k /top/u0/acc 2:3\n");
}

// A line that sets bit `bit`, filled with `filler` to a length.
std::string lineOfLength(std::size_t length, int bit, char filler) {
  const std::string start = "Bit 1 2 3 die0 0 ";
  const std::string end = " Net=top/u0/acc[" + std::to_string(bit) + "]";
  return start + std::string(length - start.size() - end.size(), filler) + end;
}

TEST(LLFile, ReadsLinesUpToTheBoundAndIgnoresLongerOnes) {
  EXPECT_EQ(added(lineOfLength(2046, 0, 'x') + "\n" + lineOfLength(2048, 1, 'x') + "\n" +
                  lineOfLength(2047, 2, 'x') + "\n" + lineOfLength(5000, 3, ' ') + "\n" +
                  lineOfLength(2047, 4, ' ')),
            "k /top/u0/acc 2:3 0:0 2:3 0:0 2:3\n");
}

TEST(LLFile, IgnoresALastLineOverTheBound) {
  EXPECT_EQ(added("\n" + lineOfLength(2048, 0, 'x')), "");
}

TEST(LLFile, TheBoundCountsBytesAfterAZeroByte) {
  const std::string line = "Bit 1 2 3 die0 0 Net=top/u0/acc"s + '\0';
  EXPECT_EQ(added(line + std::string(2047 - line.size(), 'x') + "\n"), "k /top/u0/acc 2:3\n");
  EXPECT_EQ(added(line + std::string(2048 - line.size(), 'x') + "\n"), "");
}

TEST(LLFile, TheBoundCountsLeadingWhiteSpaceOfTheFirstLineOnly) {
  const std::string line = std::string(3000, ' ') + "Bit 1 2 3 die0 0 Net=top/u0/acc\n";
  EXPECT_EQ(added(line), "");
  EXPECT_EQ(added("\n" + line), "k /top/u0/acc 2:3\n");
}

TEST(LLFile, WorksOnACopyOfTheKernels) {
  const KernelRecord kernel = kernelWith("k", {"/top"}, {"r"});
  const KernelList kernels = listOf({kernel});
  LLFile reader("in", "Bit 1 2 3 die0 0 Net=top/r\n");
  reader.setKernels(kernels);
  EXPECT_TRUE(reader.parse());
  EXPECT_EQ(shown(reader.kernels()), "k /top/r 2:3\n");
  EXPECT_EQ(kernels[0], kernel);
}

TEST(LLFile, TheKernelsGivenLastAreTheOnesReadFor) {
  LLFile reader("in", "Bit 1 2 3 die0 0 Net=top/r\n");
  reader.setKernels(listOf({kernelWith("k", {"/top"}, {"r"}), kernelWith("l", {"/top"}, {"r"})}));
  reader.setKernels(listOf({kernelWith("m", {"/top"}, {"r"})}));
  EXPECT_TRUE(reader.parse());
  EXPECT_EQ(shown(reader.kernels()), "m /top/r 2:3\n");
}

TEST(LLFile, AFileThatCannotBeOpenedFailsAndKeepsTheKernels) {
  for (const char* const path : {"/nonexistent/file.ll", "/"}) {
    const KernelRecord kernel = kernelWith("k", {"/top"}, {"r"});
    const StreamCapture capture;
    LLFile reader(path);
    reader.setKernels(listOf({kernel}));
    EXPECT_FALSE(reader.isValid()) << path;
    EXPECT_FALSE(reader.parse()) << path;
    EXPECT_EQ(reader.kernels(), KernelSequence{kernel}) << path;
    EXPECT_EQ(capture.err(), "") << path;
  }
}

}  // namespace
}  // namespace consolidator
