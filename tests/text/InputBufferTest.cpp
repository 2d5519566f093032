#include "support/InterruptedPipe.h"
#include "support/PiecewisePipe.h"
#include "support/TemporaryFolder.h"
#include "text/InputBuffer.h"

#include <gtest/gtest.h>

#include <istream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

// A line in a form that shows where it differs.
std::string shown(const std::optional<BoundedLine>& line) {
  if (!line) return "end of input";
  return line->overBound ? "over the bound" : "line " + std::string(line->text);
}

std::vector<std::string> wordsOf(InputBuffer& buffer) {
  std::vector<std::string> words;
  for (;;) {
    const std::string_view word = buffer.readWord();
    if (word.empty()) return words;
    words.emplace_back(word);
  }
}

std::vector<std::string> linesOf(InputBuffer& buffer, std::size_t bound) {
  std::vector<std::string> lines;
  while (const auto line = buffer.readLine(bound)) {
    lines.push_back(shown(line));
    if (line->overBound) buffer.skipLine();
  }
  return lines;
}

using Texts = std::vector<std::string>;

TEST(InputBuffer, SeparatesWordsAtEveryWhiteSpaceOfTheCLocale) {
  InputBuffer buffer(" a\tb\nc\vd\fe\rf  \t\r\n g"sv);
  EXPECT_EQ(wordsOf(buffer), (Texts{"a", "b", "c", "d", "e", "f", "g"}));
}

TEST(InputBuffer, TakesAllOtherBytesIntoWordsZerosIncluded) {
  std::string word;
  for (int c = 0; c < 256; ++c) {
    if ((c < '\t' || c > '\r') && c != ' ') word += static_cast<char>(c);
  }
  const std::string text = " " + word + " next";
  InputBuffer buffer(text);
  EXPECT_EQ(wordsOf(buffer), (Texts{word, "next"}));
}

TEST(InputBuffer, AWordAtTheEndIsEmpty) {
  InputBuffer buffer(" \n "sv);
  EXPECT_EQ(buffer.readWord(), "");
  EXPECT_EQ(buffer.readWord(), "");
  EXPECT_FALSE(buffer.skipWhiteSpace());
}

TEST(InputBuffer, SkippingWhiteSpaceStopsBeforeTheWord) {
  InputBuffer buffer(" \t\n word"sv);
  EXPECT_TRUE(buffer.skipWhiteSpace());
  EXPECT_TRUE(buffer.skipWhiteSpace());
  EXPECT_EQ(buffer.readWord(), "word");
  EXPECT_FALSE(buffer.skipWhiteSpace());
}

TEST(InputBuffer, ReadsLinesWithoutTheirEnds) {
  InputBuffer buffer("one\n\n three \r\nlast"sv);
  EXPECT_EQ(linesOf(buffer, 100), (Texts{"line one", "line ", "line  three \r", "line last"}));
}

TEST(InputBuffer, ALineEndAtTheEndBeginsNoFurtherLine) {
  InputBuffer buffer("one\n"sv);
  EXPECT_EQ(linesOf(buffer, 100), Texts{"line one"});
  InputBuffer empty(""sv);
  EXPECT_EQ(linesOf(empty, 100), Texts());
}

TEST(InputBuffer, ALineOfExactlyTheBoundIsWholeAlsoAsTheLastOne) {
  InputBuffer buffer("12345\n123456\n12345"sv);
  EXPECT_EQ(linesOf(buffer, 5), (Texts{"line 12345", "over the bound", "line 12345"}));
}

TEST(InputBuffer, ALastLineOverTheBoundIsOverTheBoundWithoutALineEnd) {
  InputBuffer buffer("12\n123456"sv);
  EXPECT_EQ(linesOf(buffer, 5), (Texts{"line 12", "over the bound"}));
}

TEST(InputBuffer, ABoundOfZeroTakesEmptyLinesOnly) {
  InputBuffer buffer("\na\n\n"sv);
  EXPECT_EQ(linesOf(buffer, 0), (Texts{"line ", "over the bound", "line "}));
}

