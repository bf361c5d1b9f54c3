#!/bin/bash
# Hostile answers from the utilities, end to end: a 10 000-cell scan, a megabyte of garbage from
# every utility, a utility that never stops writing and one that stalls. Each run must succeed,
# with no crash. (Hostile config.json files and typed credentials are cases of config-json.)
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
TOOL=$(realpath "$1")
W=$(mktemp -d /tmp/qv-hostile.XXXXXX)
trap 'rm -rf "$W"' EXIT
failures=0
fail() { echo "FAIL $*"; failures=$((failures + 1)); }

# trial NAME SETUP ARGS... : SETUP runs with $c the case directory; the run must succeed.
trial() {
  local name=$1 c=$W/$1
  mkdir -p "$c/fakes"
  eval "$2"
  "$HERE/sandbox.sh" --tool "$TOOL" --case "$c" --out "$c/out" -- "${@:3}"
  if [ "$(cat "$c/out/status")" != 0 ] || grep -qE 'Sanitizer|runtime error' "$c/out/stderr"; then
    fail "$name: status $(cat "$c/out/status")" "$(head -c 2000 "$c/out/stderr")"
  else
    echo "ok   $name"
  fi
}

python3 - "$HERE/../fixtures/iwlist/rpi-brcmfmac-20-cells-dual-band.txt" "$W/scan.txt" <<'PY'
import sys
head, *cells = open(sys.argv[1]).read().split("          Cell ")
out = [head] + ["          Cell %02d%s" % (n + 1, cells[n % len(cells)][2:]) for n in range(10000)]
open(sys.argv[2], "w").write("".join(out))
PY
head -c 1048576 /dev/urandom >"$W/garbage"
ROUTE='0.0.0.0         10.0.0.1        0.0.0.0         UG    0      0        0 eth0'

trial scan-10000-cells 'mkdir -p $c/fakes/iwlist; cp $W/scan.txt $c/fakes/iwlist/wlan0_scan.out' \
  get-wifi-list A
[ "$(grep -c '"ssid"' "$W/scan-10000-cells/out/stdout")" = 8000 ] || fail "scan-10000-cells: not 8000 entries"
garbage='for u in ifconfig route ipsec iwlist iwconfig ethtool ip; do
  mkdir -p $c/fakes/$u; cp $W/garbage $c/fakes/$u/any.out; done'
for command in get-eth0-parameters get-default-gateway get-ipsec-parameters get-wifi-list \
  check-wireless-point is-wired-linked is-wlan0-connected is-ipsec-connected; do
  trial "garbage-$command" "$garbage" "$command" M
done
# The first default route ends the reading, so an endless writer is cut off.
trial endless-writer 'mkdir -p $c/fakes/route; mkfifo $c/fakes/route/any.out
  (yes "$ROUTE" >$c/fakes/route/any.out 2>/dev/null &)' get-default-gateway A
# A stalled utility is waited for: the reply comes once it ends.
start=$(date +%s)
trial stalled-writer 'mkdir -p $c/fakes/route; mkfifo $c/fakes/route/any.out
  ( (echo "$ROUTE"; sleep 2) >$c/fakes/route/any.out &)' get-default-gateway A
[ $(($(date +%s) - start)) -ge 2 ] || fail "stalled-writer: not waited for"

[ "$failures" -eq 0 ] || exit 1
