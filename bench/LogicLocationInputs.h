#pragma once

#include "model/KernelRecord.h"

#include <cstdint>
#include <string>
#include <vector>

namespace consolidator {

/// The mix of a logic-location file and the kernels that it is about. Every kernel has as many
/// paths and registers as given; registers are 32 bits wide, and 8 bits of one follow one another
/// as they do where a design tool packs them into one cell.
struct LogicLocationShape {
  std::uint32_t lines = 0;
  std::uint32_t netPercent = 100;   ///< of the lines those that name a net
  std::uint32_t knownPercent = 50;  ///< of the lines those whose net is a register of a kernel
  std::uint32_t kernels = 8;
  std::uint32_t pathsPerKernel = 4;
  std::uint32_t registersPerKernel = 1000;
  std::uint32_t scopes = 1;  ///< places inside an instance that each have all registers
};

/// Makes the kernels: instance paths of about 40 bytes, and variables each with a register.
KernelList makeRegisterKernels(const LogicLocationShape& shape);

/// Returns a file for these kernels, whose lines take about 100 bytes.
std::string makeLogicLocations(const LogicLocationShape& shape);

/// Writes what makeLogicLocations() returns without holding it in memory.
void writeLogicLocationFile(const std::string& path, const LogicLocationShape& shape);

/// Writes the hierarchy file and the HLS files that describe the kernels. Returns the arguments of
/// a run that reads them.
std::vector<std::string> writeRegisterInputs(const std::string& folder,
                                             const LogicLocationShape& shape);

}  // namespace consolidator
