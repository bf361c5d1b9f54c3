# Sourced by a case's setup.sh: NetworkManager as the back-end detection sees it running.
#   start_networkmanager          a process named NetworkManager (a copy of sleep); its PID is left
#                                 in $networkmanager_pid
#   networkmanager_pid_file PID   the PID file the daemonizing daemon writes (no line end), naming
#                                 any process
# The process ends with the sandbox: a watcher kills it once the sandbox's shell has gone, and it
# would end by itself after five minutes anyway.
start_networkmanager() {
  local sandbox=$PPID
  cp /bin/sleep /run/qv-case/NetworkManager
  /run/qv-case/NetworkManager 300 </dev/null >/dev/null 2>&1 &
  networkmanager_pid=$!
  (while kill -0 "$sandbox" 2>/dev/null; do sleep 0.2; done; kill "$networkmanager_pid" 2>/dev/null) \
    </dev/null >/dev/null 2>&1 &
}

# The detection looks through /proc, which every sandbox shares: the stand-in of a case that just
# ended may live on for a moment after it (its watcher looks every 0.2 s). A case that must find
# no NetworkManager waits for it to go.
await_no_networkmanager() {
  local tries=50
  while grep -qsx NetworkManager /proc/[0-9]*/comm && [ $((tries -= 1)) -gt 0 ]; do sleep 0.1; done
}

networkmanager_pid_file() {
  mkdir -p /run/NetworkManager
  printf %s "$1" >/run/NetworkManager/NetworkManager.pid
}
