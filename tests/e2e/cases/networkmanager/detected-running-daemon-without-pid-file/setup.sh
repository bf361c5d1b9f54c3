# No back-end file and no PID file: NetworkManager runs in the foreground, as its system unit
# starts it, and only /proc shows it.
. "$CASE/../../../fake-networkmanager.sh"
start_networkmanager
# Any NetworkManager makes its run directory when it starts.
mkdir -p /run/NetworkManager
mkdir -p /etc/NetworkManager/system-connections
