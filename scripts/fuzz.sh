#!/bin/bash
# Builds the libFuzzer target with clang into build-fuzz/ and runs each of its readers for SECONDS
# (default 30) from a seed corpus of the real captures in tests/fixtures/. A crash, leak or
# sanitizer report fails the run; the reproducer is left in build-fuzz/findings/ (replay it with
# QV_FUZZ_READER=READER build-fuzz/tests/fuzz/readers_fuzz FILE).
#   scripts/fuzz.sh [SECONDS] [READER...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
shift || true

# Seeds per reader (tests/fuzz/readers_fuzz.cpp): folders and files of real inputs it parses.
F=tests/fixtures
declare -A SEEDS=(
  [probe_scans]="$F/ifconfig $F/ethtool $F/ip-link $F/ipsec"
  [report_readings]="$F/ifconfig $F/route $F/ipsec $F/iwlist $F/iwconfig"
  [config_json]="examples $(echo tests/e2e/cases/*/*/input)"
  [credentials]="$F/stored-passwords"
  [dhcpcd]="$F/dhcpcd"
)

CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQV_FUZZ=ON \
  -DQV_BUILD_TESTS=OFF >/dev/null
cmake --build build-fuzz -j "$(nproc)"

readers=("$@")
[ ${#readers[@]} -gt 0 ] || readers=("${!SEEDS[@]}")
mkdir -p build-fuzz/findings
for reader in "${readers[@]}"; do
  corpus=build-fuzz/corpus/$reader
  mkdir -p "$corpus"
  for seed in ${SEEDS[$reader]}; do
    [ -e "$seed" ] || continue
    find "$seed" -type f -exec cp --backup=numbered -t "$corpus" {} +
  done
  dict=()
  [ -f "tests/fuzz/$reader.dict" ] && dict=(-dict="tests/fuzz/$reader.dict")
  echo "== $reader: ${seconds}s"
  QV_FUZZ_READER=$reader build-fuzz/tests/fuzz/readers_fuzz "${dict[@]}" -max_total_time="$seconds" \
    -print_final_stats=1 -artifact_prefix="build-fuzz/findings/$reader-" "$corpus" 2>&1 | tail -n 12
done
