#include "Inputs.h"
#include "readers/HierarchyFile.h"

#include <benchmark/benchmark.h>

#include <string>

namespace consolidator {

namespace {

void parseText(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    HierarchyFile reader("hierarchy", text);
    if (!reader.parse()) state.SkipWithError("the text is refused");
    benchmark::DoNotOptimize(reader.kernels());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

void parseManyKernels(benchmark::State& state) {
  constexpr std::uint32_t kernelCount = 10'000;
  Random random(inputSeed);
  std::string text;
  for (std::uint32_t i = 0; i < kernelCount; ++i) text += makeHierarchyEntry(random, i, 4);
  parseText(state, text);
}

BENCHMARK(parseManyKernels);

void parseManyPaths(benchmark::State& state) {
  Random random(inputSeed);
  parseText(state, makeHierarchyEntry(random, 0, 40'000));
}

BENCHMARK(parseManyPaths);

}  // namespace

}  // namespace consolidator
