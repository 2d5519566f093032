#include "model/ConditionPreparer.h"

#include <benchmark/benchmark.h>

#include <string>

namespace consolidator {

namespace {

// A chain of that many comparisons, as state machines with many conditions give.
void prepareCondition(benchmark::State& state) {
  std::string condition = "(control_state == 1'b1";
  for (std::int64_t i = 1; i < state.range(0); ++i) condition += " && step == " + std::to_string(i);
  condition += ')';
  ConditionPreparer preparer;
  for (auto _ : state) benchmark::DoNotOptimize(preparer.prepare(condition));
  state.SetBytesProcessed(static_cast<std::int64_t>(condition.size()) * state.iterations());
}

BENCHMARK(prepareCondition)->RangeMultiplier(32)->Range(1, 32'768);

}  // namespace

}  // namespace consolidator
