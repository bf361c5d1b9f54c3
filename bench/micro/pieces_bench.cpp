// The fgets emulation on a large scan, whose long IE lines are cut into several pieces.
#include <benchmark/benchmark.h>

#include <string>

#include "common/pieces.h"
#include "inputs.h"
#include "work_counters.h"

namespace {

void BM_SplitPieces(benchmark::State& state) {
  const int cells = static_cast<int>(state.range(0));
  const std::string output = scanOutput(cells);
  for (auto _ : state) benchmark::DoNotOptimize(splitPieces(output));
  countWork(state, cells, output.size());
}
BENCHMARK(BM_SplitPieces)->RangeMultiplier(2)->Range(8, 512)->Complexity(benchmark::oN);

}  // namespace
