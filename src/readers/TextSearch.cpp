#include "readers/TextSearch.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace consolidator {

namespace {

// The patterns, as a range of a sorted list, that start with the same prefix.
struct PrefixRange {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::size_t prefixLength = 0;
};

}  // namespace

TextSearch::TextSearch(std::span<const std::string_view> patterns) : foundBy_(patterns.size()) {
  addNodes(patterns);
}

void TextSearch::addNodes(std::span<const std::string_view> patterns) {
  std::vector<std::uint32_t> sorted(patterns.size());
  std::iota(sorted.begin(), sorted.end(), 0U);
  std::sort(sorted.begin(), sorted.end(),
            [&](std::uint32_t a, std::uint32_t b) { return patterns[a] < patterns[b]; });
  const auto text = [&](std::size_t i) { return patterns[sorted[i]]; };

  std::vector<PrefixRange> ranges{{0, sorted.size(), 0}};  // of the states
  nodes_.emplace_back();
  lastCharacters_.push_back('\0');
  for (State state = start; state < nodes_.size(); ++state) {
    auto [begin, end, length] = ranges[state];
    nodes_[state].firstChild = static_cast<State>(nodes_.size());
    nodes_[state].longestMatch = nodes_[nodes_[state].fallback].longestMatch;
    if (begin < end && text(begin).size() == length) {
      nodes_[state].pattern = sorted[begin++];
      nodes_[state].longestMatch = state;
    }
    while (begin < end) {
      const char c = text(begin)[length];
      const std::size_t first = begin;
      while (begin < end && text(begin)[length] == c) ++begin;
      // Shorter states are complete by now, and a fallback is shorter.
      const State fallback = state == start ? start : next(nodes_[state].fallback, c);
      nodes_.push_back({.fallback = fallback});
      lastCharacters_.push_back(c);
      ranges.push_back({first, begin, length + 1});
    }
  }
  nodes_.push_back({.firstChild = static_cast<State>(nodes_.size())});
  for (State state = nodes_[start].firstChild; state < nodes_[start + 1].firstChild; ++state) {
    startsPattern_[static_cast<unsigned char>(lastCharacters_[state])] = true;
  }
}

TextSearch::State TextSearch::search(State state, std::string_view piece,
                                     std::vector<std::uint32_t>& found) {
  ++searchNumber_;
  addMatches(start, found);
  for (const char c : piece) {
    if (state == start && !startsPattern_[static_cast<unsigned char>(c)]) continue;
    state = next(state, c);
    addMatches(state, found);
  }
  return state;
}

// Returns the start, which is nobody's child, when there is none.
inline TextSearch::State TextSearch::child(State state, char c) const {
  const State end = nodes_[state + 1].firstChild;
  for (State i = nodes_[state].firstChild; i < end; ++i) {
    if (lastCharacters_[i] == c) return i;
  }
  return start;
}

// Returns the longest state that the text read so far ends in after one character more.
inline TextSearch::State TextSearch::next(State state, char c) const {
  State longer = child(state, c);
  while (longer == start && state != start) {
    state = nodes_[state].fallback;
    longer = child(state, c);
  }
  return longer;
}

// Once a search found a pattern, it found all its suffixes, so it may end there: a search takes no
// longer for finding the same patterns many times.
inline void TextSearch::addMatches(State state, std::vector<std::uint32_t>& found) {
  State match = nodes_[state].longestMatch;
  while (match != none && foundBy_[nodes_[match].pattern] != searchNumber_) {
    foundBy_[nodes_[match].pattern] = searchNumber_;
    found.push_back(nodes_[match].pattern);
    match = nodes_[nodes_[match].fallback].longestMatch;
  }
}

}  // namespace consolidator
