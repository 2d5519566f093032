#include "inspect/EditDistance.h"

#include <algorithm>
#include <numeric>

namespace consolidator::inspect {

// Only the cells near the diagonal matter: a path through any other takes more steps than allowed.
std::optional<std::size_t> EditDistance::between(std::string_view a, std::string_view b,
                                                 std::size_t limit) {
  ++steps_;
  const std::size_t difference = std::max(a.size(), b.size()) - std::min(a.size(), b.size());
  if (difference > limit) return std::nullopt;
  const std::size_t tooFar = limit + 1;
  row_.resize(b.size() + 1);
  std::iota(row_.begin(), row_.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    const std::size_t first = i > limit ? i - limit : 1;
    const std::size_t last = std::min(b.size(), i + limit);
    std::size_t diagonal = row_[first - 1];
    row_[first - 1] = first == 1 ? i : tooFar;
    if (i + limit <= b.size()) row_[last] = tooFar;
    std::size_t least = row_[first - 1];
    for (std::size_t j = first; j <= last; ++j) {
      const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row_[j];
      row_[j] = std::min({replaced, row_[j] + 1, row_[j - 1] + 1});
      least = std::min(least, row_[j]);
    }
    steps_ += last - first + 1;
    if (least > limit) return std::nullopt;
  }
  if (row_[b.size()] > limit) return std::nullopt;
  return row_[b.size()];
}

}  // namespace consolidator::inspect
