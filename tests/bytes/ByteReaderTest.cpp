#include "bytes/ByteReader.h"
#include "support/AllocationGauge.h"
#include "support/Bytes.h"
#include "support/HexBytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::size_t blockSize = std::size_t{256} * 1024;

// Bytes of which no two neighbourhoods are alike.
std::string variedBytes(std::size_t size) {
  std::string bytes;
  bytes.reserve(size);
  std::uint32_t state = 1;
  while (bytes.size() < size) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>((state >> 24U) | 1U);
  }
  return bytes;
}

TEST(ByteReader, ReadsNumbersLowByteFirst) {
  const MemoryStream stream(hexBytes("01 02 03 04 FF FF FF FF"));
  ByteReader in(stream.get());
  std::uint32_t value = 0;
  EXPECT_TRUE(in.readU32(value));
  EXPECT_EQ(value, 0x04030201U);
  EXPECT_TRUE(in.readU32(value));
  EXPECT_EQ(value, 0xFFFFFFFFU);
  EXPECT_FALSE(in.readU32(value));
}

TEST(ByteReader, ReadsFromTheStreamsPosition) {
  const MemoryStream stream("skip" + hexBytes("05 00 00 00"));
  std::fseek(stream.get(), 4, SEEK_SET);
  ByteReader in(stream.get());
  EXPECT_EQ(in.remaining(), 4U);
  std::uint32_t value = 0;
  EXPECT_TRUE(in.readU32(value));
  EXPECT_EQ(value, 5U);
}

TEST(ByteReader, HasNoBytesAfterTheEndOfTheStream) {
  const MemoryStream stream("abc");
  std::fseek(stream.get(), 100, SEEK_SET);
  ByteReader in(stream.get());
  EXPECT_EQ(in.remaining(), 0U);
  std::uint32_t value = 0;
  EXPECT_FALSE(in.readU32(value));
}

TEST(ByteReader, HasNoBytesOfANullStream) {
  ByteReader in(nullptr);
  EXPECT_EQ(in.remaining(), 0U);
  char byte = 'x';
  std::uint32_t value = 7;
  std::string text = "kept";
  EXPECT_FALSE(in.readBytes(&byte, 1));
  EXPECT_FALSE(in.readU32(value));
  EXPECT_FALSE(in.readText(text));
  EXPECT_EQ(byte, 'x');
  EXPECT_EQ(value, 7U);
  EXPECT_EQ(text, "kept");
}

TEST(ByteReader, HasNoBytesOfAPipe) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  ASSERT_EQ(write(ends[1], "abcdefgh", 8), 8);
  close(ends[1]);
  std::FILE* stream = fdopen(ends[0], "r");
  ASSERT_NE(stream, nullptr);
  ByteReader in(stream);
  EXPECT_EQ(in.remaining(), 0U);
  std::uint32_t value = 0;
  EXPECT_FALSE(in.readU32(value));
  std::fclose(stream);
}

TEST(ByteReader, CountsTheRemainingBytes) {
  const MemoryStream stream(hexBytes("02 00 00 00") + "ab" + "rest");
  ByteReader in(stream.get());
  EXPECT_EQ(in.remaining(), 10U);
  std::string text;
  EXPECT_TRUE(in.readText(text));
  EXPECT_EQ(in.remaining(), 4U);
  std::array<char, 4> rest{};
  EXPECT_TRUE(in.readBytes(rest.data(), rest.size()));
  EXPECT_EQ(std::string_view(rest.data(), rest.size()), "rest");
  EXPECT_EQ(in.remaining(), 0U);
}

TEST(ByteReader, ReadsNoBytesSuccessfullyAtTheEnd) {
  const MemoryStream stream;
  ByteReader in(stream.get());
  char byte = 'x';
  EXPECT_TRUE(in.readBytes(&byte, 0));
  EXPECT_FALSE(in.readBytes(&byte, 1));
}

TEST(ByteReader, FailsOnANumberCutShort) {
  for (std::size_t size = 0; size < 4; ++size) {
    const MemoryStream stream(std::string(size, '\1'));
    ByteReader in(stream.get());
    std::uint32_t value = 7;
    EXPECT_FALSE(in.readU32(value)) << size;
    EXPECT_FALSE(in.readClampedU32(value)) << size;
    EXPECT_EQ(value, 7U) << size;
  }
}

TEST(ByteReader, FailsForeverAfterAFailure) {
  const MemoryStream stream(hexBytes("09 00 00 00") + "12345678");
  ByteReader in(stream.get());
  std::string text;
  EXPECT_FALSE(in.readText(text));
  EXPECT_EQ(in.remaining(), 0U);
  char byte = 'x';
  std::uint32_t value = 0;
  EXPECT_FALSE(in.readBytes(&byte, 1));
  EXPECT_FALSE(in.readU32(value));
  EXPECT_FALSE(in.readText(text));
}

