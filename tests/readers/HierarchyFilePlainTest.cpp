// The reader against a plain stream-based one: on many small files made of all that matters to the
// format, and on files larger than the block that is read at once.

#include "model/Describe.h"
#include "readers/HierarchyFile.h"
#include "support/MemoryFile.h"
#include "support/PiecewisePipe.h"
#include "support/PlainHierarchy.h"
#include "support/Rounds.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t blockSize = std::size_t{256} * 1024;

// All that a reading gives.
struct Reading {
  bool result;
  float version;
  KernelSequence kernels;
  std::string messages;

  friend bool operator==(const Reading&, const Reading&) = default;
};

std::ostream& operator<<(std::ostream& out, const Reading& reading) {
  out << "result " << reading.result << " version " << reading.version << '\n' << reading.messages;
  for (const KernelRecord& kernel : reading.kernels) out << describe(kernel);
  return out;
}

Reading plain(const std::string& text, const std::string& fileName = "in") {
  const PlainHierarchy read = readHierarchyPlainly(text, fileName);
  return {read.result, read.version, read.kernels, read.messages};
}

Reading parsed(HierarchyFile& reader) {
  const StreamCapture capture;
  const bool result = reader.parse();
  return {result, reader.version(), reader.kernels(), capture.err()};
}

Reading parsedText(std::string_view text) {
  HierarchyFile reader("in", text);
  return parsed(reader);
}

Reading parsedFile(const std::string& path) {
  HierarchyFile reader(path.c_str());
  return parsed(reader);
}

constexpr std::array words{
    "version:"sv,
    "version: 1.0"sv,
    "version: 0.5"sv,
    "version: 2"sv,
    "version: 1.0f"sv,
    "version: 1e99"sv,
    "version: -1e99"sv,
    "version: 0x1p3"sv,
    "version: ."sv,
    "version: +1"sv,
    "version: 1e"sv,
    "version: -.5e+0"sv,
    "version: 1e-99"sv,
    "version: 00.10"sv,
    "version: 1-1"sv,
    "version:1.0"sv,
    "1.0"sv,
    "1e99"sv,
    "."sv,
    "type:"sv,
    "type: clc"sv,
    "type: c"sv,
    "type: ip"sv,
    "type: hls"sv,
    "type: rtl"sv,
    "type:clc"sv,
    "Type:"sv,
    "instance"sv,
    "path:"sv,
    "instance path:"sv,
    "instance path: /top/a_1"sv,
    "instance path: /top/a_2"sv,
    "instancepath:"sv,
    "instance path:/top"sv,
    "vadd:"sv,
    "mmult:"sv,
    "vadd"sv,
    ":"sv,
    "x"sv,
    "#"sv,
    "#comment"sv,
    "# type: c\n"sv,
    "#\n"sv,
    "a#b:"sv,
    "\0"sv,
    "a\0b:"sv,
    "\0:"sv,
    "\xFF\x80:"sv,
    "a_word_that_is_longer_than_the_small_texts_that_need_no_memory_of_their_own:"sv};

constexpr std::array separators{" "sv,  " "sv,  "\n"sv,    "\n"sv, "\t"sv, "\r\n"sv,
                                "\v"sv, "\f"sv, "  \n "sv, ""sv,   "\0"sv};

template <typename Choices>
std::string_view pick(std::mt19937& random, const Choices& choices) {
  return choices[random() % choices.size()];
}

// A file of some words, at times cut off somewhere or with one byte replaced.
std::string randomFile(std::mt19937& random) {
  std::string text;
  for (std::size_t count = random() % 14; count > 0; --count) {
    text += pick(random, words);
    text += pick(random, separators);
  }
  if (text.empty()) return text;
  if (random() % 4 == 0) text.resize(random() % text.size());
  if (!text.empty() && random() % 8 == 0) {
    text[random() % text.size()] = static_cast<char>(random());
  }
  return text;
}

TEST(HierarchyFilePlain, AHundredThousandFilesReadAsByAPlainStream) {
  std::mt19937 random(20);
  for (int round = 0; round < rounds(120'000) && !HasFailure(); ++round) {
    const std::string text = randomFile(random);
    EXPECT_EQ(parsedText(text), plain(text)) << testing::PrintToString(text);
  }
}

TEST(HierarchyFilePlain, PipesReadAsByAPlainStreamWhateverTheirPieces) {
  std::mt19937 random(21);
  for (int round = 0; round < rounds(5'000) && !HasFailure(); ++round) {
    const std::string text = randomFile(random);
    const PiecewisePipe pipe(pieces(text, 1 + random() % 11));
    const std::string path = pipe.path();
    EXPECT_EQ(parsedFile(path), plain(text, path)) << testing::PrintToString(text);
  }
}

// Lines of every kind on both sides of the border, after a comment that fills the block up to
// them and moves them by `shift`.
std::string fileAcrossBorder(std::size_t shift) {
  std::string text = "#" + std::string(blockSize - 400 + shift, ' ') + "\n";
  for (int i = 0; i < 8; ++i) {
    const std::string number = std::to_string(i);
    text += "kernel_" + number + ":\r\n  type:\thls # of " + number +
            "\nversion: 0.75\n instance   path: /top/region/instance_" + number + "\n\n";
  }
  return text;
}

// The shifts move each part of the repeated lines across the border.
TEST(HierarchyFilePlain, WordsAndCommentsMayStraddleTheBorderOfABlockAnywhere) {
  const MemoryFile file;
  for (std::size_t shift = 0; shift < 150 && !HasFailure(); ++shift) {
    const std::string text = fileAcrossBorder(shift);
    file.write(text);
    EXPECT_EQ(parsedFile(file.path()), plain(text)) << "shifted by " << shift;
  }
}

TEST(HierarchyFilePlain, WordsCommentsAndWhiteSpaceMayBeLongerThanABlock) {
  const MemoryFile file;
  for (const std::size_t size : {blockSize - 1, blockSize, blockSize + 1, 3 * blockSize}) {
    const std::string text = std::string(size, 'k') + ": type: c #" + std::string(size, 'c') +
                             "\ninstance" + std::string(size, ' ') + "path: /" +
                             std::string(size, 'p') + " version: 0." + std::string(size, '0') +
                             "1 last:";
    file.write(text);
    const Reading expected = plain(text);
    EXPECT_EQ(expected.kernels.size(), 2U);
    EXPECT_TRUE(parsedFile(file.path()) == expected) << size;
    EXPECT_TRUE(parsedText(text) == expected) << size;
  }
}

TEST(HierarchyFilePlain, APipeWhoseWriterIsSlowReadsAsByAPlainStream) {
  const std::string text = fileAcrossBorder(0) + fileAcrossBorder(50);
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  std::thread writer([&] {
    for (std::size_t at = 0; at < text.size(); at += 997) {
      const std::string_view piece = std::string_view(text).substr(at, 997);
      EXPECT_EQ(write(ends[1], piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
    }
    close(ends[1]);
  });
  EXPECT_EQ(parsedFile("/proc/self/fd/" + std::to_string(ends[0])), plain(text));
  writer.join();
  close(ends[0]);
}

}  // namespace
}  // namespace consolidator
