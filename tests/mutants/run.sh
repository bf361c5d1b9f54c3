#!/bin/bash
# Applies each deliberate fault of tests/mutants/mutants.txt to a copy of the working tree, builds
# it and runs the tests that find faults: every unit test, then the end-to-end, docs and build
# tests (with --lab the device lab too) until the first failure. Prints one Markdown row per
# mutant: caught (the unit tests that failed, the first other test that failed), missed, or
# stillborn (it does not build: fix it in the list). Exits 1 unless every mutant is caught.
#   tests/mutants/run.sh [--lab] [--only ID...]
# The copy and its build stay in build-mutants/ (QV_MUTANTS_DIR), so each mutant is an
# incremental build; build-mutants/caught/ID lists the failed tests. The tool is linked
# dynamically there: without the link-time optimisation of the static build a mutant builds in
# seconds, and no fault in the source changes how the tool is linked.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
work=${QV_MUTANTS_DIR:-$root/build-mutants}
tree=$work/tree
build=$work/build
labels='e2e|docs|build'
only=()
while [ $# -gt 0 ]; do
  case $1 in
    --lab) labels+='|lab' ;;
    --only) shift; only=("$@"); break ;;
    *) echo "usage: $0 [--lab] [--only ID...]" >&2; exit 2 ;;
  esac
  shift
done
mutants() { python3 "$root/tests/mutants/apply.py" "$root/tests/mutants/mutants.txt" "$@"; }
mkdir -p "$tree" "$work/caught"
rm -f "$work/caught/"*

# The copy follows the working tree; a file copied afresh is newer than its objects.
cd "$root"
git ls-files >"$work/files"
while read -r file; do cmp -s "$file" "$tree/$file" || echo "$file"; done <"$work/files" |
  xargs -r -d '\n' cp -P --parents --remove-destination -t "$tree"
(cd "$tree" && find . \( -type f -o -type l \) -printf '%P\n') | sort |
  comm -23 - <(sort "$work/files") | (cd "$tree" && xargs -r -d '\n' rm -f)
find "$tree" -mindepth 1 -type d -empty -delete
mutants "$tree" --check >/dev/null

compile() { nice -n 19 cmake --build "$build" -j "$(nproc)" >"$work/build.log" 2>&1; }
# Prints the names of the failing tests.
failing() {
  (cd "$build" && nice -n 19 ctest -j "$(nproc)" --timeout 120 -L unit
    nice -n 19 ctest -j "$(nproc)" --timeout 120 -L "$labels" --stop-on-failure) \
    >"$work/ctest.log" 2>&1 || true
  sed -nE 's/^[[:space:]]*[0-9]+ - ([^ ]+) \(.*\)$/\1/p' "$work/ctest.log"
}
# The number and the first three of the failed tests that are unit tests (1) or are not (0).
names() {
  awk -v unit="$1" '(/^unit\//) == unit && ++n <= 3 { list = list (n > 1 ? ", " : "") $0 }
    END { printf "%d: %s", n, list }' "$work/caught/$id"
}

start=$SECONDS
nice -n 19 cmake -S "$tree" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQV_JSONCPP_SOURCE_DIR="$root/third_party/jsoncpp" -DQV_STATIC_TOOL=OFF >/dev/null
compile || { cat "$work/build.log"; echo "run.sh: the unchanged tree does not build"; exit 1; }
[ -z "$(failing)" ] ||
  { cat "$work/ctest.log"; echo "run.sh: the unchanged tree fails its tests"; exit 1; }

echo "| mutant | what it breaks | result | failing unit tests; first other test to fail |"
echo "|---|---|---|---|"
status=0
while read -r id why; do
  if [ ${#only[@]} -gt 0 ] && [[ ! " ${only[*]} " =~ \ $id\  ]]; then continue; fi
  mapfile -t changed < <(mutants "$tree" "$id")
  if ! compile; then
    result=stillborn detail=$(grep -m1 -E 'error' "$work/build.log" || true) status=1
  elif failing >"$work/caught/$id" && [ -s "$work/caught/$id" ]; then
    result=caught detail="$(names 1); $(names 0)"
  else
    result=MISSED detail='' status=1
  fi
  echo "| $id | $why | $result | $detail |"
  cp -P --parents --remove-destination -t "$tree" "${changed[@]}"
done < <(mutants --ids)
echo "run.sh: $((SECONDS - start)) s"
exit "$status"
