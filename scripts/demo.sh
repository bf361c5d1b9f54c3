#!/bin/bash
# Builds the tool and runs its main job on the shipped example inside the sandbox: what the
# probes answer on a device whose ifconfig lists eth0 with an address.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh >/dev/null
out=$(mktemp -d /tmp/qv-demo.XXXXXX)
trap 'rm -rf "$out"' EXIT
tests/e2e/sandbox.sh --tool build/qv-netconf --case tests/e2e/cases/probes/is-wired-on-console \
  --out "$out" -- is-wired-on M
cat "$out/stdout"
