# NetworkManager runs, but the back-end file says ifupdown: exactly what ifupdown gets.
. "$CASE/../../../fake-networkmanager.sh"
start_networkmanager
networkmanager_pid_file "$networkmanager_pid"
mkdir -p /etc/qv-netconf
printf 'ifupdown\n' >/etc/qv-netconf/backend
