#include "text/TextSearch.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace consolidator {

namespace {

// The number of different prefixes of sorted patterns, the empty one included.
std::size_t countPrefixes(TextSearch::Patterns sorted) {
  std::size_t count = 1;
  std::string_view before;
  for (const std::string_view pattern : sorted) {
    const auto [different, inBefore] = std::ranges::mismatch(pattern, before);
    count += static_cast<std::size_t>(pattern.end() - different);
    before = pattern;
  }
  return count;
}

}  // namespace

TextSearch::TextSearch(Patterns patterns)
    : nextMatch_(patterns.size(), none), foundBy_(patterns.size()) {
  addNodes(patterns);
}

void TextSearch::addNodes(Patterns patterns) {
  std::vector<std::uint32_t> order(patterns.size());
  std::iota(order.begin(), order.end(), 0U);
  std::ranges::sort(order, {}, [&](std::uint32_t i) { return patterns[i]; });
  std::vector<std::string_view> sorted;
  sorted.reserve(patterns.size());
  for (const std::uint32_t i : order) sorted.push_back(patterns[i]);

  const std::size_t count = countPrefixes(sorted);
  nodes_.reserve(count + 1);
  lastCharacters_.reserve(count);
  nodes_.emplace_back();
  lastCharacters_.push_back('\0');
  State state = start;
  std::vector<Patterns> current{sorted};  // by states of one length: those with that prefix
  std::vector<Patterns> longer;
  for (std::size_t length = 0; !current.empty(); ++length) {
    for (Patterns prefixed : current) {
      nodes_[state].firstChild = static_cast<State>(nodes_.size());
      nodes_[state].longestMatch = nodes_[nodes_[state].fallback].longestMatch;
      if (!prefixed.empty() && prefixed.front().size() == length) {
        addPattern(state, order[static_cast<std::size_t>(prefixed.data() - sorted.data())]);
        prefixed = prefixed.subspan(1);
      }
      addChildren(state, prefixed, length, longer);
      ++state;
    }
    current.swap(longer);
    longer.clear();
  }
  nodes_.push_back({.firstChild = static_cast<State>(nodes_.size())});
  for (State first = nodes_[start].firstChild; first < nodes_[start + 1].firstChild; ++first) {
    startsPattern_[static_cast<unsigned char>(lastCharacters_[first])] = true;
  }
}

void TextSearch::addPattern(State state, std::uint32_t pattern) {
  nextMatch_[pattern] = nodes_[state].longestMatch;
  nodes_[state].longestMatch = pattern;
}

// Adds a state for each character that comes next in some of the sorted patterns, and appends to
// `longer` the patterns of each. Shorter states must be complete, since a fallback is shorter.
void TextSearch::addChildren(State state, Patterns patterns, std::size_t length,
                             std::vector<Patterns>& longer) {
  while (!patterns.empty()) {
    const char c = patterns.front()[length];
    const auto other =
        std::ranges::find_if(patterns, [&](std::string_view text) { return text[length] != c; });
    const auto count = static_cast<std::size_t>(other - patterns.begin());
    const State fallback = state == start ? start : next(nodes_[state].fallback, c);
    nodes_.push_back({.fallback = fallback});
    lastCharacters_.push_back(c);
    longer.push_back(patterns.first(count));
    patterns = patterns.subspan(count);
  }
}

const std::vector<std::uint32_t>& TextSearch::findIn(std::string_view text) {
  return search(text, [] { return false; });
}

const std::vector<std::uint32_t>& TextSearch::findSomeIn(std::string_view text,
                                                         std::size_t enough) {
  search(text, [&] { return found_.size() >= enough; });
  if (found_.size() > enough) found_.resize(enough);
  return found_;
}

template <typename IsEnough>
inline const std::vector<std::uint32_t>& TextSearch::search(std::string_view text,
                                                            IsEnough isEnough) {
  ++searchNumber_;
  found_.clear();
  State state = start;
  addMatches(state);
  for (const char c : text) {
    if (isEnough()) break;
    // Most characters start nothing: this spares 2 % of the instructions that a reading of logic
    // locations takes.
    if (state == start && !startsPattern_[static_cast<unsigned char>(c)]) continue;
    state = next(state, c);
    addMatches(state);
  }
  return found_;
}

// Returns the start, which is no state's child, when there is none.
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

// A search that has found a pattern has found its suffixes, too, and may stop there: finding the
// same patterns many times takes no longer.
inline void TextSearch::addMatches(State state) {
  std::uint32_t match = nodes_[state].longestMatch;
  while (match != none && foundBy_[match] != searchNumber_) {
    foundBy_[match] = searchNumber_;
    found_.push_back(match);
    match = nextMatch_[match];
  }
}

}  // namespace consolidator
