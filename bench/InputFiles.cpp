#include "InputFiles.h"

#include "Inputs.h"
#include "bytes/ByteWriter.h"
#include "consolidated/FileHeader.h"
#include "consolidated/SectionEntry.h"
#include "consolidated/StdioFile.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace consolidator {

namespace {

// The JSON section stands first, as in every file that the tool wrote itself. It is empty: nobody
// reads it, the next save renders it anew.
void writeStart(std::FILE* file, std::uint32_t recordsSize, std::uint32_t kernelCount) {
  constexpr std::uint32_t sectionCount = 2;
  constexpr std::uint64_t sectionsStart =
      FileHeader::encodedSize + sectionCount * SectionEntry::encodedSize;
  FileHeader header;
  header.sectionCount = sectionCount;
  const FileHeader::Bytes bytes = header.encode();
  ByteWriter out(file);
  out.write({bytes.data(), bytes.size()});
  SectionEntry{SectionKind::Json, sectionsStart}.writeBinary(out);
  SectionEntry{SectionKind::KernelRecords, sectionsStart, recordsSize}.writeBinary(out);
  out.writeU32(kernelCount);
  out.flush();
}

// Writes kernels until `isEnough(kernels, bytes)` holds for what was written.
template <typename Predicate>
void writeHierarchy(const std::string& path, std::uint32_t pathCount, Predicate isEnough) {
  const StdioFile file = openStdioFile(path, "w");
  ByteWriter out(file.get());
  Random random(inputSeed);
  std::uint64_t bytes = 0;
  const auto write = [&](const std::string& text) {
    out.write(text);
    bytes += text.size();
  };
  write("version: 1.0\n");
  for (std::uint32_t kernel = 0; !isEnough(kernel, bytes); ++kernel) {
    write(makeHierarchyKernel(random, kernel));
    for (std::uint32_t i = 0; i < pathCount; ++i) write(makeHierarchyPath(random, kernel, i));
  }
  out.flush();
}

}  // namespace

void writeDwarfFile(const std::string& path, std::uint64_t size) {
  const StdioFile file = openStdioFile(path, "w");
  ByteWriter out(file.get());
  Random random(inputSeed);
  for (std::uint64_t written = 0; written < size;) {
    const std::uint64_t number = random();
    const auto count =
        static_cast<std::size_t>(std::min<std::uint64_t>(sizeof number, size - written));
    out.write({reinterpret_cast<const char*>(&number), count});
    written += count;
  }
  out.flush();
}

void writeHierarchyFile(const std::string& path, std::uint32_t kernelCount,
                        std::uint32_t pathCount) {
  writeHierarchy(path, pathCount, [&](std::uint32_t kernels, std::uint64_t /*bytes*/) {
    return kernels == kernelCount;
  });
}

void writeHierarchyFileOfSize(const std::string& path, std::uint64_t size) {
  constexpr std::uint32_t pathCount = 4;
  writeHierarchy(path, pathCount,
                 [&](std::uint32_t /*kernels*/, std::uint64_t bytes) { return bytes >= size; });
}

std::uint32_t writeConsolidatedFile(const std::string& path, std::uint64_t recordBytes) {
  const StdioFile file = openStdioFile(path, "w");
  std::uint32_t kernelCount = 0;
  if (!file) return kernelCount;
  // Once more at the end, when it is known what to write.
  writeStart(file.get(), 0, kernelCount);
  ByteWriter out(file.get());
  Random random(inputSeed);
  bool isWritable = true;
  while (isWritable && out.accepted() < recordBytes) {
    isWritable = makeKernel(random, kernelCount++).writeBinary(out) > 0;
  }
  out.flush();
  std::rewind(file.get());
  writeStart(file.get(), static_cast<std::uint32_t>(sizeof kernelCount + out.accepted()),
             kernelCount);
  return kernelCount;
}

}  // namespace consolidator
