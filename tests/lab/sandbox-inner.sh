#!/bin/bash
# Runs inside a fresh mount namespace (already inside the lab's network namespace) and turns it
# into one machine of the lab: /etc and /usr/bin become overlays whose writes vanish with the
# namespace, and /run and the daemons' state directories become empty tmpfs. The device also gets
# its certificate store and an OpenSSL with the legacy provider (the NT-hash pipeline needs MD4).
# Then it stays alive as the holder of the namespace until the lab kills it.
#   sandbox-inner.sh device|peer LAB_DIR
set -euo pipefail
ROLE=$1
LAB=$2
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
MNT=$LAB/$ROLE-mnt
CERTIFICATES=/KQ/configuration/certificates

mkdir -p "$MNT"
mount -t tmpfs "qvlab-$ROLE" "$MNT"
for tree in etc usrbin; do mkdir -p "$MNT/$tree/upper" "$MNT/$tree/work"; done
mount -t overlay "qvlab-$ROLE-etc" -o "lowerdir=/etc,upperdir=$MNT/etc/upper,workdir=$MNT/etc/work" /etc
mount -t overlay "qvlab-$ROLE-usrbin" \
  -o "lowerdir=/usr/bin,upperdir=$MNT/usrbin/upper,workdir=$MNT/usrbin/work" /usr/bin
# sudo looks up the machine's name, which a Debian installation lists in /etc/hosts (a bare
# chroot's may not).
grep -qw "$(hostname)" /etc/hosts || echo "127.0.1.1 $(hostname)" >>/etc/hosts
for dir in /run /var/lib/dhcp /var/lib/dhcpcd; do mount -t tmpfs "qvlab-$ROLE" "$dir"; done
mkdir -p /run/network /run/lock /run/sudo
ip link set lo up

if [ "$ROLE" = device ]; then
  mount -t tmpfs qvlab-certificates /KQ
  mkdir -p "$CERTIFICATES/cacerts" "$CERTIFICATES/pkcs12"
  cp "$HERE/../e2e/openssl-legacy.cnf" /etc/ssl/openssl.cnf
fi

# Commands entered into this machine start here (lab_enter).
cd /
touch "$LAB/$ROLE.ready"
exec sleep infinity
