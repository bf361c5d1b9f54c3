#!/bin/bash
# Puts Debian's source of the JSON library into third_party/jsoncpp, at the version of the
# installed libjsoncpp-dev, so the tool can link it statically (Debian ships only the shared
# library, and loading it with the C++ runtime costs more than the utilities a probe runs).
# Safe to repeat: a tree of the right version is kept. Uses a private deb-src index, so the
# machine's apt sources are not changed.
set -euo pipefail
cd "$(dirname "$0")/.."
DEST=third_party/jsoncpp
STAMP=$DEST/.debian-version

version=$(dpkg-query -W -f='${source:Version}\n' libjsoncpp-dev 2>/dev/null | head -n 1)
[ -n "$version" ] || { echo "fetch-jsoncpp: libjsoncpp-dev is not installed" >&2; exit 1; }
if [ -f "$STAMP" ] && [ "$(cat "$STAMP")" = "$version" ]; then exit 0; fi

suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-bookworm}")
work=$(mktemp -d /tmp/qv-jsoncpp.XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/sources" "$work/lists/partial"
cat >"$work/sources/debian-src.sources" <<SOURCES
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: $suite
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
SOURCES
apt_options=(-o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$work/sources"
  -o "Dir::State::Lists=$work/lists" -o APT::Sandbox::User=root)
apt-get "${apt_options[@]}" update >"$work/update.log" 2>&1 ||
  { cat "$work/update.log" >&2; echo "fetch-jsoncpp: cannot read Debian's source index" >&2; exit 1; }
(cd "$work" && apt-get "${apt_options[@]}" source --download-only "libjsoncpp=$version") \
  >"$work/source.log" 2>&1 ||
  { cat "$work/source.log" >&2; echo "fetch-jsoncpp: cannot fetch libjsoncpp $version" >&2; exit 1; }
# apt has checked the files against the signed index; the maintainer's key is not on the machine.
dpkg-source -x "$work"/libjsoncpp_*.dsc "$work/tree" >"$work/unpack.log" 2>&1 ||
  { cat "$work/unpack.log" >&2; echo "fetch-jsoncpp: cannot unpack libjsoncpp" >&2; exit 1; }
rm -rf "$DEST"
mkdir -p "$(dirname "$DEST")"
mv "$work/tree" "$DEST"
echo "$version" >"$STAMP"
echo "fetch-jsoncpp: libjsoncpp $version in $DEST"
