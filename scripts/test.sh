#!/bin/bash
# Builds everything and runs every test: unit tests and the sandboxed end-to-end cases.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh
scripts/check-format.sh
(cd build && ctest --output-on-failure -j "$(nproc)")