TEST(ByteReader, ClampsTheLargestLengthOnly) {
  const MemoryStream stream(hexBytes("FF FF FF FF  FE FF FF FF  FD FF FF FF  00 00 00 00"));
  ByteReader in(stream.get());
  for (const std::uint32_t expected : {0xFFFFFFFEU, 0xFFFFFFFEU, 0xFFFFFFFDU, 0U}) {
    std::uint32_t value = 7;
    EXPECT_TRUE(in.readClampedU32(value));
    EXPECT_EQ(value, expected);
  }
}

TEST(ByteReader, ReadsTextsOfTheirLength) {
  const MemoryStream stream(hexBytes("00 00 00 00  03 00 00 00") + "a b" + hexBytes("01 00 00 00") +
                            "\xFF");
  ByteReader in(stream.get());
  for (const char* expected : {"", "a b", "\xFF"}) {
    std::string text = "before";
    EXPECT_TRUE(in.readText(text));
    EXPECT_EQ(text, expected);
  }
  EXPECT_EQ(in.remaining(), 0U);
}

TEST(ByteReader, EndsATextAtItsFirstZeroByteAndConsumesAllOfIt) {
  const MemoryStream stream(
      hexBytes("05 00 00 00  61 62 00 63 64  02 00 00 00  00 78  2A 00 00 00"));
  ByteReader in(stream.get());
  std::string text;
  EXPECT_TRUE(in.readText(text));
  EXPECT_EQ(text, "ab");
  EXPECT_TRUE(in.readText(text));
  EXPECT_EQ(text, "");
  std::uint32_t value = 0;
  EXPECT_TRUE(in.readU32(value));
  EXPECT_EQ(value, 42U);
}

TEST(ByteReader, FailsOnATextLongerThanTheRest) {
  const MemoryStream stream(hexBytes("04 00 00 00") + "abc");
  ByteReader in(stream.get());
  std::string text = "kept";
  EXPECT_FALSE(in.readText(text));
  EXPECT_EQ(text, "kept");
}

TEST(ByteReader, AsksForNoMemoryForATextLongerThanTheRest) {
  for (const char* length : {"00 00 10 00", "FF FF FF 7F", "FE FF FF FF", "FF FF FF FF"}) {
    const MemoryStream stream(hexBytes(length) + "abc");
    AllocationGauge gauge;
    ByteReader in(stream.get());
    std::string text;
    EXPECT_FALSE(in.readText(text)) << length;
    EXPECT_LE(gauge.total(), blockSize) << length;
  }
}

TEST(ByteReader, ReadsATextThatFillsTheRestExactly) {
  for (const std::size_t size :
       {blockSize - 5, blockSize - 4, blockSize - 3, blockSize, blockSize + 1, 3 * blockSize + 7}) {
    const std::string content = variedBytes(size);
    const MemoryStream stream(text(content));
    ByteReader in(stream.get());
    std::string text;
    EXPECT_TRUE(in.readText(text)) << size;
    EXPECT_TRUE(text == content) << size;
    EXPECT_EQ(in.remaining(), 0U) << size;
  }
}

TEST(ByteReader, EndsALongTextAtItsFirstZeroByte) {
  std::string content = variedBytes(2 * blockSize);
  content[blockSize + 3] = '\0';
  const MemoryStream stream(text(content) + hexBytes("2A 00 00 00"));
  ByteReader in(stream.get());
  std::string text;
  EXPECT_TRUE(in.readText(text));
  EXPECT_TRUE(text == content.substr(0, blockSize + 3));
  std::uint32_t value = 0;
  EXPECT_TRUE(in.readU32(value));
  EXPECT_EQ(value, 42U);
}

// Skips so many bytes by reading numbers, which has whole blocks read.
void skipNumbers(ByteReader& in, std::size_t size) {
  std::uint32_t ignored = 0;
  for (; size >= sizeof ignored; size -= sizeof ignored) ASSERT_TRUE(in.readU32(ignored));
  std::string rest(size, '\0');
  ASSERT_TRUE(in.readBytes(rest.data(), rest.size()));
}

