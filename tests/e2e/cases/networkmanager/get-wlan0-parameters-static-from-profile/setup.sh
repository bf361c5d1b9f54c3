# The interfaces file says dhcp for wlan0; its NetworkManager profile says manual.
mkdir -p /etc/qv-netconf /etc/NetworkManager/system-connections
printf 'networkmanager\n' >/etc/qv-netconf/backend
install -m 600 /run/qv-case/qv-netconf-wlan0.nmconnection /etc/NetworkManager/system-connections/
