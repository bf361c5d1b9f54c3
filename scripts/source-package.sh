#!/bin/bash
# Writes the Debian source package into out/source/: qv-netconf_VERSION.dsc with the tool's tarball
# (.orig.tar.xz), the JSON library's Debian source as a component tarball (.orig-jsoncpp.tar.xz:
# the tool links it statically, so a package build needs it and must not need the network) and
# debian/ (.debian.tar.xz). Anyone can then build it offline:
#   dpkg-source -x out/source/qv-netconf_VERSION.dsc DIR && cd DIR && dpkg-buildpackage -b
# Takes the files the next commit would hold (tracked and new, build outputs ignored).
set -euo pipefail
cd "$(dirname "$0")/.."
OUT=$PWD/out/source
JSONCPP=third_party/jsoncpp

fail() {
  echo "source-package: $*" >&2
  exit 1
}

[ -f "$JSONCPP/.debian-version" ] || scripts/fetch-jsoncpp.sh ||
  fail "no JSON library source in $JSONCPP (scripts/fetch-jsoncpp.sh, as root, fetches it)"
version=$(dpkg-parsechangelog -S Version)
upstream=${version%-*}
project_version=$(sed -n 's/^project(qv-netconf VERSION \([^ ]*\) .*/\1/p' CMakeLists.txt)
[ "$upstream" = "$project_version" ] ||
  fail "debian/changelog says $version but CMakeLists.txt says $project_version"
# The same tarballs from the same files, whenever they are made.
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -S Timestamp)
export SOURCE_DATE_EPOCH
pack() { # tarball directory [tar option...]   (the directory in the current one)
  tar --sort=name --owner=0 --group=0 --numeric-owner --mtime="@$SOURCE_DATE_EPOCH" "${@:3}" \
    -cf - "$2" | xz -T0 >"$1"
}

rm -rf "$OUT"
tree=$OUT/qv-netconf-$upstream
mkdir -p "$tree"
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
  git ls-files -z --cached --others --exclude-standard |
    tar --null --ignore-failed-read -T - -cf - | tar -xf - -C "$tree"
else
  tar --exclude=./out --exclude='./build*' --exclude=./third_party -cf - . | tar -xf - -C "$tree"
fi
# debian/ goes into its own tarball.
(cd "$OUT" && pack "qv-netconf_$upstream.orig.tar.xz" "qv-netconf-$upstream" --exclude="qv-netconf-$upstream/debian")
cp -a "$JSONCPP" "$tree/jsoncpp"
# Without the patch bookkeeping of an unpacked Debian source (the patches are applied).
rm -rf "$tree/jsoncpp/.pc"
(cd "$tree" && pack "../qv-netconf_$upstream.orig-jsoncpp.tar.xz" jsoncpp)
(cd "$OUT" && dpkg-source -b "qv-netconf-$upstream") >"$OUT/dpkg-source.log" 2>&1 ||
  { cat "$OUT/dpkg-source.log" >&2; fail "dpkg-source could not build the source package"; }
rm -rf "$tree" "$OUT/dpkg-source.log"
echo "source-package: $OUT/qv-netconf_$version.dsc"
