#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace consolidator {

/// Finds which of many patterns occur in a text, in one pass over the text however many patterns
/// there are (the Aho-Corasick automaton).
///
/// The states are the prefixes of the patterns, numbered by length, so that the children of a state
/// (its prefix and one character more) are numbered in a row and need no table: a state takes 13
/// bytes. A table of all transitions would be a little faster for few patterns, but takes megabytes
/// for a thousand of them and then waits for memory.
class TextSearch {
 public:
  using Patterns = std::span<const std::string_view>;

  /// The patterns must differ from one another; together they must be shorter than 4 GiB. They are
  /// not referred to later.
  explicit TextSearch(Patterns patterns);

  /// Returns the positions (in the constructor's list) of the patterns that occur in the text, each
  /// once, in no particular order; the empty pattern occurs in every text. The result holds until
  /// the next call.
  const std::vector<std::uint32_t>& findIn(std::string_view text);

  /// The same, but ends soon after `enough` patterns were found: however many occur in the text, it
  /// takes no longer than its length and that number, and returns at most as many.
  const std::vector<std::uint32_t>& findSomeIn(std::string_view text, std::size_t enough);

 private:
  // What a search remembers of the text so far: the longest prefix of a pattern that it ends in.
  using State = std::uint32_t;

  static constexpr State start = 0;
  static constexpr std::uint32_t none = static_cast<std::uint32_t>(-1);

  struct Node {
    State firstChild = 0;               // the children end where those of the next state start
    State fallback = start;             // its longest proper suffix that is a state
    std::uint32_t longestMatch = none;  // the longest pattern that it ends in
  };

  void addNodes(Patterns patterns);
  void addPattern(State state, std::uint32_t pattern);
  void addChildren(State state, Patterns patterns, std::size_t length,
                   std::vector<Patterns>& longer);
  State child(State state, char c) const;
  State next(State state, char c) const;
  template <typename IsEnough>
  const std::vector<std::uint32_t>& search(std::string_view text, IsEnough isEnough);
  void addMatches(State state);

  std::vector<Node> nodes_;
  std::vector<char> lastCharacters_;      // of the states
  std::vector<std::uint32_t> nextMatch_;  // for each pattern the longest shorter one it ends in
  std::array<bool, 256> startsPattern_{};
  std::vector<std::uint64_t> foundBy_;  // for each pattern the number of the last search to find it
  std::uint64_t searchNumber_ = 0;
  std::vector<std::uint32_t> found_;
};

}  // namespace consolidator
