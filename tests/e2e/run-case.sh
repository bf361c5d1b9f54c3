#!/bin/bash
# Runs one end-to-end case directory in the sandbox and compares what happened with its expect/:
#   stdout, stderr (absent: must be empty), status (absent: 0), commands (the fakes' log, checked
#   only when present), syslog (the lines sent to the system log, checked when present and a
#   LOG_SINK is given; an empty file: nothing logged; otherwise the case runs with no log socket
#   at all, as on a machine without a logger),
#   files/<PATH> (the sandbox's PATH after the run), modes ("MODE PATH" lines; a link: 777),
#   owners ("UID:GID PATH" lines), absent (paths or patterns that must match nothing afterwards).
#   run-case.sh TOOL CASE_DIR [LOG_SINK]
set -uo pipefail

HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
TOOL=$1
CASE=$(realpath "$2")
LOG_SINK=${3:-}
EXPECT=$CASE/expect
OUT=$(mktemp -d /tmp/qv-case.XXXXXX)
trap 'rm -rf "$OUT"' EXIT

# A list of expect/ that is absent is empty.
listed() { cat "$EXPECT/$1" 2>/dev/null; }
expected_files() { find "$EXPECT/files" -type f 2>/dev/null; }

exports=()
while IFS= read -r file; do exports+=(--export "/${file#"$EXPECT/files/"}"); done < <(expected_files)
while read -r first second; do exports+=(--export "${second:-$first}"); done \
  < <(listed modes; listed owners; listed absent)
[ -n "$LOG_SINK" ] && [ -f "$EXPECT/syslog" ] && exports+=(--log-sink "$LOG_SINK")
"$HERE/sandbox.sh" --tool "$TOOL" --case "$CASE" --out "$OUT" "${exports[@]}" || exit 1

failed=0
same() { # expected actual label
  if ! cmp -s "$1" "$2"; then
    echo "--- $3 differs (expected, then actual):"
    diff <(cat -A "$1") <(cat -A "$2" 2>&1) | head -n 60
    failed=1
  fi
}

same "$EXPECT/stdout" "$OUT/stdout" stdout
if [ -f "$EXPECT/stderr" ]; then same "$EXPECT/stderr" "$OUT/stderr" stderr; else same /dev/null "$OUT/stderr" stderr; fi
if [ -f "$EXPECT/status" ]; then same "$EXPECT/status" "$OUT/status" status; else same <(echo 0) "$OUT/status" status; fi
[ -f "$EXPECT/commands" ] && same "$EXPECT/commands" "$OUT/commands" commands
[ -n "$LOG_SINK" ] && [ -f "$EXPECT/syslog" ] && same "$EXPECT/syslog" "$OUT/syslog" syslog
while IFS= read -r file; do
  same "$file" "$OUT/files/${file#"$EXPECT/files/"}" "/${file#"$EXPECT/files/"}"
done < <(expected_files)
for list in modes owners; do
  while read -r value path; do
    grep -qxF "$value $path" "$OUT/$list" ||
      { echo "--- $list of $path: expected $value, got: $(grep " $path\$" "$OUT/$list")"; failed=1; }
  done < <(listed "$list")
done
while read -r path; do
  ! compgen -G "$OUT/files$path" >/dev/null || { echo "--- $path exists"; failed=1; }
done < <(listed absent)
exit $failed
