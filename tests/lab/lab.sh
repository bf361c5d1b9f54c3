# The device lab: a "device" and a "peer" machine, each an end-to-end sandbox (network and mount
# namespace, see machine.sh) holding the real utilities and daemons, joined by veth pairs. The
# device sees eth0 and wlan0 (their other ends are eth0-peer and wlan0-peer on the peer). The built
# tool is installed on the device as /usr/bin/qv-netconf and run there the way the management
# application runs it.
#
# Sourced by every scenario (run by run-scenario.sh, which sets LAB_TOOL, LAB_NAME and LAB_ROOT).
# Checks do not stop the scenario: each prints "ok" or "FAIL", and lab_finish sums them up.

LAB_HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
LAB_FILES=$LAB_HERE/files
LAB_NAME=${LAB_NAME:-qvlab-$$-$(basename "$0" .sh)}
DEVICE_NS=$LAB_NAME-dev
PEER_NS=$LAB_NAME-peer
# The clean environment of a system service.
LAB_ENV=(PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8)
LAB_PASSED=0
LAB_FAILED=0

# --- bringing the lab up and down -------------------------------------------------------------

lab_start() {
  [ "$(id -u)" = 0 ] || lab_abort "the lab needs root (namespaces and mounts)"
  [ -d /KQ ] || lab_abort "no mount point for the certificate store: run tests/lab/setup.sh"
  LAB_DIR=$(mktemp -d "${LAB_ROOT:-/tmp}/qv-lab.XXXXXX")
  trap lab_stop EXIT
  trap 'exit 124' TERM INT
  local role link
  for role in device peer; do
    "$LAB_HERE/../e2e/sandbox.sh" --tool "$LAB_HERE/machine.sh" --out "$LAB_DIR/$role" -- \
      "$role" "$LAB_DIR" >"$LAB_DIR/$role.log" 2>&1 &
  done
  wait_until 30 test -s "$LAB_DIR/device.pid" -a -s "$LAB_DIR/peer.pid" ||
    lab_abort "the sandboxes did not come up: $(cat "$LAB_DIR"/*.log)"
  DEVICE_HOLDER=$(cat "$LAB_DIR/device.pid")
  PEER_HOLDER=$(cat "$LAB_DIR/peer.pid")
  # Named, the namespaces can be listed, entered and ended like any other.
  ip netns attach "$DEVICE_NS" "$DEVICE_HOLDER" && ip netns attach "$PEER_NS" "$PEER_HOLDER" ||
    lab_abort "cannot name the namespaces"
  for link in eth0 wlan0; do
    ip -n "$DEVICE_NS" link add "$link" type veth peer name "$link-peer" netns "$PEER_NS" &&
      ip -n "$PEER_NS" link set "$link-peer" up || lab_abort "cannot add $link"
  done
  on_device cp "$LAB_TOOL" /usr/bin/qv-netconf
  # The companions are built beside the tool.
  local companion
  for companion in qv-netconf-check qv-netconf-try; do
    on_device cp "$(dirname "$LAB_TOOL")/$companion" "/usr/bin/$companion" ||
      lab_abort "no $companion beside $LAB_TOOL"
  done
  # The sandbox starts without network files; a device always has dhcpcd's, whose head the tool
  # keeps.
  put_file on_device /etc/dhcpcd.conf <"$LAB_FILES/dhcpcd-head.conf"
}

# Ends every process of a namespace (TERM, then KILL after a bounded wait) and deletes it.
lab_remove_namespace() { # namespace
  local signal
  for signal in TERM KILL; do
    # shellcheck disable=SC2046 # one PID a word
    kill -"$signal" $(ip netns pids "$1" 2>/dev/null) 2>/dev/null
    wait_until 3 lab_namespace_empty "$1" && break
  done
  ip netns del "$1" 2>/dev/null
}

lab_namespace_empty() { [ -z "$(ip netns pids "$1" 2>/dev/null)" ]; }

lab_stop() {
  trap - EXIT
  lab_remove_namespace "$DEVICE_NS"
  lab_remove_namespace "$PEER_NS"
  # Sandboxes that came up too late for lab_start are not named yet: they end by their PIDs.
  # shellcheck disable=SC2046 # one PID a word
  [ -n "${DEVICE_HOLDER:-}" ] || kill $(cat "$LAB_DIR"/{device,peer}.pid 2>/dev/null) 2>/dev/null
  wait 2>/dev/null
  [ -n "${LAB_DIR:-}" ] && rm -rf "$LAB_DIR"
}

lab_abort() {
  echo "lab: $*" >&2
  exit 2
}

# --- running things on the two machines -------------------------------------------------------

