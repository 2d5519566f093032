#pragma once

#include "inspect/lines/TextNumbers.h"
#include "text/TextSearch.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// Tells which instance paths occur in the names of hardware variables, and after which of them a
/// "/" follows.
class PathsInNames {
 public:
  /// Paths may be tens of thousands, names a few hundred bytes.
  explicit PathsInNames(const TextNumbers& paths);

  struct Found {
    std::vector<std::uint32_t> certain;   ///< the numbers of the paths with a "/" after them
    std::vector<std::uint32_t> doubtful;  ///< those of the others that occur
    bool areAll = true;                   ///< false if there may be more
  };

  /// The paths in a name, each once. At most a few more of either kind than the name has bytes, so
  /// that the time is linear in its length; a hardware name of a real design holds one or two. The
  /// result holds until the next call.
  const Found& in(std::string_view name);

 private:
  TextSearch paths_;
  TextSearch scopes_;                  // the paths with "/" after them
  std::vector<std::uint64_t> seenBy_;  // for each path the number of the last search to find it so
  std::uint64_t searchNumber_ = 0;
  Found found_;
};

}  // namespace consolidator::inspect
