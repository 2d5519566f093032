#include "Inputs.h"
#include "bytes/ByteReader.h"
#include "bytes/ByteWriter.h"
#include "consolidated/StdioFile.h"
#include "model/KernelRecord.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace consolidator {

namespace {

std::uint64_t writeAll(const KernelList& kernels, std::FILE* stream) {
  ByteWriter out(stream);
  for (const KernelRecord& kernel : kernels) kernel.writeBinary(out);
  out.flush();
  return out.accepted();
}

void encodeKernels(benchmark::State& state) {
  const KernelList kernels = makeKernels();
  const StdioFile sink = openStdioFile("/dev/null", "w");
  std::uint64_t bytes = 0;
  for (auto _ : state) bytes += writeAll(kernels, sink.get());
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}

BENCHMARK(encodeKernels);

void decodeKernels(benchmark::State& state) {
  const KernelList kernels = makeKernels();
  const StdioFile file(std::tmpfile());
  const std::uint64_t size = writeAll(kernels, file.get());
  for (auto _ : state) {
    std::rewind(file.get());
    ByteReader in(file.get());
    for (std::size_t i = 0; i < kernels.size(); ++i) {
      KernelRecord kernel;
      if (!kernel.readBinary(in)) state.SkipWithError("a record cannot be read back");
      benchmark::DoNotOptimize(kernel);
    }
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
}

BENCHMARK(decodeKernels);

}  // namespace

}  // namespace consolidator
