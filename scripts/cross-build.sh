#!/bin/bash
# Builds and checks the Debian package for one architecture, the way anyone builds it: from the
# source package, offline.
#   scripts/cross-build.sh ARCH        (arm64, armhf, or this machine's, amd64)
# DEB_BUILD_OPTIONS=nocheck skips the unit tests (and selects the nocheck build profile).
# 1. installs what the build needs (scripts/setup.sh --packaging ARCH);
# 2. writes the source package (scripts/source-package.sh) and unpacks it under out/ARCH/;
# 3. builds it with dpkg-buildpackage without network access (the packages land in out/ARCH/);
#    the build runs the unit tests and the manual page check, under qemu-user when ARCH is not
#    this machine's;
# 4. runs lintian, which must report no errors;
# 5. checks the package: its architecture, the files `cmake --install` installs (the package may
#    only add its copyright, changelog and lintian overrides, and compress), its Built-Using, and
#    that its tool is static, runs and prints the usage text.
set -euo pipefail
cd "$(dirname "$0")/.."
ARCH=${1:?usage: scripts/cross-build.sh ARCH}
OUT=$PWD/out/$ARCH
SRC=$OUT/src

step() { printf '== [%4ds] %s\n' "$SECONDS" "$*"; }
fail() {
  echo "cross-build: $*" >&2
  exit 1
}

rm -rf "$OUT"
mkdir -p "$OUT"
step "installing the packaging tools and the build dependencies for $ARCH"
scripts/setup.sh --packaging "$ARCH" >"$OUT/setup.log" 2>&1 ||
  { tail -n 40 "$OUT/setup.log"; fail "setup failed (log: $OUT/setup.log)"; }

step "writing the source package and unpacking it to $SRC"
scripts/source-package.sh >"$OUT/source.log" 2>&1 || { cat "$OUT/source.log"; fail "no source package"; }
version=$(dpkg-parsechangelog -S Version)
dpkg-source -x "out/source/qv-netconf_$version.dsc" "$SRC" >>"$OUT/source.log" 2>&1 ||
  { cat "$OUT/source.log"; fail "cannot unpack the source package"; }

# No network: what the build needs must be in the source package and the build dependencies.
offline=()
if unshare --net true 2>/dev/null; then offline=(unshare --net); else
  echo "cross-build: cannot make a network namespace here; building with the network reachable"
fi
profiles=()
[ "$ARCH" = "$(dpkg --print-architecture)" ] || profiles+=(cross)
[[ " ${DEB_BUILD_OPTIONS:-} " == *" nocheck "* ]] && profiles+=(nocheck)
target=()
[ "$ARCH" = "$(dpkg --print-architecture)" ] || target=(--host-arch="$ARCH")
[ ${#profiles[@]} -eq 0 ] || target+=(--build-profiles="$(IFS=, && echo "${profiles[*]}")")

step "dpkg-buildpackage for $ARCH (log: $OUT/build.log)"
(cd "$SRC" && DEB_BUILD_OPTIONS="parallel=$(nproc) ${DEB_BUILD_OPTIONS:-}" \
  "${offline[@]}" dpkg-buildpackage -b -us -uc "${target[@]}") >"$OUT/build.log" 2>&1 ||
  { tail -n 60 "$OUT/build.log"; fail "the package build failed"; }
grep -E '^[0-9]+% tests passed' "$OUT/build.log" || echo "(tests not run: nocheck)"

deb=$OUT/qv-netconf_${version}_$ARCH.deb
[ -f "$deb" ] || fail "no $deb"

step "lintian"
set +e
lintian --fail-on error --display-info "$OUT/qv-netconf_${version}_$ARCH.changes" \
  >"$OUT/lintian.log" 2>&1
status=$?
set -e
grep -v 'running with root privileges' "$OUT/lintian.log" || true
[ "$status" -eq 0 ] || fail "lintian reports errors"

step "checking the package contents"
[ "$(dpkg-deb -f "$deb" Architecture)" = "$ARCH" ] || fail "$deb is not built for $ARCH"
# A board runs ifupdown with dhcpcd or NetworkManager; the package must install on either alone.
depends=$(dpkg-deb -f "$deb" Depends)
for alternative in "ifupdown | network-manager" "dhcpcd-base | dhcpcd5 | network-manager"; do
  [[ $depends == *"$alternative"* ]] || fail "Depends lacks \"$alternative\": $depends"
done
built_using=$(dpkg-deb -f "$deb" Built-Using)
echo "Built-Using: $built_using"
[[ $built_using == *"libjsoncpp (= $(cat "$SRC/jsoncpp/.debian-version"))"* ]] ||
  fail "Built-Using does not name the JSON library's source"
unpacked=$OUT/unpacked
installed=$OUT/cmake-install
dpkg-deb -x "$deb" "$unpacked"
DESTDIR=$installed cmake --install "$SRC"/obj-* >/dev/null
packaged=$(cd "$unpacked" && find . -type f | sort)
expected=$( (
  cd "$installed" && find . -type f |
    while read -r file; do [ -f "$unpacked/$file" ] && echo "$file" || echo "$file.gz"; done
  echo ./usr/share/doc/qv-netconf/copyright
  echo ./usr/share/doc/qv-netconf/changelog.Debian.gz
  echo ./usr/share/lintian/overrides/qv-netconf
) | sort)
[ "$packaged" = "$expected" ] ||
  fail "the package and cmake --install differ:
$(diff <(echo "$expected") <(echo "$packaged"))"
echo "$packaged"
required=(./usr/sbin/qv-netconf ./usr/share/man/man8/qv-netconf.8.gz
  ./usr/share/bash-completion/completions/qv-netconf ./usr/share/doc/qv-netconf/README.md
  ./usr/sbin/qv-netconf-check ./usr/share/man/man8/qv-netconf-check.8.gz
  ./usr/share/bash-completion/completions/qv-netconf-check
  ./usr/sbin/qv-netconf-try ./usr/share/man/man8/qv-netconf-try.8.gz
  ./usr/share/bash-completion/completions/qv-netconf-try ./lib/systemd/system/qv-netconf-try.service)
[ -f "$SRC/examples/config.json" ] && required+=(./usr/share/doc/qv-netconf/examples/config.json)
for file in "${required[@]}"; do
  grep -qxE "$file(\.gz)?" <<<"$packaged" || fail "the package lacks $file"
done

step "running the packaged tool"
readelf -lW "$unpacked/usr/sbin/qv-netconf" | grep -q INTERP && fail "the packaged tool is not static"
# The emulator the build ran the tests with (none for this machine's architecture).
emulator=$(sed -n 's/^CMAKE_CROSSCOMPILING_EMULATOR:[A-Z]*=//p' "$SRC"/obj-*/CMakeCache.txt | tr ';' ' ')
if [ ${#target[@]} -gt 0 ] && [ -z "$emulator" ]; then
  step "done without running the tool (no emulator: nocheck)"
  exit 0
fi
set +e
# shellcheck disable=SC2086
usage=$($emulator "$unpacked/usr/sbin/qv-netconf" 2>/dev/null)
status=$?
set -e
[ "$status" -eq 1 ] && [[ $usage == "This tool provide to regenerate network files"* ]] ||
  fail "the packaged tool without arguments gave status $status and: $usage"

step "done: $(du -b "$deb" | cut -f1) bytes in $deb"
