#include "model/VariableRecord.h"

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"

namespace consolidator {

std::uint32_t VariableRecord::bitWidthOf(std::string_view cType) {
  if (cType.find('*') != std::string_view::npos) return 64;
  if (cType.find("char") != std::string_view::npos) return 8;
  return 32;
}

std::uint64_t VariableRecord::writeBinary(ByteWriter& out) const {
  const std::uint64_t before = out.accepted();
  out.writeText(name, second, cType);
  out.writeU32(static_cast<std::uint32_t>(instanceBits.size()));
  for (const InstanceBits& bits : instanceBits) writeLocations(out, bits);
  return out.acceptedSince(before);
}

bool VariableRecord::readBinary(ByteReader& in) {
  std::uint32_t instances = 0;
  if (!in.readText(name) || !in.readText(second) || !in.readText(cType) ||
      !in.readClampedU32(instances)) {
    return false;
  }
  instanceBits.reserve(in.plausibleCount(instances, sizeof(InstanceBits)));
  for (std::uint32_t i = 0; i < instances; ++i) {
    if (!readLocations(in, instanceBits.emplace_back())) return false;
  }
  valid = true;
  return true;
}

bool VariableRecord::skipBinary(ByteReader& in) {
  std::uint32_t instances = 0;
  if (!in.skipText() || !in.skipText() || !in.skipText() || !in.readClampedU32(instances)) {
    return false;
  }
  for (std::uint32_t i = 0; i < instances; ++i) {
    if (!skipLocations(in)) return false;
  }
  return true;
}

}  // namespace consolidator
