#!/bin/bash
# Started inside the sandbox by bench/run.sh --try: times what qv-netconf-try adds. Per round, from
# the same five files: "qv-netconf set-config" then "autoconnect" (what a try does without its
# record and watcher), then the try of the same config.json, which returns once applied; then
# --status with the try pending, --confirm, and --status with none; and /bin/true, the cost of
# starting any program here. Prints the medians in ms.
#   try-timing.sh TOOL TRY ROUNDS
set -euo pipefail
tool=$1 try=$2 rounds=$3
config=/run/qv-case/config.json
FILES=(/etc/network/interfaces /etc/resolv.conf /etc/wpa_supplicant/wpa_supplicant.conf
  /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf)
# The files as the round starts (a missing one is missing again).
mkdir -p /run/qv-bench-old
for f in "${FILES[@]}"; do [ ! -e "$f" ] || cp "$f" "/run/qv-bench-old/$(basename "$f")"; done
old_files() {
  local f old
  for f in "${FILES[@]}"; do
    old=/run/qv-bench-old/$(basename "$f")
    if [ -e "$old" ]; then cp "$old" "$f"; else rm -f "$f"; fi
  done
}

declare -A samples
timed() { # name command...: the command's wall time, in microseconds, added to the name's samples
  local name=$1 started
  shift
  started=${EPOCHREALTIME/./}
  "$@" >/dev/null 2>&1 || { echo "try-timing.sh: $* failed" >&2; exit 1; }
  samples[$name]+="$((${EPOCHREALTIME/./} - started)) "
}
# The watcher of a confirmed try ends within a second; a try started before then is taken up by
# it, which is not the case to time.
watcher_gone() { while [ -n "$(find /proc -mindepth 2 -maxdepth 2 -name exe -lname "$try" 2>/dev/null)" ]; do sleep 0.05; done; }

write_and_apply() { "$tool" set-config A "$config" && "$tool" autoconnect A "$config"; }

# The example's certificate is not in this machine's store, an error the try would refuse on.
for ((round = 0; round < rounds; round++)); do
  old_files
  timed plain write_and_apply
  old_files
  timed try "$try" --force "$config"
  timed status-pending "$try" --status
  timed confirm "$try" --confirm
  timed status-idle "$try" --status
  timed spawn /bin/true
  watcher_gone
done

median_ms() {
  tr ' ' '\n' <<<"$1" | grep . | sort -n | awk '{v[NR] = $1} END {printf "%.3f", v[int((NR + 1) / 2)] / 1000}'
}
plain=$(median_ms "${samples[plain]}") tried=$(median_ms "${samples[try]}")
printf '| %s | %s | %s | %s | %s | %s | %s |\n' "$plain" "$tried" \
  "$(awk -v a="$tried" -v b="$plain" 'BEGIN {printf "%+.3f", a - b}')" \
  "$(median_ms "${samples[status-pending]}")" "$(median_ms "${samples[confirm]}")" \
  "$(median_ms "${samples[status-idle]}")" "$(median_ms "${samples[spawn]}")"
awk -v a="$tried" -v b="$plain" 'BEGIN {exit !(a - b < 50)}' || exit 3
