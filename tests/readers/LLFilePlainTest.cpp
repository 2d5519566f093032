// The reader against a plain stream-based one: on many small files made of all that matters to the
// format, and on files larger than the block that is read at once.

#include "model/Describe.h"
#include "readers/LLFile.h"
#include "support/MemoryFile.h"
#include "support/PiecewisePipe.h"
#include "support/PlainLogicLocations.h"
#include "support/RandomText.h"
#include "support/Rounds.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t blockSize = std::size_t{256} * 1024;

std::string shown(const KernelSequence& kernels) {
  std::string text;
  for (const KernelRecord& kernel : kernels) text += describe(kernel);
  return text;
}

std::string readBy(LLFile& reader, const KernelList& kernels) {
  reader.setKernels(kernels);
  const bool isRead = reader.parse();
  return (isRead ? "" : "failed ") + shown(reader.kernels());
}

std::string readText(std::string_view text, const KernelList& kernels) {
  LLFile reader("in", text);
  return readBy(reader, kernels);
}

std::string readFile(const std::string& path, const KernelList& kernels) {
  LLFile reader(path.c_str());
  return readBy(reader, kernels);
}

std::string readPlainly(const std::string& text, const KernelList& kernels) {
  return shown(readLogicLocationsPlainly(text, {kernels.begin(), kernels.end()}));
}

constexpr std::array paths{"/top/u0"sv, "/top/u0"sv,     "/top/u1"sv, "/top"sv, "/top/u0/acc"sv,
                           "u0"sv,      "u"sv,           "/"sv,       ""sv,     "acc"sv,
                           "c_r"sv,     "0/acc_reg["sv,  "//"sv,      "op/"sv,  "/top/u0/s/"sv,
                           "a[1]"sv,    "/top/u0/acc "sv};

constexpr std::array registers{"acc"sv,      "acc_reg"sv,  "acc_reg_2"sv, "a"sv,
                               "done"sv,     ""sv,         "b]"sv,        "acc[1]"sv,
                               "acc_reg "sv, "Net=done"sv, "[3"sv,        "\xE9"sv};

constexpr std::array numbers{"0"sv,
                             "7"sv,
                             "12"sv,
                             "1f"sv,
                             "0x1F"sv,
                             "0X00401f80"sv,
                             "0x"sv,
                             "x"sv,
                             "00x1"sv,
                             "0x0x1"sv,
                             "0x-1"sv,
                             "12abc"sv,
                             "-1"sv,
                             "+5"sv,
                             "-0x10"sv,
                             "+-1"sv,
                             "-"sv,
                             "- 1"sv,
                             "1.5"sv,
                             "00012"sv,
                             "4294967295"sv,
                             "4294967296"sv,
                             "-4294967295"sv,
                             "-4294967296"sv,
                             "18446744073709551615"sv,
                             "18446744073709551616"sv,
                             "-18446744073709551615"sv,
                             "-18446744073709551616"sv,
                             "ffffffffffffffff"sv,
                             "10000000000000000"sv,
                             "\0"sv,
                             "5Net=top/u0/acc[4]"sv};

constexpr std::array indices{""sv,
                             ""sv,
                             "[0]"sv,
                             "[5]"sv,
                             "[31]"sv,
                             "[1][2]"sv,
                             "[007]"sv,
                             "[]"sv,
                             "[x]"sv,
                             "[12x]"sv,
                             "[-1]"sv,
                             "[+1]"sv,
                             "[2/3]"sv,
                             "[5"sv,
                             "5]"sv,
                             "]"sv,
                             "[[3]"sv,
                             "[3]]"sv,
                             "[3]/"sv,
                             "[268435456]"sv,
                             "[300]"sv,
                             "[4294967295]"sv,
                             "[4294967301]"sv,
                             "[18446744073709551621]"sv,
                             "/a[1]"sv};

constexpr std::array scopes{
    "top/u0/"sv, "top/u0/"sv,   "top/u0/"sv, "top/u1/s/"sv, "top/u0_x/"sv,
    ""sv,        "/top//u0/"sv, "u0/acc/"sv, "/"sv,         "Net=/top/u0/"sv};

constexpr std::array separators{" "sv,  " "sv,  " "sv,  " "sv,   " "sv, "  "sv, "\t"sv,
                                "\v"sv, "\f"sv, "\r"sv, "\r "sv, ""sv,  "\0"sv, "\x1F"sv};

constexpr std::array lineEnds{"\n"sv,       "\n"sv,  "\n"sv, "\r\n"sv,   "\n\n"sv,
                              "\n \t\n "sv, " \n"sv, ""sv,   "\n\v\f "sv};

constexpr std::array starts{"Bit"sv,
                            "Bit"sv,
                            "Bit"sv,
                            "Bit"sv,
                            "Bit"sv,
                            "Bit"sv,
                            " Bit"sv,
                            ";Bit"sv,
                            "Bits"sv,
                            "bit"sv,
                            "; Revision\nBit"sv,
                            "\0Bit"sv};

