#!/bin/bash
# Installs the real network stack that the device lab drives, and what the radio stage's VM needs
# (qemu, busybox-static, the wireless tools); run as root. Safe to repeat: packages already
# present are not fetched again. Installing must not start any of these daemons on this machine,
# so service starts are denied for the duration of the install.
set -euo pipefail

PACKAGES=(
  ifupdown isc-dhcp-client dhcpcd-base dnsmasq-base hostapd wpasupplicant
  strongswan-starter strongswan-charon strongswan-libcharon libcharon-extra-plugins
  net-tools ethtool iproute2 sudo openssl util-linux procps
  qemu-system-x86 busybox-static iw wireless-tools rfkill iputils-ping
)
POLICY=/usr/sbin/policy-rc.d

# The device's certificate store lives under /KQ: the lab mounts a tmpfs there inside its sandbox,
# so this machine only needs the empty mount point.
mkdir -p /KQ

missing=()
for package in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
    missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

# invoke-rc.d asks this script before starting a service; 101 means "not allowed". A policy the
# machine already has is set aside for the install and put back afterwards.
SAVED_POLICY=$POLICY.lab-saved
[ -e "$POLICY" ] && mv "$POLICY" "$SAVED_POLICY"
restore_policy() {
  rm -f "$POLICY"
  if [ -e "$SAVED_POLICY" ]; then mv "$SAVED_POLICY" "$POLICY"; fi
}
trap restore_policy EXIT
printf '#!/bin/sh\n# Installed by the device lab while it installs packages.\nexit 101\n' >"$POLICY"
chmod 755 "$POLICY"

export DEBIAN_FRONTEND=noninteractive
# Another install may hold the package database: wait for it rather than fail.
LOCK_WAIT=(-o DPkg::Lock::Timeout=600)
# A broken index of some other architecture must not stop the install.
apt-get "${LOCK_WAIT[@]}" update || echo "lab setup: apt-get update reported errors; trying the install anyway" >&2
apt-get "${LOCK_WAIT[@]}" install -y --no-install-recommends "${missing[@]}"
