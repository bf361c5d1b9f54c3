mkdir /etc/resolv.conf
