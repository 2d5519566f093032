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
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

// The section at the end of a report, and whether the power title was seen.
using End = std::pair<unsigned, bool>;

End endBy(RAMFile& reader) {
  EXPECT_TRUE(reader.parse());
  return {reader.section(), reader.powerSeen()};
}

End endOfText(std::string_view text) {
  const KernelList kernels;
  RAMFile reader("in", text, kernels);
  return endBy(reader);
}

End endOfFile(const std::string& path) {
  const KernelList kernels;
  RAMFile reader(path.c_str(), kernels);
  return endBy(reader);
}

End plainEnd(const std::string& text) {
  const PlainRamReport report(text);
  return {report.section, report.powerSeen};
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
                           "|/top/u1/ram_1|RAMB36E2|1|"sv,
                           "\0"sv,
                           ""sv};
constexpr std::array lineEnds{"\n"sv,  "\n"sv,  "\n"sv,   "\n"sv,       "\n\n"sv,
                              "\n "sv, " \n"sv, "\r\n"sv, "\t\v\f\n"sv, ""sv};

// Most reports begin as those that are read do, so that their titles count.
std::string randomReport(std::mt19937& random) {
  std::string text;
  if (random() % 4 != 0) text += std::string(lines[0]) + "\n";
  for (std::size_t count = random() % 14; count > 0; --count) {
    text += pick(random, lines);
    if (random() % 32 == 0)
      text += std::string(2000 + random() % 60, random() % 2 == 0 ? '|' : '\0');
    text += pick(random, lineEnds);
  }
  return random() % 2 == 0 ? text : mutated(text, random);
}

TEST(RAMFilePlain, ManyReportsReadAsByAPlainStream) {
  std::mt19937 random(60);
  std::set<End> ends;
  for (int round = 0; round < rounds(100'000) && !HasFailure(); ++round) {
    const std::string text = randomReport(random);
    const End expected = plainEnd(text);
    EXPECT_EQ(endOfText(text), expected) << testing::PrintToString(text);
    ends.insert(expected);
  }
  EXPECT_EQ(ends,
            (std::set<End>{{0, false}, {0, true}, {3, true}, {4, true}, {6, true}, {7, true}}))
      << "the reports should end in all states";
}

// Views into the block must not be used after the next read, which a text in memory cannot show.
TEST(RAMFilePlain, PipesReadAsByAPlainStreamWhateverTheirPieces) {
  std::mt19937 random(62);
  for (int round = 0; round < rounds(3'000) && !HasFailure(); ++round) {
    const std::string text = randomReport(random);
    const PiecewisePipe pipe(pieces(text, 1 + random() % 11));
    EXPECT_EQ(endOfFile(pipe.path()), plainEnd(text)) << testing::PrintToString(text);
  }
}

// The shifts move each title across the border.
TEST(RAMFilePlain, TitlesMayStraddleTheBorderOfABlockAnywhere) {
  constexpr std::size_t blockSize = std::size_t{256} * 1024;
  const MemoryFile file;
  for (std::size_t shift = 0; shift < 150 && !HasFailure(); shift += 7) {
    std::string text;
    while (text.size() < blockSize - 200 + shift) text += "|/top/u1/ram_1 | RAMB36E2 | 100 |\n";
    text.resize(blockSize - 200 + shift);
    text += "\n" + std::string(lines[0]) + "\n" + std::string(lines[2]) + "\n" +
            std::string(lines[4]) + "\n" + std::string(lines[5]) + "\n" + std::string(lines[7]);
    file.write(text);
    EXPECT_EQ(plainEnd(text), End(7, true));
    EXPECT_EQ(endOfFile(file.path()), End(7, true)) << "shifted by " << shift;
  }
}

}  // namespace
}  // namespace consolidator
