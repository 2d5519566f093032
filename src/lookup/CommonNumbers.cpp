#include "lookup/CommonNumbers.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace consolidator {

namespace {

constexpr std::size_t few = 16;  // cost no more than to find what is remembered
constexpr std::size_t keptPerNote = 2;

void appendCommon(NumbersByText::Numbers shorter, NumbersByText::Numbers longer,
                  std::vector<std::uint32_t>& common) {
  for (const std::uint32_t number : shorter) {
    if (std::binary_search(longer.begin(), longer.end(), number)) common.push_back(number);
  }
}

}  // namespace

CommonNumbers::CommonNumbers(const NumbersByText& ones, const NumbersByText& others,
                             std::size_t end)
    : ones_(ones),
      others_(others),
      mostKept_(keptPerNote * (ones.noteCount() + others.noteCount())),
      foundBy_(end) {}

void CommonNumbers::find(std::size_t one, const std::vector<std::uint32_t>& others,
                         std::size_t cheap, std::vector<std::uint32_t>& common) {
  common.clear();
  if (others.size() > few && countNumbers(one, others) <= cheap) {
    return findAtOnce(one, others, common);
  }
  for (const std::uint32_t other : others) appendPair(one, other, common);
  if (others.size() < 2) return;
  std::sort(common.begin(), common.end());
  common.erase(std::unique(common.begin(), common.end()), common.end());
}

std::size_t CommonNumbers::countNumbers(std::size_t one,
                                        const std::vector<std::uint32_t>& others) const {
  std::size_t count = ones_.numbers(one).size();
  for (const std::uint32_t other : others) count += others_.numbers(other).size();
  return count;
}

void CommonNumbers::findAtOnce(std::size_t one, const std::vector<std::uint32_t>& others,
                               std::vector<std::uint32_t>& common) {
  ++searchNumber_;
  for (const std::uint32_t other : others) {
    for (const std::uint32_t number : others_.numbers(other)) foundBy_[number] = searchNumber_;
  }
  for (const std::uint32_t number : ones_.numbers(one)) {
    if (foundBy_[number] == searchNumber_) common.push_back(number);
  }
}

void CommonNumbers::appendPair(std::size_t one, std::size_t other,
                               std::vector<std::uint32_t>& common) {
  const NumbersByText::Numbers a = ones_.numbers(one);
  const NumbersByText::Numbers b = others_.numbers(other);
  const auto& [shorter, longer] = a.size() < b.size() ? std::tie(a, b) : std::tie(b, a);
  if (shorter.size() <= few) return appendCommon(shorter, longer, common);
  const std::uint64_t positions = std::uint64_t{one} << 32U | other;
  const Pair* pair = pairs_.find(positions);
  if (pair == nullptr) {
    if (kept_ > mostKept_) {
      pairs_.clear();
      kept_ = 0;
    }
    Pair added{positions, {}};
    appendCommon(shorter, longer, added.common);
    kept_ += 1 + added.common.size();
    pair = &pairs_.append(std::move(added));
  }
  common.insert(common.end(), pair->common.begin(), pair->common.end());
}

}  // namespace consolidator
