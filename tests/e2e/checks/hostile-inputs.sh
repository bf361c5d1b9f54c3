#!/bin/bash
# Hostile inputs end to end: a 50 MB config.json, JSON nested past the reader's limit, invalid
# UTF-8 in every string, shell metacharacters in the SSID and stored pass phrases, a 10 000-cell
# scan, a megabyte of garbage from every utility, a utility that never stops writing and one that
# stalls. Each must end with its specified status, with no crash and nothing run from the data.
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
ROOT=$(cd "$HERE/../.." && pwd)
TOOL=$(realpath "$1")
W=$(mktemp -d /tmp/qv-hostile.XXXXXX)
trap 'rm -rf "$W"' EXIT
failures=0

# trial NAME EXPECTED_STATUS SETUP ARGS... : SETUP runs with $c the case directory.
trial() {
  local name=$1 expected=$2 setup=$3
  shift 3
  local c=$W/$name
  mkdir -p "$c/input" "$c/etc/network" "$c/fakes/qv-get-freq-list"
  printf 'nodev\n' >"$c/etc/dhcpcd.conf"
  eval "$setup"
  "$HERE/sandbox.sh" --tool "$TOOL" --case "$c" --out "$c/out" -- "$@"
  local status
  status=$(cat "$c/out/status")
  if [ "$status" != "$expected" ] || grep -qE 'Sanitizer|runtime error' "$c/out/stderr"; then
    echo "FAIL $name: status $status (expected $expected)"
    head -c 2000 "$c/out/stderr"
    failures=$((failures + 1))
  else
    echo "ok   $name: status $status"
  fi
}

python3 - "$ROOT/examples/config.json" "$W" <<'PY'
import json, re, sys
example, w = sys.argv[1], sys.argv[2]
base = json.load(open(example))
big = dict(base, padding=["x" * 1000] * 50000)
open(f"{w}/big.json", "w").write(json.dumps(big))
open(f"{w}/deep.json", "w").write('{"network settings":' + "[" * 100000 + "]" * 100000 + "}")
raw = json.dumps(base).encode()
open(f"{w}/bad-utf8.json", "wb").write(
    re.sub(rb'": "([^"]*)"', lambda m: b'": "' + m.group(1) + b'\xff\xfe\xc3("', raw))
wlan = base["network settings"]["interfaces"]["wlan"]
wlan["ssid"] = "it's \"my\" `touch /tmp/qv-pwned-1` $(touch /tmp/qv-pwned-2) ; \\ new\nline"
open(f"{w}/metachars.json", "w").write(json.dumps(base))
PY
# A stored pass phrase full of shell metacharacters, in the real stored form.
stored=$(printf '%s' "pa's\"\`touch /tmp/qv-pwned-3\`\$(touch /tmp/qv-pwned-4);x" |
  openssl enc -aes-128-cbc -K 3f9c0a7e51d2b846e0c7195a2bd46f83 -iv 8e21d7c4096fa35b7c1e48d0f2a9365b |
  base64 -w0)
sed -i "s|\"passphrase\": \"[^\"]*\"|\"passphrase\": \"$stored\"|" "$W/metachars.json"
python3 - "$ROOT/tests/fixtures/iwlist/rpi-brcmfmac-20-cells-dual-band.txt" "$W/scan.txt" <<'PY'
import sys
head, *cells = open(sys.argv[1]).read().split("          Cell ")
out = [head] + ["          Cell %02d%s" % (n + 1, cells[n % len(cells)][2:]) for n in range(10000)]
open(sys.argv[2], "w").write("".join(out))
PY
head -c 1048576 /dev/urandom >"$W/garbage"
ROUTE='0.0.0.0         10.0.0.1        0.0.0.0         UG    0      0        0 eth0'

trial big-config 0 'cp $W/big.json $c/input/config.json' set-config A /run/qv-case/config.json
trial deep-nesting 1 'cp $W/deep.json $c/input/config.json' set-config M /run/qv-case/config.json
trial deep-nesting-autoconnect 1 'cp $W/deep.json $c/input/config.json' \
  autoconnect M /run/qv-case/config.json
trial invalid-utf8 0 'cp $W/bad-utf8.json $c/input/config.json' set-config M /run/qv-case/config.json
rm -f /tmp/qv-pwned-*
trial metacharacters 0 'cp $W/metachars.json $c/input/config.json' \
  set-config M /run/qv-case/config.json "us\$(touch /tmp/qv-pwned-5)er" "pa\`touch /tmp/qv-pwned-6\`ss'"
if ls /tmp/qv-pwned-* >/dev/null 2>&1; then
  echo "FAIL metacharacters: data was run as a command"
  failures=$((failures + 1))
fi
trial scan-10000-cells 0 'mkdir -p $c/fakes/iwlist; cp $W/scan.txt $c/fakes/iwlist/wlan0_scan.out' \
  get-wifi-list A
[ "$(grep -c '"ssid"' "$W/scan-10000-cells/out/stdout")" = 8000 ] ||
  { echo "FAIL scan-10000-cells: not 8000 entries"; failures=$((failures + 1)); }
garbage='for u in ifconfig route ipsec iwlist iwconfig ethtool ip; do
  mkdir -p $c/fakes/$u; cp $W/garbage $c/fakes/$u/any.out; done'
for command in get-eth0-parameters get-default-gateway get-ipsec-parameters get-wifi-list \
  check-wireless-point is-wired-linked is-wlan0-connected is-ipsec-connected; do
  trial "garbage-$command" 0 "$garbage" "$command" M
done
# The first default route ends the reading, so an endless writer is cut off.
trial endless-writer 0 'mkdir -p $c/fakes/route; mkfifo $c/fakes/route/any.out
  (yes "$ROUTE" >$c/fakes/route/any.out 2>/dev/null &)' get-default-gateway A
# A stalled utility is waited for: the reply comes once it ends.
start=$(date +%s)
trial stalled-writer 0 'mkdir -p $c/fakes/route; mkfifo $c/fakes/route/any.out
  ( (echo "$ROUTE"; sleep 2) >$c/fakes/route/any.out &)' get-default-gateway A
[ $(($(date +%s) - start)) -ge 2 ] || { echo "FAIL stalled-writer: not waited for"; failures=$((failures + 1)); }

[ "$failures" -eq 0 ] || exit 1
