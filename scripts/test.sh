#!/bin/bash
# Builds everything and runs every test: unit tests and the sandboxed end-to-end cases; then builds
# the Debian package for the board (arm64) and runs its unit tests under emulation.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh
scripts/check-format.sh
(cd build && ctest --output-on-failure -j "$(nproc)")
scripts/cross-build.sh arm64
