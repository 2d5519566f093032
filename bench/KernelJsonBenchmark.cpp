#include "Inputs.h"
#include "bytes/ByteWriter.h"
#include "consolidated/StdioFile.h"
#include "model/KernelJson.h"

#include <benchmark/benchmark.h>

namespace consolidator {

namespace {

// The conditions are prepared along with it, as in every save.
void renderJson(benchmark::State& state) {
  KernelList kernels = makeKernels();
  const StdioFile sink = openStdioFile("/dev/null", "w");
  std::uint64_t bytes = 0;
  for (auto _ : state) {
    ByteWriter out(sink.get());
    writeKernelsJson(kernels, out);
    out.flush();
    bytes += out.accepted();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}

BENCHMARK(renderJson);

}  // namespace

}  // namespace consolidator
