#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// A share in percent with one decimal, from 0.0 to 100.0.
class Percent {
 public:
  /// The share that `part` is of `whole`, which is not 0. Only all is 100.0 and only none is 0.0;
  /// all else is rounded.
  static Percent of(std::uint64_t part, std::uint64_t whole);

  /// Reads a number of digits, of which at most one is a decimal: "80" or "99.5".
  static std::optional<Percent> parse(std::string_view text);

  /// As text: "66.7".
  std::string text() const;

  friend bool operator==(const Percent&, const Percent&) = default;

  friend bool operator<(const Percent& a, const Percent& b) { return a.tenths_ < b.tenths_; }

 private:
  explicit Percent(std::uint32_t tenths) : tenths_(tenths) {}

  std::uint32_t tenths_;
};

}  // namespace consolidator::inspect
