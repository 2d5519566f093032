// Damaged binary forms of a kernel record: what is read from them, and what memory that takes.

#include "model/Describe.h"
#include "model/KernelRecord.h"
#include "model/PlainKernel.h"
#include "model/RandomKernels.h"
#include "support/AllocationGauge.h"
#include "support/Bytes.h"
#include "support/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {
namespace {

// Where a length or count stands.
struct NumberField {
  std::string name;
  std::size_t offset = 0;
};

// A record put together piece by piece, which remembers where its lengths and counts stand.
class RecordBytes {
 public:
  RecordBytes& text(const std::string& name, std::string_view content) {
    number(name + " length", content.size());
    bytes_ += content;
    return *this;
  }

  RecordBytes& number(const std::string& name, std::size_t value) {
    fields_.push_back({name, bytes_.size()});
    return plain(value);
  }

  RecordBytes& plain(std::size_t value) {
    bytes_ += u32(static_cast<std::uint32_t>(value));
    return *this;
  }

  RecordBytes& pair(std::size_t first, std::size_t second) { return plain(first).plain(second); }

  const std::string& bytes() const { return bytes_; }

  const std::vector<NumberField>& fields() const { return fields_; }

 private:
  std::string bytes_;
  std::vector<NumberField> fields_;
};

// Two elements in every list, the last BRAM name as given.
RecordBytes recordWithLastBram(const std::string& bram) {
  RecordBytes record;
  record.text("name", "kernel")
      .number("paths", 2)
      .text("path 0", "top/k0")
      .text("path 1", "top/k1");
  record.plain(4);
  for (const std::string list : {"arguments", "variables"}) {
    record.number(list, 2);
    record.text(list + " 0 name", "a").text(list + " 0 second", "aa").text(list + " 0 type", "int");
    record.number(list + " 0 instances", 2).number(list + " 0 bits 0", 2).pair(1, 2).pair(3, 4);
    record.number(list + " 0 bits 1", 1).pair(5, 6);
    record.text(list + " 1 name", "b").text(list + " 1 second", "").text(list + " 1 type", "char*");
    record.number(list + " 1 instances", 0);
  }
  record.number("hardware", 2).text("rtl 0", "r_0").number("locations 0", 3);
  record.pair(7, 8).pair(0, 0).pair(9, 10);
  record.text("rtl 1", "r_1").number("locations 1", 0);
  record.number("conditions", 2).plain(0).text("condition 0", "a == 1");
  record.plain(2).text("condition 1", "b == 0").plain(12).text("file", "a.c");
  record.number("BRAMs", 2).text("BRAM 0", "ram").text("BRAM 1", bram);
  return record;
}

std::string withNumberAt(std::string bytes, std::size_t offset, std::size_t value) {
  return bytes.replace(offset, 4, u32(static_cast<std::uint32_t>(value)));
}

// The values that lengths and counts of damaged files may well have.
std::vector<std::size_t> damagedValues(std::size_t rest) {
  return {0, 1, 3, rest - 1, rest, rest + 1, 0x7FFFFFFF, 0xFFFFFFFE, 0xFFFFFFFF};
}

// How many bytes skipping leaves, or nothing where it fails.
std::optional<std::uint64_t> leftBySkipping(std::string_view bytes) {
  const MemoryStream stream(bytes);
  ByteReader in(stream.get());
  if (!KernelRecord::skipBinary(in)) return std::nullopt;
  return in.remaining();
}

std::optional<std::uint64_t> leftByReading(std::string_view bytes) {
  const MemoryStream stream(bytes);
  ByteReader in(stream.get());
  KernelRecord kernel;
  if (!kernel.readBinary(in)) return std::nullopt;
  return in.remaining();
}

// What both ways of reading give, as texts to compare. Skipping goes as far as reading does.
void expectReadAsPlainly(std::string_view bytes, const std::string& damage) {
  PlainKernel expected;
  const bool expectedResult = expected.readBinary(bytes);
  KernelRecord kernel;
  const bool result = decode(bytes, kernel);
  EXPECT_EQ(result, expectedResult) << damage;
  EXPECT_EQ(describe(kernel), describe(expected)) << damage;
  EXPECT_EQ(leftBySkipping(bytes), leftByReading(bytes)) << damage;
}

TEST(KernelBinaryDamage, LeavesTheWholeRecordReadable) {
  const RecordBytes record = recordWithLastBram("bram");
  KernelRecord kernel;
  EXPECT_TRUE(decode(record.bytes(), kernel));
  EXPECT_EQ(encode(kernel), record.bytes());
  EXPECT_EQ(record.fields().size(), 38U);
}

TEST(KernelBinaryDamage, FailsWhereverTheRecordIsCut) {
  const std::string bytes = recordWithLastBram("bram").bytes();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    KernelRecord kernel;
    EXPECT_FALSE(decode(bytes.substr(0, size), kernel)) << size;
    expectReadAsPlainly(bytes.substr(0, size), "cut to " + std::to_string(size));
  }
}

