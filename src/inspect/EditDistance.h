#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// The least number of characters to insert, remove or replace that makes one text of another.
class EditDistance {
 public:
  /// Returns the distance if it is at most `limit`. Takes time in the length of the texts times the
  /// limit.
  std::optional<std::size_t> between(std::string_view a, std::string_view b, std::size_t limit);

  /// Counts a comparison that could be spared.
  void skip() { ++steps_; }

  /// How many steps were taken so far.
  std::uint64_t steps() const { return steps_; }

 private:
  std::vector<std::size_t> row_;
  std::uint64_t steps_ = 0;
};

}  // namespace consolidator::inspect
