#pragma once

#include "lookup/HashedSet.h"
#include "lookup/NumbersByText.h"
#include "model/KernelRecord.h"
#include "text/TextSearch.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator::inspect {

/// The nets that logic-location files name inside the instances of kernels. A net lies inside an
/// instance if the instance's path occurs in its name, followed by a "/".
///
/// Takes memory for the first million nets only, which differ in their last component or lie in
/// different instances; isLimited() tells that there were more.
class InstanceNets {
 public:
  /// Positions of paths, each once.
  using Paths = std::vector<std::uint32_t>;

  /// The kernels may change later, but get no other paths.
  explicit InstanceNets(const KernelList& kernels);

  /// The paths of all kernels, each once, noted with the positions of their kernels.
  const NumbersByText& paths() const { return paths_; }

  /// The paths of the instances inside which a net or register of this name lies; 64 of them at
  /// most. The result holds until the next call.
  const Paths& around(std::string_view hardwareName);

  /// Keeps a net that lies inside these.
  void keep(std::string_view hardwareName, const Paths& paths);

  /// The nets that were kept for a path, of those with the same last component the first one, in
  /// the order in which they came. They are named as hardware variables are.
  const std::vector<std::uint32_t>& netsOf(std::size_t path) const { return netsByPath_[path]; }

  const std::string& net(std::uint32_t number) const { return nets_[number]; }

  bool isLimited() const { return isLimited_; }

 private:
  // What is before the last component of a name, and the paths in it.
  struct Place {
    std::uint64_t hash = 0;
    Paths paths;
  };

  NumbersByText paths_;
  TextSearch search_;          // of the paths with a "/" after each
  std::vector<Place> places_;  // each at the position that its hash gives
  HashedSet seen_;             // last components in paths
  std::vector<std::string> nets_;
  std::vector<std::vector<std::uint32_t>> netsByPath_;
  std::size_t kept_ = 0;
  bool isLimited_ = false;
};

/// The part of a hierarchical name after its last "/".
std::string_view lastComponent(std::string_view name);

}  // namespace consolidator::inspect
