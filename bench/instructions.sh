#!/bin/bash
# Run inside the benchmark's sandbox by bench/run.sh --instructions: counts the instructions the
# tool and each floor execute themselves (callgrind, children not followed) for each command.
# Repeatable whatever the machine is doing, unlike the times.
#   instructions.sh TOOL FLOOR_DIR "COMMAND ARG..."...
set -euo pipefail
tool=$1 floors=$2
shift 2
count() {
  valgrind --tool=callgrind --callgrind-out-file=/dev/null "$@" 2>&1 >/dev/null |
    sed -n 's/.*Collected : \([0-9]*\).*/\1/p'
}
echo "| command | tool instructions | floor instructions | ratio |"
echo "|---|---:|---:|---:|"
for line in "$@"; do
  read -ra words <<<"$line"
  tool_count=$(count "$tool" "${words[@]}")
  floor_count=$(count "$floors/${words[0]}" "${words[@]}")
  printf '| `%s` | %d | %d | %.3f |\n' "$line" "$tool_count" "$floor_count" \
    "$(awk "BEGIN { print $tool_count / $floor_count }")"
done
