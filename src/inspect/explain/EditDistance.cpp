#include "inspect/explain/EditDistance.h"

#include <algorithm>
#include <numeric>

namespace consolidator::inspect {

namespace {

constexpr std::size_t longestShort = 64;

}  // namespace

void EditDistance::from(std::string_view text) {
  for (const char c : text_) places_[static_cast<unsigned char>(c)] = 0;
  text_ = text;
  if (text.size() > longestShort) return;
  for (std::size_t i = 0; i < text.size(); ++i) {
    places_[static_cast<unsigned char>(text[i])] |= std::uint64_t{1} << i;
  }
}

std::optional<std::size_t> EditDistance::to(std::string_view other, std::size_t limit) {
  ++steps_;
  const std::size_t size = text_.size();
  const std::size_t difference = std::max(size, other.size()) - std::min(size, other.size());
  if (difference > limit) return std::nullopt;
  if (text_.empty()) return other.size();
  const std::size_t distance = size > longestShort ? byRows(other, limit) : byColumns(other, limit);
  return distance > limit ? std::nullopt : std::optional(distance);
}

// The columns of the usual table one after the other, as differences between neighbouring cells:
// a bit for each place where a cell is one more, or one less, than that above it or that to its
// left. The last cell of the column is kept as a number.
std::size_t EditDistance::byColumns(std::string_view other, std::size_t limit) {
  const std::uint64_t last = std::uint64_t{1} << (text_.size() - 1);
  std::uint64_t moreThanAbove = ~std::uint64_t{0};
  std::uint64_t lessThanAbove = 0;
  std::size_t distance = text_.size();
  std::size_t left = other.size();
  for (const char c : other) {
    const std::uint64_t equal = places_[static_cast<unsigned char>(c)];
    const std::uint64_t keeps = (((equal & moreThanAbove) + moreThanAbove) ^ moreThanAbove) | equal;
    std::uint64_t moreThanLeft = lessThanAbove | ~(keeps | moreThanAbove);
    std::uint64_t lessThanLeft = moreThanAbove & keeps;
    if ((moreThanLeft & last) != 0) ++distance;
    if ((lessThanLeft & last) != 0) --distance;
    ++steps_;
    if (distance > limit + --left) break;  // each column that is left takes away one at most
    moreThanLeft = moreThanLeft << 1U | 1U;
    lessThanLeft <<= 1U;
    const std::uint64_t isNear = equal | lessThanAbove;
    moreThanAbove = lessThanLeft | ~(isNear | moreThanLeft);
    lessThanAbove = moreThanLeft & isNear;
  }
  return distance;
}

// Only the cells near the diagonal matter: a path through any other takes more steps than allowed.
std::size_t EditDistance::byRows(std::string_view other, std::size_t limit) {
  const std::size_t tooFar = limit + 1;
  row_.resize(other.size() + 1);
  std::iota(row_.begin(), row_.end(), std::size_t{0});
  for (std::size_t i = 1; i <= text_.size(); ++i) {
    const std::size_t first = i > limit ? i - limit : 1;
    const std::size_t last = std::min(other.size(), i + limit);
    std::size_t diagonal = row_[first - 1];
    row_[first - 1] = first == 1 ? i : tooFar;
    if (i + limit <= other.size()) row_[last] = tooFar;
    std::size_t least = row_[first - 1];
    for (std::size_t j = first; j <= last; ++j) {
      const std::size_t replaced = diagonal + (text_[i - 1] == other[j - 1] ? 0 : 1);
      diagonal = row_[j];
      row_[j] = std::min({replaced, row_[j] + 1, row_[j - 1] + 1});
      least = std::min(least, row_[j]);
    }
    steps_ += last - first + 1;
    if (least > limit) return tooFar;
  }
  return row_[other.size()];
}

}  // namespace consolidator::inspect
