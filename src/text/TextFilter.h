#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace consolidator {

/// A set of texts that may err: it knows every text that was added, and a few percent of all
/// others. It takes two to four bytes a text and one access to memory a question, which makes it a
/// sieve for a slower search that is nearly always in vain. With an exact index in its place, a
/// logic-location file takes 1.5 times the CPU time where one line in a hundred matters, and 1.1
/// times where half of them do.
class TextFilter {
 public:
  /// Makes room for this many texts; more of them only cause more errors.
  explicit TextFilter(std::size_t textCount);

  void add(std::string_view text);

  /// Returns false only if the text was not added.
  bool mayHold(std::string_view text) const;

 private:
  std::uint64_t bitOf(std::string_view text) const;

  std::vector<std::uint64_t> bits_;
  int hashShift_ = 0;  // leaves as many bits of a hash as it takes to number the bits
};

}  // namespace consolidator
