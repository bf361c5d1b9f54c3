rm -f /etc/dhcpcd.conf
