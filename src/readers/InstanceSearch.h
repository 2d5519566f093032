#pragma once

#include "model/PositionIndex.h"
#include "readers/TextSearch.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// Finds the instance paths that occur anywhere in a hierarchical name. Names that share a scope
/// (all up to the last "/") are many, so a limited number of scopes and what was found in them is
/// remembered, below 4 MiB in all.
class InstanceSearch {
 public:
  /// The paths must differ from one another. They are not referred to later.
  explicit InstanceSearch(std::span<const std::string_view> paths);

  /// Returns the positions (in the constructor's list) of the paths that occur in a name, which
  /// must start with "/"; some may be there twice. The result holds until the next call.
  const std::vector<std::uint32_t>& findIn(std::string_view name);

 private:
  struct Scope {
    std::string name;
    TextSearch::State state = TextSearch::start;
    std::vector<std::uint32_t> paths;
  };

  const Scope& scopeOf(std::string_view name);

  TextSearch search_;
  std::vector<Scope> scopes_;
  PositionIndex scopeIndex_;  // by their names
  Scope other_;
  std::vector<std::uint32_t> found_;
};

}  // namespace consolidator
