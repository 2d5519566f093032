#include "consolidated/FileHeader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

FileHeader::Bytes bytesOf(std::string_view text) {
  FileHeader::Bytes bytes{};
  EXPECT_EQ(text.size(), bytes.size());
  std::copy_n(text.begin(), std::min(text.size(), bytes.size()), bytes.begin());
  return bytes;
}

TEST(FileHeader, StartsAsVersionOnePointOneWithoutSections) {
  const FileHeader::Bytes bytes = FileHeader().encode();
  EXPECT_EQ(std::string_view(bytes.data(), bytes.size()),
            "\xD4\xDA\xEF\xBE\1\0\0\0\1\0\0\0\0\0\0\0"sv);
}

TEST(FileHeader, WritesEachFieldLittleEndian) {
  const FileHeader header{0x04030201U, 0x08070605, 0x0C0B0A09, 0x100F0E0DU};
  const FileHeader::Bytes bytes = header.encode();
  EXPECT_EQ(std::string_view(bytes.data(), bytes.size()),
            "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10"sv);
}

TEST(FileHeader, ReadsEachFieldLittleEndian) {
  const FileHeader header = FileHeader::decode(
      bytesOf("\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10"sv));
  EXPECT_EQ(header.magic, 0x04030201U);
  EXPECT_EQ(header.majorVersion, 0x08070605);
  EXPECT_EQ(header.minorVersion, 0x0C0B0A09);
  EXPECT_EQ(header.sectionCount, 0x100F0E0DU);
}

TEST(FileHeader, VersionsAreSignedAndTheSectionCountIsNot) {
  const FileHeader header = FileHeader::decode(
      bytesOf("\xD4\xDA\xEF\xBE\xFF\xFF\xFF\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv));
  EXPECT_EQ(header.majorVersion, -1);
  EXPECT_EQ(header.minorVersion, -2);
  EXPECT_EQ(header.sectionCount, 0xFFFFFFFFU);
}

TEST(FileHeader, MagicDiffersByAnyBit) {
  EXPECT_TRUE(FileHeader().hasExpectedMagic());
  for (unsigned bit = 0; bit < 32; ++bit) {
    FileHeader header;
    header.magic ^= 1U << bit;
    EXPECT_FALSE(header.hasExpectedMagic()) << "bit " << bit;
  }
}

}  // namespace
}  // namespace consolidator
