#!/bin/bash
# The network files are replaced whole or not at all, in the sandbox:
# - set-config killed at many instants across its run (slowed utilities widen the windows) leaves
#   each of the five files whole-old or whole-new, and a caught signal leaves no temporary file;
# - a file system under /etc that fills up after four files ends the run with status 1 and the
#   reason, the fifth file unchanged (a full one from the start is a case of its own);
# - a resolver file that is a link stays a link, owners and modes are kept, a file that is a
#   mount point of its own or sits in a directory that takes no new file is written in place;
# - two runs started together write the five files of one config.json, probes never wait for
#   them, and a /run without room for the lock stops nothing.
#   durable-files.sh TOOL
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
FILES=(/etc/network/interfaces /etc/resolv.conf /etc/wpa_supplicant/wpa_supplicant.conf
       /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf)

if [ "${1:-}" != --inside ]; then
  WORK=$(mktemp -d /tmp/qv-durable.XXXXXX)
  trap 'rm -rf "$WORK"' EXIT
  "$HERE/sandbox.sh" --tool "$0" --out "$WORK/out" -- --inside "$(realpath "$1")" \
    "$HERE/../../examples/config.json"
  cat "$WORK/out/stdout" "$WORK/out/stderr"
  exit "$(cat "$WORK/out/status")"
fi

TOOL=$2
failures=0
fail() { echo "FAIL $*"; failures=$((failures + 1)); }
ok() { echo "ok   $*"; }
T=$(mktemp -d /run/qv-durable.XXXXXX)
SET_CONFIG=(set-config A /run/qv-case/config.json technician 'typed secret')

# Two config.json files that differ in every file written.
mkdir -p /run/qv-case
cp "$3" /run/qv-case/a.json
sed -e 's/Office-5G/Lab-2G/; s/10\.20\.0\./10.30.0./g; s/corp\.example/lab.example/' \
  -e 's/"5"/"2.4"/' "$3" >/run/qv-case/b.json

# Slow stand-ins for the derivations and the frequency list, so that a kill lands inside them too.
mkdir -p "$T/slow"
for utility in wpa_passphrase openssl; do
  printf '#!/bin/sh\nsleep 0.05\nexec /usr/bin/%s "$@"\n' "$utility" >"$T/slow/$utility"
