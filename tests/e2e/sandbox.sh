#!/bin/bash
# Runs the tool (or any command) as if on the device, without touching this machine: a private
# mount and network namespace, overlays over /etc, /usr/bin, /var/lib and /dev whose writes vanish
# with the namespace, tmpfs over /run, and fake platform utilities first in PATH. The machine's system log
# socket is hidden: nothing run inside reaches the machine's log.
#
#   sandbox.sh --tool BIN --out DIR [--case DIR] [--export PATH]... [--log-sink BIN] [-- ARG...]
#
# The tool is installed as "qv-netconf" and run with ARG... (or the case's args file). A case
# directory may hold: fakes/<utility>/<key>.{out,err,status} (see fake-utility), etc/ (laid over
# /etc), input/ (copied to /run/qv-case), setup.sh (run inside before the tool), program (the
# program name as typed). OUT receives stdout, stderr, status, commands (the fakes' log),
# files/<PATH>, modes and owners for every exported PATH (a link's mode is 777); with --log-sink
# (tests/e2e/log-sink.py, bound at /dev/log while the tool runs) also syslog, the lines the tool
# sent to the system log.
set -euo pipefail

HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=confinement.sh
. "$HERE/confinement.sh"
# Utilities the tool runs that are always faked; a case may fake more by giving them answers.
FAKED_UTILITIES=(ifconfig route ip ethtool iwconfig iwlist ifup ifdown rfkill ipsec)
FREQ_LIST_UTILITY=/usr/bin/qv-get-freq-list

if [ "${1:-}" = --inner ]; then
  W=$2
  shift 2
  # QV_SANDBOX_DISK keeps the writable layers on this machine's disk (still thrown away), so that
  # syncs cost what they cost on a real medium; tmpfs makes them free.
  [ -n "${QV_SANDBOX_DISK:-}" ] || mount -t tmpfs qv-sandbox "$W/mnt"
  for tree in etc usrbin varlib dev; do mkdir -p "$W/mnt/$tree/upper" "$W/mnt/$tree/work"; done
  mount -t overlay qv-etc -o "lowerdir=/etc,upperdir=$W/mnt/etc/upper,workdir=$W/mnt/etc/work" /etc
  mount -t overlay qv-usrbin \
    -o "lowerdir=/usr/bin,upperdir=$W/mnt/usrbin/upper,workdir=$W/mnt/usrbin/work" /usr/bin
  # The companions keep their state under /var/lib.
  mount -t overlay qv-varlib \
    -o "lowerdir=/var/lib,upperdir=$W/mnt/varlib/upper,workdir=$W/mnt/varlib/work" /var/lib
  mount -t tmpfs qv-run /run
  # /dev keeps its devices, but a log socket bound there stays in the namespace; the overlay does
  # not reach into /dev's own mounts, so they are bound back.
  mkdir "$W/mnt/hostdev"
  mount --rbind /dev "$W/mnt/hostdev"
  mount -t overlay qv-dev -o "lowerdir=$W/mnt/hostdev,upperdir=$W/mnt/dev/upper,workdir=$W/mnt/dev/work" /dev
  for sub in pts shm; do mount --rbind "$W/mnt/hostdev/$sub" "/dev/$sub"; done
  rm -f /dev/log
  ip link set lo up 2>/dev/null || true

  # The device's OpenSSL has MD4 (the NT-hash pipeline needs it); OpenSSL 3 keeps it in the
  # legacy provider.
  mkdir -p /etc/ssl
  cp "$HERE/openssl-legacy.cnf" /etc/ssl/openssl.cnf

  for name in "${FAKED_UTILITIES[@]}"; do ln -sf "$HERE/fake-utility" "$W/bin/$name"; done
  ln -sf "$HERE/fake-sudo" "$W/bin/sudo"
  # A copy, not a link: a case that rewrites the utility must not reach this tree through it.
  cp "$HERE/fake-utility" "$FREQ_LIST_UTILITY"
  # The network files are the case's alone, not this machine's; the supplicant files have the
  # device's mode, which git does not keep.
  rm -f /etc/network/interfaces /etc/resolv.conf /etc/dhcpcd.conf /etc/wpa_supplicant/*.conf
  mkdir -p /run/qv-case /etc/network /etc/wpa_supplicant
  if [ -n "$CASE" ]; then
    for dir in "$CASE"/fakes/*/; do
      [ ! -d "$dir" ] || ln -sf "$HERE/fake-utility" "$W/bin/$(basename "$dir")"
    done
    [ -d "$CASE/etc" ] && cp -a "$CASE/etc/." /etc/
    find /etc/wpa_supplicant -name '*.conf' -exec chmod 600 {} +
    [ -d "$CASE/input" ] && cp -a "$CASE/input/." /run/qv-case/
    [ -f "$CASE/setup.sh" ] && bash "$CASE/setup.sh"
  fi

  export PATH="$W/bin:$PATH" QV_FAKES="${CASE:+$CASE/fakes}" QV_FAKE_LOG="$OUT/commands"
  : >"$OUT/commands"
  if [ -n "$LOG_SINK" ]; then
    "$LOG_SINK" /dev/log "$OUT/syslog" &
    sink=$!
    until [ -S /dev/log ]; do
      kill -0 "$sink" || exit 1
      sleep 0.01
    done
  fi
  set +e
  (cd "$W/cwd" && exec -a "$PROGRAM" "$W/bin/qv-netconf" "$@") >"$OUT/stdout" 2>"$OUT/stderr"
  echo $? >"$OUT/status"
  set -e
  [ -z "$LOG_SINK" ] || { kill -TERM "$sink" && wait "$sink"; }
  : >"$OUT/modes"
  : >"$OUT/owners"
  # Unquoted: an exported pattern names every file that matches it.
  for path in $EXPORTS; do
    if [ -e "$path" ]; then
      mkdir -p "$OUT/files/$(dirname "$path")"
      cp -a "$path" "$OUT/files/$path"
      echo "$(stat -c %a "$path") $path" >>"$OUT/modes"
      echo "$(stat -c %u:%g "$path") $path" >>"$OUT/owners"
    fi
  done
  exit 0
