#!/bin/bash
# Builds everything and runs every test: unit tests, the sandboxed end-to-end cases and the device
# lab (tests/lab), where the generated files drive the real daemons.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
tests/lab/setup.sh
scripts/build.sh
scripts/check-format.sh
(cd build && ctest --output-on-failure -j "$(nproc)")
