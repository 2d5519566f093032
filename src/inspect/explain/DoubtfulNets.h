#pragma once

#include "inspect/explain/Explanation.h"
#include "inspect/explain/InstanceNets.h"
#include "lookup/NumbersByText.h"
#include "model/KernelRecord.h"
#include "text/TextSearch.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace consolidator::inspect {

/// The nets that the tool takes for registers of an instance because its path occurs in their name,
/// although no "/" follows it there: "/t/k_1" in "/t/k_10/i_r".
class DoubtfulNets {
 public:
  /// The kernels and the paths must outlive this object.
  DoubtfulNets(const KernelList& kernels, const NumbersByText& paths);

  /// Notes a net that was taken and lies inside these instances. Returns whether it is doubtful for
  /// another one and there is no room to list that.
  bool note(std::string_view hardwareName, std::uint64_t line, const InstanceNets::Paths& inside);

  /// Those of the lines since the last call.
  std::vector<DoubtfulNet> take();

 private:
  std::vector<std::uint32_t> findPaths(std::string_view hardwareName,
                                       const InstanceNets::Paths& inside);
  std::optional<std::uint32_t> kernelOf(std::uint32_t path, std::string_view leaf) const;

  const KernelList& kernels_;
  const NumbersByText& paths_;
  NumbersByText registers_;  // noted with the positions of their kernels
  TextSearch search_;        // of the paths
  std::unordered_map<std::string, std::vector<std::size_t>> listed_;  // positions in found_ by net
  std::vector<DoubtfulNet> found_;
};

}  // namespace consolidator::inspect
