// A RAM utilization report must read as by a plain stream-based reader, in memory as well as from a
// pipe that hands it out in pieces, and change no kernel.

#include "../tests/support/PlainRamReport.h"
#include "PipedText.h"
#include "Require.h"
#include "readers/RAMFile.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace consolidator {

namespace {

KernelList oneKernel() {
  KernelRecord kernel;
  kernel.name = "kernel";
  kernel.addInstancePath("/top/u1");
  KernelList kernels;
  kernels.append(kernel);
  return kernels;
}

void requirePlainResult(RAMFile& reader, const std::string& report) {
  const KernelList before = reader.knownKernels();
  const PlainRamReport plain(report);
  require(reader.isValid(), "the input can be opened");
  require(reader.parse(), "every report is accepted");
  require(reader.section() == plain.section, "the section is that of a plain reader");
  require(reader.powerSeen() == plain.powerSeen, "the power title counts as for a plain reader");
  require(reader.kernels().empty(), "there are no records");
  require(reader.knownKernels() == before, "the known kernels stay as they are");
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string report(data, data + size);
  const consolidator::KernelList kernels = consolidator::oneKernel();
  consolidator::RAMFile inMemory("in memory", report, kernels);
  consolidator::requirePlainResult(inMemory, report);
  consolidator::withPipe(report, [&](const std::string& path) {
    consolidator::RAMFile piped(path.c_str(), kernels);
    consolidator::requirePlainResult(piped, report);
  });
  return 0;
}
