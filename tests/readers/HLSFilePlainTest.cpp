// The reader against a plain stream-based one: on many small files made of all that matters to the
// format, and on files larger than the block that is read at once.

#include "model/Describe.h"
#include "readers/HLSFile.h"
#include "support/MemoryFile.h"
#include "support/PiecewisePipe.h"
#include "support/PlainHls.h"
#include "support/RandomText.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

std::string shown(const std::optional<KernelRecord>& kernel) {
  return kernel ? describe(*kernel) : "refused";
}

std::string plain(const std::string& text, const std::string& fileName) {
  return shown(PlainHlsReader(text, fileName).read());
}

std::string parsed(HLSFile& reader) {
  const bool isAccepted = reader.parse();
  EXPECT_EQ(reader.kernels().size(), isAccepted ? 1U : 0U);
  return shown(isAccepted ? std::optional(reader.kernels().front()) : std::nullopt);
}

std::string parsedText(const std::string& text, const std::string& fileName) {
  HLSFile reader(fileName.c_str(), text);
  return parsed(reader);
}

std::string parsedFile(const std::string& path) {
  HLSFile reader(path.c_str());
  return parsed(reader);
}

constexpr std::array words{
    "Begin"sv,
    "Function"sv,
    "End"sv,
    "RTL"sv,
    "local"sv,
    "reg:"sv,
    "at"sv,
    "f"sv,
    "v"sv,
    "w"sv,
    "x.c:1"sv,
    "x.c:2"sv,
    "y.c:1"sv,
    ":3"sv,
    "x.c:"sv,
    "x.c:-1"sv,
    "x.c:+2"sv,
    "x.c:4294967297"sv,
    "x.c:9223372036854775808"sv,
    "x.c:18446744073709551617"sv,
    "x:1:2"sv,
    ":"sv,
    "::"sv,
    "r[7:4]"sv,
    "r[3]"sv,
    "r]1:2["sv,
    "r:1[2]"sv,
    "[]"sv,
    "[:]"sv,
    "r[-1:0]"sv,
    "#"sv,
    "\0"sv,
    "RTLlocal"sv,
    "localv"sv,
    "BeginFunction"sv,
    "\xFF"sv,
    "a_word_longer_than_the_small_texts_that_need_no_memory_of_their_own:77"sv};

constexpr std::array lines{"Begin Function f"sv,
                           "End Function f"sv,
                           "End Function"sv,
                           "RTL a b one"sv,
                           "RTL a b two three"sv,
                           "RTL a b "sv,
                           "local v"sv,
                           "local w"sv,
                           "local"sv,
                           "at x.c:1"sv,
                           "at x.c:2"sv,
                           "at y.c:3"sv,
                           "reg: r[7:4]"sv,
                           "reg: s"sv,
                           "end r[7:4] x"sv,
                           "end"sv,
                           "# c"sv,
                           ""sv,
                           " RTL a b c"sv,
                           "\tlocal v"sv,
                           "\0hidden"sv};

constexpr std::array gaps{" "sv, " "sv, " "sv, "  "sv, "\t"sv, "\r"sv, "\v"sv, "\f"sv, ""sv};
constexpr std::array lineEnds{"\n"sv, "\n"sv, "\n"sv, "\n"sv, " \n"sv, "\r\n"sv, "\n\n"sv};

std::string randomLine(std::mt19937& random) {
  if (random() % 4 != 0) return std::string(pick(random, lines));
  std::string line;
  for (std::size_t count = random() % 6; count > 0; --count) {
    line += pick(random, words);
    line += pick(random, gaps);
  }
  return line;
}

// Hardly ever a word without ":", which would close a block and so refuse what follows.
std::string_view randomPosition(std::mt19937& random) {
  std::string_view word = pick(random, words);
  while (word.find(':') == std::string_view::npos && random() % 64 != 0) word = pick(random, words);
  return word;
}

// A function with some blocks, as the tools write it.
std::string wellFormedFunction(std::mt19937& random) {
  std::string text = "Begin Function f\nRTL a b " + std::string(pick(random, words)) + "\n";
  for (std::size_t block = random() % 4; block > 0; --block) {
    text += "local " + std::string(pick(random, words)) + "\n";
    for (std::size_t line = random() % 4; line > 0; --line) {
      text += (random() % 4 == 0 ? "reg: " : "at ") + std::string(randomPosition(random)) + "\n";
    }
    text += "last " + std::string(pick(random, words)) + " v\n";
  }
  return text + "End Function f\n";
}

