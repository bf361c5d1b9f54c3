#!/bin/bash
# Holds the checker's manual page and completion to its usage text: every option the usage text
# names is an item of the manual's OPTIONS section and is offered by the completion; the page
# renders without groff warnings.
#   check-checker-manual-and-completion.sh MANUAL COMPLETION CHECKER_COMMAND...
set -uo pipefail
MANUAL=$(realpath "$1")
COMPLETION=$(realpath "$2")
shift 2
failed=0
fail() {
  echo "FAIL: $*"
  failed=1
}

usage=$("$@" --help)
[ $? -eq 0 ] || fail "--help did not exit with 0"
options=$(grep -oE -- '--[a-z]+' <<<"$usage" | sort -u)
[ -n "$options" ] || fail "no options in the usage text"
warnings=$(LC_ALL=C.UTF-8 groff -man -Tutf8 -ww -z "$MANUAL" 2>&1)
[ -z "$warnings" ] || fail "groff warns about the manual page: $warnings"
documented=$(awk '/^\.SH / { in_options = ($2 == "OPTIONS") }
  in_options && after_tp { sub(/^\.BI? /, ""); sub(/ .*/, ""); gsub(/\\-/, "-"); print }
  { after_tp = ($0 == ".TP") }' "$MANUAL" | sort)
[ "$documented" = "$options" ] || fail "the manual's options differ from the usage text's:
$(diff <(echo "$options") <(echo "$documented"))"
offered=$(bash -c 'source "$1"; COMP_WORDS=(qv-netconf-check --); COMP_CWORD=1
  _qv_netconf_check; printf "%s\n" "${COMPREPLY[@]}"' _ "$COMPLETION" | sort)
[ "$offered" = "$options" ] || fail "the completion offers: $offered"
exit $failed
