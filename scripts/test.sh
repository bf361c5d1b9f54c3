#!/bin/bash
# Builds everything and runs every test: unit tests, the sandboxed end-to-end cases and the device
# lab (tests/lab, where the generated files drive the real daemons); the same under
# AddressSanitizer/UndefinedBehaviorSanitizer, static analysis and a fuzzing smoke run; then the
# Debian package for the board (arm64), with its unit tests run under emulation.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
tests/lab/setup.sh
scripts/build.sh
scripts/check-format.sh
(cd build && ctest --output-on-failure -j "$(nproc)") | tee build/ctest.log
scripts/static-analysis.sh
scripts/sanitize.sh
scripts/fuzz.sh "${QV_FUZZ_SECONDS:-30}"
scripts/cross-build.sh arm64
summary=$(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' build/ctest.log | tail -n 1)
total=$(sed -E 's/.* out of ([0-9]+).*/\1/' <<<"$summary")
failed=$(sed -E 's/.* ([0-9]+) tests failed.*/\1/' <<<"$summary")
echo "test.sh: $((total - failed)) passed, $failed failed"
