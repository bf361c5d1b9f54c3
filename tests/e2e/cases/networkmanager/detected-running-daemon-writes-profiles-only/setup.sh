# No back-end file: NetworkManager runs and has written its PID file.
. "$CASE/../../../fake-networkmanager.sh"
start_networkmanager
networkmanager_pid_file "$networkmanager_pid"
mkdir -p /etc/NetworkManager/system-connections