done
rm -f /usr/bin/qv-get-freq-list
printf '#!/bin/sh\nsleep 0.05\necho 5180 5200 2412\n' >/usr/bin/qv-get-freq-list
chmod +x "$T"/slow/* /usr/bin/qv-get-freq-list
export PATH="$T/slow:$PATH"

mkdir -p /etc/network /etc/wpa_supplicant
old_files() {
  for f in "${FILES[@]}"; do rm -f "$f" && echo "old content of $f" >"$f"; done
  echo "nodev" >/etc/dhcpcd.conf
  chmod 600 /etc/wpa_supplicant/*.conf
}
snapshot() { for f in "${FILES[@]}"; do cp "$f" "$1/$(basename "$f")"; done; }
seconds() { printf '%d.%06d' $(($1 / 1000000)) $(($1 % 1000000)); }
temporaries() { find /etc /run -name '.*.qv-netconf.*' 2>/dev/null; }

# --- killed at any instant -------------------------------------------------------------------
mkdir -p "$T/old" "$T/new"
old_files
snapshot "$T/old"
cp /run/qv-case/a.json /run/qv-case/config.json
started=${EPOCHREALTIME/./}
"$TOOL" "${SET_CONFIG[@]}" >/dev/null 2>&1 || fail "an uninterrupted set-config failed"
run_us=$((${EPOCHREALTIME/./} - started))
snapshot "$T/new"
kills=60 torn=0
for ((i = 0; i < kills; i++)); do
  old_files
  delay_us=$((run_us * i / kills))
  (timeout -s KILL "$(seconds "$delay_us")" \
    "$TOOL" "${SET_CONFIG[@]}" >/dev/null 2>&1) 2>/dev/null || true
  for f in "${FILES[@]}"; do
    name=$(basename "$f")
    cmp -s "$f" "$T/old/$name" || cmp -s "$f" "$T/new/$name" || {
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
  "$TOOL" "${SET_CONFIG[@]}" >/dev/null 2>&1 &
  sleep "$(seconds $((run_us / 2)))"
  kill -s "$signal" $! 2>/dev/null
  wait $! || true
  [ -z "$(temporaries)" ] && ok "SIG$signal leaves no temporary file" ||
    fail "SIG$signal left $(temporaries)"
done

# --- durable: each temporary file synced before it is renamed, the directory synced after ------
strace -f -y -e trace=fsync,rename -o "$T/trace" "$TOOL" "${SET_CONFIG[@]}" >/dev/null 2>&1 || true
expected=$(for f in "${FILES[@]}"; do
  printf 'fsync %s/.%s.qv-netconf\nrename -> %s\nfsync %s\n' "$(dirname "$f")" "$(basename "$f")" "$f" "$(dirname "$f")"
done)
actual=$(sed -E -n -e 's/^[0-9]+ +fsync\([0-9]+<([^>]*)>\).*/fsync \1/p' \
  -e 's/^[0-9]+ +rename\("[^"]*", "([^"]*)"\).*/rename -> \1/p' "$T/trace" | sed -E 's/(qv-netconf)\.[A-Za-z0-9]{6}$/\1/')
[ "$actual" = "$expected" ] && ok "every file: temporary synced, renamed over it, directory synced" ||
  fail "the syncs and renames:" "$(diff <(echo "$expected") <(echo "$actual"))"

# --- a full file system under /etc -----------------------------------------------------------
full_etc() { # pages left free
  old_files
  snapshot "$T/old"
  mkdir -p "$T/full"
  mount -t tmpfs -o size=512k qv-full "$T/full"
  mkdir "$T/full/upper" "$T/full/work"
  mount -t overlay qv-full-etc -o "lowerdir=/etc,upperdir=$T/full/upper,workdir=$T/full/work" /etc
  dd if=/dev/zero of="$T/full/filler" bs=4k 2>/dev/null || true
  truncate -s "-$(($1 * 4))k" "$T/full/filler"
}
empty_etc() { umount /etc && umount "$T/full"; }
expect_full() { # pages-free failing-file files-replaced-before-it
  full_etc "$1"
  local status=0 replaced=0 f
  "$TOOL" set-config M /run/qv-case/config.json >"$T/stdout" 2>"$T/stderr" || status=$?
  for f in "${FILES[@]}"; do cmp -s "$f" "$T/old/$(basename "$f")" || replaced=$((replaced + 1)); done
  local expected="Error: File $2 cannot be written: No space left on device!"
  if [ "$status" = 1 ] && [ "$(cat "$T/stderr")" = "$expected" ] && cmp -s "$2" "$T/old/$(basename "$2")" &&
    [ "$replaced" = "$3" ] && [ -z "$(temporaries)" ] && ! grep -q "$2 file completed" "$T/stdout"; then
    ok "full /etc with $1 pages free: status 1, $2 unchanged, $3 files replaced before it"
  else
    fail "full /etc with $1 pages free: status $status, $replaced replaced, stderr: $(cat "$T/stderr")"
  fi
  empty_etc
}
expect_full 4 /etc/dhcpcd.conf 4

# --- links, owners, mount points -------------------------------------------------------------
old_files
mkdir -p /run/resolvconf
rm /etc/resolv.conf
ln -s ../run/resolvconf/resolv.conf /etc/resolv.conf
echo "old" >/run/resolvconf/resolv.conf
chown 1234:5678 /etc/network/interfaces /etc/wpa_supplicant/wpa_supplicant.conf
chmod 640 /etc/network/interfaces
chmod 644 /etc/wpa_supplicant/wpa_supplicant.conf
# The wired file is a mount point of its own (as a bind-mounted file in a container is), and
# longer than its new content, whose end must not keep the old tail.
seq 5000 >"$T/wired.conf"
mount --bind "$T/wired.conf" /etc/wpa_supplicant/wpa_supplicant_wired.conf
"$TOOL" "${SET_CONFIG[@]}" >/dev/null 2>&1 || fail "set-config over links and mount points failed"
same_as_new() { cmp -s "$1" "$T/new/$(basename "${2:-$1}")"; }
[ "$(readlink /etc/resolv.conf)" = ../run/resolvconf/resolv.conf ] && same_as_new /etc/resolv.conf &&
  ok "a resolver file that is a link stays a link; its target is replaced" ||
  fail "resolver link: $(ls -l /etc/resolv.conf)"
[ "$(stat -c '%u:%g %a' /etc/network/interfaces /etc/wpa_supplicant/wpa_supplicant.conf)" = \
  $'1234:5678 640\n1234:5678 600' ] && same_as_new /etc/network/interfaces &&
  ok "owners are kept, modes kept or tightened" ||
  fail "owners and modes: $(stat -c '%n %u:%g %a' /etc/network/interfaces /etc/wpa_supplicant/wpa_supplicant.conf)"
umount /etc/wpa_supplicant/wpa_supplicant_wired.conf
same_as_new "$T/wired.conf" /etc/wpa_supplicant/wpa_supplicant_wired.conf && [ -z "$(temporaries)" ] &&
  ok "a file that is a mount point of its own is written in place" || fail "mount point: $(head -c 80 "$T/wired.conf" | tr '\n' '|')"
# A directory that takes no new file, around a file that may be written.
old_files
chown 1234 /etc/wpa_supplicant/wpa_supplicant.conf /run/qv-case/a.json
setpriv --reuid=1234 --regid=1234 --clear-groups "$TOOL" set-wpa-config A /run/qv-case/a.json &&
  same_as_new /etc/wpa_supplicant/wpa_supplicant.conf && ok "a directory that takes no new file: written in place" ||
  fail "in place: $(cat /etc/wpa_supplicant/wpa_supplicant.conf)"

# --- concurrent runs, the lock ---------------------------------------------------------------
mkdir -p "$T/b"
old_files
cp /run/qv-case/b.json /run/qv-case/config.json
"$TOOL" "${SET_CONFIG[@]}" >/dev/null 2>&1
snapshot "$T/b"
mixed=0
for round in 1 2 3 4 5 6; do
  old_files
  "$TOOL" set-config A /run/qv-case/a.json technician 'typed secret' >/dev/null 2>&1 &
  "$TOOL" set-config A /run/qv-case/b.json technician 'typed secret' >/dev/null 2>&1 &
  wait
  from_a=0 from_b=0
  for f in "${FILES[@]}"; do
    cmp -s "$f" "$T/new/$(basename "$f")" && from_a=$((from_a + 1))
    cmp -s "$f" "$T/b/$(basename "$f")" && from_b=$((from_b + 1))
  done
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
mount -o remount,ro /run
"$TOOL" set-wpa-config A /run/qv-case/a.json >/dev/null 2>&1 && ok "a read-only /run does not stop a run" ||
  fail "set-wpa-config failed without a lock"
mount -o remount,rw /run

echo "$failures failed"
[ "$failures" = 0 ]
