#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace consolidator {

class ByteReader;
class ByteWriter;

/// What a section holds. Files may hold other numbers, which end the reading of the sections.
enum class SectionKind : std::uint32_t {
  ProjectName = 0,    ///< the name, without terminator
  Dwarf = 1,          ///< the DWARF file, byte for byte
  KernelRecords = 2,  ///< a u32 count, then that many kernel records
  Json = 3,           ///< the JSON document of all kernels and a zero byte
};

/// One entry of the section table, 24 bytes: kind (u32), 4 bytes of padding, offset from the start
/// of the file (u64), size in bytes (u32), 4 bytes of padding. Padding is ignored, and written as
/// zeros.
struct SectionEntry {
  static constexpr std::size_t encodedSize = 24;

  /// Greatest size; a greater one in a file stands for it.
  static constexpr std::uint32_t largestSize = 0xFFFFFFFEU;

  SectionKind kind = SectionKind::ProjectName;
  std::uint64_t offset = 0;
  std::uint32_t size = 0;

  void writeBinary(ByteWriter& out) const;

  /// Returns false when fewer than 24 bytes are left.
  bool readBinary(ByteReader& in);

  /// Moves the stream of the file to the start of the section, which may be beyond its end. Offsets
  /// are cut to signed 32 bits; returns false for a negative one.
  bool seek(std::FILE* stream) const;

  friend bool operator==(const SectionEntry&, const SectionEntry&) = default;
};

}  // namespace consolidator
