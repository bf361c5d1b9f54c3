# Readable, but every attempt to open it for writing fails.
mount --bind /etc/dhcpcd.conf /etc/dhcpcd.conf
mount -o remount,bind,ro /etc/dhcpcd.conf
