#include "readers/RAMFile.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::string_view power = "8. Block Ram / URAM Memory Power - Instantiated\n";
constexpr std::string_view inferred = "3. Memory Utilization - Inferred\n";
constexpr std::string_view afterInferred = "4. Memory Performance - Inferred\n";
constexpr std::string_view instantiated = "6. Memory Utilization - Instantiated\n";
constexpr std::string_view afterInstantiated = "7. Memory Utilization - Instantiated\n";
constexpr std::string_view row = "|/top/vadd_1/buffer_reg|RAMB36E2|\n";

KernelList oneKernel() {
  KernelRecord kernel;
  kernel.name = "vadd";
  kernel.addInstancePath("/top/vadd_1");
  KernelList kernels;
  kernels.append(kernel);
  return kernels;
}

std::string join(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) text += part;
  return text;
}

// The section that the end of a report is in or after.
std::uint32_t sectionAtEnd(std::string_view text) {
  const KernelList kernels;
  RAMFile reader("in", text, kernels);
  EXPECT_TRUE(reader.parse());
  return reader.section();
}

std::uint32_t sectionAtEnd(std::initializer_list<std::string_view> parts) {
  return sectionAtEnd(join(parts));
}

bool seesPower(std::string_view text) {
  const KernelList kernels;
  RAMFile reader("in", text, kernels);
  EXPECT_TRUE(reader.parse());
  return reader.powerSeen();
}

TEST(RAMFile, IsBeforeAllSectionsAtFirst) {
  const KernelList kernels = oneKernel();
  const RAMFile reader("in", power, kernels);
  EXPECT_EQ(reader.section(), 0U);
  EXPECT_FALSE(reader.powerSeen());
  EXPECT_EQ(&reader.knownKernels(), &kernels);
}

TEST(RAMFile, GoesThroughTheSectionsOfAReport) {
  EXPECT_EQ(sectionAtEnd({power}), 0U);
  EXPECT_EQ(sectionAtEnd({power, inferred, row}), 3U);
  EXPECT_EQ(sectionAtEnd({power, inferred, row, afterInferred, row}), 4U);
  EXPECT_EQ(sectionAtEnd({power, inferred, row, afterInferred, instantiated, row}), 6U);
  EXPECT_EQ(
      sectionAtEnd({power, inferred, row, afterInferred, instantiated, row, afterInstantiated}),
      7U);
}

TEST(RAMFile, WithoutThePowerTitleNoSectionIsEntered) {
  EXPECT_EQ(sectionAtEnd({inferred, row, afterInferred, instantiated, row}), 0U);
}

TEST(RAMFile, TitlesBeforeThePowerTitleDoNotCount) {
  EXPECT_EQ(sectionAtEnd({inferred, power, row}), 0U);
  EXPECT_EQ(sectionAtEnd({inferred, power, row, instantiated, row}), 6U);
}

TEST(RAMFile, ThePowerTitleIsSeenOnceAndForAll) {
  EXPECT_TRUE(seesPower(join({power, inferred, row, afterInferred})));
  EXPECT_FALSE(seesPower(join({inferred, row, afterInferred})));
}

TEST(RAMFile, EitherClosingTitleClosesEitherSection) {
  EXPECT_EQ(sectionAtEnd({power, inferred, row, afterInstantiated, row}), 4U);
  EXPECT_EQ(sectionAtEnd({power, instantiated, row, afterInferred, row}), 7U);
}

TEST(RAMFile, ASectionMayBeEnteredAgain) {
  EXPECT_EQ(sectionAtEnd({power, inferred, afterInferred, inferred, row}), 3U);
  EXPECT_EQ(sectionAtEnd({power, instantiated, afterInstantiated, inferred, row}), 3U);
  EXPECT_EQ(sectionAtEnd({power, instantiated, afterInstantiated, instantiated, row}), 6U);
}

