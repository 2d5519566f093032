#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// The least number of characters to insert, remove or replace that makes one text of another.
class EditDistance {
 public:
  /// Sets the text with which others are compared.
  void from(std::string_view text);

  /// Returns the distance to another text if it is at most `limit`. Takes time in the length of
  /// that text, for texts over 64 bytes times the limit.
  std::optional<std::size_t> to(std::string_view other, std::size_t limit);

  /// Counts a comparison that could be spared.
  void skip() { ++steps_; }

  /// How many steps were taken so far.
  std::uint64_t steps() const { return steps_; }

 private:
  std::size_t byColumns(std::string_view other, std::size_t limit);
  std::size_t byRows(std::string_view other, std::size_t limit);

  std::string text_;
  std::array<std::uint64_t, 256> places_{};  // a bit for each place of a character in a short text
  std::vector<std::size_t> row_;
  std::uint64_t steps_ = 0;
};

}  // namespace consolidator::inspect
