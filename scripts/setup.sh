#!/bin/bash
# Installs everything the build and the tests need on Debian 12 (run as root). Safe to repeat:
# packages already present are not fetched again.
set -euo pipefail

PACKAGES=(
  build-essential cmake pkgconf clang-format
  # sanitizer, fuzzing and static analysis runs
  clang libclang-rt-14-dev clang-tidy cppcheck
  libjsoncpp-dev libcrypto++-dev libgtest-dev
  # what the sandboxed tests run for real: the key derivation utilities, overlays and namespaces
  wpasupplicant openssl util-linux iproute2 net-tools ethtool
)

missing=()
for package in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
    missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

export DEBIAN_FRONTEND=noninteractive
# A broken index of some other architecture must not stop the install.
apt-get update || echo "setup: apt-get update reported errors; trying the install anyway" >&2
apt-get install -y --no-install-recommends "${missing[@]}"
