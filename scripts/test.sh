#!/bin/bash
# Builds everything and runs every test: unit tests, the sandboxed end-to-end cases and the device
# lab (tests/lab, where the generated files drive the real daemons), the lab and the sandbox
# inside a throwaway chroot; the same under AddressSanitizer/UndefinedBehaviorSanitizer, static
# analysis and a fuzzing smoke run; then the Debian package for the board (arm64), built offline
# from its source package with its unit tests run under emulation; a short run of the benchmarks.
# Each stage is named as it starts; a failed stage does not stop the later ones (unless nothing
# can run without it), and the run ends with every stage's result and time, then the tests'
# "N passed, N failed" from CTest.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2

STAGES=(
  "packages|scripts/setup.sh && tests/lab/setup.sh|required"
  "build|scripts/build.sh|required"
  "format|scripts/check-format.sh"
  "unit, end-to-end and lab tests|run_ctest -E ^lab/radio$"
  "radio stage (VM, simulated radios)|run_ctest -R ^lab/radio$"
  "lab and sandbox inside a chroot|tests/lab/chroot-check.sh build/qv-netconf"
  "static analysis|scripts/static-analysis.sh"
  "sanitizers|scripts/sanitize.sh"
  "fuzzing smoke run|scripts/fuzz.sh ${QV_FUZZ_SECONDS:-30}"
  "Debian package for arm64|scripts/cross-build.sh arm64"
  "benchmarks, short run|run_benchmarks"
  "tests' share (informational)|scripts/test-share.sh"
)

# Each run's log is kept for the final count of passed and failed tests.
run_ctest() {
  (cd build && ctest --output-on-failure -j "$(nproc)" "$@") | tee -a build/ctest.log
}

# The benchmarks build and run, and each floor still agrees with the tool; their figures are not
# judged here (bench/RESULTS.md), so a missed target (status 3) does not fail the run.
run_benchmarks() {
  local status=0
  bench/run.sh --rounds 3 >build/bench-smoke.log 2>&1 || status=$?
  [ "$status" -eq 0 ] || [ "$status" -eq 3 ] ||
    { cat build/bench-smoke.log; echo "test.sh: the benchmark failed"; return 1; }
  status=0
  bench/run.sh --try --rounds 3 >build/try-bench-smoke.log 2>&1 || status=$?
  [ "$status" -eq 0 ] || [ "$status" -eq 3 ] ||
    { cat build/try-bench-smoke.log; echo "test.sh: the try's benchmark failed"; return 1; }
  bench/micro/run.sh --benchmark_min_time=0.001 >build/parser-bench-smoke.log 2>&1 ||
    { cat build/parser-bench-smoke.log; echo "test.sh: the parser benchmarks failed"; return 1; }
}

rm -f build/ctest.log
results=()
failures=0
stopped=
for index in "${!STAGES[@]}"; do
  IFS='|' read -r name command required <<<"${STAGES[$index]}"
  if [ -n "$stopped" ]; then
    results+=("$(printf '%-34s %-8s' "$name" "not run")")
    continue
  fi
  printf '\n== test.sh [%d/%d] %s: %s\n' $((index + 1)) ${#STAGES[@]} "$name" "$command"
  started=$SECONDS
  if eval "$command"; then result=passed; else
    result=FAILED
    failures=$((failures + 1))
    [ -n "$required" ] && stopped=1
  fi
  results+=("$(printf '%-34s %-8s %5d s' "$name" "$result" $((SECONDS - started)))")
  printf '== test.sh %s: %s\n' "$name" "$result"
done

echo
echo "test.sh: the stages"
printf '  %-34s %-8s %7s\n' stage result time
printf '  %s\n' "${results[@]}"
echo "test.sh: $failures of ${#STAGES[@]} stages failed, $SECONDS s in all"
total=0 failed=0
while read -r summary; do
  total=$((total + $(sed -E 's/.* out of ([0-9]+).*/\1/' <<<"$summary")))
  failed=$((failed + $(sed -E 's/.* ([0-9]+) tests failed.*/\1/' <<<"$summary")))
done < <(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' build/ctest.log 2>/dev/null)
echo "test.sh: $((total - failed)) passed, $failed failed"
[ "$failures" -eq 0 ]
