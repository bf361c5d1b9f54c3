#!/bin/bash
# Builds and runs the parser microbenchmarks; extra arguments go to the benchmark binary (for
# example --benchmark_filter=Route or --benchmark_min_time=0.1). Prints every run with its
# throughput, then the fitted cost of each family: BigO is nanoseconds per N (a scan cell, a
# route line or an interface), RMS how far the runs stray from that straight line.
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${QV_BENCH_BUILD_DIR:-build-bench}
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { cmake -S . -B "$build" -DQV_BENCH=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQV_BUILD_TESTS=OFF &&
  cmake --build "$build" -j2 --target qv-parser-bench; } >"$log" 2>&1; then
  cat "$log"
  exit 1
fi
report="$build/parser-bench.txt"
"$build/bench/micro/qv-parser-bench" --benchmark_format=console --benchmark_color=false \
  --benchmark_counters_tabular=true "$@" | tee "$report"
echo
echo "Fitted cost (ns per N) and deviation from it, per family:"
grep -E '_(BigO|RMS) ' "$report"
