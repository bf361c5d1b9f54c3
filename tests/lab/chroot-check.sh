#!/bin/bash
# Proves that the lab and the sandbox stay inside a chroot: runs a lab scenario (whose machines are
# end-to-end sandboxes running the tool and the real daemons) and the sandbox's host check inside a
# throwaway chroot of this machine (an overlay of its root, whose writes vanish with a private mount
# namespace), then fails if anything outside the chroot
# changed: files under /etc, /usr/bin, /KQ and /run, links, addresses, routes, daemons on the
# machine's network, or processes of the run left behind.
#   chroot-check.sh TOOL
set -uo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
REPO=$(cd "$HERE/../.." && pwd)
TOOL=$(realpath "$1")
SCENARIO=tests/lab/scenarios/ipsec.sh
# shellcheck source=../e2e/confinement.sh
. "$REPO/tests/e2e/confinement.sh"

[ "$(id -u)" = 0 ] || { echo "chroot-check: needs root (namespaces and mounts)" >&2; exit 2; }
confinement_check chroot-check
WORK=$(mktemp -d /tmp/qv-chroot-check.XXXXXX)
trap 'rm -rf "$WORK"' EXIT

# Outside the chroot is this script's own root and network. Other lab runs on the machine add and
# remove their namespaces under /run/netns meanwhile.
snapshot() {
  find /etc /KQ /run -path /run/netns -prune -o -printf '%p %y %m %s %T@ %l\n' 2>/dev/null | sort
  find /usr/bin -maxdepth 0 -printf '%p %m %T@\n'
  find /usr/bin -newer "$WORK/started" -printf '%p %y %m %s %T@ %l\n' 2>/dev/null
  ip -o link show | sed 's/ link\/.*//'
  ip -o addr show
  ip route show
  MACHINE_NET=/proc/self/ns/net machine_daemons
}

# Runs inside a new PID and mount namespace: builds the chroot, runs the tests in it, and lists
# the processes of the run still alive afterwards (the namespace's end then takes them down).
# shellcheck disable=SC2317 # run through "bash -c inner"
inner() {
  local root=$WORK/root
  set -e
  mkdir -p "$WORK/rw" "$root"
  mount -t tmpfs qv-chroot-check "$WORK/rw"
  mkdir -p "$WORK/rw/upper" "$WORK/rw/work"
  mount -t overlay qv-chroot-check -o "lowerdir=/,upperdir=$WORK/rw/upper,workdir=$WORK/rw/work" "$root"
  mount --bind "$root" "$root"
  mount -t proc proc "$root/proc"
  mount -t sysfs sysfs "$root/sys"
  mount --rbind /dev "$root/dev"
  mount -t tmpfs qv-chroot-run "$root/run"
  mount -t tmpfs qv-chroot-tmp "$root/tmp"
  mkdir -p "$root$REPO" "$root/tmp/tool"
  mount --bind "$REPO" "$root$REPO"
  mount -o remount,bind,ro "$root$REPO"
  cp "$TOOL" "$root/tmp/tool/qv-netconf"
  cp "$(dirname "$TOOL")"/qv-netconf-{check,try} "$root/tmp/tool/"
  set +e
  local status=0 process comm left=
  in_chroot() { chroot "$root" /usr/bin/env -C "$REPO" "$@" || status=1; }
  in_chroot tests/lab/run-scenario.sh /tmp/tool/qv-netconf "$SCENARIO"
  in_chroot tests/e2e/checks/host-untouched.sh
  # A glob, not a command: nothing of this listing itself shows up in it.
  for process in "$root"/proc/[0-9]*; do
    [ "${process##*/}" != 1 ] && read -r comm <"$process/comm" 2>/dev/null && left="$left ${process##*/}:$comm"
  done
  [ -z "$left" ] || { echo "chroot-check: processes of the run still alive:$left"; status=1; }
  return "$status"
}

touch "$WORK/started"
snapshot >"$WORK/before"
export -f inner
export WORK REPO TOOL SCENARIO
unshare --pid --fork --mount --propagation private -- bash -c inner
status=$?
snapshot >"$WORK/after"
if ! diff -u "$WORK/before" "$WORK/after"; then
  echo "chroot-check: the machine outside the chroot changed (above)"
  status=1
fi
[ "$status" = 0 ] && echo "chroot-check: the lab and the sandbox stayed inside the chroot"
exit "$status"
