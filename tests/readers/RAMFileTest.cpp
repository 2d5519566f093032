#include "readers/RAMFile.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

// Names of kernels, each with the name of a block RAM.
using Brams = std::vector<std::pair<std::string, std::string>>;

constexpr std::string_view power = "8. Block Ram / URAM Memory Power - Instantiated\n";
constexpr std::string_view inferred = "3. Memory Utilization - Inferred\n";
constexpr std::string_view afterInferred = "4. Memory Performance - Inferred\n";
constexpr std::string_view instantiated = "6. Memory Utilization - Instantiated\n";
constexpr std::string_view afterInstantiated = "7. Memory Utilization - Instantiated\n";
constexpr std::string_view row = "|bram_a|RAMB36E2|\n";

KernelRecord kernelAt(std::string_view name, std::initializer_list<std::string_view> paths) {
  KernelRecord kernel;
  kernel.name = name;
  for (const std::string_view path : paths) kernel.addInstancePath(path);
  return kernel;
}

KernelList oneKernel() {
  KernelList kernels;
  kernels.append(kernelAt("k", {"bram"}));
  return kernels;
}

std::string join(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

Brams bramsIn(std::string_view text, const KernelList& kernels = oneKernel()) {
  Brams brams;
  RAMFile reader("in", text, kernels);
  reader.readBrams([&](const KernelRecord& kernel, std::string_view bram) {
    brams.emplace_back(kernel.name, bram);
  });
  return brams;
}

// What a section of rows says.
Brams bramsInRows(std::string_view rows, const KernelList& kernels = oneKernel()) {
  return bramsIn(join({power, inferred, rows}), kernels);
}

const Brams one{{"k", "bram_a"}};

TEST(RAMFile, ReadsTheExampleOfItsFormat) {
  KernelList kernels;
  kernels.append(kernelAt("vadd", {"/top/vadd_1"}));
  EXPECT_EQ(bramsIn("8. Block Ram / URAM Memory Power - Instantiated\n"
                    "3. Memory Utilization - Inferred\n"
                    "--------------------------------\n"
                    "|/top/vadd_1/buffer_reg|RAMB36E2|\n"
                    "4. Memory Performance - Inferred\n",
                    kernels),
            (Brams{{"vadd", "/top/vadd_1/buffer_reg"}}));
}

TEST(RAMFile, ReadsBothSections) {
  EXPECT_EQ(bramsIn(join({power, inferred, row, afterInferred, row, instantiated, row, row,
                          afterInstantiated, row})),
            (Brams{{"k", "bram_a"}, {"k", "bram_a"}, {"k", "bram_a"}}));
}

TEST(RAMFile, WithoutThePowerTitleNoSectionIsEntered) {
  EXPECT_EQ(bramsIn(join({inferred, row, afterInferred, instantiated, row})), Brams());
}

TEST(RAMFile, TitlesBeforeThePowerTitleDoNotCount) {
  EXPECT_EQ(bramsIn(join({inferred, row, power, row})), Brams());
  EXPECT_EQ(bramsIn(join({inferred, power, row, instantiated, row})), one);
}

TEST(RAMFile, ThePowerTitleIsSeenOnceAndForAll) {
  EXPECT_EQ(bramsIn(join({power, inferred, row, afterInferred, inferred, row, afterInferred})),
            (Brams{{"k", "bram_a"}, {"k", "bram_a"}}));
}

TEST(RAMFile, EitherClosingTitleClosesEitherSection) {
  EXPECT_EQ(bramsIn(join({power, inferred, row, afterInstantiated, row})), one);
  EXPECT_EQ(bramsIn(join({power, instantiated, row, afterInferred, row})), one);
}

TEST(RAMFile, ASectionMayBeEnteredAgain) {
  EXPECT_EQ(bramsIn(join({power, inferred, afterInferred, inferred, row})), one);
  EXPECT_EQ(bramsIn(join({power, instantiated, afterInstantiated, inferred, row})), one);
  EXPECT_EQ(bramsIn(join({power, instantiated, afterInstantiated, instantiated, row})), one);
}

TEST(RAMFile, OtherTitlesInsideASectionAreRowsWithoutFields) {
  EXPECT_EQ(
      bramsIn(join({power, inferred, power, instantiated, inferred, row, afterInferred, row})),
      one);
}

TEST(RAMFile, TheTitleOfTheInstantiatedSectionDoesNotCloseIt) {
  EXPECT_EQ(bramsIn(join({power, instantiated, "7. Memory Performance - Instantiated\n", row})),
            one);
}

TEST(RAMFile, ClosingTitlesOutsideASectionDoNothing) {
  EXPECT_EQ(bramsIn(join({power, afterInferred, afterInstantiated, row, inferred, row})), one);
}

TEST(RAMFile, TitlesMatchWholeLinesOnly) {
  for (const std::string_view title :
       {"3. Memory Utilization - Inferred \n"sv, "3. Memory Utilization - Inferred\t\n"sv,
        "3. Memory Utilization - Inferred\r\n"sv, "3. memory utilization - inferred\n"sv,
        "3. Memory Utilization\n"sv, "x3. Memory Utilization - Inferred\n"sv,
        "3.  Memory Utilization - Inferred\n"sv, "3. Memory Utilization - Instantiated\n"sv}) {
    EXPECT_EQ(bramsIn(join({power, title, row})), Brams()) << title;
  }
  EXPECT_EQ(bramsIn(join({"8. Block Ram / URAM Memory Power - Instantiated \n", inferred, row})),
            Brams());
  EXPECT_EQ(bramsIn(join({power, inferred, "4. Memory Performance - Inferred \n", row})), one);
}

TEST(RAMFile, WhiteSpaceBeforeALineDoesNotCountButForTheFirstLine) {
  EXPECT_EQ(bramsIn(join({power, "\n \t\r\n\v\f ", inferred, "\n  ", row})), one);
  EXPECT_EQ(bramsIn(join({" ", power, inferred, row})), Brams());
  EXPECT_EQ(bramsIn(join({"\n ", power, inferred, row})), one);
}

TEST(RAMFile, ALineOfDashesIsSkipped) {
  EXPECT_EQ(bramsInRows("-----\n-bram_a|RAMB36|\n  -bram|RAMB|\n"), Brams());
  EXPECT_EQ(bramsInRows("+bram_a|RAMB36|\n"), one) << "only the dash makes a rule line";
}

TEST(RAMFile, ARowQualifiesByItsNameAndItsType) {
  EXPECT_EQ(bramsInRows("|bram_a|RAMB36E2|\n"), one);
  EXPECT_EQ(bramsInRows("|bram_a|RAMB18|x|RAMB36|\n"), one);
  EXPECT_EQ(bramsInRows("|bram_a|URAM288|RAMB36|\n"), Brams());
  EXPECT_EQ(bramsInRows("|other|RAMB36|bram|\n"), Brams());
  EXPECT_EQ(bramsInRows("|RAMB|bram|\n"), Brams());
}

TEST(RAMFile, NamesAreNotTrimmed) {
  EXPECT_EQ(bramsInRows("|  a/bram_a |RAMB36|"), (Brams{{"k", "  a/bram_a "}}));
}

TEST(RAMFile, ARowOfFewerThanTwoFieldsIsIgnored) {
  EXPECT_EQ(bramsInRows("+------+------+\n|bram_a|RAMB36\n|bram_a|\nbram_a\n|\n"), Brams());
}

TEST(RAMFile, ARowIsAddedToEveryKernelOnceForEachPathItContains) {
  KernelList kernels;
  kernels.append(kernelAt("a", {"/u1", "/top/u1", "/u2"}));
  kernels.append(kernelAt("b", {"/u2"}));
  kernels.append(kernelAt("c", {""}));
  EXPECT_EQ(bramsInRows("|/top/u1/m|RAMB|\n|/u2/m|RAMB|\n", kernels), (Brams{{"a", "/top/u1/m"},
                                                                             {"a", "/top/u1/m"},
                                                                             {"c", "/top/u1/m"},
                                                                             {"a", "/u2/m"},
                                                                             {"b", "/u2/m"},
                                                                             {"c", "/u2/m"}}));
}

TEST(RAMFile, ALineOfTheBoundIsWhole) {
  const std::string longRow = "|bram" + std::string(2047 - 11, 'x') + "|RAMB|";
  ASSERT_EQ(longRow.size(), 2047U);
  EXPECT_EQ(bramsInRows(longRow + "\n").size(), 1U);
  EXPECT_EQ(bramsInRows(longRow).size(), 1U);
}

TEST(RAMFile, ALineOverTheBoundIsIgnoredAndReadingGoesOn) {
  const std::string longRow = "|bram" + std::string(2048 - 11, 'x') + "|RAMB|";
  EXPECT_EQ(bramsInRows(longRow + "\n" + std::string(row)), one);
  EXPECT_EQ(bramsInRows(std::string(row) + longRow), one);
  EXPECT_EQ(bramsInRows(std::string(3000, '-') + std::string(row) + std::string(row)), one);
  EXPECT_EQ(bramsIn(std::string(5000, 'x') + "\n" + join({power, inferred, row})), one);
}

TEST(RAMFile, WhiteSpaceBeforeALineDoesNotCountForTheBoundButForTheFirstLine) {
  EXPECT_EQ(bramsInRows(std::string(5000, ' ') + std::string(row)), one);
  EXPECT_EQ(bramsIn(std::string(5000, ' ') + join({power, inferred, row})), Brams());
}

TEST(RAMFile, ALineEndsAtItsFirstZeroByteAndTheBoundCountsTheRest) {
  EXPECT_EQ(bramsInRows("|bram_a|RAMB|\0x|\n"sv), one);
  EXPECT_EQ(bramsInRows("|bram_a|\0RAMB|\n"sv), Brams());
  EXPECT_EQ(bramsIn(join({power, "3. Memory Utilization - Inferred\0 x\n"sv, row})), one);
  EXPECT_EQ(bramsInRows("|bram_a|RAMB|\0"s + std::string(2048, 'x') + "\n"), Brams());
}

TEST(RAMFile, ParsingChangesNeitherTheKernelsNorItsOwnRecords) {
  const KernelList kernels = oneKernel();
  const std::string text = join({power, inferred, row, afterInferred, instantiated, row});
  ASSERT_EQ(bramsIn(text, kernels).size(), 2U);
  const StreamCapture capture;
  RAMFile reader("in", text, kernels);
  EXPECT_TRUE(reader.isValid());
  EXPECT_TRUE(reader.parse());
  EXPECT_TRUE(reader.kernels().empty());
  EXPECT_EQ(kernels, oneKernel());
  EXPECT_EQ(capture.out() + capture.err(), "");
}

TEST(RAMFile, ParsingReadsTheWholeReport) {
  const KernelList kernels = oneKernel();
  RAMFile reader("in", row, kernels);
  EXPECT_TRUE(reader.parse());
  reader.readBrams([](const KernelRecord&, std::string_view) { FAIL() << "nothing is left"; });
}

TEST(RAMFile, NoContentMakesParsingFail) {
  const KernelList kernels = oneKernel();
  for (const std::string& text :
       {""s, "\0\xFF|||\n"s, std::string(10'000, '|'), join({power, inferred})}) {
    RAMFile reader("in", text, kernels);
    EXPECT_TRUE(reader.parse());
    EXPECT_TRUE(reader.kernels().empty());
  }
}

TEST(RAMFile, AFileThatIsNotOpenIsRefused) {
  const KernelList kernels = oneKernel();
  RAMFile reader("", kernels);
  EXPECT_FALSE(reader.isValid());
  EXPECT_FALSE(reader.parse());
  EXPECT_TRUE(reader.kernels().empty());
}

}  // namespace
}  // namespace consolidator
