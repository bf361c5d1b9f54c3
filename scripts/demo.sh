#!/bin/bash
# Builds the tool and runs its main job inside the sandbox: set-config in console mode on the
# shipped examples/config.json (with wired credentials typed on the command line), then prints
# the five network files it wrote. Nothing outside the sandbox is touched.
# Installs only what that needs; the installer's and the compiler's output go to logs under build/.
set -euo pipefail
cd "$(dirname "$0")/.."
mkdir -p build

# Runs one preparation step with its output in a log, and says how long it took.
step() { # description log command...
  local description=$1 log=$2 started=$SECONDS
  shift 2
  printf 'demo: %s (log: %s) ... ' "$description" "$log"
  if "$@" >"$log" 2>&1; then
    echo "done in $((SECONDS - started)) s"
  else
    echo "failed"
    tail -n 20 "$log" >&2
    echo "demo: $description failed; the whole output is in $log" >&2
    exit 1
  fi
}
step "installing the compiler, CMake and the libraries" build/setup.log scripts/setup.sh --tool
step "building the tool" build/build.log scripts/build.sh qv-netconf
echo

work=$(mktemp -d /tmp/qv-demo.XXXXXX)
trap 'rm -rf "$work"' EXIT
# The device as the sandbox sees it: config.json, a dhcpcd.conf whose head the tool keeps, the
# resolver file the DHCP client left, and the answer of the device's frequency-list utility.
case=$work/case
mkdir -p "$case/input" "$case/etc/network" "$case/fakes/qv-get-freq-list"
cp examples/config.json "$case/input/config.json"
printf 'hostname\nclientid\npersistent\nnodev\nnoarp\n' >"$case/etc/dhcpcd.conf"
echo "nameserver 192.0.2.53" >"$case/etc/resolv.conf"
echo "5180 5200 5220 5240 5745 5765 5785 5805" >"$case/fakes/qv-get-freq-list/5.out"

files=(/etc/network/interfaces /etc/resolv.conf /etc/wpa_supplicant/wpa_supplicant.conf
       /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf)
exports=()
for file in "${files[@]}"; do exports+=(--export "$file"); done

echo "\$ qv-netconf set-config M /run/qv-case/config.json technician 'typed secret'"
tests/e2e/sandbox.sh --tool build/qv-netconf --case "$case" --out "$work/out" "${exports[@]}" \
  -- set-config M /run/qv-case/config.json technician 'typed secret'
cat "$work/out/stdout"
cat "$work/out/stderr" >&2
for file in "${files[@]}"; do
  echo
  echo "==> $file ($(grep " $file\$" "$work/out/modes" | cut -d' ' -f1)) <=="
  cat "$work/out/files$file"
done
exit "$(cat "$work/out/status")"
