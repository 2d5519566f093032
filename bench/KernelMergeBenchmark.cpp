#include "Inputs.h"
#include "model/KernelMerge.h"

#include <benchmark/benchmark.h>

namespace consolidator {

namespace {

void mergeAll(KernelList& kernels, const KernelList& incoming) {
  for (const KernelRecord& kernel : incoming) mergeKernel(kernels, kernel);
}

void mergeNewKernels(benchmark::State& state) {
  const KernelList incoming = makeKernels();
  for (auto _ : state) {
    KernelList kernels;
    mergeAll(kernels, incoming);
    benchmark::DoNotOptimize(kernels);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(incoming.size()) * state.iterations());
}

BENCHMARK(mergeNewKernels);

// Everything is looked up and nothing is added.
void mergeKnownKernels(benchmark::State& state) {
  const KernelList incoming = makeKernels();
  KernelList kernels = incoming;
  for (auto _ : state) {
    mergeAll(kernels, incoming);
    benchmark::DoNotOptimize(kernels);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(incoming.size()) * state.iterations());
}

BENCHMARK(mergeKnownKernels);

}  // namespace

}  // namespace consolidator