TEST(RAMFile, OtherTitlesInsideASectionDoNotCount) {
  EXPECT_EQ(sectionAtEnd({power, inferred, power, instantiated}), 3U);
  EXPECT_EQ(sectionAtEnd({power, instantiated, inferred}), 6U);
  EXPECT_EQ(sectionAtEnd({power, instantiated, "7. Memory Performance - Instantiated\n"}), 6U);
}

TEST(RAMFile, ClosingTitlesOutsideASectionDoNothing) {
  EXPECT_EQ(sectionAtEnd({power, afterInferred, afterInstantiated}), 0U);
  EXPECT_EQ(sectionAtEnd({power, inferred, afterInferred, afterInferred}), 4U);
}

TEST(RAMFile, TitlesMatchWholeLinesOnly) {
  for (const std::string_view title :
       {"3. Memory Utilization - Inferred \n"sv, "3. Memory Utilization - Inferred\t\n"sv,
        "3. Memory Utilization - Inferred\r\n"sv, "3. memory utilization - inferred\n"sv,
        "3. Memory Utilization\n"sv, "x3. Memory Utilization - Inferred\n"sv,
        "3.  Memory Utilization - Inferred\n"sv, "3. Memory Utilization - Instantiated\n"sv}) {
    EXPECT_EQ(sectionAtEnd({power, title}), 0U) << title;
  }
  EXPECT_FALSE(seesPower("8. Block Ram / URAM Memory Power - Instantiated \n"));
  EXPECT_EQ(sectionAtEnd({power, inferred, "4. Memory Performance - Inferred \n"}), 3U);
}

TEST(RAMFile, WhiteSpaceBeforeALineCountsForTheFirstLineOnly) {
  EXPECT_EQ(sectionAtEnd({power, "\n \t\r\n\v\f ", inferred, "\n  ", afterInferred}), 4U);
  EXPECT_FALSE(seesPower(" " + std::string(power)));
  EXPECT_TRUE(seesPower("\n " + std::string(power)));
}

TEST(RAMFile, ALineOverTheBoundIsIgnoredAndReadingGoesOn) {
  for (const std::size_t size : {2047U, 2048U, 5000U}) {
    EXPECT_TRUE(seesPower(std::string(size, 'x') + "\n" + std::string(power))) << size;
    EXPECT_FALSE(seesPower(std::string(size, 'x') + std::string(power))) << size;
  }
  EXPECT_EQ(sectionAtEnd({power, std::string(5000, '|')}), 0U);
}

TEST(RAMFile, TheBoundCountsWhiteSpaceBeforeTheFirstLineOnly) {
  EXPECT_EQ(sectionAtEnd({power, std::string(5000, ' '), inferred}), 3U);
  EXPECT_FALSE(seesPower(std::string(5000, ' ') + std::string(power)));
}

TEST(RAMFile, ALineEndsAtItsFirstZeroByteAndTheBoundCountsTheRest) {
  const std::string title = "3. Memory Utilization - Inferred\0"s;
  EXPECT_EQ(sectionAtEnd({power, title, " x\n"}), 3U);
  EXPECT_EQ(sectionAtEnd({power, title, std::string(2047 - title.size(), 'x'), "\n"}), 3U);
  EXPECT_EQ(sectionAtEnd({power, title, std::string(2048 - title.size(), 'x'), "\n"}), 0U);
}

TEST(RAMFile, ParsingChangesNeitherTheKernelsNorItsOwnRecords) {
  const KernelList kernels = oneKernel();
  const std::string text = join({power, inferred, row, afterInferred, instantiated, row});
  const StreamCapture capture;
  RAMFile reader("in", text, kernels);
  EXPECT_TRUE(reader.isValid());
  EXPECT_TRUE(reader.parse());
  EXPECT_TRUE(reader.kernels().empty());
  EXPECT_EQ(kernels, oneKernel());
  EXPECT_EQ(capture.out() + capture.err(), "");
}

TEST(RAMFile, NoContentMakesParsingFail) {
  for (const std::string& text :
       {""s, "\0\xFF|||\n"s, std::string(10'000, '|'), join({power, inferred})}) {
    const KernelList kernels = oneKernel();
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
