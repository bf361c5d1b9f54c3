#!/bin/bash
# The wall-time benchmark: the tool against a floor program per command (bench/floor), with
# instant fake utilities, inside the sandbox (nothing on this machine is touched).
#   bench/run.sh [--rounds N] [--arch arm64] [--configure CMAKE_ARG]... [--instructions]
#                [--expected] [--disk] [--try] [--backend networkmanager|scan]
# --arch arm64 cross-builds the tool and the floors and runs both under qemu-user (the shells and
# fakes they start run natively): only the ratios mean something there. --expected refreshes
# device/expected (the texts the floors print and write) from the tool, for review. --configure
# builds the tool with other CMake settings, in build-bench-custom, to weigh a build lever
# ("--configure -DQV_STATIC_TOOL=OFF --configure -DQV_JSONCPP_SOURCE_DIR=" is the dynamically
# linked tool). --instructions counts instructions (callgrind) instead of timing. --disk puts the
# sandbox's /etc on this machine's disk instead of tmpfs, where the syncs of set-config cost time.
# --try times what qv-netconf-try adds to set-config and autoconnect, and its --status and
# --confirm (bench/try-timing.sh); status 3 when the try adds 50 ms or more. --backend times the
# probes and reports where the NetworkManager back end is chosen by its file (the eth0 type read
# from the profile of bench/device/etc-networkmanager), or where the detection has to look through
# /proc ("scan": /run/NetworkManager exists but nothing runs); set-config is left out, since the
# floor writes the ifupdown files.
set -euo pipefail
cd "$(dirname "$0")/.."
ROUNDS=200 ARCH= EXPECTED= CUSTOM=() INSTRUCTIONS= TRY= BACKEND=
while [ $# -gt 0 ]; do
  case $1 in
    --rounds) ROUNDS=$2; shift 2 ;;
    --arch) ARCH=$2; shift 2 ;;
    --expected) EXPECTED=1; shift ;;
    --instructions) INSTRUCTIONS=1; shift ;;
    --disk) export QV_SANDBOX_DISK=1; shift ;;
    --try) TRY=1; shift ;;
    --backend) BACKEND=$2; shift 2 ;;
    --configure) CUSTOM+=("$2"); shift 2 ;;
    *) echo "run.sh: unknown option $1" >&2; exit 2 ;;
  esac
done

COMMANDS=("is-wired-on A" "is-wlan0-connected A" "get-eth0-parameters A" "get-default-gateway A"
  "check-wireless-point A" "get-wifi-list A" "set-config A /run/qv-case/config.json")
FILES=(/etc/network/interfaces /etc/resolv.conf /etc/wpa_supplicant/wpa_supplicant.conf
  /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf)
FAKED=(ifconfig ip route iwconfig iwlist rfkill wpa_passphrase iconv openssl qv-get-freq-list sudo
  ifup ifdown)

if [ -n "$ARCH" ]; then
  scripts/setup.sh --packaging "$ARCH" >/dev/null
else
  scripts/setup.sh >/dev/null