// Numbers and texts at every place relative to the borders after the first two blocks.
TEST(ByteReader, ReadsAcrossTheBordersOfItsBlocks) {
  constexpr std::size_t firstSize = 4096;
  for (const std::size_t border : {firstSize, firstSize + blockSize}) {
    for (std::size_t before = border - 20; before <= border + 1; ++before) {
      const MemoryStream stream(variedBytes(before) + hexBytes("01 02 03 04") + text("a text") +
                                hexBytes("05 06 07 08"));
      ByteReader in(stream.get());
      skipNumbers(in, before);
      std::uint32_t value = 0;
      EXPECT_TRUE(in.readU32(value)) << before;
      EXPECT_EQ(value, 0x04030201U) << before;
      std::string text;
      EXPECT_TRUE(in.readText(text)) << before;
      EXPECT_EQ(text, "a text") << before;
      EXPECT_TRUE(in.readU32(value)) << before;
      EXPECT_EQ(value, 0x08070605U) << before;
      EXPECT_EQ(in.remaining(), 0U) << before;
    }
  }
}

// As the sections of a file with very many of them are read.
TEST(ByteReader, ReadsFewBytesOfAStreamThatIsReadNoFurther) {
  const MemoryStream stream(variedBytes(4 * blockSize));
  std::uint32_t value = 0;
  EXPECT_TRUE(ByteReader(stream.get()).readU32(value));
  EXPECT_LE(lseek(fileno(stream.get()), 0, SEEK_CUR), 8192);
}

TEST(ByteReader, ReadsManyTextsAcrossManyBlocks) {
  constexpr std::size_t count = 3000;
  const std::string content = variedBytes(count);
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes += text(content.substr(i));
  const MemoryStream stream(bytes);
  ByteReader in(stream.get());
  for (std::size_t i = 0; i < count; ++i) {
    std::string text;
    ASSERT_TRUE(in.readText(text)) << i;
    ASSERT_EQ(text, content.substr(i)) << i;
  }
  EXPECT_EQ(in.remaining(), 0U);
}

TEST(ByteReader, EndsWhereAFileShrankWhileItWasRead) {
  const MemoryStream stream(text(variedBytes(4 * blockSize)));
  ByteReader in(stream.get());
  ASSERT_EQ(ftruncate(fileno(stream.get()), 2 * blockSize), 0);
  std::string text;
  EXPECT_FALSE(in.readText(text));
  EXPECT_EQ(in.remaining(), 0U);
}

TEST(ByteReader, SkipsBytesOfAnyNumber) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4095},
                                 std::size_t{4096}, blockSize, 3 * blockSize + 7}) {
    const MemoryStream stream(hexBytes("01 00 00 00") + variedBytes(size) +
                              hexBytes("2A 00 00 00"));
    ByteReader in(stream.get());
    std::uint32_t value = 0;
    EXPECT_TRUE(in.readU32(value));
    EXPECT_TRUE(in.skip(size)) << size;
    EXPECT_EQ(in.remaining(), 4U) << size;
    EXPECT_TRUE(in.readU32(value)) << size;
    EXPECT_EQ(value, 42U) << size;
    EXPECT_TRUE(in.skip(0));
    EXPECT_FALSE(in.skip(1));
  }
}

TEST(ByteReader, SkipsTextsAsItReadsThem) {
  const MemoryStream stream(text("") + text(std::string(3, '\0')) + text(variedBytes(blockSize)) +
                            text("last") + hexBytes("05 00 00 00") + "abcd");
  ByteReader in(stream.get());
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(in.skipText());
  std::string text;
  EXPECT_TRUE(in.readText(text));
  EXPECT_EQ(text, "last");
  EXPECT_FALSE(in.skipText());
  EXPECT_EQ(in.remaining(), 0U);
}

TEST(ByteReader, SkipsNothingOfANullStream) {
  ByteReader in(nullptr);
  EXPECT_FALSE(in.hasStream());
  EXPECT_FALSE(in.skip(1));
  EXPECT_FALSE(in.skipText());
}

TEST(ByteReader, SkipsNoBytesThatAFileLostWhileItWasRead) {
  const MemoryStream stream(variedBytes(4 * blockSize));
  ByteReader in(stream.get());
  ASSERT_EQ(ftruncate(fileno(stream.get()), 2 * blockSize), 0);
  EXPECT_FALSE(in.skip(2 * blockSize + 1));
  EXPECT_EQ(in.remaining(), 0U);
}

TEST(ByteReader, FindsNoMoreElementsPlausibleThanTheRestHasBytesFor) {
  const MemoryStream stream(std::string(100, 'x'));
  const ByteReader in(stream.get());
  EXPECT_EQ(in.plausibleCount(0, 8), 0U);
  EXPECT_EQ(in.plausibleCount(12, 8), 12U);
  EXPECT_EQ(in.plausibleCount(13, 8), 12U);
  EXPECT_EQ(in.plausibleCount(0xFFFFFFFFU, 8), 12U);
  EXPECT_EQ(in.plausibleCount(0xFFFFFFFFU, 101), 0U);
}

}  // namespace
}  // namespace consolidator
