#include "bytes/ByteWriter.h"
#include "support/FullStream.h"
#include "support/HexBytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

constexpr std::size_t writerBlock = std::size_t{256} * 1024;

TEST(ByteWriter, WritesNumbersLowByteFirst) {
  EXPECT_EQ(written([](ByteWriter& out) {
              out.writeU32(0x04030201U);
              out.writeU32(0xFFFFFFFFU);
              out.writeU32(0);
            }),
            hexBytes("01 02 03 04 FF FF FF FF 00 00 00 00"));
}

TEST(ByteWriter, WritesTextsWithTheirLengthAndWithoutTerminator) {
  EXPECT_EQ(written([](ByteWriter& out) {
              out.writeText("abc");
              out.writeText("");
              out.writeText(std::string_view("\0z", 2));
            }),
            hexBytes("03 00 00 00 61 62 63  00 00 00 00  02 00 00 00 00 7A"));
}

TEST(ByteWriter, WritesBytesAsTheyAre) {
  EXPECT_EQ(written([](ByteWriter& out) {
              out.write("a\n\"");
              out.write({});
              out.write(std::string_view("\0\xFF", 2));
            }),
            hexBytes("61 0A 22 00 FF"));
}

TEST(ByteWriter, WritesDecimalNumbersUnsignedAndUnpadded) {
  EXPECT_EQ(written([](ByteWriter& out) {
              for (const std::uint32_t value : {0U, 7U, 10U, 2147483648U, 4294967295U}) {
                out.writeDecimal(value);
                out.write(",");
              }
            }),
            "0,7,10,2147483648,4294967295,");
}

TEST(ByteWriter, WritesNothingWithoutAnyBytes) {
  const MemoryStream stream;
  ByteWriter out(stream.get());
  EXPECT_TRUE(out.flush());
  EXPECT_EQ(out.accepted(), 0U);
  EXPECT_EQ(stream.bytes(), "");
}

TEST(ByteWriter, KeepsTheOrderOfPiecesOfEverySize) {
  const MemoryStream stream;
  ByteWriter out(stream.get());
  std::string expected;
  char letter = 'a';
  for (const std::size_t size : {std::size_t{1}, writerBlock - 2, std::size_t{1}, std::size_t{1},
                                 writerBlock - 1, std::size_t{2}, writerBlock, writerBlock + 1,
                                 std::size_t{5}, 3 * writerBlock, std::size_t{0}, std::size_t{3}}) {
    const std::string piece(size, letter++);
    out.write(piece);
    expected += piece;
    EXPECT_EQ(out.accepted(), expected.size());
  }
  EXPECT_TRUE(out.flush());
  EXPECT_EQ(out.accepted(), expected.size());
  EXPECT_TRUE(stream.bytes() == expected);
}

TEST(ByteWriter, GoesOnAfterAFlush) {
  const MemoryStream stream;
  ByteWriter out(stream.get());
  out.write("first,");
  EXPECT_TRUE(out.flush());
  EXPECT_EQ(stream.bytes(), "first,");
  out.write("second");
  EXPECT_TRUE(out.flush());
  EXPECT_TRUE(out.flush());
  EXPECT_EQ(stream.bytes(), "first,second");
  EXPECT_EQ(out.accepted(), 12U);
}

TEST(ByteWriter, WritesAtTheStreamsPosition) {
  const MemoryStream stream("0123456789");
  std::fseek(stream.get(), 4, SEEK_SET);
  ByteWriter out(stream.get());
  out.write("ab");
  EXPECT_TRUE(out.flush());
  EXPECT_EQ(stream.bytes(), "0123ab6789");
}

TEST(ByteWriter, CountsWhatAStreamTookThatBecameFull) {
  const FullStream stream(10);
  ByteWriter out(stream.get());
  out.write("0123456");
  EXPECT_TRUE(out.flush());
  out.write("789abc");
  EXPECT_FALSE(out.flush());
  EXPECT_EQ(out.accepted(), 10U);
}

TEST(ByteWriter, CountsWhatAFullStreamTookOfALargePiece) {
  const FullStream stream(writerBlock + 10);
  ByteWriter out(stream.get());
  out.write(std::string(2 * writerBlock, 'x'));
  EXPECT_EQ(out.accepted(), writerBlock + 10);
  EXPECT_FALSE(out.flush());
}

TEST(ByteWriter, DropsEverythingAfterAFailure) {
  const FullStream stream(3);
  ByteWriter out(stream.get());
  out.write("0123");
  EXPECT_FALSE(out.flush());
  out.write("more");
  out.write(std::string(writerBlock, 'x'));
  out.write(std::string(2 * writerBlock, 'x'));
  out.writeU32(1);
  out.writeDecimal(1);
  out.write({});
  EXPECT_FALSE(out.flush());
  EXPECT_EQ(out.accepted(), 3U);
}

TEST(ByteWriter, TakesNothingForANullStream) {
  ByteWriter out(nullptr);
  out.write("abc");
  EXPECT_EQ(out.accepted(), 0U);
  out.write(std::string(2 * writerBlock, 'x'));
  EXPECT_EQ(out.accepted(), 0U);
  EXPECT_FALSE(out.flush());
  EXPECT_EQ(out.accepted(), 0U);
}

}  // namespace
}  // namespace consolidator
