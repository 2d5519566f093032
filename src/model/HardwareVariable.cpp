#include "model/HardwareVariable.h"

#include "model/ByteReader.h"
#include "model/ByteWriter.h"

namespace consolidator {

void HardwareVariable::writeBinary(ByteWriter& out) const {
  out.writeText(rtlName);
  writeLocations(out, logicLocations);
}

bool HardwareVariable::readBinary(ByteReader& in) {
  valid = in.readText(rtlName) && readLocations(in, logicLocations);
  return valid;
}

bool HardwareVariable::skipBinary(ByteReader& in) { return in.skipText() && skipLocations(in); }

}  // namespace consolidator
