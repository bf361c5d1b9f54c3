#!/bin/bash
# qv-netconf-try in the sandbox, where one try after another needs the state of the last:
# - it writes what set-config writes; --confirm keeps it, a second try is refused meanwhile, and
#   one right after the confirmation is watched;
# - the record of the five files is synced before the first of them is replaced;
# - killed (try, watcher and all, as a power cut stops them) at many instants while recording,
#   writing, applying, waiting and rolling back, then the boot entry: the five files are all
#   previous or all new as the confirmation says, and nothing of the try is left;
# - --confirm at the very deadline: confirmed or rolled back, never both, and the reply says which;
# - the watcher: detached from its caller, rolls back when stopped, kills a check that hangs at
#   the deadline, and once lost is noticed by the next call;
# - the state is readable by root alone, and checker errors are refused unless forced.
#   try.sh TOOL (qv-netconf-try is taken from beside it)
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
FILES=(/etc/network/interfaces /etc/resolv.conf /etc/wpa_supplicant/wpa_supplicant.conf
       /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf)
STATE=/var/lib/qv-netconf

if [ "${1:-}" != --inside ]; then
  WORK=$(mktemp -d /tmp/qv-try.XXXXXX)
  trap 'rm -rf "$WORK"' EXIT
  tool=$(realpath "$1")
  # checks/durable-files/input/: two config.json files that differ in every file written.
  "$HERE/sandbox.sh" --tool "$0" --case "$HERE/checks/durable-files" --out "$WORK/out" \
    -- --inside "$tool" "$(dirname "$tool")/qv-netconf-try"
  cat "$WORK/out/stdout" "$WORK/out/stderr"
  exit "$(cat "$WORK/out/status")"
fi

TOOL=$2 TRY=$3
failures=0
fail() { echo "FAIL $*"; failures=$((failures + 1)); }
ok() { echo "ok   $*"; }
check() { # label command...: ok when the command succeeds
  local label=$1
  shift
  if "$@"; then ok "$label"; else fail "$label"; fi
}
T=$(mktemp -d /run/qv-try.XXXXXX)
A=/run/qv-case/a.json B=/run/qv-case/b.json
CREDENTIALS=(technician 'typed secret')

# The link utilities take a while, as on a board, so that kills land inside them too.
mkdir -p "$T/slow"
for utility in ifup ifdown; do
  printf '#!/bin/sh\nsleep 0.05\nPATH=${PATH#*:} exec %s "$@"\n' "$utility" >"$T/slow/$utility"
