rm -f /etc/network/interfaces
mkdir -p /etc/network/interfaces
rm -f /etc/wpa_supplicant/wpa_supplicant.conf /etc/wpa_supplicant/wpa_supplicant_wired.conf
