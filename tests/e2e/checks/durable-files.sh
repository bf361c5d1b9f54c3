#!/bin/bash
# The network files are replaced whole or not at all, in the sandbox:
# - set-config killed at many instants across its run (slowed utilities widen the windows) leaves
#   each of the five files whole-old or whole-new, and a caught signal leaves no temporary file;
# - each temporary file is synced before it is renamed over the old one, the directory after;
# - a file in a directory that takes no new file is written in place;
# - two runs started together write the five files of one config.json, and probes never wait for
#   them.
# (A full medium, links, owners, mount points and a read-only /run are cases of set-config and
# set-wpa-config.)
#   durable-files.sh TOOL
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
FILES=(/etc/network/interfaces /etc/resolv.conf /etc/wpa_supplicant/wpa_supplicant.conf
       /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf)

if [ "${1:-}" != --inside ]; then
  WORK=$(mktemp -d /tmp/qv-durable.XXXXXX)
  trap 'rm -rf "$WORK"' EXIT
  # checks/durable-files/input/: two config.json files that differ in every file written.
  "$HERE/sandbox.sh" --tool "$0" --case "$HERE/checks/durable-files" --out "$WORK/out" \
    -- --inside "$(realpath "$1")"
  cat "$WORK/out/stdout" "$WORK/out/stderr"
  exit "$(cat "$WORK/out/status")"
fi

TOOL=$2
failures=0
fail() { echo "FAIL $*"; failures=$((failures + 1)); }
ok() { echo "ok   $*"; }
T=$(mktemp -d /run/qv-durable.XXXXXX)
set_config=(set-config A /run/qv-case/a.json technician 'typed secret')

# Slow stand-ins for the derivations and the frequency list, so that a kill lands inside them too.
mkdir -p "$T/slow"
for utility in wpa_passphrase openssl; do
  printf '#!/bin/sh\nsleep 0.05\nexec /usr/bin/%s "$@"\n' "$utility" >"$T/slow/$utility"
done
rm -f /usr/bin/qv-get-freq-list
printf '#!/bin/sh\nsleep 0.05\necho 5180 5200 2412\n' >/usr/bin/qv-get-freq-list
chmod +x "$T"/slow/* /usr/bin/qv-get-freq-list
export PATH="$T/slow:$PATH"

old_files() {
  for f in "${FILES[@]}"; do rm -f "$f" && echo "old content of $f" >"$f"; done
  echo "nodev" >/etc/dhcpcd.conf
  chmod 600 /etc/wpa_supplicant/*.conf
}
snapshot() { mkdir -p "$1" && for f in "${FILES[@]}"; do cp "$f" "$1/$(basename "$f")"; done; }
same() { cmp -s "$1" "$2/$(basename "$1")"; } # file snapshot
matching() { # snapshot: how many of the files match it
  local f n=0
  for f in "${FILES[@]}"; do same "$f" "$1" && n=$((n + 1)); done
  echo "$n"
}
seconds() { printf '%d.%06d' $(($1 / 1000000)) $(($1 % 1000000)); }
temporaries() { find /etc /run -name '.*.qv-netconf.*' 2>/dev/null; }

# --- killed at any instant -------------------------------------------------------------------
old_files
snapshot "$T/old"
started=${EPOCHREALTIME/./}
"$TOOL" "${set_config[@]}" >/dev/null 2>&1 || fail "an uninterrupted set-config failed"
run_us=$((${EPOCHREALTIME/./} - started))
snapshot "$T/new"
kills=60 torn=0
for ((i = 0; i < kills; i++)); do
  old_files
  delay_us=$((run_us * i / kills))
  (timeout -s KILL "$(seconds "$delay_us")" \
    "$TOOL" "${set_config[@]}" >/dev/null 2>&1) 2>/dev/null || true
  for f in "${FILES[@]}"; do
    same "$f" "$T/old" || same "$f" "$T/new" || {
      torn=$((torn + 1))
      echo "  killed after ${delay_us} us: $f is neither old nor new: $(head -c 80 "$f" | tr '\n' '|')"
    }
  done
done
[ "$torn" = 0 ] && ok "killed at $kills instants over $run_us us: every file whole-old or whole-new" ||
  fail "killed set-config left $torn torn files"
temporaries | xargs -r rm -f
# (Not SIGINT: a background job of a script ignores it, and the tool keeps it ignored.)
for signal in TERM HUP ALRM; do
  old_files
  "$TOOL" "${set_config[@]}" >/dev/null 2>&1 &
  sleep "$(seconds $((run_us / 2)))"
  kill -s "$signal" $! 2>/dev/null
  wait $! || true
  [ -z "$(temporaries)" ] && ok "SIG$signal leaves no temporary file" ||
    fail "SIG$signal left $(temporaries)"
done

# --- durable: each temporary file synced before it is renamed, the directory synced after ------
strace -f -y -e trace=fsync,rename -o "$T/trace" "$TOOL" "${set_config[@]}" >/dev/null 2>&1 || true
expected=$(for f in "${FILES[@]}"; do
  printf 'fsync %s/.%s.qv-netconf\nrename -> %s\nfsync %s\n' "$(dirname "$f")" "$(basename "$f")" "$f" "$(dirname "$f")"
done)
actual=$(sed -E -n -e 's/^[0-9]+ +fsync\([0-9]+<([^>]*)>\).*/fsync \1/p' \
  -e 's/^[0-9]+ +rename\("[^"]*", "([^"]*)"\).*/rename -> \1/p' "$T/trace" | sed -E 's/(qv-netconf)\.[A-Za-z0-9]{6}$/\1/')
[ "$actual" = "$expected" ] && ok "every file: temporary synced, renamed over it, directory synced" ||
  fail "the syncs and renames:" "$(diff <(echo "$expected") <(echo "$actual"))"

# --- in place ---------------------------------------------------------------------------------
# A directory that takes no new file, around a file that may be written.
old_files
chown 1234 /etc/wpa_supplicant/wpa_supplicant.conf /run/qv-case/a.json
setpriv --reuid=1234 --regid=1234 --clear-groups "$TOOL" set-wpa-config A /run/qv-case/a.json &&
  same /etc/wpa_supplicant/wpa_supplicant.conf "$T/new" && ok "a directory that takes no new file: written in place" ||
  fail "in place: $(cat /etc/wpa_supplicant/wpa_supplicant.conf)"

# --- concurrent runs, the lock ---------------------------------------------------------------
old_files
"$TOOL" set-config A /run/qv-case/b.json technician 'typed secret' >/dev/null 2>&1
snapshot "$T/b"
mixed=0
for round in 1 2 3 4 5 6; do
  old_files
  "$TOOL" "${set_config[@]}" >/dev/null 2>&1 &
  "$TOOL" set-config A /run/qv-case/b.json technician 'typed secret' >/dev/null 2>&1 &
  wait
  from_a=$(matching "$T/new") from_b=$(matching "$T/b")
  [ "$from_a" = 5 ] || [ "$from_b" = 5 ] || { mixed=$((mixed + 1)); echo "  round $round: $from_a from a, $from_b from b"; }
done
[ "$mixed" = 0 ] && ok "two runs started together: the five files come from one config.json" ||
  fail "$mixed of 6 rounds mixed two config.json files"
flock /run/qv-netconf.lock sleep 60 >/dev/null 2>&1 &
holder=$!
sleep 0.5
timeout 20 "$TOOL" is-wired-on A >/dev/null && ok "a probe does not wait for a writing run" ||
  fail "a probe waited for the lock"
pkill -P "$holder"
wait

echo "$failures failed"
[ "$failures" = 0 ]
