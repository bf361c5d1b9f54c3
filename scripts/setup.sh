#!/bin/bash
# Installs what building, running and testing the tool needs on Debian 12 (run as root). Safe to
# repeat: packages already present are not fetched again.
#   scripts/setup.sh [--tool | --packaging ARCH]
# Without options: everything scripts/test.sh needs. --tool: only what building the tool and
# running it in the sandbox needs (scripts/demo.sh). --packaging ARCH: what building the Debian
# package for ARCH needs: the packaging tools and the build dependencies of debian/control for
# ARCH (for another architecture: that architecture added to dpkg, its cross toolchain, its
# libraries and qemu-user to run its tests).
set -euo pipefail
cd "$(dirname "$0")/.."

TOOL_PACKAGES=(
  build-essential cmake pkgconf libjsoncpp-dev libcrypto++-dev libgtest-dev
  # what the sandbox runs for real: the key derivation utilities, overlays and namespaces
  wpasupplicant openssl util-linux iproute2
)
TEST_PACKAGES=(
  clang-format net-tools ethtool
  # sanitizer, fuzzing and static analysis runs
  clang libclang-rt-14-dev clang-tidy cppcheck
  # the parser microbenchmarks (bench/micro)
  libbenchmark-dev
  # the benchmark's instruction counts
  valgrind
  # the manual page is checked for groff warnings
  groff-base
  # the order of the syncs and renames that make a file durable
  strace
  # the end-to-end cases' stand-in for the system logger, the generated hostile inputs
  python3
)
PACKAGES=("${TOOL_PACKAGES[@]}" "${TEST_PACKAGES[@]}")
PACKAGING_ARCH=
case ${1:-} in
  --tool) PACKAGES=("${TOOL_PACKAGES[@]}") ;;
  --packaging)
    PACKAGING_ARCH=${2:?usage: scripts/setup.sh [--tool | --packaging ARCH]}
    PACKAGES=("${TOOL_PACKAGES[@]}")
    ;;
  "") ;;
  *) echo "usage: scripts/setup.sh [--tool | --packaging ARCH]" >&2; exit 2 ;;
esac

export DEBIAN_FRONTEND=noninteractive
updated=
update_index() {
  [ -n "$updated" ] && return
  updated=1
  # A broken index of some other architecture must not stop the install.
  apt-get update || echo "setup: apt-get update reported errors; trying the install anyway" >&2
}
not_installed() {
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
      echo "$package"
  done
}

mapfile -t missing < <(not_installed "${PACKAGES[@]}")
if [ ${#missing[@]} -gt 0 ]; then
  update_index
  apt-get -o DPkg::Lock::Timeout=600 install -y --no-install-recommends "${missing[@]}"
fi
scripts/fetch-jsoncpp.sh
[ -n "$PACKAGING_ARCH" ] || exit 0

tools=(debhelper lintian)
target=()
if [ "$PACKAGING_ARCH" != "$(dpkg --print-architecture)" ]; then
  if ! dpkg --print-foreign-architectures | grep -qx "$PACKAGING_ARCH"; then
    dpkg --add-architecture "$PACKAGING_ARCH"
    updated=
  fi
  tools+=("crossbuild-essential-$PACKAGING_ARCH")
  target=(-a "$PACKAGING_ARCH" -P cross)
fi
mapfile -t missing < <(not_installed "${tools[@]}")
if [ ${#missing[@]} -gt 0 ] || ! dpkg-checkbuilddeps "${target[@]}" >/dev/null 2>&1; then
  update_index
  apt-get -o DPkg::Lock::Timeout=600 install -y --no-install-recommends "${tools[@]}"
  apt-get -o DPkg::Lock::Timeout=600 build-dep -y --no-install-recommends "${target[@]}" ./
fi