TEST(InputBuffer, ALineEndsAtItsFirstZeroByteAndItsRestIsDropped) {
  InputBuffer buffer("ab\0cd\0ef\n\0\nnext"sv);
  EXPECT_EQ(linesOf(buffer, 100), (Texts{"line ab", "line ", "line next"}));
}

TEST(InputBuffer, TheBoundCountsZeroBytesAndWhatFollowsThem) {
  InputBuffer buffer("a\0bcd\na\0bcde\nab"sv);
  EXPECT_EQ(linesOf(buffer, 5), (Texts{"line a", "over the bound", "line ab"}));
}

TEST(InputBuffer, SkipsTheRestOfALineWithItsEnd) {
  InputBuffer buffer("first rest of\0it\nsecond\n"sv);
  EXPECT_EQ(buffer.readWord(), "first");
  buffer.skipLine();
  EXPECT_EQ(buffer.readWord(), "second");
  buffer.skipLine();
  buffer.skipLine();
  EXPECT_EQ(buffer.readWord(), "");
}

TEST(InputBuffer, MixesWithAStandardStream) {
  InputBuffer buffer("word 1.5 -7x rest\nline\n"sv);
  std::istream stream(&buffer);
  float number = 0;
  int integer = 0;
  char letter = 0;
  EXPECT_EQ(buffer.readWord(), "word");
  EXPECT_TRUE(stream >> number >> integer);
  EXPECT_EQ(number, 1.5F);
  EXPECT_EQ(integer, -7);
  EXPECT_TRUE(stream.get(letter));
  EXPECT_EQ(letter, 'x');
  EXPECT_EQ(shown(buffer.readLine(10)), "line  rest");
  std::string word;
  EXPECT_TRUE(stream >> word);
  EXPECT_EQ(word, "line");
}

TEST(InputBuffer, AStreamReadsAllBytesUnchanged) {
  std::string bytes;
  for (int i = 0; i < 70'000; ++i) bytes += static_cast<char>(i * 7);
  const TemporaryFolder folder;
  InputBuffer buffer(folder.write("file", bytes).c_str());
  std::istream stream(&buffer);
  EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(stream), {}) == bytes);
  EXPECT_EQ(stream.peek(), std::char_traits<char>::eof());
}

TEST(InputBuffer, AFileThatCannotBeOpenedHasNoBytes) {
  const TemporaryFolder folder;
  for (const std::string& path : {folder.path("missing"), folder.path(""), std::string()}) {
    InputBuffer buffer(path.c_str());
    EXPECT_FALSE(buffer.isOpen()) << path;
    EXPECT_FALSE(buffer.skipWhiteSpace());
    EXPECT_EQ(shown(buffer.readLine(10)), "end of input");
    std::istream stream(&buffer);
    EXPECT_EQ(stream.get(), std::char_traits<char>::eof());
  }
}

TEST(InputBuffer, ReadsOnAfterASignal) {
  const InterruptedPipe pipe("all of it");
  InputBuffer buffer(pipe.path().c_str());
  EXPECT_EQ(wordsOf(buffer), (Texts{"all", "of", "it"}));
}

TEST(InputBuffer, ReadsAPipeWhateverPiecesItComesIn) {
  const std::string text = "word  # comment\n12345\n123456\nlast";
  for (std::size_t size = 1; size <= text.size(); ++size) {
    const PiecewisePipe pipe(pieces(text, size));
    InputBuffer buffer(pipe.path().c_str());
    ASSERT_TRUE(buffer.isOpen());
    EXPECT_EQ(buffer.readWord(), "word");
    EXPECT_TRUE(buffer.skipWhiteSpace());
    buffer.skipLine();
    EXPECT_EQ(linesOf(buffer, 5), (Texts{"line 12345", "over the bound", "line last"}))
        << "pieces of " << size;
  }
}

// The memory of this process as a file: it opens, but there is nothing to read at its start.
TEST(InputBuffer, AReadErrorEndsTheInput) {
  InputBuffer buffer("/proc/self/mem");
  ASSERT_TRUE(buffer.isOpen());
  EXPECT_EQ(buffer.readWord(), "");
  EXPECT_EQ(shown(buffer.readLine(10)), "end of input");
}

}  // namespace
}  // namespace consolidator
