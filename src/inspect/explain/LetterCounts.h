#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace consolidator::inspect {

/// How often the letters of a text occur in it, for telling cheaply that two texts differ a lot.
class LetterCounts {
 public:
  /// Takes any text.
  explicit LetterCounts(std::string_view text);

  /// Returns a number that the edit distance of the two texts is never below.
  std::size_t leastDistance(const LetterCounts& other) const {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < letters; ++i) {
      sum += static_cast<std::uint32_t>(std::abs(counts_[i] - other.counts_[i]));
    }
    // The letters that one text has more than the other, and those that it has less of: a change
    // makes either of them one fewer, so that the greater of both is needed.
    const std::size_t sizes = size_ > other.size_ ? size_ - other.size_ : other.size_ - size_;
    return (sum + sizes + 1) / 2;
  }

 private:
  // Letters whose codes differ in other bits than the low five count as the same.
  static constexpr std::size_t letters = 32;

  std::array<std::uint8_t, letters> counts_{};  // 255 where there are more
  std::size_t size_ = 0;
};

}  // namespace consolidator::inspect
