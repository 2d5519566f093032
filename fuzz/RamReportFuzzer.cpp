// A RAM utilization report must read as by a plain stream-based reader, in memory as well as from a
// pipe that hands it out in pieces. What comes before the first empty line are instance paths, one
// a line and two for each kernel; the rest is the report.

#include "../tests/support/PlainRamReport.h"
#include "PipedText.h"
#include "Require.h"
#include "readers/RAMFile.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <utility>

namespace consolidator {

namespace {

// Takes the paths off the text and makes the kernels of them, no more than a plain reader can take.
KernelList takeKernels(std::istream& text) {
  constexpr std::size_t most = 16;
  KernelList kernels;
  for (std::string path; std::getline(text, path) && !path.empty();) {
    if (kernels.size() == most) continue;
    KernelRecord kernel;
    kernel.name = "kernel_" + std::to_string(kernels.size());
    kernel.instancePaths.append(path);
    if (std::getline(text, path)) kernel.instancePaths.append(path);
    kernels.append(std::move(kernel));
  }
  return kernels;
}

void requirePlainResult(RAMFile& reader, const std::string& report, const KernelList& kernels) {
  require(reader.isValid(), "the input can be opened");
  PlainRamReportReader::Additions additions;
  reader.readBrams([&](const KernelRecord& kernel, std::string_view bram) {
    additions.emplace_back(kernel.name, bram);
  });
  require(additions == PlainRamReportReader(report, kernels).read(),
          "the block RAMs are those of a plain reader");
}

void requireNoRecords(const std::string& report, const KernelList& kernels) {
  const KernelList known = kernels;
  RAMFile reader("in memory", report, kernels);
  require(reader.parse(), "every report is accepted");
  require(reader.kernels().empty(), "there are no records");
  require(kernels == known, "the known kernels stay as they are");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream text(std::string(data, data + size));
  const consolidator::KernelList kernels = consolidator::takeKernels(text);
  std::ostringstream rest;
  if (text.peek() != std::istringstream::traits_type::eof()) rest << text.rdbuf();
  const std::string report = rest.str();
  consolidator::requireNoRecords(report, kernels);
  consolidator::RAMFile inMemory("in memory", report, kernels);
  consolidator::requirePlainResult(inMemory, report, kernels);
  consolidator::withPipe(report, [&](const std::string& path) {
    consolidator::RAMFile piped(path.c_str(), kernels);
    consolidator::requirePlainResult(piped, report, kernels);
  });
  return 0;
}
