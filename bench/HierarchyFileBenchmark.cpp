#include "Inputs.h"
#include "readers/HierarchyFile.h"

#include <benchmark/benchmark.h>

#include <string>

namespace consolidator {

namespace {

std::string makeText(std::uint32_t kernelCount, std::uint32_t pathCount) {
  Random random(inputSeed);
  std::string text;
  for (std::uint32_t kernel = 0; kernel < kernelCount; ++kernel) {
    text += makeHierarchyKernel(random, kernel);
    for (std::uint32_t i = 0; i < pathCount; ++i) text += makeHierarchyPath(random, kernel, i);
  }
  return text;
}

void parseText(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    HierarchyFile reader("hierarchy", text);
    if (!reader.parse()) state.SkipWithError("the text is refused");
    benchmark::DoNotOptimize(reader.kernels());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

void parseManyKernels(benchmark::State& state) { parseText(state, makeText(10'000, 4)); }

BENCHMARK(parseManyKernels);

void parseManyPaths(benchmark::State& state) { parseText(state, makeText(1, 40'000)); }

BENCHMARK(parseManyPaths);

}  // namespace

}  // namespace consolidator
