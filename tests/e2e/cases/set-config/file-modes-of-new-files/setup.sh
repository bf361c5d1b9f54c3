mkdir -p /etc/network
rm -f /etc/network/interfaces /etc/resolv.conf
rm -f /etc/wpa_supplicant/wpa_supplicant.conf /etc/wpa_supplicant/wpa_supplicant_wired.conf