done
chmod +x "$T"/slow/*
export PATH="$T/slow:$PATH"

old_files() {
  local f
  for f in "${FILES[@]}"; do rm -f "$f" && echo "old content of $f" >"$f"; done
  chmod 600 /etc/wpa_supplicant/*.conf
}
snapshot() { mkdir -p "$1" && for f in "${FILES[@]}"; do cp "$f" "$1/$(basename "$f")"; done; }
all_like() { # snapshot: every file as in it
  local f
  for f in "${FILES[@]}"; do cmp -s "$f" "$1/$(basename "$f")" || return 1; done
}
# The processes of the companion in this sandbox: the try, its writer and its watcher.
ours() {
  local exe mine
  mine=$(readlink /proc/self/ns/mnt)
  for exe in $(find /proc -mindepth 2 -maxdepth 2 -name exe -lname "$TRY" 2>/dev/null); do
    [ "$(readlink "${exe%/exe}/ns/mnt" 2>/dev/null)" = "$mine" ] && basename "${exe%/exe}"
  done
  true
}
watcher() { ours | while read -r pid; do grep -qz -- --watch "/proc/$pid/cmdline" && echo "$pid"; done; }
stop_all() { ours | xargs -r kill -KILL 2>/dev/null || true; }
leftovers() { find /etc "$STATE" -name '.*qv-netconf*' 2>/dev/null; [ ! -e "$STATE/try.json" ] || echo "$STATE/try.json"; }
wait_for_watcher() { # prints its PID
  local i pid
  for ((i = 0; i < 100; i++)); do
    pid=$(watcher)
    [ -n "$pid" ] && echo "$pid" && return 0
    sleep 0.1
  done
  return 1
}
wait_for_watcher_end() {
  local i
  for ((i = 0; i < 100; i++)); do [ -z "$(watcher)" ] && return 0 || sleep 0.1; done
  return 1
}
seconds() { printf '%d.%06d' $(($1 / 1000000)) $(($1 % 1000000)); }

# --- the same bytes as set-config; confirmed and kept ------------------------------------------
old_files
snapshot "$T/old"
"$TOOL" set-config A "$A" "${CREDENTIALS[@]}" >/dev/null 2>&1
snapshot "$T/a"
"$TOOL" set-config A "$B" "${CREDENTIALS[@]}" >/dev/null 2>&1
snapshot "$T/b"
old_files
"$TRY" --force "$A" "${CREDENTIALS[@]}" >"$T/reply" 2>&1 || fail "a forced try failed: $(cat "$T/reply")"
check "a try writes what set-config writes" all_like "$T/a"
check "the state directory and all in it are root's alone" \
  test "$(stat -c %a $STATE)" = 700 -a -z "$(find $STATE -perm /077 -type f)"
"$TRY" --force "$B" >"$T/second" 2>&1 && fail "a second try while one is pending was taken"
check "a second try is refused, naming the pending one and the commands" \
  grep -q "the try of $A is pending.*--confirm.*--rollback.*--status" "$T/second"
check "the refused second try changed nothing" all_like "$T/a"
"$TRY" --confirm >"$T/reply" || fail "--confirm failed"
check "--confirm says so" grep -q "^confirmed: $A: by qv-netconf-try --confirm" "$T/reply"
check "a confirmed try stays" all_like "$T/a"
# At once, while the last watcher may still be looking: it takes up the new try.
"$TRY" --force --wait --timeout 1 "$B" "${CREDENTIALS[@]}" >"$T/reply" 2>&1 || true
check "a try right after a confirmation is watched and rolled back" \
  grep -q "^rolled back: $B: not confirmed within 1 s" "$T/reply"
check "back to the confirmed files" all_like "$T/a"
wait_for_watcher_end || fail "the watcher outlived the tries"
"$TRY" --confirm >"$T/reply" 2>&1 && fail "--confirm with nothing pending succeeded"
check "--confirm with nothing pending says so and names the last" \
  grep -q "no try is pending; the last try, of $B, was rolled back" "$T/reply"

# --- the record is synced before the first file is replaced -----------------------------------
old_files
strace -f -y -e trace=fsync,rename -o "$T/trace" "$TRY" --force --wait --timeout 1 "$A" >/dev/null 2>&1 || true
steps=$(sed -E -n -e 's/^[0-9]+ +fsync\([0-9]+<([^>]*)>\).*/fsync \1/p' \
  -e 's/^[0-9]+ +rename\("[^"]*", "([^"]*)"\).*/rename \1/p' "$T/trace" |
  sed -E 's/\.qv-netconf\.[A-Za-z0-9]{6}$/.tmp/' | awk '/ \/etc\// {exit} {print}' | tail -n 3)
check "the record is synced, renamed and its directory synced before /etc is touched" \
  test "$steps" = "$(printf 'fsync %s/.try.json.tmp\nrename %s/try.json\nfsync %s' $STATE $STATE $STATE)"
check "a rolled-back try puts back all five files" all_like "$T/old"

# --- killed at any instant, then the boot entry -------------------------------------------------
kill_round() { # delay_us try-arguments...
  local delay=$1 outcome
  shift
  old_files
  rm -f "$STATE/last.json"
  "$TRY" "$@" >/dev/null 2>&1 &
  sleep "$(seconds "$delay")"
  kill -KILL $! 2>/dev/null || true
  stop_all
  wait 2>/dev/null || true
  "$TRY" --boot >/dev/null 2>&1 || echo "  the boot entry failed after ${delay} us"
  outcome=$("$TRY" --status | sed -E -n 's/^last: (confirmed|rolled back) .*/\1/p')
  if [ "$outcome" = confirmed ]; then all_like "$T/a" || echo "  after ${delay} us: confirmed, not all new"
  else all_like "$T/old" || echo "  after ${delay} us: ${outcome:-no outcome}, not all previous"; fi
  [ -z "$(leftovers)" ] || echo "  after ${delay} us: left $(leftovers | tr '\n' ' ')"
}
kill_series() { # label rounds try-arguments...
  local label=$1 rounds=$2 started run_us i
  shift 2
  old_files
  started=${EPOCHREALTIME/./}
  "$TRY" "$@" >/dev/null 2>&1 || true
  wait_for_watcher_end
  run_us=$((${EPOCHREALTIME/./} - started))
  # (The shell's notes of its killed jobs are not findings.)
  for ((i = 0; i < rounds; i++)); do kill_round $((run_us * i / rounds)) "$@"; done >"$T/torn" 2>/dev/null
  [ -s "$T/torn" ] && fail "$label:" "$(cat "$T/torn")" ||
    ok "$label: killed at $rounds instants over $run_us us, then booted: one whole set each time"
}
kill_series "rolled back" 24 --force --wait --timeout 1 "$A" "${CREDENTIALS[@]}"
kill_series "confirmed by its check" 16 --force --confirm-when true "$A" "${CREDENTIALS[@]}"

