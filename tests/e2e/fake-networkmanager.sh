# Sourced by a case's setup.sh: NetworkManager as the back-end detection sees it running, a process
# named NetworkManager (a copy of sleep) and the PID file the daemon writes (no line end).
# The process ends with the sandbox: a watcher kills it once the sandbox's shell has gone, and it
# would end by itself after five minutes anyway.
#   fake_networkmanager              a live NetworkManager and its PID file
#   networkmanager_pid_file PID      only a PID file, naming any process
networkmanager_pid_file() {
  mkdir -p /run/NetworkManager
  printf %s "$1" >/run/NetworkManager/NetworkManager.pid
}

fake_networkmanager() {
  local sandbox=$PPID daemon
  cp /bin/sleep /run/qv-case/NetworkManager
  /run/qv-case/NetworkManager 300 </dev/null >/dev/null 2>&1 &
  daemon=$!
  (while kill -0 "$sandbox" 2>/dev/null; do sleep 0.2; done; kill "$daemon" 2>/dev/null) \
    </dev/null >/dev/null 2>&1 &
  networkmanager_pid_file "$daemon"
}
