#!/bin/bash
# Prints the lines of code of each tree and the tests' share of them: non-blank, non-comment lines
# of .cpp .cc .h .hpp .c .py .sh files (case directories, fixtures and lists are data and are not
# counted). The files are found without git, which a source package and a bare machine lack; build
# trees and fetched sources are not the project's. Informational: always exits 0.
set -euo pipefail
cd "$(dirname "$0")/.."

lines() {
  find "$@" -type d \( -name 'build*' -o -name third_party \) -prune -o -type f \
    -regextype posix-extended -regex '.*\.(cpp|cc|h|hpp|c|py|sh)' -print0 2>/dev/null |
    xargs -0 -r cat | grep -cvE '^\s*(//.*|#.*|/?\*.*)?$' || true
}

unit_dirs=(tests/common tests/main tests/settings tests/credentials tests/generate tests/link
           tests/wireless tests/check tests/try)
src=$(lines src)
bench=$(lines bench)
scripts=$(lines scripts)
tests=$(lines tests)
printf '%-10s %6d\n' src "$src" bench "$bench" scripts "$scripts" tests "$tests"
unit=$(lines "${unit_dirs[@]}")
printf '  %-12s %6d\n' unit "$unit" support "$(lines tests/support)" e2e "$(lines tests/e2e)" \
  fuzz "$(lines tests/fuzz)" lab "$(lines tests/lab)" docs "$(lines tests/docs)" \
  mutants "$(lines tests/mutants)"
all=$((src + bench + scripts + tests))
awk -v t="$tests" -v a="$all" -v s="$src" 'BEGIN {
  printf "tests: %.1f %% of all the code (%d of %d lines), %.1f %% of src + tests\n",
         100 * t / a, t, a, 100 * t / (s + t) }'
