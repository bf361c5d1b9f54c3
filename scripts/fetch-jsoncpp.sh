#!/bin/bash
# Puts Debian's source of the JSON library into third_party/jsoncpp, at the version of the
# installed libjsoncpp-dev, so the tool can link it statically (Debian ships only the shared
# library, and loading it with the C++ runtime costs more than the utilities a probe runs).
# Safe to repeat: a tree of the right version is kept. The source comes from the archives this
# machine's apt is configured with (its mirror or proxy), read through a private index: the
# machine's apt sources and lists are not changed.
set -euo pipefail
cd "$(dirname "$0")/.."
DEST=third_party/jsoncpp
STAMP=$DEST/.debian-version

fail() {
  echo "fetch-jsoncpp: $*" >&2
  exit 1
}

version=$(dpkg-query -W -f='${source:Version}\n' libjsoncpp-dev 2>/dev/null | head -n 1)
[ -n "$version" ] || fail "libjsoncpp-dev is not installed"
if [ -f "$STAMP" ] && [ "$(cat "$STAMP")" = "$version" ]; then exit 0; fi

work=$(mktemp -d /tmp/qv-jsoncpp.XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/sources" "$work/lists/partial"

# The machine's own entries, each binary archive turned into its source archive: one-line
# "deb ..." becomes "deb-src ...", a deb822 stanza's Types become deb-src; options (signed-by,
# arch) stay as they are.
eval "$(apt-config shell SOURCE_LIST Dir::Etc::SourceList/f SOURCE_PARTS Dir::Etc::SourceParts/d)"
for file in "$SOURCE_LIST" "${SOURCE_PARTS%/}"/*.list; do
  [ -f "$file" ] && sed -n -E 's/^[[:space:]]*deb(-src)?[[:space:]]/deb-src /p' "$file"
done >"$work/sources/machine.list"
for file in "${SOURCE_PARTS%/}"/*.sources; do
  [ -f "$file" ] && sed -E 's/^Types:.*\<deb\>.*/Types: deb-src/' "$file" >"$work/sources/$(basename "$file")"
done
[ -s "$work/sources/machine.list" ] || ls "$work"/sources/*.sources >/dev/null 2>&1 ||
  fail "this machine's apt has no sources configured ($SOURCE_LIST, $SOURCE_PARTS)"

apt_options=(-o "Dir::Etc::SourceList=$work/sources/machine.list" -o "Dir::Etc::SourceParts=$work/sources"
  -o "Dir::State::Lists=$work/lists" -o APT::Sandbox::User=root)
# An archive without sources (a third-party one, say) makes the update complain; what counts is
# whether the JSON library's source is found afterwards.
apt-get "${apt_options[@]}" update >"$work/update.log" 2>&1 || true
(cd "$work" && apt-get "${apt_options[@]}" source --download-only "libjsoncpp=$version") \
  >"$work/source.log" 2>&1 || {
  cat "$work/update.log" "$work/source.log" >&2
  fail "cannot fetch the source of libjsoncpp $version from this machine's apt sources"
}
# apt has checked the files against the signed index; the maintainer's key is not on the machine.
dpkg-source -x "$work"/libjsoncpp_*.dsc "$work/tree" >"$work/unpack.log" 2>&1 ||
  { cat "$work/unpack.log" >&2; fail "cannot unpack libjsoncpp"; }
rm -rf "$work/tree/.pc" "$DEST"
mkdir -p "$(dirname "$DEST")"
mv "$work/tree" "$DEST"
echo "$version" >"$STAMP"
echo "fetch-jsoncpp: libjsoncpp $version in $DEST"
