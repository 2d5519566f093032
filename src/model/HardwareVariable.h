#pragma once

#include "lookup/KeyedList.h"
#include "model/BitLocation.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

class ByteReader;
class ByteWriter;

/// A register or signal of the generated hardware and where its bits live in the device.
struct HardwareVariable {
  std::string rtlName;
  std::vector<LogicLocation> logicLocations;  ///< the position is the bit index
  bool valid = false;                         ///< complete; neither stored nor rendered

  HardwareVariable() = default;

  explicit HardwareVariable(std::string_view name) : rtlName(name), valid(true) {}

  /// Appends the binary form: the name, the number of locations and the locations. Returns how many
  /// bytes the writer took.
  std::uint64_t writeBinary(ByteWriter& out) const;

  /// Reads the binary form into this default-made record and sets `valid` at the end. A short
  /// read returns false and keeps what was read so far.
  bool readBinary(ByteReader& in);

  /// Skips a binary form. Returns false where readBinary() does.
  static bool skipBinary(ByteReader& in);

  /// Compares what is stored; `valid` takes no part.
  friend bool operator==(const HardwareVariable& a, const HardwareVariable& b) {
    return a.rtlName == b.rtlName && a.logicLocations == b.logicLocations;
  }
};

/// Hardware variables are found by `rtlName`.
struct HardwareVariableKey : TextKeyHash {
  std::string_view operator()(const HardwareVariable& variable) const { return variable.rtlName; }
};

using HardwareVariableList = KeyedList<HardwareVariable, HardwareVariableKey>;

}  // namespace consolidator
