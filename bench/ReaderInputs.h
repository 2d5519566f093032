#pragma once

#include <cstdint>
#include <string>

namespace consolidator {

// Writers of seeded input files of those readers that turn lines into kernel records. They hold one
// entry at a time. A file that cannot be written is missing or short, which the runs on it will
// show.

/// Writes an auxiliary XML file, at least `size` bytes long, whose lines all have an argument and
/// take about 160 bytes. There are `names` different names of arguments, which come by turns.
void writeAuxiliaryFileOfSize(const std::string& path, std::uint32_t names, std::uint64_t size);

/// Writes an auxiliary XML file of arguments with different names.
void writeAuxiliaryFile(const std::string& path, std::uint32_t argumentCount);

/// Writes a kernel XML document, at least `size` bytes long, of one kernel with arguments of
/// different names. Each argument has all its attributes and takes about 260 bytes.
void writeKernelXmlOfSize(const std::string& path, std::uint64_t size);

/// Writes a kernel XML document of one kernel with so many arguments.
void writeKernelXml(const std::string& path, std::uint32_t argumentCount);

}  // namespace consolidator
