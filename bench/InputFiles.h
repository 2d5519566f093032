#pragma once

#include <cstdint>
#include <string>

namespace consolidator {

// Writers of seeded input files for whole runs. They hold little at a time: the peak memory of a
// child process is never reported below that of the process that started it. A file that cannot be
// written is missing or short, which the runs on it will show.

/// Writes `size` bytes that stand for a DWARF file, which is copied and never looked into.
void writeDwarfFile(const std::string& path, std::uint64_t size);

/// Writes a hierarchy file of `kernelCount` kernels with `pathCount` instance paths each.
void writeHierarchyFile(const std::string& path, std::uint32_t kernelCount,
                        std::uint32_t pathCount);

/// Writes a hierarchy file of kernels with four instance paths, at least `size` bytes long.
void writeHierarchyFileOfSize(const std::string& path, std::uint64_t size);

/// Writes a consolidated file that holds nothing but kernel records, in a section of at least
/// `recordBytes` bytes. Returns how many there are: those that makeKernel() makes for the numbers
/// from 0 on.
std::uint32_t writeConsolidatedFile(const std::string& path, std::uint64_t recordBytes);

}  // namespace consolidator
