#pragma once

#include "consolidated/List.h"

#include <cstdint>

namespace consolidated {

/// An argument or a local variable of a kernel.
class Variable {
 public:
  Text name() const noexcept { return name_; }

  /// The name in the hardware: that of its register.
  Text second() const noexcept { return second_; }

  /// The type as written in the source, for example "int*".
  Text cType() const noexcept { return cType_; }

  /// The locations of its bits, one element for each instance of the kernel; often there are none,
  /// and the locations are those of hardware variables.
  List<Locations> instanceBits() const noexcept { return instanceBits_; }

  /// The width in bits that goes with the type: 64 where its text contains "*", else 8 where it
  /// contains "char", else 32 (also for "double").
  [[gnu::visibility("default")]] std::uint32_t bitWidth() const noexcept;

  /// Where its record begins, in bytes from the start of the file.
  std::uint64_t offset() const noexcept { return name_.offset() - 4; }

 private:
  friend struct detail::Decoder;

  bool read(detail::Cursor& in) noexcept {
    return detail::Decoder::read(in, name_) && detail::Decoder::read(in, second_) &&
           detail::Decoder::read(in, cType_) &&
           detail::readList(in, instanceBits_, 4, detail::Cursor::largestSize);
  }

  Text name_;
  Text second_;
  Text cType_;
  List<Locations> instanceBits_;
};

}  // namespace consolidated
