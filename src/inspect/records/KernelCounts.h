#pragma once

#include "consolidated/Kernel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

/// How much is in kernels.
struct KernelCounts {
  std::uint64_t instancePaths = 0;
  std::uint64_t arguments = 0;
  std::uint64_t variables = 0;
  std::uint64_t hardwareVariables = 0;
  std::uint64_t logicLocations = 0;  ///< of the hardware variables
  std::uint64_t breakableConditions = 0;
  std::uint64_t brams = 0;

  /// The counts of one kernel. Takes a time that grows with its hardware variables.
  static KernelCounts of(const consolidated::Kernel& kernel);

  KernelCounts& operator+=(const KernelCounts& other);
};

/// A count and the key that it has in JSON documents.
struct NamedCount {
  std::string_view name;
  std::uint64_t KernelCounts::*count;
};

/// All counts, in the order in which they are shown.
inline constexpr std::array namedCounts = {
    NamedCount{"instance_paths", &KernelCounts::instancePaths},
    NamedCount{"arguments", &KernelCounts::arguments},
    NamedCount{"variables", &KernelCounts::variables},
    NamedCount{"hardware_variables", &KernelCounts::hardwareVariables},
    NamedCount{"logic_locations", &KernelCounts::logicLocations},
    NamedCount{"breakable_conditions", &KernelCounts::breakableConditions},
    NamedCount{"brams", &KernelCounts::brams},
};

}  // namespace consolidator::inspect
