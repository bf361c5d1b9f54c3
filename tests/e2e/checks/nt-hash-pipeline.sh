#!/bin/bash
# The sandbox must hash like the device: the tool's exact NT-hash pipeline gives the real hash
# of a non-empty password. On OpenSSL 3 without the legacy provider "openssl md4" fails and the
# tool would silently write the empty-password hash instead.
set -euo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
WORK=$(mktemp -d /tmp/qv-hash-check.XXXXXX)
trap 'rm -rf "$WORK"' EXIT

cat >"$WORK/pipeline" <<'PIPELINE'
#!/bin/sh
echo -n 'password' | iconv -t utf16le | openssl md4
PIPELINE
chmod +x "$WORK/pipeline"

"$HERE/sandbox.sh" --tool "$WORK/pipeline" --out "$WORK/out"
if ! grep -q '(stdin)= 8846f7eaee8fb117ad06bdd830b7586c$' "$WORK/out/stdout"; then
  echo "the NT hash of \"password\" did not come out of the pipeline:"
  cat "$WORK/out/stdout" "$WORK/out/stderr"
  exit 1
fi
echo "openssl md4 works in the sandbox"
