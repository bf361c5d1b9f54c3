# The resolver file is a link; two files have owners and modes of their own; the wired file is a
# mount point of its own (as a bind-mounted file in a container is), longer than its new content.
ln -sf ../run/qv-case/resolv.conf /etc/resolv.conf
chown 1234:5678 /etc/network/interfaces /etc/wpa_supplicant/wpa_supplicant.conf
chmod 640 /etc/network/interfaces
chmod 644 /etc/wpa_supplicant/wpa_supplicant.conf
seq 5000 >/run/qv-case/wired.conf
mount --bind /run/qv-case/wired.conf /etc/wpa_supplicant/wpa_supplicant_wired.conf
