#!/bin/bash
# Builds the libFuzzer targets with clang into build-fuzz/ and runs each for SECONDS (default 30)
# from a seed corpus of the real captures in tests/fixtures/. A crash, leak or sanitizer report
# fails the run; the reproducer is left in build-fuzz/findings/.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
shift || true

# Seeds per target: folders and files of real inputs whose text the target parses.
F=tests/fixtures
declare -A SEEDS=(
  [probe_scans_fuzz]="$F/ifconfig $F/ethtool $F/ip-link $F/ipsec"
  [report_readings_fuzz]="$F/ifconfig $F/route $F/ipsec $F/iwlist $F/iwconfig"
  [config_json_fuzz]="examples $(echo tests/e2e/cases/*/*/input)"
  [credentials_fuzz]="$F/stored-passwords"
  [dhcpcd_fuzz]="$F/dhcpcd"
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
    [ -e "$seed" ] || continue
    find "$seed" -type f -exec cp --backup=numbered -t "$corpus" {} +
  done
  dict=()
  [ -f "tests/fuzz/${target%_fuzz}.dict" ] && dict=(-dict="tests/fuzz/${target%_fuzz}.dict")
  echo "== $target: ${seconds}s"
  "build-fuzz/tests/fuzz/$target" "${dict[@]}" -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="build-fuzz/findings/$target-" "$corpus" 2>&1 | tail -n 12
done
