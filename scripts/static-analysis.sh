#!/bin/bash
# clang-tidy (the checks of .clang-tidy, warnings as errors) and cppcheck over the sources.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
# The compile commands carry GCC's link-time optimisation flags, which clang does not know.
run-clang-tidy -quiet -extra-arg=-Wno-ignored-optimization-argument -p build "$PWD/src/" >build/clang-tidy.log 2>&1 || {
  grep -E "(warning|error):" build/clang-tidy.log | sort -u
  echo "clang-tidy found problems"
  exit 1
}
# The operations keep their by-value string parameters: that is the interface callers know.
cppcheck --enable=warning,performance,portability --std=c++17 --error-exitcode=1 \
  --suppress=passedByValue --inline-suppr --quiet -I src src
