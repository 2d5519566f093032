#pragma once

#include <cstdint>
#include <string>

namespace consolidator {

// Writers of seeded input files of those readers that turn lines into kernel records. They hold one
// entry at a time. A file that cannot be written is missing or short, which the runs on it will
// show.

/// Writes an auxiliary XML file, at least `size` bytes long, whose lines all have an argument and
/// take about 175 bytes. There are `names` different names of arguments, used in rotation.
void writeAuxiliaryFileOfSize(const std::string& path, std::uint32_t names, std::uint64_t size);

/// Writes an auxiliary XML file of arguments with different names.
void writeAuxiliaryFile(const std::string& path, std::uint32_t argumentCount);

/// Writes a kernel XML document, at least `size` bytes long, of one kernel with arguments of
/// different names. Each argument has all its attributes and takes about 235 bytes.
void writeKernelXmlOfSize(const std::string& path, std::uint64_t size);

/// Writes a kernel XML document of one kernel with so many arguments.
void writeKernelXml(const std::string& path, std::uint32_t argumentCount);

/// The mix of a debug file of high-level synthesis.
struct HlsShape {
  std::uint32_t localsPerFunction = 8;
  std::uint32_t localNames = 2'000;    ///< different names of locals in the file
  std::uint32_t sourceLines = 50'000;  ///< of the file, so that functions start on the same ones
};

/// Writes an HLS file of functions, at least `size` bytes long. Each local has one or two source
/// positions and, every second one, a register line, so that lines take about 30 bytes.
void writeHlsFileOfSize(const std::string& path, const HlsShape& shape, std::uint64_t size);

/// Writes an HLS file of `functionCount` functions.
void writeHlsFile(const std::string& path, const HlsShape& shape, std::uint32_t functionCount);

/// Writes a hierarchy file of kernels with one instance each, which writeRamReportOfSize() fills.
void writeRamHierarchyFile(const std::string& path, std::uint32_t kernelCount);

/// Writes a RAM utilization report, at least `size` bytes long: all rows in one section, half of
/// them inside instances of the kernels, and four of five block RAMs.
void writeRamReportOfSize(const std::string& path, std::uint32_t kernelCount, std::uint64_t size);

}  // namespace consolidator