bool oneIn(std::mt19937& random, unsigned count) { return random() % count == 0; }

KernelRecord randomKernel(std::mt19937& random) {
  KernelRecord kernel;
  kernel.name = oneIn(random, 2) ? "k" : "l";
  for (std::size_t count = random() % 4; count > 0; --count) {
    kernel.addInstancePath(pick(random, paths));
  }
  for (std::size_t count = random() % 4; count > 0; --count) {
    kernel.addArgument("a" + std::to_string(count), pick(random, registers), "int");
  }
  for (std::size_t count = random() % 4; count > 0; --count) {
    kernel.addVariable("v" + std::to_string(count), pick(random, registers), "int");
  }
  if (oneIn(random, 4)) kernel.setLogicLocation("/top/u0/acc", 3, 8, 9);
  if (oneIn(random, 8)) kernel.hardwareVariables.append(HardwareVariable("/top/u0/acc"));
  return kernel;
}

KernelList randomKernels(std::mt19937& random) {
  KernelList kernels;
  for (std::size_t count = random() % 5; count > 0; --count) kernels.append(randomKernel(random));
  return kernels;
}

std::string randomNet(std::mt19937& random) {
  std::string net = oneIn(random, 16) ? "net=" : "Net=";
  net += pick(random, scopes);
  net += pick(random, registers);
  net += pick(random, indices);
  return net;
}

// A line that is well-formed unless `oddity` strikes, which it does once in so many times.
std::string randomBitLine(std::mt19937& random, unsigned oddity) {
  const auto separator = [&] { return oneIn(random, oddity) ? pick(random, separators) : " "sv; };
  const auto number = [&](std::string_view usual) {
    return oneIn(random, oddity) ? pick(random, numbers) : usual;
  };
  std::string line(oneIn(random, oddity) ? pick(random, starts) : "Bit"sv);
  line += separator();
  line += number("1234");
  line += separator();
  line += number("0x00401f80");
  line += separator();
  line += number(oneIn(random, 2) ? "17" : "4711");
  line += separator();
  if (!oneIn(random, oddity)) line += "die0";
  line += separator();
  line += number("0");
  line += separator();
  if (oneIn(random, 2)) line += "Block=X1Y2 Latch=AQ";
  line += separator();
  line += randomNet(random);
  if (oneIn(random, 4)) line += separator();
  if (oneIn(random, 8)) line += randomNet(random);
  if (oneIn(random, oddity)) line += " Revision";
  return line;
}

// Brings a line to a length near the bound.
void stretch(std::mt19937& random, std::string& line) {
  const std::size_t length = LLFile::lineBound - 2 + random() % 5;
  const std::size_t at = random() % (line.size() + 1);
  const char filler = oneIn(random, 2) ? ' ' : 'x';
  if (line.size() < length) line.insert(at, length - line.size(), filler);
}

std::string randomFile(std::mt19937& random) {
  const unsigned oddity = 4U << (random() % 5);
  std::string text;
  for (std::size_t count = random() % 8; count > 0; --count) {
    std::string line = randomBitLine(random, oddity);
    if (oneIn(random, 64)) stretch(random, line);
    text += line;
    text += pick(random, lineEnds);
  }
  return oneIn(random, 4) ? mutated(text, random) : text;
}