# Runs a command on the device (on the peer) with the clean environment of a system service.
# Entering a mount namespace puts a process at that namespace's real root, which in a chroot is
# the machine's: --root and --wd take the holder's own root and working directory (/) instead.
on_device() { nsenter -t "$DEVICE_HOLDER" -m -n --root --wd -- env -i "${LAB_ENV[@]}" "$@"; }
on_peer() { nsenter -t "$PEER_HOLDER" -m -n --root --wd -- env -i "${LAB_ENV[@]}" "$@"; }

# Writes standard input to a file on one machine: put_file on_device|on_peer PATH.
put_file() { "$1" sh -c 'mkdir -p "$(dirname "$1")" && cat >"$1"' put "$2"; }

# Runs the tool on the device; its output lands in QV_OUT, QV_ERR and QV_STATUS. Both streams are
# pipes, as for the management application (the supplicant's ifupdown hook reopens /dev/stderr,
# which would truncate a file). The captured texts keep their trailing newlines.
qv() {
  local result
  result=$(
    on_device qv-netconf "$@" 2> >(cat >"$LAB_DIR/qv.err")
    status=$?
    wait $!
    echo ".$status"
  )
  QV_STATUS=${result##*.}
  QV_OUT=${result%.*}
  QV_ERR=$(cat "$LAB_DIR/qv.err"; echo .)
  QV_ERR=${QV_ERR%.}
}

# True when no process of that name runs in the device's namespace.
device_runs_no() { # name
  ! grep -qxF -f <(pgrep -x "$1") <(ip netns pids "$DEVICE_NS")
}

# Where the management application keeps config.json on the device.
LAB_CONFIG=/KQ/configuration/config.json

# Writes config.json on the device from the members of its three objects (JSON text each).
write_config() { # eth-members wlan-members dns-members
  printf '{\n  "encoding": "UTF-8",\n  "network settings": {\n    "interfaces": {\n      "eth": {%s},\n      "wlan": {%s}\n    },\n    "DNS": {%s}\n  }\n}\n' \
    "$1" "$2" "$3" | put_file on_device "$LAB_CONFIG"
  # The checker reads every config.json the lab writes. Scenarios also break files on purpose, so
  # its findings are shown here and judged where a link comes up (expect_checker_agrees); a file
  # it cannot read, or a crash, fails the scenario.
  LAB_FINDINGS=$(on_device qv-netconf-check "$LAB_CONFIG") || [ $? = 1 ] ||
    fail "qv-netconf-check reads config.json" "$LAB_FINDINGS"
  [ -z "$LAB_FINDINGS" ] || echo "${LAB_FINDINGS//"$LAB_CONFIG: "/       check: }"
}

# Polls a command every tenth of a second until it succeeds or the seconds run out.
wait_until() { # seconds command...
  local deadline=$((SECONDS + $1))
  shift
  until "$@" >/dev/null 2>&1; do
    [ "$SECONDS" -lt "$deadline" ] || return 1
    sleep 0.1
  done
}

# --- the try ------------------------------------------------------------------------------------

# The five files set-config writes, which a try must put back as they were.
NETWORK_FILES=(/etc/network/interfaces /etc/resolv.conf /etc/wpa_supplicant/wpa_supplicant.conf
               /etc/wpa_supplicant/wpa_supplicant_wired.conf /etc/dhcpcd.conf)

# Copies the device's network files into DIR, with their modes and owners in DIR/.modes; a file
# the device does not have is absent there too.
snapshot_network_files() { # dir
  local path
  rm -rf "$1"
  mkdir -p "$1"
  for path in "${NETWORK_FILES[@]}"; do
    on_device cat "$path" >"$1/${path##*/}" 2>/dev/null || rm "$1/${path##*/}"
  done
  on_device stat -L -c '%n %a %U:%G' "${NETWORK_FILES[@]}" >"$1/.modes" 2>/dev/null
}

expect_network_files() { # description snapshot-dir
  snapshot_network_files "$LAB_DIR/files-now"
  expect_ok "$1" diff -r "$2" "$LAB_DIR/files-now"
}

# Runs qv-netconf-try --wait with ARGS on the device until the try ends. TRY_STATUS is its status,
# TRY_END its last line, TRY_MS the milliseconds from its "pending" line (the change in place and
# the deadline set) to its end.
try_wait() {
  local line now started=
  TRY_END=
  while IFS= read -r line; do
    now=${EPOCHREALTIME//[.,]/}
    case $line in
      "pending: "*) started=$now ;;
      .*) TRY_STATUS=${line#.} ;;
      *) TRY_END=$line ;;
    esac
  done < <(on_device qv-netconf-try --wait "$@" 2>"$LAB_DIR/try.err"; echo ".$?")
  TRY_MS=$(((now - ${started:-$now}) / 1000))
}

