// The reader against a plain stream-based one: on many small files made of all that matters to the
// format, and on files larger than the block that is read at once.

#include "model/Describe.h"
#include "readers/AuxiliaryXMLFile.h"
#include "support/MemoryFile.h"
#include "support/PiecewisePipe.h"
#include "support/PlainAuxiliary.h"
#include "support/RandomText.h"
#include "support/Rounds.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

std::string plain(const std::string& text, const std::string& fileName) {
  static const HdlReservedWords reservedWords = [] {
    HdlReservedWords words;
    buildHdlReservedWords(words);
    return words;
  }();
  const std::optional<KernelRecord> kernel = PlainAuxiliaryReader(text, reservedWords).read();
  return kernel ? describe(*kernel) : "Malformed auxiliary file: " + fileName + "\n";
}

std::string parsed(AuxiliaryXMLFile& reader) {
  const StreamCapture capture;
  const bool isAccepted = reader.parse();
  EXPECT_EQ(reader.kernels().size(), isAccepted ? 1U : 0U);
  return isAccepted ? capture.err() + describe(reader.kernels().front()) : capture.err();
}

std::string parsedText(const std::string& text) {
  AuxiliaryXMLFile reader("in", text);
  return parsed(reader);
}

std::string parsedFile(const std::string& path) {
  AuxiliaryXMLFile reader(path.c_str());
  return parsed(reader);
}

constexpr std::array words{"<ak:arg"sv,
                           "<ak:acceleratorMap"sv,
                           "ak:originalName="sv,
                           "ak:originalName=\""sv,
                           "ak:originalName=\"a\""sv,
                           "ak:originalName=\"b\""sv,
                           "ak:originalName=\"begin_r\""sv,
                           "ak:originalName=\"begin\""sv,
                           "ak:originalName=\"my_reg_r\""sv,
                           "ak:originalName=xyz"sv,
                           "ak:originalName"sv,
                           "ak:functionName="sv,
                           "ak:functionName=\"f\""sv,
                           "ak:functionName=\"g_r\"/>"sv,
                           "ak:functionName=\""sv,
                           "ak:busTypeRef="sv,
                           "ak:busTypeRef=\""sv,
                           "ak:busTypeRef=\"acc_fifo\""sv,
                           "ak:busTypeRef=\"\"acc_fifo\""sv,
                           "ak:busTypeRef=\"\"acc_fifo\"\""sv,
                           "ak:busTypeRef=\"\"acc_fifo\"\"\""sv,
                           "ak:busTypeRef=\"register\""sv,
                           "ak:size=\"4\""sv,
                           "/>"sv,
                           "x"sv,
                           "\0"sv,
                           "\xFF\x80"sv};
constexpr std::array starts{"<ak:arg"sv,  "<ak:arg"sv, "  <ak:arg"sv, "<ak:acceleratorMap"sv,
                            "<ak:args"sv, "<x"sv,      ""sv};
constexpr std::array gaps{" "sv, " "sv, " "sv, "  "sv, "\t"sv, "\r"sv, "\v"sv, "\f"sv, ""sv};

std::string randomLine(std::mt19937& random) {
  std::string line(pick(random, starts));
  for (std::size_t count = random() % 5; count > 0; --count) {
    line += pick(random, gaps);
    std::string_view word = pick(random, words);
    // Words without a value refuse the whole file, so they must not be everywhere.
    while (word.ends_with('=') && random() % 8 != 0) word = pick(random, words);
    line += word;
  }
  return line;
}

std::string randomFile(std::mt19937& random) {
  std::string text;
  for (std::size_t count = random() % 8; count > 0; --count) {
    text += randomLine(random);
    text += random() % 8 == 0 ? "\r\n" : "\n";
  }
  return mutated(text, random);
}

TEST(AuxiliaryXMLFilePlain, ManyFilesReadAsByAPlainStream) {
  std::mt19937 random(40);
  int accepted = 0;
  for (int round = 0; round < rounds(120'000) && !HasFailure(); ++round) {
    const std::string text = randomFile(random);
    const std::string expected = plain(text, "in");
    EXPECT_EQ(parsedText(text), expected) << testing::PrintToString(text);
    if (!expected.starts_with("Malformed")) ++accepted;
  }
  EXPECT_GT(accepted, rounds(60'000)) << "the files should not all be refused";
}

TEST(AuxiliaryXMLFilePlain, LinesAroundTheBoundReadAsByAPlainStream) {
  std::mt19937 random(41);
  for (int round = 0; round < rounds(3'000) && !HasFailure(); ++round) {
    std::string text = randomLine(random) + " ";
    text.resize(1022 + random() % 3, random() % 2 == 0 ? ' ' : 'x');
    if (random() % 2 == 0) text += "\n" + randomLine(random);
    EXPECT_EQ(parsedText(text), plain(text, "in")) << testing::PrintToString(text);
  }
}

// Views into the block must not be used after the next read, which a text in memory cannot show.
TEST(AuxiliaryXMLFilePlain, PipesReadAsByAPlainStreamWhateverTheirPieces) {
  std::mt19937 random(42);
  for (int round = 0; round < rounds(5'000) && !HasFailure(); ++round) {
    const std::string text = randomFile(random);
    const PiecewisePipe pipe(pieces(text, 1 + random() % 11));
    EXPECT_EQ(parsedFile(pipe.path()), plain(text, pipe.path())) << testing::PrintToString(text);
  }
}

TEST(AuxiliaryXMLFilePlain, FilesLargerThanABlockReadAsByAPlainStream) {
  const MemoryFile file;
  for (std::size_t shift = 0; shift < 100 && !HasFailure(); shift += 3) {
    std::string text(shift, ' ');
    for (int i = 0; text.size() < 300'000; ++i) {
      text += "<ak:arg ak:originalName=\"argument_number_" + std::to_string(i % 500) +
              "\" ak:busTypeRef=\"\"acc_fifo\"\" ak:size=\"4\" />\n";
    }
    text += "<ak:acceleratorMap ak:functionName=\"a_rather_long_name_of_a_function\" />\n";
    file.write(text);
    EXPECT_TRUE(parsedFile(file.path()) == plain(text, file.path())) << "shifted by " << shift;
  }
}

}  // namespace
}  // namespace consolidator
