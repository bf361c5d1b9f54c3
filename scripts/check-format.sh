#!/bin/bash
# Fails when a C or C++ file differs from the project's clang-format style.
set -euo pipefail
cd "$(dirname "$0")/.."
files=$(git ls-files '*.cpp' '*.h' '*.c' 2>/dev/null || find src tests bench -name '*.cpp' -o -name '*.h' -o -name '*.c')
[ -n "$files" ] || exit 0
# shellcheck disable=SC2086
clang-format --dry-run --Werror $files