TEST(LLFilePlain, ManyFilesReadAsByAPlainStream) {
  std::mt19937 random(30);
  int adding = 0;
  for (int round = 0; round < rounds(100'000) && !HasFailure(); ++round) {
    const KernelList kernels = randomKernels(random);
    const std::string text = randomFile(random);
    if (holdsLargeIndex(text)) continue;
    const KernelSequence before(kernels.begin(), kernels.end());
    const KernelSequence expected = readLogicLocationsPlainly(text, before);
    LLFile reader("in", text);
    reader.setKernels(kernels);
    EXPECT_TRUE(reader.parse());
    EXPECT_TRUE(reader.kernels() == expected) << testing::PrintToString(text) << "\ngives\n"
                                              << shown(reader.kernels()) << "\ninstead of\n"
                                              << shown(expected);
    if (expected != before) ++adding;
  }
  EXPECT_GT(adding, rounds(15'000)) << "too few of the files say anything";
}

// Texts that are parts of one name.
constexpr std::array partsOfAName{"/"sv, "t"sv,   "to"sv,  "top"sv, "/t"sv, "/to"sv, "/top"sv,
                                  "o"sv, "op"sv,  "p"sv,   "p/"sv,  "/u"sv, "u"sv,   "u0"sv,
                                  "0"sv, "/u0"sv, "0/"sv,  "u0/"sv, ""sv,   "p/u"sv, "op/u0"sv,
                                  "x"sv, "q"sv,   "o/u"sv, "/x"sv,  "s"sv};

// Kernels that share paths and registers in all ways: many have some of each.
KernelList crowd(std::mt19937& random) {
  constexpr std::array sharedRegisters{"r"sv, "s"sv, "t"sv};
  const std::size_t pathsAtMost = 1 + random() % partsOfAName.size();
  KernelList kernels;
  for (std::size_t count = random() % 60; count > 0; --count) {
    KernelRecord kernel;
    kernel.name = "k" + std::to_string(count);
    for (std::size_t i = random() % pathsAtMost; i > 0; --i) {
      kernel.addInstancePath(pick(random, partsOfAName));
    }
    for (std::size_t i = random() % 3; i > 0; --i) {
      kernel.addVariable(std::to_string(i), pick(random, sharedRegisters), "int");
    }
    if (oneIn(random, 16)) kernel.setLogicLocation("/top/u0/r", 2, 8, 9);
    kernels.append(kernel);
  }
  return kernels;
}

// Lines for few nets that alternate, and few bits of each.
std::string linesOfFewNets(std::mt19937& random) {
  constexpr std::array nets{"top/u0/r"sv, "top/u0/s"sv, "top/r"sv, "u0/t"sv, "q/s"sv, "x/x/x/t"sv};
  std::string text;
  for (std::size_t count = random() % 40; count > 0; --count) {
    text += "Bit 1 " + std::to_string(count) + " 3 die0 0 Net=" + std::string(pick(random, nets)) +
            "[" + std::to_string(random() % 4) + "]\n";
  }
  return text;
}

TEST(LLFilePlain, NetsThatManyKernelsShareReadAsByAPlainStream) {
  std::mt19937 random(32);
  for (int round = 0; round < rounds(4'000) && !HasFailure(); ++round) {
    const KernelList kernels = crowd(random);
    const std::string text = linesOfFewNets(random);
    EXPECT_EQ(readText(text, kernels), readPlainly(text, kernels)) << text;
  }
}

TEST(LLFilePlain, PipesReadAsByAPlainStreamWhateverTheirPieces) {
  std::mt19937 random(31);
  for (int round = 0; round < rounds(3'000) && !HasFailure(); ++round) {
    const KernelList kernels = randomKernels(random);
    const std::string text = randomFile(random);
    if (holdsLargeIndex(text)) continue;
    const PiecewisePipe pipe(pieces(text, 1 + random() % 60));
    EXPECT_EQ(readFile(pipe.path(), kernels), readPlainly(text, kernels))
        << testing::PrintToString(text);
  }
}

KernelList accumulator() {
  KernelRecord kernel;
  kernel.name = "k";
  kernel.addInstancePath("/top/u0");
  kernel.addArgument("sum", "acc", "int");
  KernelList kernels;
  kernels.append(kernel);
  return kernels;
}

// The shifts move each part of the repeated lines across the border.
TEST(LLFilePlain, LinesMayStraddleTheBorderOfABlockAnywhere) {
  const KernelList kernels = accumulator();
  const MemoryFile file;
  for (std::size_t shift = 0; shift < 150 && !HasFailure(); shift += 7) {
    std::string text = ";" + std::string(1000, ' ') + "\n";
    for (std::size_t i = 0; text.size() < blockSize - 400 + shift; ++i) {
      text += "Bit 1 2 3 die0 0 Net=top/static/filler[" + std::to_string(i) + "]\n";
    }
    text.resize(blockSize - 400 + shift);
    text += '\n';
    for (int i = 0; i < 8; ++i) {
      const std::string number = std::to_string(i);
      text += "\t Bit 1 0x" + number + " 3\tdie0 0 Block=X1 Net=top/u0/acc[" + number +
              "]\r\n\n; Net=top/u0/acc\n";
    }
    file.write(text);
    const std::string expected = readPlainly(text, kernels);
    ASSERT_NE(expected, shown({kernels.begin(), kernels.end()}));
    EXPECT_EQ(readFile(file.path(), kernels), expected) << "shifted by " << shift;
  }
}

TEST(LLFilePlain, LinesAndWhiteSpaceMayBeLongerThanABlock) {
  const KernelList kernels = accumulator();
  const MemoryFile file;
  const std::string line = "Bit 1 0x2 3 die0 0 Net=top/u0/acc[1]";
  for (const std::size_t size : {blockSize - 1, blockSize, blockSize + 1, 3 * blockSize}) {
    const std::string text = std::string(size, 'x') + line + "\n" + std::string(size, ' ') + line +
                             "\n" + std::string(size, '\n') + line + "2]\n" + line +
                             std::string(size, ' ') + "\n" + line + "3]" + std::string(size, '\0');
    file.write(text);
    const std::string expected = readPlainly(text, kernels);
    ASSERT_NE(expected, shown({kernels.begin(), kernels.end()}));
    EXPECT_EQ(readFile(file.path(), kernels), expected) << size;
    EXPECT_EQ(readText(text, kernels), expected) << size;
  }
}

}  // namespace
}  // namespace consolidator
