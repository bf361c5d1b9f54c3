#!/bin/bash
# Builds everything with AddressSanitizer and UndefinedBehaviorSanitizer into build-sanitize/ and
# runs the unit and end-to-end tests against it: any report fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-sanitize -DCMAKE_BUILD_TYPE=Debug -DQV_SANITIZE=ON >/dev/null
cmake --build build-sanitize -j "$(nproc)"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:exitcode=99
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1:exitcode=99
(cd build-sanitize && ctest --output-on-failure -j "$(nproc)" -L 'unit|e2e')
