#!/bin/bash
# Runs the tool (or any command) as if on the device, without touching this machine: a private
# mount and network namespace, overlays over /etc and /usr/bin whose writes vanish with the
# namespace, tmpfs over /run, and fake platform utilities first in PATH.
#
#   sandbox.sh --tool BIN --out DIR [--case DIR] [--export PATH]... [-- ARG...]
#
# The tool is installed as "qv-netconf" and run with ARG... (or the case's args file). A case
# directory may hold: fakes/<utility>/<key>.{out,err,status} (see fake-utility), etc/ (laid over
# /etc), input/ (copied to /run/qv-case), setup.sh (run inside before the tool), program (the
# program name as typed). OUT receives stdout, stderr, status, commands (the fakes' log),
# files/<PATH> and modes for every exported PATH.
set -euo pipefail

HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=confinement.sh
. "$HERE/confinement.sh"
# Utilities the tool runs that are always faked; a case may fake more by giving them answers.
FAKED_UTILITIES=(ifconfig route ip ethtool iwconfig iwlist ifup ifdown rfkill ipsec)
FREQ_LIST_UTILITY=/usr/bin/qv-get-freq-list

if [ "${1:-}" = --inner ]; then
  shift
  W=$1
  shift
  mount -t tmpfs qv-sandbox "$W/mnt"
  for tree in etc usrbin; do mkdir -p "$W/mnt/$tree/upper" "$W/mnt/$tree/work"; done
  mount -t overlay qv-etc -o "lowerdir=/etc,upperdir=$W/mnt/etc/upper,workdir=$W/mnt/etc/work" /etc
  mount -t overlay qv-usrbin \
    -o "lowerdir=/usr/bin,upperdir=$W/mnt/usrbin/upper,workdir=$W/mnt/usrbin/work" /usr/bin
  mount -t tmpfs qv-run /run
  ip link set lo up 2>/dev/null || true

  # The device's OpenSSL has MD4 (the NT-hash pipeline needs it); OpenSSL 3 keeps it in the
  # legacy provider.
  mkdir -p /etc/ssl
  cp "$HERE/openssl-legacy.cnf" /etc/ssl/openssl.cnf

  for name in "${FAKED_UTILITIES[@]}"; do ln -sf "$HERE/fake-utility" "$W/bin/$name"; done
  ln -sf "$HERE/fake-sudo" "$W/bin/sudo"
  ln -sf "$HERE/fake-utility" "$FREQ_LIST_UTILITY"
  mkdir -p /run/qv-case
  if [ -n "$CASE" ]; then
    if [ -d "$CASE/fakes" ]; then
      for dir in "$CASE"/fakes/*/; do ln -sf "$HERE/fake-utility" "$W/bin/$(basename "$dir")"; done
    fi
    [ -d "$CASE/etc" ] && cp -a "$CASE/etc/." /etc/
    [ -d "$CASE/input" ] && cp -a "$CASE/input/." /run/qv-case/
    [ -f "$CASE/setup.sh" ] && bash "$CASE/setup.sh"
  fi

  export PATH="$W/bin:$PATH" QV_FAKES="${CASE:+$CASE/fakes}" QV_FAKE_LOG="$OUT/commands"
  : >"$OUT/commands"
  set +e
  (cd "$W/cwd" && exec -a "$PROGRAM" "$W/bin/qv-netconf" "$@") >"$OUT/stdout" 2>"$OUT/stderr"
  echo $? >"$OUT/status"
  set -e
  : >"$OUT/modes"
  for path in $EXPORTS; do
    if [ -e "$path" ]; then
      mkdir -p "$OUT/files/$(dirname "$path")"
      cp -a "$path" "$OUT/files/$path"
      echo "$(stat -c %a "$path") $path" >>"$OUT/modes"
    fi
  done
  exit 0
fi

TOOL= OUT= CASE= EXPORTS=
while [ $# -gt 0 ]; do
  case $1 in
    --tool) TOOL=$(realpath "$2"); shift 2 ;;
    --out) OUT=$(realpath -m "$2"); shift 2 ;;
    --case) CASE=$(realpath "$2"); shift 2 ;;
    --export) EXPORTS="$EXPORTS $2"; shift 2 ;;
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

export CASE OUT PROGRAM EXPORTS
unshare --mount --net --propagation private -- "$HERE/sandbox.sh" --inner "$W" "${ARGS[@]}"