# --- the confirmation race ------------------------------------------------------------------------
both=0 said_wrong=0 ways=
for offset_ms in 920 980 1000 1020 1080; do
  old_files
  "$TRY" --force --timeout 1 "$A" "${CREDENTIALS[@]}" >/dev/null 2>&1
  sleep "$(seconds $((offset_ms * 1000)))"
  "$TRY" --confirm >"$T/reply" 2>&1 || true
  wait_for_watcher_end
  if grep -q '^confirmed:' "$T/reply"; then
    ways="$ways c"
    all_like "$T/a" || { both=$((both + 1)); echo "  confirmed at ${offset_ms} ms, but not kept"; }
  else
    ways="$ways r"
    grep -q 'was rolled back\|^rolled back:' "$T/reply" || said_wrong=$((said_wrong + 1))
    all_like "$T/old" || { both=$((both + 1)); echo "  not confirmed at ${offset_ms} ms, but kept"; }
  fi
done
[ "$both" = 0 ] && [ "$said_wrong" = 0 ] &&
  ok "--confirm at the deadline: one way each time, and the reply says which ($ways)" ||
  fail "--confirm at the deadline: $both both ways, $said_wrong replies not saying which"

# --- the watcher ------------------------------------------------------------------------------------
old_files
setsid bash -c "\"$TRY\" --force --timeout 30 \"$A\" >/dev/null 2>&1; sleep 30" &
caller=$!
pid=$(wait_for_watcher || true)
check "the watcher is in a session of its own, without a terminal" \
  test -n "$pid" -a "$(ps -o sid= -p "$pid" | tr -d ' ')" != "$caller" -a \
  "$(ps -o sid= -p "$pid" | tr -d ' ')" != "$(ps -o sid= -p $$ | tr -d ' ')" -a "$(ps -o tty= -p "$pid" | tr -d ' ')" = "?"
{ kill -KILL -- "-$caller" && wait "$caller"; } 2>/dev/null || true
check "the watcher survives its caller's process group" test -n "$(watcher)"
kill -TERM "$(watcher)"
wait_for_watcher_end
check "a stopped watcher rolls back" all_like "$T/old"
check "and says why" grep -q "^last: rolled back $A at .*: its watcher was stopped" <("$TRY" --status)

"$TRY" --force --timeout 30 "$A" >/dev/null 2>&1
kill -KILL "$(wait_for_watcher)"
sleep 0.2
check "a lost watcher is noticed and started again by --status" \
  grep -q "watcher started again" <("$TRY" --status)
kill -KILL "$(wait_for_watcher)"
"$TRY" --confirm >"$T/reply" 2>&1
check "a try whose watcher is gone is not confirmed silently" grep -q "its watcher had stopped" "$T/reply"

old_files
"$TRY" --force --timeout 3 "$A" >/dev/null 2>&1
kill -KILL "$(wait_for_watcher)"
sleep 3.5
"$TRY" --status >"$T/reply"
check "past the deadline, the next call rolls back a try whose watcher is lost" \
  grep -q "^last: rolled back $A" "$T/reply"
check "and puts the files back" all_like "$T/old"

started=$SECONDS
"$TRY" --force --wait --timeout 2 --confirm-when 'sleep 600' "$A" >/dev/null 2>&1 && fail "a hanging check confirmed"
check "a check that hangs is killed at the deadline" test -z "$(pgrep -f '^sleep 600')" -a $((SECONDS - started)) -lt 20

# --- refusals -------------------------------------------------------------------------------------
old_files
"$TRY" "$A" >"$T/reply" 2>&1 && fail "checker errors were not refused"
check "checker errors are refused, with the findings, and change nothing" \
  grep -q "error: network settings/interfaces/eth/ca certificate" "$T/reply"
check "nothing changed after the refusal" all_like "$T/old"

stop_all
echo "$failures failed"
[ "$failures" = 0 ]
