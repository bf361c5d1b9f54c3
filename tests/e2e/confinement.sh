# What the sandbox and the lab need to stay confined, and how their checks see the machine itself.
# Sourced by tests/e2e/sandbox.sh, tests/lab/lab.sh and the checks that prove nothing leaked.

# The machine outside any chroot this runs in: PID 1's root directory and network namespace (this
# process's own where PID 1's are hidden, as in some containers).
MACHINE_ROOT=/proc/1/root
[ -d "$MACHINE_ROOT/etc" ] || MACHINE_ROOT=
MACHINE_NET=/proc/1/ns/net
readlink "$MACHINE_NET" >/dev/null 2>&1 || MACHINE_NET=/proc/self/ns/net
machine_ip() { nsenter --net="$MACHINE_NET" ip "$@"; }

# Daemons of the kinds the lab starts that run on the machine's own network, not in a namespace.
LAB_DAEMONS=(dnsmasq hostapd charon starter dhclient dhcpcd wpa_supplicant qv-netconf-try NetworkManager)
machine_daemons() {
  local name pid machine
  machine=$(readlink "$MACHINE_NET")
  for name in "${LAB_DAEMONS[@]}"; do
    for pid in $(pgrep -x "$name"); do
      [ "$(readlink "/proc/$pid/ns/net" 2>/dev/null)" = "$machine" ] && echo "daemon on this machine: $pid $name"
    done
  done
}

# Private mounts need a root directory that is a mount point: in a chroot of a plain directory the
# kernel refuses to change the root's propagation, and mounts made without it could reach the
# machine. Such a place is refused before anything is mounted.
confinement_check() { # who
  mountpoint -q / || {
    echo "$1: the root directory is not a mount point (a chroot of a plain directory?), so" \
      "mounts made here could not be kept private. Bind-mount the chroot's directory on itself" \
      "(mount --bind DIR DIR) and enter it again, or run on a machine or VM." >&2
    exit 2
  }
}
