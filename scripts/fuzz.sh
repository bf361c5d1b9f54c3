#!/bin/bash
# Builds the libFuzzer targets with clang into build-fuzz/ and runs each for SECONDS (default 30)
# from a seed corpus of the real captures in tests/fixtures/. A crash, leak or sanitizer report
# fails the run; the reproducer is left in build-fuzz/findings/.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
shift || true

# Seeds per target: fixture folders (and files) whose text the target parses.
declare -A SEEDS=(
  [probe_scans_fuzz]="ifconfig ethtool ip-link ipsec"
  [report_readings_fuzz]="ifconfig route ipsec iwlist iwconfig"
)

CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQV_FUZZ=ON \
  -DQV_BUILD_TESTS=OFF >/dev/null
cmake --build build-fuzz -j "$(nproc)"

targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=("${!SEEDS[@]}")
mkdir -p build-fuzz/findings
for target in "${targets[@]}"; do
  corpus=build-fuzz/corpus/$target
  mkdir -p "$corpus"
  for seed in ${SEEDS[$target]}; do
    find "tests/fixtures/$seed" -type f -exec cp -t "$corpus" {} + 2>/dev/null || true
  done
  echo "== $target: ${seconds}s"
  "build-fuzz/tests/fuzz/$target" -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="build-fuzz/findings/$target-" "$corpus" 2>&1 | tail -n 12
done