TEST(KernelBinaryDamage, ReadsWhatAnyLengthOrCountLeaves) {
  const RecordBytes record = recordWithLastBram("bram");
  for (const NumberField& field : record.fields()) {
    const std::size_t rest = record.bytes().size() - field.offset - 4;
    for (const std::size_t value : damagedValues(rest)) {
      expectReadAsPlainly(withNumberAt(record.bytes(), field.offset, value),
                          field.name + " = " + std::to_string(value));
    }
  }
}

TEST(KernelBinaryDamage, FailsOnALengthOrCountBeyondTheRest) {
  const RecordBytes record = recordWithLastBram("bram");
  for (const NumberField& field : record.fields()) {
    const std::size_t rest = record.bytes().size() - field.offset - 4;
    for (const std::size_t value : {rest + 1, std::size_t{0x7FFFFFFF}, std::size_t{0xFFFFFFFF}}) {
      KernelRecord kernel;
      EXPECT_FALSE(decode(withNumberAt(record.bytes(), field.offset, value), kernel))
          << field.name << " = " << value;
    }
  }
}

TEST(KernelBinaryDamage, ReadsWhatAnyFlippedBitLeaves) {
  const std::string bytes = recordWithLastBram("bram").bytes();
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (unsigned bit = 0; bit < 8; ++bit) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(static_cast<unsigned char>(damaged[i]) ^ (1U << bit));
      expectReadAsPlainly(damaged, "bit " + std::to_string(bit) + " of byte " + std::to_string(i));
    }
  }
}

TEST(KernelBinaryDamage, ReadsWhatRandomDamageLeaves) {
  RandomKernels kernels(20240106);
  for (int i = 0; i < 5'000; ++i) {
    std::string bytes = encode(kernels.next(4));
    for (std::size_t left = 1 + kernels.below(4); left > 0; --left) {
      bytes[kernels.below(bytes.size())] = static_cast<char>(kernels.below(4));
    }
    bytes.resize(kernels.below(4) == 0 ? kernels.below(bytes.size()) : bytes.size());
    expectReadAsPlainly(bytes, "record " + std::to_string(i));
  }
}

// The long last name makes a file of 1 MiB, so that a list or text of the claimed size stands out.
TEST(KernelBinaryDamage, NeverAsksForMoreMemoryThanTheFileHolds) {
  const RecordBytes record = recordWithLastBram(std::string(std::size_t{1} << 20U, 'A'));
  for (const NumberField& field : record.fields()) {
    const std::size_t rest = record.bytes().size() - field.offset - 4;
    for (const std::size_t value : damagedValues(rest)) {
      const MemoryStream stream(withNumberAt(record.bytes(), field.offset, value));
      const AllocationGauge gauge;
      KernelRecord kernel;
      ByteReader in(stream.get());
      kernel.readBinary(in);
      EXPECT_LE(gauge.largest(), record.bytes().size()) << field.name << " = " << value;
      EXPECT_LE(gauge.total(), 4 * record.bytes().size()) << field.name << " = " << value;
    }
  }
}

TEST(KernelBinaryDamage, SkippingTakesABlockOfMemory) {
  const MemoryStream stream(recordWithLastBram(std::string(std::size_t{1} << 20U, 'A')).bytes());
  const AllocationGauge gauge;
  ByteReader in(stream.get());
  EXPECT_TRUE(KernelRecord::skipBinary(in));
  EXPECT_LE(gauge.total(), 300'000U);
}

}  // namespace
}  // namespace consolidator
