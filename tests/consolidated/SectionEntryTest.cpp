#include "bytes/ByteReader.h"
#include "consolidated/SectionEntry.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace consolidator {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kernelRecordsEntry =
    "\x02\x00\x00\x00"
    "\x00\x00\x00\x00"
    "\x08\x07\x06\x05\x04\x03\x02\x01"
    "\x0C\x0B\x0A\x09"
    "\x00\x00\x00\x00"sv;

TEST(SectionEntry, WritesTwentyFourBytesWithZeroPadding) {
  const SectionEntry entry{SectionKind::KernelRecords, 0x0102030405060708U, 0x090A0B0CU};
  EXPECT_EQ(encode(entry), kernelRecordsEntry);
}

TEST(SectionEntry, ReadsWhatItWrites) {
  SectionEntry entry;
  ASSERT_TRUE(decode(kernelRecordsEntry, entry));
  EXPECT_EQ(entry, (SectionEntry{SectionKind::KernelRecords, 0x0102030405060708U, 0x090A0B0CU}));
}

TEST(SectionEntry, IgnoresPaddingAndWritesZerosForIt) {
  std::string bytes(kernelRecordsEntry);
  bytes.replace(4, 4, "\xAA\xBB\xCC\xDD");
  bytes.replace(20, 4, "\xEE\xFF\x11\x22");
  SectionEntry entry;
  ASSERT_TRUE(decode(bytes, entry));
  EXPECT_EQ(encode(entry), kernelRecordsEntry);
}

TEST(SectionEntry, KeepsKindsThatItDoesNotKnow) {
  std::string bytes(kernelRecordsEntry);
  bytes.replace(0, 4, "\xFE\xFF\xFF\xFF");
  SectionEntry entry;
  ASSERT_TRUE(decode(bytes, entry));
  EXPECT_EQ(static_cast<std::uint32_t>(entry.kind), 0xFFFFFFFEU);
  EXPECT_EQ(encode(entry), bytes);
}

TEST(SectionEntry, NumbersTheKindsAsFilesDo) {
  EXPECT_EQ(static_cast<std::uint32_t>(SectionKind::ProjectName), 0U);
  EXPECT_EQ(static_cast<std::uint32_t>(SectionKind::Dwarf), 1U);
  EXPECT_EQ(static_cast<std::uint32_t>(SectionKind::KernelRecords), 2U);
  EXPECT_EQ(static_cast<std::uint32_t>(SectionKind::Json), 3U);
}

TEST(SectionEntry, IsNotReadFromFewerBytes) {
  for (std::size_t size = 0; size < kernelRecordsEntry.size(); ++size) {
    SectionEntry entry;
    EXPECT_FALSE(decode(kernelRecordsEntry.substr(0, size), entry)) << size << " bytes";
  }
}

TEST(SectionEntry, IsReadOneAfterAnother) {
  const MemoryStream stream(std::string(kernelRecordsEntry) + std::string(24, '\0') + "more");
  ByteReader in(stream.get());
  SectionEntry entry;
  ASSERT_TRUE(entry.readBinary(in));
  EXPECT_EQ(entry.kind, SectionKind::KernelRecords);
  ASSERT_TRUE(entry.readBinary(in));
  EXPECT_EQ(entry, SectionEntry());
  EXPECT_EQ(in.remaining(), 4U);
  EXPECT_FALSE(entry.readBinary(in));
}

TEST(SectionEntry, SeeksByTheLowThirtyTwoBitsOfItsOffset) {
  const MemoryStream stream("bytes");
  const auto positionAt = [&](std::uint64_t offset) {
    const SectionEntry entry{SectionKind::Json, offset, 1};
    return entry.seek(stream.get()) ? std::ftell(stream.get()) : -1;
  };
  EXPECT_EQ(positionAt(3), 3);
  EXPECT_EQ(positionAt(0x0102030400000002U), 2);
  EXPECT_EQ(positionAt(0x7FFFFFFFU), 0x7FFFFFFF) << "beyond the end";
  EXPECT_EQ(positionAt(0x80000000U), -1);
  EXPECT_EQ(positionAt(0xFFFFFFFFU), -1);
}

}  // namespace
}  // namespace consolidator
