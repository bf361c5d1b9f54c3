#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>

// Records what one iteration worked through: `items` entries (also the N the cost is fitted to)
// in `bytes` bytes.
inline void countWork(benchmark::State& state, std::int64_t items, std::size_t bytes) {
  state.SetComplexityN(items);
  state.SetItemsProcessed(state.iterations() * items);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}