# The try just run must have been rolled back for not being confirmed in TIMEOUT seconds, within
# BOUND seconds after that deadline; the lateness is shown.
expect_rolled_back() { # description timeout bound
  local late=$((TRY_MS - $2 * 1000))
  local shown="$((late / 1000)).$((late % 1000 / 100)) s"
  if [ "$TRY_STATUS $TRY_END" = "3 rolled back: $LAB_CONFIG: not confirmed within $2 s" ] &&
    [ "$late" -ge 0 ] && [ "$late" -le $(($3 * 1000)) ]; then
    pass "$1 ($shown after the deadline)"
  else
    fail "$1" "status: $TRY_STATUS, last line: $TRY_END" "ended $shown after the deadline" \
      "stderr, last lines: $(tail -n 5 "$LAB_DIR/try.err")"
  fi
}

expect_confirmed() { # description
  if [ "$TRY_STATUS $TRY_END" = "0 confirmed: $LAB_CONFIG: by its checks" ]; then
    pass "$1 (after $((TRY_MS / 1000)).$((TRY_MS % 1000 / 100)) s)"
  else
    fail "$1" "status: $TRY_STATUS, last line: $TRY_END" \
      "stderr, last lines: $(tail -n 5 "$LAB_DIR/try.err")"
  fi
  # With the try ended, nothing is left to roll it back.
  expect_ok "$1: no watcher is left" wait_until 3 device_runs_no qv-netconf-try
}

# --- expected replies ---------------------------------------------------------------------------
# (Used as "$(...)", which drops the last line end: the caller writes it, where the tool does.)

# What every accepted command prints first in console mode.
CONSOLE_START=$'Valid arguments. Operation is going to start...\n'

# ifdown --force of a static eth0 that is not up still deletes its default route, and ifupdown
# sends ip's complaint to stdout: the line reaches the tool's output, as on the board.
ROUTE_GONE=$'RTNETLINK answers: No such process\n'

# The one-line object of an interface report in application mode.
values_reply() { # ip netmask gateway type
  printf '{"values":{ "ip address":"%s","netmask address":"%s","gateway address":"%s","type":"%s"}}' "$@"
}

# --- checks -----------------------------------------------------------------------------------

pass() {
  LAB_PASSED=$((LAB_PASSED + 1))
  echo "ok   $1"
}

fail() { # description detail...
  LAB_FAILED=$((LAB_FAILED + 1))
  echo "FAIL $1"
  shift
  local line
  for line in "$@"; do printf '       %s\n' "$line"; done
}

# The tool, run with ARGS, must print exactly EXPECTED on stdout, nothing on stderr, and end
# with status 0.
expect_reply() { lab_check_reply strict "$@"; }

# The same for a command that runs the system's utilities: what they print on stderr is theirs, so
# only stdout and the status are checked.
expect_stdout() { lab_check_reply stdout "$@"; }

lab_check_reply() { # strict|stdout description expected args...
  local strictness=$1 description=$2 expected=$3
  shift 3
  qv "$@"
  if [ "$QV_OUT" = "$expected" ] && [ "$QV_STATUS" = 0 ] &&
    { [ "$strictness" = stdout ] || [ -z "$QV_ERR" ]; }; then
    pass "$description"
  else
    fail "$description" "qv-netconf $*" "expected: $(printf '%s' "$expected" | cat -A)" \
      "stdout:   $(printf '%s' "$QV_OUT" | cat -A)" "stderr:   $QV_ERR" "status:   $QV_STATUS"
  fi
}

expect_same() { # description expected actual
  if [ "$2" = "$3" ]; then pass "$1"; else fail "$1" "expected: $2" "actual:   $3"; fi
}

expect_match() { # description extended-regex actual
  if [[ $3 =~ $2 ]]; then pass "$1"; else fail "$1" "expected to match: $2" "actual: $3"; fi
}

# The command must succeed; its output is shown otherwise.
expect_ok() { # description command...
  local description=$1 output
  shift
  if output=$("$@" 2>&1); then pass "$description"; else fail "$description" "$*" "$output"; fi
}

lab_finish() {
  echo "$LAB_PASSED passed, $LAB_FAILED failed"
  [ "$LAB_FAILED" = 0 ]
}

# shellcheck source=../e2e/confinement.sh
. "$LAB_HERE/../e2e/confinement.sh"
# shellcheck source=services.sh
. "$LAB_HERE/services.sh"
