#include "LogicLocationInputs.h"
#include "readers/LLFile.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace consolidator {

namespace {

constexpr std::uint32_t lineCount = 500'000;

void parse(benchmark::State& state, LogicLocationShape shape) {
  shape.lines = lineCount;
  const std::string text = makeLogicLocations(shape);
  const KernelList kernels = makeRegisterKernels(shape);
  for (auto _ : state) {
    LLFile reader("logic locations", text);
    reader.setKernels(kernels);
    if (!reader.parse()) state.SkipWithError("the text is refused");
    benchmark::DoNotOptimize(reader.kernels());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
  state.SetItemsProcessed(std::int64_t{shape.lines} * state.iterations());
}

void parseFewKnownNets(benchmark::State& state) { parse(state, {.knownPercent = 1}); }

BENCHMARK(parseFewKnownNets);

void parseFewNets(benchmark::State& state) { parse(state, {.netPercent = 40, .knownPercent = 1}); }

BENCHMARK(parseFewNets);

void parseManyKnownNets(benchmark::State& state) { parse(state, {.knownPercent = 50}); }

BENCHMARK(parseManyKnownNets);

// The number of nets stays the same, so what grows is the search alone.
constexpr std::uint32_t netCount = 100'000;

void parseForPaths(benchmark::State& state) {
  const auto paths = static_cast<std::uint32_t>(state.range(0));
  constexpr std::uint32_t registers = 100;
  parse(state, {.kernels = 1,
                .pathsPerKernel = paths,
                .registersPerKernel = registers,
                .scopes = netCount / registers / paths});
}

BENCHMARK(parseForPaths)->RangeMultiplier(10)->Range(1, 1000);

void parseForRegisters(benchmark::State& state) {
  const auto registers = static_cast<std::uint32_t>(state.range(0));
  parse(state, {.kernels = 1,
                .pathsPerKernel = 1,
                .registersPerKernel = registers,
                .scopes = netCount / registers});
}

BENCHMARK(parseForRegisters)->RangeMultiplier(10)->Range(100, 10'000);

}  // namespace

}  // namespace consolidator
