// The reader against a plain stream-based one: on many small reports made of all that matters to
// the format, and on reports larger than the block that is read at once.

#include "readers/RAMFile.h"
#include "support/MemoryFile.h"
#include "support/PiecewisePipe.h"
#include "support/PlainRamReport.h"
#include "support/RandomText.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

using Additions = PlainRamReportReader::Additions;

KernelList knownKernels() {
  KernelList kernels;
  kernels.append(KernelRecord()).name = "a";
  kernels.append(KernelRecord()).name = "b";
  kernels.append(KernelRecord()).name = "c";
  kernels.edit([](std::vector<KernelRecord>& records) {
    for (const std::string_view path : {"/u1", "/top/u1", "/u2"}) records[0].addInstancePath(path);
    records[1].addInstancePath("u1/ram_");
    records[1].addInstancePath("a");
  });
  return kernels;
}

Additions parsed(RAMFile& reader) {
  Additions additions;
  reader.readBrams([&](const KernelRecord& kernel, std::string_view bram) {
    additions.emplace_back(kernel.name, bram);
  });
  return additions;
}

Additions parsedText(const std::string& text, const KernelList& kernels) {
  RAMFile reader("in", text, kernels);
  return parsed(reader);
}

Additions parsedFile(const std::string& path, const KernelList& kernels) {
  RAMFile reader(path.c_str(), kernels);
  return parsed(reader);
}

Additions plain(const std::string& text, const KernelList& kernels) {
  return PlainRamReportReader(text, kernels).read();
}

constexpr std::array lines{"8. Block Ram / URAM Memory Power - Instantiated"sv,
                           "8. Block Ram / URAM Memory Power - Instantiated"sv,
                           "3. Memory Utilization - Inferred"sv,
                           "3. Memory Utilization - Inferred"sv,
                           "4. Memory Performance - Inferred"sv,
                           "6. Memory Utilization - Instantiated"sv,
                           "6. Memory Utilization - Instantiated"sv,
                           "7. Memory Utilization - Instantiated"sv,
                           "7. Memory Performance - Instantiated"sv,
                           "------------"sv,
                           "+-----+----+"sv,
                           "|/top/u1/ram_1|RAMB36E2|1|"sv,
                           "|/top/u1/ram_1|RAMB36E2|1|"sv,
                           "| /top/u2/m | RAMB18 |"sv,
                           "|/u1/u2|URAM|"sv,
                           "x/u2|RAMB|"sv,
                           ""sv};
constexpr std::array pieceTexts{"|"sv,    "|"sv, "|"sv,    "/u1"sv, "/top"sv, "/u2"sv,
                                "RAMB"sv, "a"sv, "ram_"sv, "-"sv,   " "sv,    "\0"sv};
constexpr std::array lineEnds{"\n"sv,  "\n"sv,  "\n"sv,   "\n"sv,       "\n\n"sv,
                              "\n "sv, " \n"sv, "\r\n"sv, "\t\v\f\n"sv, ""sv};

std::string randomLine(std::mt19937& random) {
  if (random() % 4 != 0) return std::string(pick(random, lines));
  std::string line;
  for (std::size_t count = random() % 9; count > 0; --count) line += pick(random, pieceTexts);
  return line;
}

// Most reports begin as those that are read do, so that their rows count.
std::string randomReport(std::mt19937& random) {
  std::string text;
  if (random() % 4 != 0) text += std::string(lines[0]) + "\n" + std::string(lines[2]) + "\n";
  for (std::size_t count = random() % 14; count > 0; --count) {
    text += randomLine(random);
    if (random() % 32 == 0)
      text += std::string(2020 + random() % 40, random() % 2 == 0 ? '|' : ' ');
    text += pick(random, lineEnds);
  }
  return mutated(text, random);
}

TEST(RAMFilePlain, ManyReportsReadAsByAPlainStream) {
  const KernelList kernels = knownKernels();
  std::mt19937 random(60);
  int withAdditions = 0;
  for (int round = 0; round < rounds(100'000) && !HasFailure(); ++round) {
    const std::string text = randomReport(random);
    const Additions expected = plain(text, kernels);
    EXPECT_EQ(parsedText(text, kernels), expected) << testing::PrintToString(text);
    if (!expected.empty()) ++withAdditions;
  }
  EXPECT_GT(withAdditions, rounds(25'000)) << "the reports should not all be without block RAMs";
}

TEST(RAMFilePlain, LinesAroundTheBoundReadAsByAPlainStream) {
  const KernelList kernels = knownKernels();
  std::mt19937 random(61);
  for (int round = 0; round < rounds(3'000) && !HasFailure(); ++round) {
    std::string text = std::string(lines[0]) + "\n" + std::string(lines[2]) + "\n";
    std::string line(random() % 3, ' ');
    line += "|/u1" + std::string(2035 + random() % 6, 'x') + "|RAMB|";
    if (random() % 4 == 0) line[random() % line.size()] = '\0';
    text += line + std::string(pick(random, lineEnds)) + randomLine(random);
    EXPECT_EQ(parsedText(text, kernels), plain(text, kernels)) << testing::PrintToString(text);
  }
}

// Views into the block must not be used after the next read, which a text in memory cannot show.
TEST(RAMFilePlain, PipesReadAsByAPlainStreamWhateverTheirPieces) {
  const KernelList kernels = knownKernels();
  std::mt19937 random(62);
  for (int round = 0; round < rounds(3'000) && !HasFailure(); ++round) {
    const std::string text = randomReport(random);
    const PiecewisePipe pipe(pieces(text, 1 + random() % 11));
    EXPECT_EQ(parsedFile(pipe.path(), kernels), plain(text, kernels))
        << testing::PrintToString(text);
  }
}

TEST(RAMFilePlain, ReportsLargerThanABlockReadAsByAPlainStream) {
  const KernelList kernels = knownKernels();
  const MemoryFile file;
  for (std::size_t shift = 0; shift < 60 && !HasFailure(); shift += 11) {
    std::string text = "# " + std::string(shift, 'c') + "\n" + std::string(lines[0]) + "\n" +
                       std::string(lines[2]) + "\n";
    for (int i = 0; text.size() < 300'000; ++i) {
      text += "  |design/top/u1/ram_" + std::to_string(i) + " | RAMB36E2 | 100 |\n";
      if (i % 100 == 0) text += std::string(lines[4]) + "\n\n" + std::string(lines[5]) + "\n";
    }
    file.write(text);
    EXPECT_TRUE(parsedFile(file.path(), kernels) == plain(text, kernels)) << "shifted by " << shift;
  }
}

}  // namespace
}  // namespace consolidator
