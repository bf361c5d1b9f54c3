. "$CASE/../../../fake-networkmanager.sh"
start_networkmanager
networkmanager_pid_file "$networkmanager_pid"
