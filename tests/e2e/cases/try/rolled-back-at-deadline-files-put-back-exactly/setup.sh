# The resolver file is a link, two files have owners and modes of their own, and the wired
# supplicant file does not exist yet: the try creates it and the rollback must remove it.
ln -sf ../run/qv-case/resolv.conf /etc/resolv.conf
chown 1234:5678 /etc/network/interfaces /etc/wpa_supplicant/wpa_supplicant.conf
chmod 640 /etc/network/interfaces
chmod 604 /etc/wpa_supplicant/wpa_supplicant.conf
