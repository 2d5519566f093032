// Inputs larger than the block that is read at once, so that words and lines straddle its borders;
// and a plain stream as the measure for any mixture of the operations.

#include "support/AllocationGauge.h"
#include "support/MemoryFile.h"
#include "support/PiecewisePipe.h"
#include "text/InputBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <istream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::size_t blockSize = std::size_t{256} * 1024;

// One operation on the input and what it gave, as a text to compare.
std::string step(InputBuffer& buffer, std::istream& stream, std::size_t operation) {
  switch (operation) {
    case 0:
      return "word " + std::string(buffer.readWord());
    case 1:
      buffer.skipLine();
      return "skipped";
    case 2:
      return buffer.skipWhiteSpace() ? "more" : "end";
    case 3: {
      const auto line = buffer.readLine(7);
      if (!line) return "end";
      if (!line->overBound) return "line " + std::string(line->text);
      buffer.skipLine();
      return "over";
    }
    default: {
      float number = -1;
      stream >> number;
      stream.clear();
      return "number " + std::to_string(number);
    }
  }
}

// The same on a standard stream.
std::string plainStep(std::istream& stream, std::size_t operation) {
  std::string text;
  float number = -1;
  switch (operation) {
    case 0:
      stream >> text;
      text = "word " + text;
      break;
    case 1:
      std::getline(stream, text);
      text = "skipped";
      break;
    case 2:
      text = stream >> std::ws && stream.peek() != EOF ? "more" : "end";
      break;
    case 3:
      if (!std::getline(stream, text)) {
        text = "end";
      } else {
        text = text.size() > 7 ? "over" : "line " + text.substr(0, text.find('\0'));
      }
      break;
    default:
      stream >> number;
      text = "number " + std::to_string(number);
  }
  stream.clear();
  return text;
}

std::string randomText(std::mt19937& random, std::size_t size) {
  constexpr std::string_view characters("  \n\n\t\r\v\f\0ab1290.+-ex#", 22);
  std::string text;
  while (text.size() < size) text += characters[random() % characters.size()];
  return text;
}

// Runs random operations to the end of the input, comparing each with the plain stream.
void compareSteps(InputBuffer& buffer, const std::string& text, std::mt19937& random) {
  std::istream stream(&buffer);
  std::istringstream plain(text);
  while (plain.peek() != EOF) {
    plain.clear();
    const std::size_t operation = random() % 5;
    ASSERT_EQ(step(buffer, stream, operation), plainStep(plain, operation))
        << "operation " << operation << " before " << plain.tellg();
  }
  EXPECT_FALSE(buffer.skipWhiteSpace());
}

TEST(InputBufferBlock, EveryMixtureOfOperationsReadsAsAPlainStream) {
  std::mt19937 random(1);
  for (int round = 0; round < 20'000 && !testing::Test::HasFailure(); ++round) {
    const std::string text = randomText(random, random() % 60);
    SCOPED_TRACE(testing::PrintToString(text));
    InputBuffer buffer{std::string_view(text)};
    compareSteps(buffer, text, random);
  }
}

TEST(InputBufferBlock, EveryMixtureOfOperationsReadsPipesAsAPlainStream) {
  std::mt19937 random(2);
  for (int round = 0; round < 2'000 && !testing::Test::HasFailure(); ++round) {
    const std::string text = randomText(random, random() % 100);
    SCOPED_TRACE(testing::PrintToString(text));
    const PiecewisePipe pipe(pieces(text, 1 + random() % 9));
    InputBuffer buffer(pipe.path().c_str());
    compareSteps(buffer, text, random);
  }
}

TEST(InputBufferBlock, EveryMixtureOfOperationsReadsLargeFilesAsAPlainStream) {
  std::mt19937 random(3);
  const MemoryFile file;
  const std::string text = randomText(random, 3 * blockSize + 1000);
  file.write(text);
  InputBuffer buffer(file.path().c_str());
  compareSteps(buffer, text, random);
}

TEST(InputBufferBlock, WordsMayStraddleABorderAnywhere) {
  const MemoryFile file;
  for (std::size_t before = 0; before <= 6; ++before) {
    file.write(std::string(blockSize - before, ' ') + "straddling next");
    InputBuffer buffer(file.path().c_str());
    EXPECT_EQ(buffer.readWord(), "straddling") << before << " bytes before the border";
    EXPECT_EQ(buffer.readWord(), "next");
    EXPECT_EQ(buffer.readWord(), "");
  }
}

TEST(InputBufferBlock, WordsMayBeLongerThanSeveralBlocks) {
  const MemoryFile file;
  for (const std::size_t size :
       {blockSize - 1, blockSize, blockSize + 1, 2 * blockSize, 5 * blockSize + 3}) {
    const std::string word = std::string(size - 1, 'w') + "!";
    file.write("a " + word + " b");
    InputBuffer buffer(file.path().c_str());
    EXPECT_EQ(buffer.readWord(), "a");
    EXPECT_TRUE(buffer.readWord() == word) << size;
    EXPECT_EQ(buffer.readWord(), "b");
  }
}

TEST(InputBufferBlock, LinesMayStraddleABorderAnywhere) {
  const MemoryFile file;
  for (std::size_t before = 0; before <= 7; ++before) {
    const std::string filler(blockSize - before - 1, 'x');
    file.write(filler + "\n12345\nnext");
    InputBuffer buffer(file.path().c_str());
    EXPECT_TRUE(buffer.readLine(10)->overBound);
    buffer.skipLine();
    EXPECT_EQ(buffer.readLine(5)->text, "12345") << before << " bytes before the border";
    EXPECT_EQ(buffer.readLine(5)->text, "next");
    EXPECT_FALSE(buffer.readLine(5));
  }
}

TEST(InputBufferBlock, LinesMayBeAsLongAsABoundBeyondTheBlock) {
  const MemoryFile file;
  const std::string line(blockSize + 10, 'x');
  file.write(line + "\n" + line + "y\n" + line);
  InputBuffer buffer(file.path().c_str());
  EXPECT_TRUE(buffer.readLine(line.size())->text == line);
  EXPECT_TRUE(buffer.readLine(line.size())->overBound);
  buffer.skipLine();
  EXPECT_TRUE(buffer.readLine(line.size())->text == line);
}

TEST(InputBufferBlock, ALineOverTheBoundNeedNotEnd) {
  InputBuffer buffer("/dev/zero");
  EXPECT_TRUE(buffer.readLine(1000)->overBound);
  EXPECT_TRUE(buffer.readLine(2000)->overBound) << "it is still there";
}

TEST(InputBufferBlock, MemoryDoesNotGrowWithSkippedLinesOrWhiteSpace) {
  const MemoryFile file;
  file.write(std::string(8 * blockSize, 'x') + "\n" + std::string(8 * blockSize, ' ') + "word " +
             std::string(8 * blockSize, 'y') + "\nlast");
  const std::string path = file.path();
  const AllocationGauge gauge;
  InputBuffer buffer(path.c_str());
  EXPECT_TRUE(buffer.readLine(1000)->overBound);
  buffer.skipLine();
  EXPECT_EQ(buffer.readWord(), "word");
  buffer.skipLine();
  EXPECT_EQ(buffer.readWord(), "last");
  EXPECT_EQ(gauge.largest(), blockSize);
}

}  // namespace
}  // namespace consolidator
