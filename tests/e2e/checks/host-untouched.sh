#!/bin/bash
# Proves the sandbox keeps writes away from this machine: a stand-in tool writes every file the
# real tool may write (and more) inside the sandbox, sees its writes there, and afterwards the
# host's /etc, /usr/bin, /dev, the companions' state under /var/lib and network links are exactly
# as before, seen from the machine's own root and network (not a chroot's).
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=../confinement.sh
. "$HERE/confinement.sh"
WORK=$(mktemp -d /tmp/qv-host-check.XXXXXX)
trap 'rm -rf "$WORK"' EXIT

FILES=(/etc/network/interfaces /etc/wpa_supplicant/wpa_supplicant.conf
       /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf /etc/resolv.conf
       /etc/NetworkManager/system-connections/qv-netconf-eth0.nmconnection
       /etc/NetworkManager/system-connections/qv-netconf-wlan0.nmconnection /etc/qv-netconf/backend)
snapshot() {
  local f
  for f in "${FILES[@]/#/$MACHINE_ROOT}"; do
    if [ -e "$f" ]; then echo "$f $(stat -c '%a %s %Y' "$f") $(sha256sum <"$f")"; else echo "$f absent"; fi
  done
  # The listings change with any file written in /etc or /usr/bin. (The rest of /var/lib is the
  # machine's own business, written by whatever else runs.)
  ls -la --time-style=full-iso "$MACHINE_ROOT/etc" "$MACHINE_ROOT/usr/bin" | sha256sum
  { ls -laR --time-style=full-iso "$MACHINE_ROOT/etc/NetworkManager" "$MACHINE_ROOT/etc/qv-netconf" 2>&1 || true; } | sha256sum
  { ls -la --time-style=full-iso "$MACHINE_ROOT/var/lib/qv-netconf" 2>&1 || true; } | sha256sum
  machine_ip -o link show | sed 's/ link\/.*//' | sha256sum
}
snapshot >"$WORK/before"

# The stand-in: bash, given the files to write.
WRITER='for f in "$@"; do mkdir -p "${f%/*}" && echo "written in the sandbox" >"$f"; done
echo probe >/usr/bin/qv-sandbox-probe
mkdir -p /var/lib/qv-netconf && echo probe >/var/lib/qv-netconf/try.json
echo probe >/dev/qv-sandbox-probe && cat /dev/qv-sandbox-probe
ip link add qvcheck0 type dummy 2>/dev/null || ip link set lo down
cat /etc/resolv.conf'
"$HERE/sandbox.sh" --tool /bin/bash --out "$WORK/out" -- -c "$WRITER" writer "${FILES[@]}"
grep -qx "written in the sandbox" "$WORK/out/stdout" || { echo "the writer did not run"; exit 1; }
grep -qx probe "$WORK/out/stdout" || { echo "the sandbox's /dev could not be written"; exit 1; }

snapshot >"$WORK/after"
diff -u "$WORK/before" "$WORK/after" || { echo "the host changed"; exit 1; }
[ ! -e "$MACHINE_ROOT/dev/qv-sandbox-probe" ] || { echo "/dev was written"; exit 1; }
echo "host untouched"
