#pragma once

#include "consolidated/List.h"

#include <cstdint>
#include <string_view>

namespace consolidated {

/// A register of the generated hardware and where its bits live in the device.
class HardwareVariable {
 public:
  /// The hierarchical name with "/" in front, such as "/top/k_1/i_r".
  Text rtlName() const noexcept { return rtlName_; }

  /// The name of the register alone: what follows the last "/" of its hierarchical name.
  std::string_view registerName() const noexcept {
    const std::string_view name = rtlName_.view();
    return name.substr(name.rfind('/') + 1);
  }

  /// The locations of its bits.
  Locations logicLocations() const noexcept { return logicLocations_; }

  /// Where its record begins, in bytes from the start of the file.
  std::uint64_t offset() const noexcept { return rtlName_.offset() - 4; }

 private:
  friend struct detail::Decoder;

  bool read(detail::Cursor& in) noexcept {
    return detail::Decoder::read(in, rtlName_) && detail::Decoder::read(in, logicLocations_);
  }

  Text rtlName_;
  Locations logicLocations_;
};

}  // namespace consolidated