fi

TOOL= OUT= CASE= EXPORTS= LOG_SINK=
while [ $# -gt 0 ]; do
  case $1 in
    --tool) TOOL=$(realpath "$2"); shift 2 ;;
    --out) OUT=$(realpath -m "$2"); shift 2 ;;
    --case) CASE=$(realpath "$2"); shift 2 ;;
    --export) EXPORTS="$EXPORTS $2"; shift 2 ;;
    --log-sink) LOG_SINK=$(realpath "$2"); shift 2 ;;
    --) shift; break ;;
    *) echo "sandbox.sh: unknown option $1" >&2; exit 2 ;;
  esac
done
[ -n "$TOOL" ] && [ -n "$OUT" ] || { echo "sandbox.sh: --tool and --out are required" >&2; exit 2; }
confinement_check sandbox.sh

ARGS=("$@")
if [ ${#ARGS[@]} -eq 0 ] && [ -n "$CASE" ] && [ -f "$CASE/args" ]; then
  mapfile -t ARGS <"$CASE/args"
fi
PROGRAM=qv-netconf
[ -n "$CASE" ] && [ -f "$CASE/program" ] && PROGRAM=$(cat "$CASE/program")

W=$(mktemp -d /tmp/qv-sandbox.XXXXXX)
trap 'rm -rf "$W"' EXIT
mkdir -p "$W/bin" "$W/mnt" "$W/cwd" "$OUT"
cp "$TOOL" "$W/bin/qv-netconf"
ln -s ../bin/qv-netconf "$W/cwd/qv-netconf"

export CASE OUT PROGRAM EXPORTS LOG_SINK
unshare --mount --net --propagation private -- "$HERE/sandbox.sh" --inner "$W" "${ARGS[@]}"
