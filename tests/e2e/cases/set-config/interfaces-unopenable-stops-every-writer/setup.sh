mkdir -p /etc/network/interfaces
