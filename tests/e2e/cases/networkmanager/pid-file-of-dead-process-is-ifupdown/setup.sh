# The PID file of a NetworkManager that has ended, its number not taken again yet: exactly what
# ifupdown gets.
. "$CASE/../../../fake-networkmanager.sh"
await_no_networkmanager
true &
wait $!
networkmanager_pid_file $!
