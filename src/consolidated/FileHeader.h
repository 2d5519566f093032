#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace consolidator {

/// The first 16 bytes of a consolidated file: magic, signed major and minor version and number of
/// section table entries, 4 bytes each, little-endian. A new file has the values given here.
struct FileHeader {
  static constexpr std::size_t encodedSize = 16;
  static constexpr std::uint32_t expectedMagic = 0xBEEFDAD4U;
  static constexpr std::int32_t supportedMajorVersion = 1;
  static constexpr std::int32_t supportedMinorVersion = 1;

  using Bytes = std::array<char, encodedSize>;

  std::uint32_t magic = expectedMagic;
  std::int32_t majorVersion = supportedMajorVersion;
  std::int32_t minorVersion = supportedMinorVersion;
  std::uint32_t sectionCount = 0;

  bool hasExpectedMagic() const { return magic == expectedMagic; }

  // In memory the header has the bytes of the format: the host is little-endian, too.
  Bytes encode() const { return std::bit_cast<Bytes>(*this); }

  static FileHeader decode(const Bytes& bytes) { return std::bit_cast<FileHeader>(bytes); }

  friend bool operator==(const FileHeader&, const FileHeader&) = default;
};

}  // namespace consolidator
