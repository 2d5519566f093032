#pragma once

#include <cstdint>
#include <optional>

namespace Devpack {

/// An unsigned number that may be absent.
class OptionalNumber {
 public:
  bool isPresent() const { return value_.has_value(); }

  /// The number; 0 when it is absent.
  std::uint32_t get() const { return value_.value_or(0); }

  void set(std::uint32_t value) { value_ = value; }

  bool operator==(const OptionalNumber&) const = default;

 private:
  std::optional<std::uint32_t> value_;
};

}  // namespace Devpack
