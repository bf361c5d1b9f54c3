#!/bin/bash
# One machine of the lab, run as the "tool" of the end-to-end sandbox (tests/e2e/sandbox.sh), which
# gives it a network namespace of its own, overlays over /etc, /usr/bin and /var/lib (where the
# try keeps its records) whose writes vanish with its mount namespace, and tmpfs over /run. Here
# the daemons' state directories become empty tmpfs too, and the device gets its certificate store.
# Then it stays alive as the holder of both namespaces until the lab kills it; its PID in
# LAB_DIR/ROLE.pid says it is ready.
#   machine.sh device|peer LAB_DIR
set -euo pipefail
CERTIFICATES=/KQ/configuration/certificates

# sudo looks up the machine's name, which a Debian installation lists in /etc/hosts (a bare
# chroot's may not).
grep -qw "$(hostname)" /etc/hosts || echo "127.0.1.1 $(hostname)" >>/etc/hosts
for dir in /var/lib/dhcp /var/lib/dhcpcd; do mount -t tmpfs "qvlab-$1" "$dir"; done
mkdir -p /run/network /run/lock /run/sudo
if [ "$1" = device ]; then
  mount -t tmpfs qvlab-certificates /KQ
  mkdir -p "$CERTIFICATES/cacerts" "$CERTIFICATES/pkcs12"
fi
# Commands entered into this machine start here (on_device, on_peer).
cd /
echo $$ >"$2/$1.pid"
exec sleep infinity
