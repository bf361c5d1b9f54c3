#!/bin/bash
# Configures and builds the tool and its tests into build/ (or only the given targets):
#   scripts/build.sh [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
targets=()
for target in "$@"; do targets+=(--target "$target"); done
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQV_BUILD_TESTS=ON >/dev/null
cmake --build build -j "$(nproc)" "${targets[@]}"