fi
configure=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DQV_BENCH=ON -DQV_BUILD_TESTS=OFF)
cmake -S . -B build-bench "${configure[@]}" >/dev/null
cmake --build build-bench -j "$(nproc)" --target qv-wall-bench ${TRY:+qv-netconf-try} >/dev/null
tool=$PWD/build-bench/qv-netconf floors=$PWD/build-bench/bench/floors emulator=()
if [ ${#CUSTOM[@]} -gt 0 ]; then
  cmake -S . -B build-bench-custom "${configure[@]}" "${CUSTOM[@]}" >/dev/null
  cmake --build build-bench-custom -j "$(nproc)" --target qv-netconf >/dev/null
  tool=$PWD/build-bench-custom/qv-netconf
fi
if [ -n "$ARCH" ]; then
  gnu=$(dpkg-architecture -a "$ARCH" -qDEB_HOST_GNU_TYPE 2>/dev/null)
  cpu=$(dpkg-architecture -a "$ARCH" -qDEB_HOST_GNU_CPU 2>/dev/null)
  cmake -S . -B "build-bench-$ARCH" "${configure[@]}" -DCMAKE_SYSTEM_NAME=Linux \
    -DCMAKE_SYSTEM_PROCESSOR="$cpu" -DCMAKE_C_COMPILER="$gnu-gcc" -DCMAKE_CXX_COMPILER="$gnu-g++" \
    -DPKG_CONFIG_EXECUTABLE="/usr/bin/$gnu-pkg-config" >/dev/null
  cmake --build "build-bench-$ARCH" -j "$(nproc)" --target qv-netconf qv-wall-bench >/dev/null
  tool=$PWD/build-bench-$ARCH/qv-netconf floors=$PWD/build-bench-$ARCH/bench/floors
  emulator=(--emulator "qemu-$cpu -L /usr/$gnu")
fi

work=$(mktemp -d /tmp/qv-bench.XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/case/input" "$work/fakes"
cp -a bench/device/etc "$work/case/"
cp examples/config.json "$work/case/input/config.json"
for name in "${FAKED[@]}"; do ln -s "$PWD/build-bench/bench/qv-bench-fake" "$work/fakes/$name"; done
case $BACKEND in
  "") ;;
  networkmanager) cp -a bench/device/etc-networkmanager/. "$work/case/etc/" ;;
  scan) echo 'mkdir -p /run/NetworkManager' >"$work/case/setup.sh" ;;
  *) echo "run.sh: --backend networkmanager or scan" >&2; exit 2 ;;
esac
[ -z "$BACKEND" ] || unset 'COMMANDS[-1]'

in_sandbox=(tests/e2e/sandbox.sh --tool bench/in-sandbox.sh --case "$work/case" --out "$work/out")

if [ -n "$EXPECTED" ]; then
  exports=()
  for file in "${FILES[@]}"; do exports+=(--export "$file"); done
  "${in_sandbox[@]}" "${exports[@]}" -- "$work/fakes" "$PWD/bench/device/canned" \
    /bin/sh -c "'$tool' get-wifi-list A && '$tool' set-config A /run/qv-case/config.json"
  cp "$work/out/stdout" bench/device/expected/get-wifi-list.stdout
  cp -r "$work/out/files/etc/." bench/device/expected/etc/
  echo "bench/device/expected refreshed; review it with git diff."
  exit 0
fi

if [ -n "$TRY" ]; then
  echo "| set-config + autoconnect ms | try ms | added ms | --status pending ms | --confirm ms | --status idle ms | /bin/true ms |"
  echo "|---:|---:|---:|---:|---:|---:|---:|"
  "${in_sandbox[@]}" -- "$work/fakes" "$PWD/bench/device/canned" \
    "$PWD/bench/try-timing.sh" "$tool" "$PWD/build-bench/qv-netconf-try" "$ROUNDS"
  cat "$work/out/stdout"
  cat "$work/out/stderr" >&2
  exit "$(cat "$work/out/status")"
fi

if [ -n "$INSTRUCTIONS" ]; then
  "${in_sandbox[@]}" -- "$work/fakes" "$PWD/bench/device/canned" \
    "$PWD/bench/instructions.sh" "$tool" "$floors" "${COMMANDS[@]}"
  cat "$work/out/stdout"
  cat "$work/out/stderr" >&2
  exit "$(cat "$work/out/status")"
fi

compare=()
for file in "${FILES[@]}"; do compare+=(--compare "$file"); done
"${in_sandbox[@]}" -- "$work/fakes" "$PWD/bench/device/canned" \
  "$PWD/build-bench/bench/qv-bench-runner" --rounds "$ROUNDS" "${emulator[@]}" "${compare[@]}" \
  "$tool" "$floors" "${COMMANDS[@]}"
cat "$work/out/stdout"
cat "$work/out/stderr" >&2
echo "Machine: $(nproc) cores, $(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2 | sed 's/^ //')," \
  "$(uname -r), $(date -u +%Y-%m-%d)${ARCH:+; $ARCH under $(qemu-"${cpu}" --version | head -n 1)}"
exit "$(cat "$work/out/status")"
