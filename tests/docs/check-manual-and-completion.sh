#!/bin/bash
# Holds the manual page and the bash completion to the tool's own usage text: every command the
# tool accepts has exactly one item in the manual's COMMANDS section and is offered by the
# completion, nothing else is; the completion offers the mode letters and, for the commands that
# take config.json, paths; the page renders without groff warnings.
#   check-manual-and-completion.sh MANUAL COMPLETION TOOL_COMMAND...
# TOOL_COMMAND is the tool, behind an emulator when it was cross-built.
set -uo pipefail

MANUAL=$(realpath "$1")
COMPLETION=$(realpath "$2")
shift 2

failed=0
fail() {
  echo "FAIL: $*"
  failed=1
}
# Prints the lines of $1 missing from $2 (both sorted lists).
missing() { comm -23 <(printf '%s\n' "$1") <(printf '%s\n' "$2"); }

usage=$("$@" 2>/dev/null)
status=$?
[ "$status" -eq 1 ] || fail "the tool without arguments exited with $status, not 1"
commands=$(grep -o '|[a-z0-9-]*' <<<"$usage" | tr -d '|' | sort)
[ "$(wc -l <<<"$commands")" -eq 28 ] || fail "expected 28 commands in the usage text, got: $commands"
path_commands=$(sed -n 's/.* is required to \(.*\)\.$/\1/p' <<<"$usage" |
  sed 's/, / /g; s/ and / /' | tr ' ' '\n' | sort)
[ -n "$path_commands" ] || fail "no config.json commands named in the usage text"

# The manual: items of the COMMANDS section are the \fBname\fR lines right after .TP.
warnings=$(LC_ALL=C.UTF-8 groff -man -Tutf8 -ww -z "$MANUAL" 2>&1)
[ -z "$warnings" ] || fail "groff warns about the manual page: $warnings"
documented=$(awk '
  /^\.SH / { in_commands = ($2 == "COMMANDS") }
  in_commands && after_tp && match($0, /^\\fB[^\\]*(\\-[^\\]*)*\\fR/) {
    name = substr($0, 4, RLENGTH - 6); gsub(/\\-/, "-", name); print name
  }
  { after_tp = ($0 == ".TP") }' "$MANUAL" | sort)
twice=$(uniq -d <<<"$documented")
[ -z "$twice" ] || fail "the manual describes these commands twice: $twice"
undocumented=$(missing "$commands" "$documented")
[ -z "$undocumented" ] || fail "the manual does not describe: $undocumented"
unknown=$(missing "$(uniq <<<"$documented")" "$commands")
[ -z "$unknown" ] || fail "the manual describes commands the tool does not accept: $unknown"

# The completion, asked as bash asks it: words so far, index of the word being completed.
complete_at() { # DIR WORD...
  local dir=$1
  shift
  (cd "$dir" && bash -c 'source "$1"; shift
    COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _qv_netconf
    printf "%s\n" "${COMPREPLY[@]}"' _ "$COMPLETION" "$@") | sed '/^$/d' | sort
}
registered=$(bash -c 'source "$1"; complete -p qv-netconf' _ "$COMPLETION")
[[ $registered == *"-F _qv_netconf qv-netconf" ]] || fail "completion not registered: $registered"

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/settings"
touch "$scratch/config.json" "$scratch/notes.txt"

offered=$(complete_at "$scratch" qv-netconf "")
[ "$offered" = "$commands" ] || fail "commands offered differ from the tool's:
$(diff <(echo "$commands") <(echo "$offered"))"
offered=$(complete_at "$scratch" qv-netconf get-wifi-list "")
[ "$offered" = "$(printf 'A\nM')" ] || fail "mode letters offered: $offered"
for command in $commands; do
  offered=$(complete_at "$scratch" qv-netconf "$command" M "")
  if grep -qx "$command" <<<"$path_commands"; then
    [ "$offered" = "$(printf 'config.json\nsettings')" ] ||
      fail "$command: expected config.json and the directory offered, got: $offered"
  else
    [ -z "$offered" ] || fail "$command takes no path but the completion offers: $offered"
  fi
done
offered=$(complete_at "$scratch" qv-netconf set-config M config.json "")
[ -z "$offered" ] || fail "set-config's user name position offers: $offered"

exit $failed
