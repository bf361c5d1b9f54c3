# The PID file names a live process that is not NetworkManager (the sandbox's shell): exactly
# what ifupdown gets.
. "$CASE/../../../fake-networkmanager.sh"
await_no_networkmanager
networkmanager_pid_file "$PPID"
