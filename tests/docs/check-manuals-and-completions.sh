#!/bin/bash
# Holds each tool's manual page and bash completion to the tool's own usage text: every name the
# usage text lists (the tool's commands, the checker's options) is exactly one item of the
# manual's section for them and is what the completion offers first, nothing else is; the page
# renders without groff warnings. For the tool also: the completion offers the mode letters, and
# paths exactly for the commands the usage text says take config.json.
#   check-manuals-and-completions.sh BUILD_DIR [EMULATOR...]
# BUILD_DIR holds the tools and their rendered pages; EMULATOR runs tools that were cross-built.
set -uo pipefail
build=$(realpath "$1")
emulator=("${@:2}")
completions=$(realpath "$(dirname "$0")/../../completion")

failed=0
fail() {
  echo "FAIL: $*"
  failed=1
}

# The completion, asked as bash asks it in a directory of a few files: the function registered
# for the tool, the words so far, the index of the word being completed.
complete_at() { # TOOL WORD...
  (cd "$scratch" && bash -c 'source "$1"; shift
    COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); $(complete -p "$1" | sed -E "s/.*-F ([^ ]+) .*/\1/")
    printf "%s\n" "${COMPREPLY[@]}"' _ "$completions/$1.bash" "$@") | sed '/^$/d' | sort
}

# TOOL USAGE_ARGUMENT STATUS NAMES_PATTERN SECTION FIRST_WORD: see the table below.
check_tool() {
  local tool=$1 usage status names warnings documented offered
  usage=$("${emulator[@]}" "$build/$tool" ${2:+"$2"} 2>/dev/null)
  status=$?
  [ "$status" -eq "$3" ] || fail "$tool $2 exited with $status, not $3"
  names=$(grep -oE -- "$4" <<<"$usage" | tr -d '|' | sort -u)

  warnings=$(LC_ALL=C.UTF-8 groff -man -Tutf8 -ww -z "$build/$tool.8" 2>&1)
  [ -z "$warnings" ] || fail "groff warns about $tool's manual page: $warnings"
  # The items of the section are the first words of the lines right after .TP.
  documented=$(awk -v section="$5" '/^\.SH / { inside = ($2 == section) }
    inside && after_tp { gsub(/\\-/, "-"); sub(/^(\.BI? |\\fB)/, ""); sub(/[\\ ].*/, ""); print }
    { after_tp = ($0 == ".TP") }' "$build/$tool.8" | sort)
  [ "$documented" = "$names" ] || fail "$tool's manual differs from its usage text:
$(diff <(echo "$names") <(echo "$documented"))"

  offered=$(complete_at "$tool" "$6")
  [ "$offered" = "$names" ] || fail "$tool's completion offers other names than its usage text:
$(diff <(echo "$names") <(echo "$offered"))"
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/settings"
touch "$scratch/config.json" "$scratch/notes.txt"
# tool, the argument that asks for the usage text, its exit status, the names in it (grep -oE),
# the manual section that lists them, the word the completion is asked to finish.
check_tool qv-netconf       ""     1 '[|][a-z0-9-]+' COMMANDS ""
check_tool qv-netconf-check --help 0 '--[a-z]+'      OPTIONS  --
check_tool qv-netconf-try   --help 0 '--[a-z-]+'     OPTIONS  --

usage=$("${emulator[@]}" "$build/qv-netconf" 2>/dev/null)
path_commands=$(sed -n 's/.* is required to \(.*\)\.$/\1/p' <<<"$usage" |
  sed 's/, / /g; s/ and / /' | tr ' ' '\n' | sort)
[ -n "$path_commands" ] || fail "no config.json commands named in the usage text"
offered=$(complete_at qv-netconf get-wifi-list "")
[ "$offered" = "$(printf 'A\nM')" ] || fail "mode letters offered: $offered"
# Where config.json goes: the file and the directory for the commands that take it, else nothing.
for command in $(grep -oE '[|][a-z0-9-]+' <<<"$usage" | tr -d '|'); do
  expected=""
  grep -qx "$command" <<<"$path_commands" && expected=$(printf 'config.json\nsettings')
  offered=$(complete_at qv-netconf "$command" M "")
  [ "$offered" = "$expected" ] || fail "$command: the completion offers '$offered' for config.json"
done
offered=$(complete_at qv-netconf set-config M config.json "")
[ -z "$offered" ] || fail "set-config's user name position offers: $offered"
exit $failed
