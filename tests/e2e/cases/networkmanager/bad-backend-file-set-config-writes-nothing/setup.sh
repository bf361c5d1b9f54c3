mkdir -p /etc/NetworkManager/system-connections
