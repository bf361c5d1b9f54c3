#!/bin/bash
# qv-netconf-check from the command line: exit statuses 0, 1 and 2, the human and the JSON forms
# (each finding shown up to its place: the unit tests hold the rules and their reasons), and
# --certificates.
#   check-command.sh CHECKER
set -uo pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
CHECK=$(realpath "$1")
W=$(mktemp -d /tmp/qv-check.XXXXXX)
trap 'rm -rf "$W"' EXIT
failed=0

# Human lines up to the place; a JSON array as "severity|path" lines, its keys in their order.
places() {
  if [ "${1:0:1}" = "[" ]; then
    python3 -c '
import json, sys
for f in json.loads(sys.argv[1]):
    assert list(f) == ["severity", "path", "message"], list(f)
    print(f["severity"] + "|" + f["path"])' "$1"
  else
    cut -d: -f1-3 <<<"$1"
  fi
}

expect() { # name status expected-places args...
  local name=$1 status=$2 expected=$3 out actual
  shift 3
  out=$(cd "$W" && "$CHECK" "$@" 2>"$W/stderr")
  actual=$?
  if [ "$actual" != "$status" ] || [ "$(places "$out")" != "$expected" ]; then
    echo "FAIL $name: status $actual (expected $status)"
    diff <(echo "$expected") <(echo "$out")
    failed=1
  else
    echo "ok   $name"
  fi
}

printf '{"network settings": {"interfaces": {"eth": {"enabled": true, "security": "open"},
  "wlan": {"enabled": true, "ssid": "Guest", "security": "open", "frequency": "auto"}}}}' >"$W/clean.json"
cp "$ROOT/examples/config.json" "$W/example.json"
printf '{"network settings": {"interfaces": {"wlan": {"enabled": true, "ssid": "Guest",
  "security": "Per\\"so\\\\nal\\n", "frequency": "auto"}}}}' >"$W/quoted.json"
printf '[]' >"$W/array.json"
mkdir -p "$W/store/cacerts"
touch "$W/store/cacerts/corp-ca.pem"

ETH="network settings/interfaces/eth"
WLAN="network settings/interfaces/wlan"
expect "clean: no output" 0 "" clean.json
expect "clean, JSON: an empty array" 0 "" --json clean.json
[ "$("$CHECK" --json "$W/clean.json")" = "[]" ] || { echo "FAIL clean, JSON: not []"; failed=1; }
expect "the example against the default store: its CA is missing" 1 \
  "example.json: warning: $ETH/ask for credentials
example.json: error: $ETH/ca certificate" example.json
expect "the example with its CA in the store: a warning only" 0 \
  "warning|$ETH/ask for credentials" --json --certificates "$W/store" example.json
expect "a value with quotes and line breaks stays on one line" 1 \
  "quoted.json: error: $WLAN/security" quoted.json
expect "... and is escaped in JSON" 1 "error|$WLAN/security" --json quoted.json
expect "a missing file: one finding without a place" 2 "gone.json: error: " gone.json
expect "not an object" 2 "error|" --json array.json
expect "bad usage: nothing on stdout" 2 "" --json
[ -s "$W/stderr" ] || { echo "FAIL bad usage: no usage text on stderr"; failed=1; }
exit $failed
