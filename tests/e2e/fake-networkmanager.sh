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

networkmanager_pid_file() {
  mkdir -p /run/NetworkManager
  printf %s "$1" >/run/NetworkManager/NetworkManager.pid
}
