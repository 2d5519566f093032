#include "consolidated/SectionEntry.h"

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"

namespace consolidator {

void SectionEntry::writeBinary(ByteWriter& out) const {
  constexpr std::uint32_t padding = 0;
  out.writeU32(static_cast<std::uint32_t>(kind));
  out.writeU32(padding);
  out.writeU32(static_cast<std::uint32_t>(offset));
  out.writeU32(static_cast<std::uint32_t>(offset >> 32U));
  out.writeU32(size);
  out.writeU32(padding);
}

bool SectionEntry::readBinary(ByteReader& in) {
  std::uint32_t storedKind = 0;
  std::uint32_t offsetLow = 0;
  std::uint32_t offsetHigh = 0;
  std::uint32_t padding = 0;
  if (!in.readU32(storedKind) || !in.readU32(padding) || !in.readU32(offsetLow) ||
      !in.readU32(offsetHigh) || !in.readU32(size) || !in.readU32(padding)) {
    return false;
  }
  kind = static_cast<SectionKind>(storedKind);
  offset = std::uint64_t{offsetHigh} << 32U | offsetLow;
  return true;
}

bool SectionEntry::seek(std::FILE* stream) const {
  return std::fseek(stream, static_cast<std::int32_t>(offset), SEEK_SET) == 0;
}

}  // namespace consolidator
