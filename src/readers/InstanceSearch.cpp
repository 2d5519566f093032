#include "readers/InstanceSearch.h"

#include "model/KeyedHash.h"
#include "readers/FindLast.h"

#include <cstddef>
#include <cstdint>

namespace consolidator {

namespace {

constexpr std::size_t mostScopes = 8192;
constexpr std::size_t longestKeptName = 256;
constexpr std::size_t mostKeptPaths = 32;

}  // namespace

InstanceSearch::InstanceSearch(std::span<const std::string_view> paths) : search_(paths) {}

const std::vector<std::uint32_t>& InstanceSearch::findIn(std::string_view name) {
  const std::size_t scopeLength = findLast(name, '/') + 1;
  const Scope& scope = scopeOf(name.substr(0, scopeLength));
  found_ = scope.paths;
  search_.search(scope.state, name.substr(scopeLength), found_);
  return found_;
}

const InstanceSearch::Scope& InstanceSearch::scopeOf(std::string_view name) {
  const std::uint64_t hash = keyedHash(name);
  const std::size_t position =
      scopeIndex_.find(hash, [&](std::size_t i) { return scopes_[i].name == name; });
  if (position != PositionIndex::none) return scopes_[position];
  other_.name = name;
  other_.paths.clear();
  other_.state = search_.search(TextSearch::start, name, other_.paths);
  if (name.size() > longestKeptName || other_.paths.size() > mostKeptPaths) return other_;
  if (scopes_.size() == mostScopes) {
    scopes_.clear();
    scopeIndex_ = PositionIndex();
  }
  scopeIndex_.add(hash, scopes_.size());
  scopes_.push_back(other_);
  return scopes_.back();
}

}  // namespace consolidator
