rm -rf /etc/wpa_supplicant
