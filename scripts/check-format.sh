#!/bin/bash
# Fails when a C++ file differs from the project's clang-format style.
set -euo pipefail
cd "$(dirname "$0")/.."
files=$(git ls-files '*.cpp' '*.h' 2>/dev/null || find src tests -name '*.cpp' -o -name '*.h')
[ -n "$files" ] || exit 0
# shellcheck disable=SC2086
clang-format --dry-run --Werror $files