// Half of the files are well-formed except for the words in them, the others are arbitrary lines.
std::string randomFile(std::mt19937& random) {
  std::string text;
  const bool isWellFormed = random() % 2 == 0;
  const std::size_t count = random() % (isWellFormed ? 4 : 16);
  for (std::size_t i = 0; i < count; ++i) {
    text += isWellFormed ? wellFormedFunction(random) : randomLine(random);
    if (random() % 64 == 0) text += std::string(1000 + random() % 50, 'x');
    text += pick(random, lineEnds);
  }
  return random() % 2 == 0 ? mutated(text, random) : text;
}

constexpr std::array fileNames{"k1.abc"sv, "dir/k1.abc"sv, "dir/abcd"sv, "ab"sv,
                               "/"sv,      ""sv,           "a.b/c"sv};

TEST(HLSFilePlain, ManyFilesReadAsByAPlainStream) {
  std::mt19937 random(30);
  int accepted = 0;
  for (int round = 0; round < rounds(100'000) && !HasFailure(); ++round) {
    const std::string text = randomFile(random);
    const std::string fileName(pick(random, fileNames));
    const std::optional<KernelRecord> expected = PlainHlsReader(text, fileName).read();
    HLSFile reader(fileName.c_str(), text);
    const bool isAccepted = reader.parse();
    EXPECT_EQ(isAccepted, expected.has_value()) << testing::PrintToString(text);
    EXPECT_TRUE(reader.kernels() == (expected ? KernelSequence{*expected} : KernelSequence()))
        << testing::PrintToString(text) << "\ngives\n"
        << parsedText(text, fileName) << "\ninstead of\n"
        << shown(expected);
    if (expected) ++accepted;
  }
  EXPECT_GT(accepted, rounds(30'000)) << "the files should not all be refused";
}

// Lines around the bound, whole and over it, everywhere in a file.
TEST(HLSFilePlain, LinesAroundTheBoundReadAsByAPlainStream) {
  std::mt19937 random(31);
  for (int round = 0; round < rounds(3'000) && !HasFailure(); ++round) {
    std::string text = "RTL a b one\n";
    for (std::size_t count = random() % 5; count > 0; --count) text += randomLine(random) + "\n";
    std::string line(pick(random, lines));
    line += std::string(1 + random() % 2, ' ');
    line.resize(1022 + random() % 3, random() % 8 == 0 ? ' ' : 'x');
    text += line + std::string(pick(random, lineEnds));
    if (random() % 2 == 0) text += "local v\nat x.c:5\n";
    EXPECT_EQ(parsedText(text, "k.abc"), plain(text, "k.abc")) << testing::PrintToString(text);
  }
}

// Views into the block must not be used after the next read, which a text in memory cannot show.
TEST(HLSFilePlain, PipesReadAsByAPlainStreamWhateverTheirPieces) {
  std::mt19937 random(32);
  for (int round = 0; round < rounds(3'000) && !HasFailure(); ++round) {
    const std::string text = randomFile(random);
    const PiecewisePipe pipe(pieces(text, 1 + random() % 11));
    EXPECT_EQ(parsedFile(pipe.path()), plain(text, pipe.path())) << testing::PrintToString(text);
  }
}

TEST(HLSFilePlain, FilesLargerThanABlockReadAsByAPlainStream) {
  const MemoryFile file;
  for (std::size_t shift = 0; shift < 250 && !HasFailure(); shift += 41) {
    std::string text = "#" + std::string(shift, 'c') + "\n";
    for (int i = 0; text.size() < 300'000; ++i) {
      const std::string number = std::to_string(i);
      text += "Begin Function f\nRTL a b function_number_" + number + "\nlocal variable_number_" +
              number + "\nat a/rather/long/path.cpp:" + number + "\nreg: register_" + number +
              "[7:0]\nend last_register_" + number + "[31:0] x\nEnd Function f\n";
    }
    file.write(text);
    EXPECT_TRUE(parsedFile(file.path()) == plain(text, file.path())) << "shifted by " << shift;
  }
}

}  // namespace
}  // namespace consolidator
