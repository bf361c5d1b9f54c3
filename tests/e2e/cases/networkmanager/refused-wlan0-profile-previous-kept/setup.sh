# The earlier wlan0 profile has bits of its own, which it must get back.
chmod 600 /etc/NetworkManager/system-connections/qv-netconf-eth0.nmconnection
chmod 640 /etc/NetworkManager/system-connections/qv-netconf-wlan0.nmconnection
