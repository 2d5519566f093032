#include "model/HardwareVariable.h"

#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"

namespace consolidator {

std::uint64_t HardwareVariable::writeBinary(ByteWriter& out) const {
  const std::uint64_t before = out.accepted();
  out.writeText(rtlName);
  writeLocations(out, logicLocations);
  return out.acceptedSince(before);
}

bool HardwareVariable::readBinary(ByteReader& in) {
  valid = in.readText(rtlName) && readLocations(in, logicLocations);
  return valid;
}

bool HardwareVariable::skipBinary(ByteReader& in) { return in.skipText() && skipLocations(in); }

}  // namespace consolidator
